// The status bar under the board.
#pragma once

#include "common/ui/ElidedLabel.h"

#include <QElapsedTimer>
#include <QStatusBar>

namespace tallyroom {

class BoardStatusBar {
public:
    explicit BoardStatusBar(QStatusBar& bar); // must outlive this; owns what is shown in it

    // On the left what there is to say, on the right what the figures are, in the room that is
    // left.
    void show(const QString& news, const QString& figures);
    void showNews(const QString& news);

private:
    QStatusBar& m_bar;
    ElidedLabel* m_news;
    ElidedLabel* m_figures;
};

// The scope of a command that may take long. Its window paints itself as often as there is progress
// to see, and takes no input: what was pressed or clicked meanwhile is dropped at the end of a
// command that took long enough to be seen. What is typed ahead of a short one counts.
class BoardProgress {
public:
    BoardProgress(QWidget& window, BoardStatusBar& bar);
    ~BoardProgress();
    BoardProgress(const BoardProgress&) = delete;
    BoardProgress& operator=(const BoardProgress&) = delete;

    void show(const QString& progress);

private:
    QWidget& m_window;
    BoardStatusBar& m_bar;
    QElapsedTimer m_sinceBegin;
    QElapsedTimer m_sinceShown;
};

} // namespace tallyroom
