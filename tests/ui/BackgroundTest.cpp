// Texts, controls and the focus on the host's pictures, measured from what is drawn.
#include "common/ui/Background.h"
#include "common/look/Contrast.h"
#include "common/ui/Grid.h"

#include <QApplication>
#include <QBuffer>
#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <random>

using namespace tallyroom;

namespace {

constexpr QSize formSize(420, 460);

class Splash : public LateBoundObject {
public:
    explicit Splash(const QImage& image) {
        QBuffer bytes(&m_bytes);
        image.save(&bytes, "PNG");
        addProperty(QStringLiteral("Picture"),
                    [this](const Arguments&) { return Variant(m_bytes); });
    }

private:
    QByteArray m_bytes;
};

QImage plain(const QColor& color) {
    QImage image(formSize, QImage::Format_ARGB32);
    image.fill(color);
    return image;
}

QImage noise() {
    std::mt19937 random(5);
    QImage image = plain(Qt::black);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, 0xff000000U | static_cast<QRgb>(random()));
    }
    return image;
}

// A form with one control of each kind.
struct Form : QWidget {
    QVBoxLayout layout{this};
    QLabel title;
    QCheckBox box;
    QRadioButton kind{QStringLiteral("Both")};
    QLineEdit line;
    QComboBox choice;
    QPushButton button{QStringLiteral("Exit")};
    QListWidget list;
    Grid grid;

    Form() {
        resize(formSize);
        setFocusPolicy(Qt::StrongFocus);
        for (QWidget* control : controls())
            layout.addWidget(control);
        auto* item = new QListWidgetItem(QStringLiteral("Name"), &list);
        item->setCheckState(Qt::Unchecked);
        grid.setContents(
            {{{QStringLiteral("Code")}}, {{QStringLiteral("E1")}, {QStringLiteral("E2")}}}, {90});
    }
    std::vector<QWidget*> controls() {
        return {&title, &box, &kind, &line, &choice, &button, &list, &grid};
    }
    QImage shown() { return grab().toImage(); }
    QRect placeOf(const QWidget& control, const QRect& part) const {
        return {control.mapTo(this, part.topLeft()), part.size()};
    }
};

// Of the most visible pixel of a text to whatever it is written on.
double ratioOfText(const QImage& with, const QImage& without, const QRect& place) {
    QColor text;
    double most = 0;
    double least = 21;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x) {
            const double here = Contrast::ratio(with.pixelColor(x, y), without.pixelColor(x, y));
            if (here > most) {
                most = here;
                text = with.pixelColor(x, y);
            }
        }
    }
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x)
            least = std::min(least, Contrast::ratio(text, without.pixelColor(x, y)));
    }
    return least;
}

// Of the edge that one meets on the way into a control from the left, in the worst of some lines.
double ratioOfEdge(const QImage& image, const QRect& place) {
    double least = 21;
    for (int y = place.center().y() - 2; y <= place.center().y() + 2; ++y) {
        double most = 1;
        for (int x = place.left(); x <= place.left() + 4; ++x)
            most = std::max(most, Contrast::ratio(image.pixelColor(x, y),
                                                  image.pixelColor(place.left() - 1, y)));
        least = std::min(least, most);
    }
    return least;
}

// How many pixels the focus changes so much that it is seen.
int pixelsOfFocus(Form& form, QWidget& control) {
    form.setFocus();
    const QImage without = form.shown();
    control.setFocus();
    const QImage with = form.shown();
    const QRect place = form.placeOf(control, control.rect());
    int seen = 0;
    for (int y = place.top(); y <= place.bottom(); ++y) {
        for (int x = place.left(); x <= place.right(); ++x)
            seen += Contrast::ratio(with.pixelColor(x, y), without.pixelColor(x, y)) >=
                    Contrast::ofControls;
    }
    return seen;
}

QRect part(const QWidget& control, QStyle::SubElement element) {
    QStyleOptionButton option;
    option.initFrom(&control);
    return control.style()->subElementRect(element, &option, &control);
}

