// The host's splash picture, drawn at run time.
#pragma once

#include "common/Objects.h"

#include <QImage>

namespace tallyroom::host {

// A pale gradient on which black text reads well, with a faint clock at the lower right.
QImage drawSplash();

// Property `Picture`: the picture as a PNG file's bytes.
class SplashPictureObject : public LateBoundObject {
public:
    explicit SplashPictureObject(const QImage& picture);
};

} // namespace tallyroom::host
