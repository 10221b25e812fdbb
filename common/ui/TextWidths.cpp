#include "common/ui/TextWidths.h"

#include <QApplication>

namespace tallyroom {

TextWidths::TextWidths(const QFontMetrics& metrics) : QObject(qApp), m_metrics(metrics) {}

TextWidths& TextWidths::in(const QWidget& widget) {
    const QFontMetrics metrics = widget.fontMetrics();
    auto* known = qApp->findChild<TextWidths*>(QString(), Qt::FindDirectChildrenOnly);
    if (!known)
        known = new TextWidths(metrics);
    if (metrics != known->m_metrics) {
        known->m_metrics = metrics;
        known->m_widths.clear();
    }
    return *known;
}

int TextWidths::width(const QString& text) {
    constexpr qsizetype maximumTexts = 50'000; // a few megabytes
    const auto known = m_widths.constFind(text);
    if (known != m_widths.constEnd())
        return *known;
    if (m_widths.size() >= maximumTexts)
        m_widths.clear();
    return *m_widths.insert(text, m_metrics.horizontalAdvance(QLatin1Char('W') + text));
}

} // namespace tallyroom
