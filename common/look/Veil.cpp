#include "common/look/Veil.h"

#include "common/look/Contrast.h"

#include <QPainter>

namespace tallyroom {

namespace {

// The extremes of every channel: no pixel is darker than the one, none lighter than the other.
std::pair<QColor, QColor> extremes(const QImage& picture) {
    int low[] = {255, 255, 255};
    int high[] = {0, 0, 0};
    for (int y = 0; y < picture.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
        for (int x = 0; x < picture.width(); ++x) {
            const int channels[] = {qRed(line[x]), qGreen(line[x]), qBlue(line[x])};
            for (int at = 0; at < 3; ++at) {
                low[at] = std::min(low[at], channels[at]);
                high[at] = std::max(high[at], channels[at]);
            }
        }
    }
    return {QColor(low[0], low[1], low[2]), QColor(high[0], high[1], high[2])};
}

// How much of the ground has to lie over the worst of the picture for text to be read on it.
double veilOver(const QColor& worst, const QColor& ground, const QColor& text) {
    constexpr double reserve = 0.4; // thin strokes are smoothed away in part
    double share = 0;
    while (share < 1 && Contrast::ratio(text, Contrast::mixed(ground, worst, share)) <
                            Contrast::ofText + reserve)
        share += 0.02;
    return std::min(share, 1.0);
}

// The picture as it lies on the ground; what is transparent shows it.
QImage laidOn(const QColor& ground, const QImage& picture) {
    QImage result(picture.size(), QImage::Format_RGB32);
    result.fill(ground);
    QPainter(&result).drawImage(0, 0, picture);
    return result;
}

} // namespace

Veiled veiled(const QImage& picture, const QPalette& palette) {
    const QColor ground = palette.color(QPalette::Window);
    const QColor text = palette.color(QPalette::WindowText);
    QImage result = laidOn(ground, picture);
    const auto [darkest, lightest] = extremes(result);
    const QColor worst =
        Contrast::ratio(text, darkest) < Contrast::ratio(text, lightest) ? darkest : lightest;
    const double share = veilOver(worst, ground, text);
    QColor cover = ground;
    cover.setAlphaF(static_cast<float>(share));
    QPainter(&result).fillRect(result.rect(), cover);
    return {result, Contrast::mixed(ground, worst, share)};
}

} // namespace tallyroom
