// A picture on which a desktop's texts can be read.
#pragma once

#include <QImage>
#include <QPalette>

namespace tallyroom {

struct Veiled {
    QImage picture; // opaque
    QColor behind;  // what text stands on at the worst; no pixel is nearer to the text's colour
};

// The picture as it lies on the window's ground, which shows where it is transparent, under as much
// of that ground as texts need, which may be nothing.
Veiled veiled(const QImage& picture, const QPalette& palette);

} // namespace tallyroom
