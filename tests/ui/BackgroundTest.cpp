#include "common/ui/Background.h"

#include <QBuffer>
#include <QImage>
#include <gtest/gtest.h>

using namespace tallyroom;

namespace {

class Splash : public LateBoundObject {
public:
    explicit Splash(const QColor& color) {
        QImage image(40, 30, QImage::Format_ARGB32);
        image.fill(color);
        QBuffer bytes(&m_bytes);
        image.save(&bytes, "PNG");
        addProperty(QStringLiteral("Picture"),
                    [this](const Arguments&) { return Variant(m_bytes); });
    }

private:
    QByteArray m_bytes;
};

TEST(Background, LabelsStayReadableOnThePicture) {
    const struct {
        QColor desktopText;
        QColor picture;
        QColor text;
    } cases[] = {{Qt::black, "#f0f4ff", Qt::black},  {Qt::black, Qt::transparent, Qt::black},
                 {Qt::white, Qt::yellow, Qt::black}, {Qt::black, Qt::blue, Qt::white},
                 {"#eff0f1", "#f0f4ff", Qt::black},  {"#eff0f1", "#102030", "#eff0f1"},
                 {"#202020", "#102030", Qt::white}};
    for (const auto& c : cases) {
        QWidget window;
        window.resize(90, 60); // more than the picture
        QWidget form(&window);
        form.resize(window.size());
        QPalette palette(Qt::lightGray, qGray(c.desktopText.rgb()) < 128 ? Qt::white : Qt::black);
        palette.setColor(QPalette::WindowText, c.desktopText);
        form.setPalette(palette);
        const QWidget label(&form);
        Background::copyFrom(makeObject<Splash>(c.picture), &form);
        EXPECT_EQ(label.palette().color(QPalette::WindowText), c.text)
            << c.desktopText.name().toStdString() << " on " << c.picture.name().toStdString();
        const QRgb beside = window.grab().toImage().pixel(80, 50);
        if (c.text != c.desktopText) {
            EXPECT_EQ(beside, c.picture.rgb()) << "labels lie there, too";
        }
    }
}

} // namespace
