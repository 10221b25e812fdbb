// What can be printed, whatever its pages are made of.
#pragma once

#include "common/pages/PageFrame.h"

#include <QPageLayout>
#include <memory>

namespace tallyroom {

// The pages of a report for one size of paper. Each fills the room in its frame.
class Pages {
public:
    virtual ~Pages() = default;

    virtual int count() const = 0; // at least 1
    // Pages are counted from 1; the painter's origin is the upper left corner of the room.
    virtual void paint(QPainter& painter, int page) const = 0;
};

// What can be printed: the same frame on every page, and pages that count and paint themselves.
class PageSource {
public:
    virtual ~PageSource() = default;

    virtual const ReportFrame& frame() const = 0;
    virtual QPageLayout::Orientation orientation(const QPageLayout& paper) const = 0;
    // `room` is in pixels of a device with `point` pixels to the point. The pages live no longer
    // than the source.
    virtual std::unique_ptr<Pages> pages(QSizeF room, double point) const = 0;
};

} // namespace tallyroom
