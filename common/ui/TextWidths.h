// The widths of texts in the font of the grids.
#pragma once

#include <QFontMetrics>
#include <QHash>
#include <QObject>
#include <QWidget>

namespace tallyroom {

// Most cells of a grid repeat, in a fill, from one fill to the next and from one opening of its
// window to the next, so what was measured is kept. There is one for all windows, since all grids
// carry the same font; it belongs to the application, so that it outlives a window and ends before
// the fonts do.
class TextWidths : public QObject {
    Q_OBJECT

public:
    // Those in the widget's font. Another font than the last time begins anew.
    static TextWidths& in(const QWidget& widget);

    // Of "W" and the text, in pixels. A whole text is measured once: what shaping makes of it,
    // kerning and ligatures, depends on nothing but the text and the font.
    int width(const QString& text);

private:
    explicit TextWidths(const QFontMetrics& metrics);

    QFontMetrics m_metrics;
    QHash<QString, int> m_widths;
};

} // namespace tallyroom
