#include "canvass/BoardStatusBar.h"

#include "common/ui/PendingInput.h"

#include <QLayout>

namespace tallyroom {

namespace {

constexpr int paintInterval = 100; // milliseconds
constexpr int longCommand = 100;   // likewise: an impatient key would meet the next employee

} // namespace

BoardStatusBar::BoardStatusBar(QStatusBar& bar)
    : m_bar(bar), m_news(new ElidedLabel(QStringLiteral("lblStatus"), &bar)),
      m_figures(new ElidedLabel(QStringLiteral("lblFigures"), &bar)) {
    m_news->setIndent(10); // under the grid
    m_figures->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_figures->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_figures->setMinimumWidth(m_figures->minimumSizeHint().width());
    m_bar.addWidget(m_news);
    m_bar.addPermanentWidget(m_figures, 1);
}

void BoardStatusBar::show(const QString& news, const QString& figures) {
    m_bar.clearMessage(); // which lies over the news
    m_news->setLine(news);
    m_figures->setLine(figures);
}

// At once: no event comes during a command that would lay the bar out.
void BoardStatusBar::showNews(const QString& news) {
    m_bar.clearMessage();
    m_news->setLine(news);
    m_bar.layout()->activate();
}

BoardProgress::BoardProgress(QWidget& window, BoardStatusBar& bar) : m_window(window), m_bar(bar) {
    m_sinceBegin.start();
    m_sinceShown.start();
}

BoardProgress::~BoardProgress() {
    if (m_sinceBegin.elapsed() >= longCommand)
        PendingInput::drop();
}

void BoardProgress::show(const QString& progress) {
    if (m_sinceShown.elapsed() < paintInterval)
        return;
    m_bar.showNews(progress);
    m_window.repaint();
    m_sinceShown.restart();
}

} // namespace tallyroom
