// What stands on every page of a report around its contents.
#pragma once

#include "common/Dates.h"

#include <QFont>
#include <QPainter>
#include <QString>
#include <QStringList>
#include <optional>

namespace tallyroom {

// Values, taken when the command is given.
struct ReportFrame {
    QString title;
    QStringList details; // lines under the title
    QString printedBy;
    Date printedAt;
    std::optional<Date> about = {}; // the day that it is about, where there is one

    // "Canvassing Details 2026-11-28": the title and that day, or else the day of printing.
    QString documentName() const;
};

// The font of all that is printed.
QFont reportFont(bool bold, int pixels);

// The frame laid out for pages of one size: title and details at the top; at the foot who printed
// when, and the number of the page.
class PageFrame {
public:
    // `page` is the printable area in pixels of a device with `point` pixels to the point. The
    // frame must outlive the layout.
    PageFrame(const ReportFrame& frame, QSizeF page, double point);

    QRectF room() const; // what is left between top and foot
    void paint(QPainter& painter, int page, int pageCount) const;

private:
    QFont font(double points, bool bold = false) const;
    double lineHeight(double points) const;
    QRectF detailRect(const QString& detail, double top) const;
    void paintTop(QPainter& painter) const;
    void paintFoot(QPainter& painter, int page, int pageCount) const;

    const ReportFrame& m_frame;
    QSizeF m_page;
    double m_point;
    double m_roomTop;
};

} // namespace tallyroom
