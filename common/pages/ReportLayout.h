// A report laid out for one size of page.
#pragma once

#include "common/pages/PageSource.h"

namespace tallyroom {

class ReportLayout {
public:
    // `page` is the printable area in pixels of a device with `point` pixels to the point. The
    // report must outlive the layout.
    ReportLayout(const PageSource& report, QSizeF page, double point)
        : m_frame(report.frame(), page, point),
          m_pages(report.pages(m_frame.room().size(), point)) {}

    int count() const { return m_pages->count(); }

    // Pages are counted from 1; the painter's origin is the upper left corner of the page.
    void paint(QPainter& painter, int page) const {
        painter.setLayoutDirection(Qt::LeftToRight); // the columns run so in every language
        m_frame.paint(painter, page, count());
        painter.translate(m_frame.room().topLeft());
        m_pages->paint(painter, page);
        painter.translate(-m_frame.room().topLeft());
    }

private:
    PageFrame m_frame;
    std::unique_ptr<Pages> m_pages;
};

} // namespace tallyroom
