#include "common/ui/DateBinding.h"

#include "common/DateParser.h"
#include "common/ui/Events.h"
#include "common/ui/WrongField.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <optional>

namespace tallyroom {

namespace {

const QString shownForm = QStringLiteral("mm/dd/yyyy");

QDate firstOfMonth(QDate day) {
    return {day.year(), day.month(), 1};
}

bool isDateKey(int key) {
    return key == Qt::Key_PageUp || key == Qt::Key_PageDown || key == Qt::Key_Up ||
           key == Qt::Key_Down || key == Qt::Key_Home || key == Qt::Key_End;
}

QDate moved(QDate day, int key) {
    switch (key) {
    case Qt::Key_PageUp:
        return day.addMonths(1);
    case Qt::Key_PageDown:
        return day.addMonths(-1);
    case Qt::Key_Up:
        return day.addDays(1);
    case Qt::Key_Down:
        return day.addDays(-1);
    case Qt::Key_Home:
        return firstOfMonth(day);
    default:
        return firstOfMonth(day).addMonths(1).addDays(-1);
    }
}

// Beyond the years that a date text can name the box stays as it is.
void show(QLineEdit* box, QDate day) {
    const Date date = Dates::fromQDate(day);
    if (Dates::isInRange(date))
        box->setText(Dates::format(date, shownForm));
}

// As wide as designed, or as a date of the widest digits needs in the box's font.
int widthOf(const QLineEdit& box) {
    constexpr int margins = 22; // frame, the toolkit's margins and the text cursor
    const QFontMetrics metrics = box.fontMetrics();
    return std::max({box.width(), box.minimumWidth(),
                     metrics.horizontalAdvance(QStringLiteral("00/00/0000")) + margins});
}

// A calendar leaf, drawn at twice its size so that it stays sharp on dense screens.
QIcon calendarIcon() {
    QPixmap leaf(32, 32);
    leaf.fill(Qt::transparent);
    QPainter painter(&leaf);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(70, 80, 95), 2));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(3, 5, 26, 24, 3, 3);
    painter.fillRect(4, 6, 24, 6, QColor(178, 50, 50));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(70, 80, 95));
    for (int day = 0; day < 9; ++day)
        painter.drawRect(8 + day % 3 * 6, 15 + day / 3 * 5, 4, 3);
    return {leaf};
}

} // namespace

DateBinding::DateBinding(QWidget* window, ObjectRef datePicker)
    : m_window(window), m_datePicker(std::move(datePicker)) {}

DateBinding::~DateBinding() {
    for (const QMetaObject::Connection& connection : m_connections)
        disconnect(connection);
}

void DateBinding::bind(QLineEdit* box, QAbstractButton* pickerButton) {
    box->installEventFilter(this);
    box->setFixedWidth(widthOf(*box));
    pickerButton->setIcon(calendarIcon());
    pickerButton->setAccessibleName(QStringLiteral("Pick a date: ") + box->accessibleName());
    pickerButton->setToolTip(pickerButton->accessibleName());
    m_connections.push_back(Events::connect(pickerButton, &QAbstractButton::clicked, m_window,
                                            [this, box] { pick(box); }));
    m_connections.push_back(
        Events::connect(box, &QLineEdit::textChanged, m_window, [box](const QString& text) {
            if (Dates::isDate(text))
                markCorrected(box);
        }));
}

// The window and the binding may be closed while the host shows its form.
void DateBinding::pick(QLineEdit* dateBox) const {
    const QPointer<QLineEdit> box = dateBox;
    const ObjectRef datePicker = m_datePicker;
    const ObjectRef monthView = datePicker.property(QStringLiteral("MonthView1")).toObject();
    const auto shown = Dates::parse(box->text());
    monthView.setProperty(QStringLiteral("Value"), shown.value_or(Dates::today()));
    datePicker.call(QStringLiteral("Show"), {Variant(1)});
    if (!box || !datePicker.property(QStringLiteral("WasPicked")).toBoolean())
        return;
    box->setText(Dates::format(monthView.property(QStringLiteral("Value")).toDate(), shownForm));
}

bool DateBinding::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return QObject::eventFilter(watched, event);
    auto* box = static_cast<QLineEdit*>(watched);
    const auto* keyEvent = static_cast<QKeyEvent*>(event);
    const auto modifiers = keyEvent->modifiers() & ~Qt::KeypadModifier;
    const bool isShortcut = isDateKey(keyEvent->key()) && modifiers == Qt::NoModifier;
    if (box->isReadOnly() || !isShortcut)
        return QObject::eventFilter(watched, event);
    if (const auto date = Dates::parse(box->text()))
        show(box, moved(Dates::dayOf(*date), keyEvent->key()));
    else
        markUntilCorrected(box);
    return true;
}

} // namespace tallyroom
