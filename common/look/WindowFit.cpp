#include "common/look/WindowFit.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFontInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QScreen>
#include <QTableView>

namespace tallyroom::WindowFit {

namespace {

bool isWithin(QSize size, QSize room) {
    return size.boundedTo(room) == size;
}

QSize neededBy(const QDialog& window) {
    if (!window.layout())
        return {};
    const QLayout& layout = *window.layout();
    QSize needed = layout.totalMinimumSize();
    if (layout.hasHeightForWidth()) {
        const int width = std::max(needed.width(), window.width());
        needed.setHeight(std::max(needed.height(), layout.totalMinimumHeightForWidth(width)));
    }
    return needed;
}

// A designed least size counts as it is, whatever the text in a larger font would need.
void raiseLeastSizes(QDialog& window) {
    for (auto* button : window.findChildren<QAbstractButton*>()) {
        if (button->minimumSize() != button->maximumSize() && !button->minimumSize().isNull())
            button->setMinimumSize(button->minimumSize().expandedTo(button->sizeHint()));
    }
}

void breakLabels(QDialog& window) {
    for (auto* label : window.findChildren<QLabel*>())
        label->setWordWrap(true);
    window.layout()->activate();
}

void makeScroll(QDialog& window) {
    QScrollArea* area = scrollArea(&window);
    auto* content = new QWidget;
    area->setWidget(content); // first, so that the controls never leave the window
    content->setLayout(window.layout());
    auto* frame = new QVBoxLayout(&window);
    frame->setContentsMargins(0, 0, 0, 0);
    frame->addWidget(area);
}

} // namespace

double growth() {
    constexpr double designed = 12; // pixels
    return std::max(1.0, QFontInfo(QApplication::font()).pixelSize() / designed);
}

QSize room(const QWidget& window) {
    constexpr QSize frame(16, 48); // more or less, as long as there is none to be measured
    return window.screen()->availableSize() - frame;
}

void growFonts(QWidget& window, double factor) {
    for (auto* control : window.findChildren<QWidget*>()) {
        QFont font = control->font();
        if (!control->testAttribute(Qt::WA_SetFont) || font.pointSizeF() <= 0 ||
            !(font.resolveMask() & QFont::SizeResolved))
            continue;
        font.setPointSizeF(font.pointSizeF() * factor);
        control->setFont(font);
    }
}

void grow(QWidget& window) {
    growFonts(window, growth());
    for (auto* table : window.findChildren<QTableView*>()) {
        QHeaderView& rows = *table->verticalHeader();
        const int needed = table->fontMetrics().height() + 4;
        rows.setDefaultSectionSize(std::max(rows.defaultSectionSize(), needed));
    }
    if (window.testAttribute(Qt::WA_Resized))
        window.resize(window.size() * growth());
}

void fit(QDialog& window) {
    const QSize available = room(window);
    raiseLeastSizes(window);
    if (!window.testAttribute(Qt::WA_Resized))
        window.adjustSize();
    window.resize(window.size().expandedTo(neededBy(window)).boundedTo(available));
    if (isWithin(neededBy(window), available))
        return;
    breakLabels(window);
    if (!isWithin(neededBy(window), available))
        makeScroll(window);
    window.resize(window.size().boundedTo(available));
}

QScrollArea* scrollArea(QWidget* parent) {
    auto* area = new QScrollArea(parent);
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->viewport()->setAutoFillBackground(false);
    return area;
}

} // namespace tallyroom::WindowFit
