#include "host/screens/Paragraphs.h"

#include <QTextBlock>
#include <cmath>

namespace tallyroom::host {

Paragraphs::Paragraphs(QWidget* parent) : QPlainTextEdit(parent) {
    setReadOnly(true);
    setTabChangesFocus(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void Paragraphs::setParagraphs(const QStringList& paragraphs, bool isAlone) {
    m_isAlone = isAlone;
    setPlainText(paragraphs.join(QLatin1Char('\n')));
    setVisible(!paragraphs.isEmpty());
    takeHeight();
}

void Paragraphs::takeHeight() {
    constexpr int mostLines = 6;
    double lines = 0; // pixels
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next())
        lines += blockBoundingRect(block).height();
    lines = std::min<double>(lines, mostLines * fontMetrics().lineSpacing());
    const int height =
        static_cast<int>(std::ceil(lines + 2 * document()->documentMargin())) + 2 * frameWidth();
    setMinimumHeight(height);
    setMaximumHeight(m_isAlone ? QWIDGETSIZE_MAX : height);
}

void Paragraphs::resizeEvent(QResizeEvent* event) {
    QPlainTextEdit::resizeEvent(event);
    takeHeight();
}

} // namespace tallyroom::host
