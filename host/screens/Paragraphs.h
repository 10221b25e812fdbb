// Paragraphs of a report on the screen.
#pragma once

#include <QPlainTextEdit>

namespace tallyroom::host {

// To be read and copied, by keys as well. As high as its lines, up to a few, which then scroll;
// hidden without any.
class Paragraphs : public QPlainTextEdit {
    Q_OBJECT

public:
    explicit Paragraphs(QWidget* parent = nullptr);

    // What stands alone takes all the room there is.
    void setParagraphs(const QStringList& paragraphs, bool isAlone);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void takeHeight();

    bool m_isAlone = false;
};

} // namespace tallyroom::host
