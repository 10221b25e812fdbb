// The usage guide on the screen.
#pragma once

#include <QTextBrowser>
#include <vector>

class QTextTable;

namespace tallyroom::host {

// Shows a file of Markdown: tables with lines in the desktop's colours, pictures no wider than the
// window. Links go to other files beside it and to the desktop's browser.
class GuideView : public QTextBrowser {
    Q_OBJECT

public:
    struct Heading {
        QString text;
        int level; // from 1
        int position;
    };

    explicit GuideView(QWidget* parent = nullptr);

    // Raises 3024 when the file cannot be read.
    void open(const QString& file);

    std::vector<Heading> headings() const;
    void showHeading(const Heading& heading); // at the top of the window

    // Selects where the text occurs next; beyond the end, where it does so first. False when it
    // does nowhere.
    bool findNext(const QString& text, QTextDocument::FindFlags flags);

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void follow(const QUrl& link);
    void dress();
    void dressTable(QTextTable& table) const;
    void fitPictures();
};

} // namespace tallyroom::host