void lookAt(Form& form) {
    form.setFocus();
    form.title.setText(QStringLiteral("Tallyroom"));
    form.box.setText(QStringLiteral("System Date"));
    QImage with = form.shown();
    form.title.setText(QString());
    form.box.setText(QStringLiteral(" "));
    QImage without = form.shown();
    EXPECT_GE(ratioOfText(with, without, form.placeOf(form.title, {0, 0, 60, 16})),
              Contrast::ofText);
    EXPECT_GE(ratioOfText(with, without, form.placeOf(form.box, {24, 0, 60, form.box.height()})),
              Contrast::ofText);

    EXPECT_GE(
        ratioOfEdge(with, form.placeOf(form.box, part(form.box, QStyle::SE_CheckBoxIndicator))),
        Contrast::ofControls);
    EXPECT_GE(ratioOfEdge(
                  with, form.placeOf(form.kind, part(form.kind, QStyle::SE_RadioButtonIndicator))),
              Contrast::ofControls);
    for (QWidget* control : std::initializer_list<QWidget*>{&form.line, &form.choice, &form.button,
                                                            &form.list, &form.grid})
        EXPECT_GE(ratioOfEdge(with, form.placeOf(*control, control->rect())), Contrast::ofControls)
            << control->metaObject()->className();
    const QRect tick = form.list.visualItemRect(form.list.item(0)).adjusted(3, 0, 0, 0);
    EXPECT_GE(ratioOfEdge(with, form.placeOf(*form.list.viewport(), tick)), Contrast::ofControls)
        << "an unticked box of a list";

    form.grid.selectRow(1);
    const QRect row = form.grid.visualRect(form.grid.model()->index(1, 0)).adjusted(3, 3, -3, -3);
    with = form.shown();
    without = plain(with.pixelColor(form.placeOf(*form.grid.viewport(), row).bottomRight()));
    EXPECT_GE(ratioOfText(with, without, form.placeOf(*form.grid.viewport(), row)),
              Contrast::ofText)
        << "a selected row";
    form.grid.clearSelection();
    for (QWidget* control : std::initializer_list<QWidget*>{&form.line, &form.button, &form.grid})
        EXPECT_GT(pixelsOfFocus(form, *control), 60) << control->metaObject()->className();
}

QPalette dark() {
    QPalette palette(QColor(0x31, 0x36, 0x3b), QColor(0x2a, 0x2e, 0x32));
    palette.setColor(QPalette::Base, QColor(0x1b, 0x1e, 0x20));
    palette.setColor(QPalette::Highlight, QColor(0x3d, 0xae, 0xe9));
    palette.setColor(QPalette::HighlightedText, QColor(0xfc, 0xfc, 0xfc));
    return palette;
}

// Whichever colours the desktop had when the window opened, and whichever it changes to then.
TEST(Background, EverythingIsToldApartOnAnyPicture) {
    const QPalette light = QApplication::palette();
    const std::vector<std::pair<const char*, QPalette>> palettes = {
        {"light", light},
        {"dark", dark()},
        {"black", QPalette(Qt::black, Qt::black)},
        {"pale", QPalette(QColor(0xdd, 0xdd, 0xdd), QColor(0xee, 0xee, 0xee))}};
    const std::pair<const char*, QImage> pictures[] = {{"black", plain(Qt::black)},
                                                       {"white", plain(Qt::white)},
                                                       {"clear", plain(Qt::transparent)},
                                                       {"noise", noise()}};
    for (std::size_t at = 0; at < std::size(pictures); ++at) {
        const auto& [pictureName, picture] = pictures[at];
        QApplication::setPalette(palettes[at].second);
        Form form;
        Background::copyFrom(makeObject<Splash>(picture), &form);
        form.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
        for (std::size_t change = 0; change < palettes.size(); ++change) {
            const auto& [paletteName, palette] = palettes[(at + change) % palettes.size()];
            SCOPED_TRACE(std::string(paletteName) + " on " + pictureName);
            QApplication::setPalette(palette);
            QCoreApplication::processEvents(); // it reaches the windows by an event
            EXPECT_EQ(form.palette().color(QPalette::Base), palette.color(QPalette::Base));
            lookAt(form);
        }
    }
    QApplication::setPalette(light);
}

} // namespace
