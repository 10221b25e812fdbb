#include "canvass/BoardPlaces.h"

#include "common/look/WindowFit.h"
#include "common/ui/Twips.h"
#include "ui_Tallyroom.h"

namespace tallyroom {

namespace {

// What the controls below the grid need beside each other, and a grid of some rows above them.
constexpr QSize leastInner(620, 300);

// As much as the font asks for and the screen allows, but not less than the texts need.
double growthWithin(QSize room) {
    constexpr double leastShare = 0.75;
    const double wanted = WindowFit::growth();
    const double possible = std::min(double(room.width()) / leastInner.width(),
                                     double(room.height()) / leastInner.height());
    return std::clamp(possible, std::max(1.0, wanted * leastShare), wanted);
}

QSize roomInside(const QMainWindow& window, const Ui::Tallyroom& ui) {
    const int bars = ui.menubar->sizeHint().height() + ui.StatusBar1->sizeHint().height();
    return WindowFit::room(window) - QSize(0, bars);
}

} // namespace

BoardPlaces::BoardPlaces(QMainWindow& window, Ui::Tallyroom& ui)
    : m_window(window), m_ui(ui), m_growth(growthWithin(roomInside(window, ui))) {
    growControls();
    m_ui.centralwidget->setMinimumSize(leastInner * m_growth);
    QScrollArea* area = WindowFit::scrollArea(&m_window);
    area->setWidget(m_window.takeCentralWidget());
    m_window.setCentralWidget(area);
    m_window.resize((m_window.size() * WindowFit::growth()).boundedTo(WindowFit::room(m_window)));
}

void BoardPlaces::growControls() const {
    QWidget& inner = *m_ui.centralwidget;
    WindowFit::growFonts(inner, m_growth);
    for (auto* control : inner.findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        control->setGeometry(grown(control->x()), grown(control->y()), grown(control->width()),
                             grown(control->height()));
    m_ui.SSCommand2->setIconSize(m_ui.SSCommand2->iconSize() * m_growth);
}

void BoardPlaces::resize() {
    const int width = m_ui.centralwidget->width();
    const int height = m_ui.centralwidget->height();
    const auto twips = [this](int measure) { return grown(pixels(measure)); };
    m_ui.Grid->resize(width - twips(345), height - twips(2145));
    m_ui.Command1->move(width - twips(1440), height - twips(1200));
    m_ui.Command2->move(width - twips(2880), height - twips(1200));
    for (QWidget* label : {m_ui.Label2, m_ui.Label3, m_ui.Label4})
        label->move(label->x(), height - twips(1320));
    for (QWidget* box : {m_ui.to_date, m_ui.Text1, m_ui.Text2})
        box->move(box->x(), height - twips(1320) + m_ui.Label2->height());
    m_ui.SSCommand2->move(m_ui.SSCommand2->x(), height - twips(1260));
    m_ui.Label1->resize(width - 2 * m_ui.Label1->x(), m_ui.Label1->height());
}

} // namespace tallyroom
