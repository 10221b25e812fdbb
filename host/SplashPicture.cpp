#include "host/SplashPicture.h"

#include <QBuffer>
#include <QPainter>

namespace tallyroom::host {

namespace {

constexpr QSize pictureSize(1600, 1000);

void drawPaper(QPainter& painter) {
    QLinearGradient paper(0, 0, pictureSize.width(), pictureSize.height());
    paper.setColorAt(0, QColor(0xfa, 0xfb, 0xfc));
    paper.setColorAt(0.6, QColor(0xee, 0xf3, 0xf7));
    paper.setColorAt(1, QColor(0xe0, 0xe9, 0xf0));
    painter.fillRect(QRect(QPoint(), pictureSize), paper);
}

void drawMarks(QPainter& painter, double radius) {
    for (int hour = 0; hour < 12; ++hour) {
        painter.drawLine(QPointF(0, -radius * 0.92),
                         QPointF(0, -radius * (hour % 3 ? 0.86 : 0.78)));
        painter.rotate(30);
    }
}

void drawHand(QPainter& painter, double angle, double length) {
    painter.save();
    painter.rotate(angle);
    painter.drawLine(QPointF(0, length * 0.12), QPointF(0, -length));
    painter.restore();
}

void drawClock(QPainter& painter, QPointF centre, double radius) {
    painter.translate(centre);
    painter.setPen(QPen(QColor(0x6f, 0x8d, 0xa6, 38), radius / 22, Qt::SolidLine, Qt::RoundCap));
    painter.drawEllipse(QPointF(), radius, radius);
    drawMarks(painter, radius);
    drawHand(painter, 305, radius * 0.5);
    drawHand(painter, 60, radius * 0.72);
}

} // namespace

QImage drawSplash() {
    QImage picture(pictureSize, QImage::Format_RGB32);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    drawPaper(painter);
    drawClock(painter, {1330, 730}, 230);
    return picture;
}

SplashPictureObject::SplashPictureObject(const QImage& picture) {
    QByteArray file;
    QBuffer buffer(&file);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    addProperty(QStringLiteral("Picture"), [file](const Arguments&) { return Variant(file); });
}

} // namespace tallyroom::host
