#include "reports/ReportParts.h"

#include "reports/ChartPainter.h"

#include <QAbstractTextDocumentLayout>
#include <QTextDocument>

namespace tallyroom {

namespace {

// In points.
constexpr double wordSize = 10;
constexpr double captionSize = 11;

class WordsPart : public ReportPart {
public:
    WordsPart(const QStringList& paragraphs, QSizeF room, double point) : m_room(room) {
        m_document.setDocumentMargin(0);
        m_document.setDefaultFont(reportFont(false, static_cast<int>(wordSize * point)));
        m_document.documentLayout()->setPaintDevice(nullptr);
        m_document.setPlainText(paragraphs.join(QLatin1Char('\n')));
        m_document.setPageSize(room);
    }

    int count() const override { return m_document.pageCount(); }

    double heightOfLast() const override {
        return m_document.documentLayout()->documentSize().height() -
               (count() - 1) * m_room.height();
    }

    void paint(QPainter& painter, int page) const override {
        const double top = (page - 1) * m_room.height();
        painter.save();
        painter.translate(0, -top);
        m_document.drawContents(&painter, QRectF(QPointF(0, top), m_room));
        painter.restore();
    }

private:
    QSizeF m_room;
    mutable QTextDocument m_document; // which paints through a function that is not const
};

// A caption above every page of something.
class Captioned {
public:
    Captioned(const QString& caption, QSizeF room, double point)
        : m_caption(caption), m_font(reportFont(true, static_cast<int>(captionSize * point))),
          m_height(caption.isEmpty() ? 0 : QFontMetricsF(m_font).height() * 1.3), m_room(room) {}

    double height() const { return m_height; }
    QSizeF roomBelow() const { return {m_room.width(), m_room.height() - m_height}; }

    void paint(QPainter& painter) const {
        painter.setPen(Qt::black);
        painter.setFont(m_font);
        painter.drawText(QRectF(0, 0, m_room.width(), m_height),
                         static_cast<int>(Qt::AlignLeft) | Qt::TextSingleLine, m_caption);
    }

private:
    QString m_caption;
    QFont m_font;
    double m_height;
    QSizeF m_room;
};

class TablePart : public ReportPart {
public:
    TablePart(const QString& caption, const ReportTable& table, const ColumnWidths& widths,
              QSizeF room, double point)
        : m_caption(caption, room, point), m_pages(table, widths, m_caption.roomBelow(), point) {}

    int count() const override { return m_pages.count(); }
    double heightOfLast() const override { return m_caption.height() + m_pages.height(count()); }

    void paint(QPainter& painter, int page) const override {
        m_caption.paint(painter);
        painter.translate(0, m_caption.height());
        m_pages.paint(painter, page);
        painter.translate(0, -m_caption.height());
    }

private:
    Captioned m_caption;
    TablePages m_pages;
};

class ChartPart : public ReportPart {
public:
    ChartPart(const Chart& chart, QSizeF room, double point)
        : m_caption(chart.caption, room, point), m_painter(chart, m_caption.roomBelow(), point) {}

    int count() const override { return m_painter.count(); }
    double heightOfLast() const override { return m_caption.height() + m_painter.height(count()); }

    void paint(QPainter& painter, int page) const override {
        m_caption.paint(painter);
        painter.translate(0, m_caption.height());
        m_painter.paint(painter, page);
        painter.translate(0, -m_caption.height());
    }

private:
    Captioned m_caption;
    ChartPainter m_painter;
};

} // namespace

std::unique_ptr<ReportPart> wordsPart(const QStringList& paragraphs, QSizeF room, double point) {
    return std::make_unique<WordsPart>(paragraphs, room, point);
}

std::unique_ptr<ReportPart> tablePart(const QString& caption, const ReportTable& table,
                                      const ColumnWidths& widths, QSizeF room, double point) {
    return std::make_unique<TablePart>(caption, table, widths, room, point);
}

std::unique_ptr<ReportPart> chartPart(const Chart& chart, QSizeF room, double point) {
    return std::make_unique<ChartPart>(chart, room, point);
}

} // namespace tallyroom
