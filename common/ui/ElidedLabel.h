// A line of text that takes the room that there is.
#pragma once

#include <QLabel>

namespace tallyroom {

// Never makes its window wider: what does not fit ends in an ellipsis, and the tooltip has all of
// it. Screen readers get the whole text, and an event at each change.
class ElidedLabel : public QLabel {
public:
    ElidedLabel(const QString& name, QWidget* parent);

    void setLine(const QString& text);
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace tallyroom
