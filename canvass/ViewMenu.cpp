#include "canvass/ViewMenu.h"

#include "common/ui/Events.h"
#include "ui_Tallyroom.h"

namespace tallyroom {

ViewMenu::ViewMenu(QWidget& window, const Ui::Tallyroom& ui, std::function<void()> changed)
    : m_window(window), m_ui(ui), m_changed(std::move(changed)) {
    for (const BoardColumn& column : BoardColumns::all()) {
        if (column.entry.name)
            addEntry(column);
    }
    connectMark(m_ui.mnuBlank0);
    connectMark(m_ui.mnuMult);
    connectTotal(m_ui.mnuTot_0, m_ui.mnuTot_1);
    connectTotal(m_ui.mnuTot_1, m_ui.mnuTot_0);
    m_ui.mnuTot_0->setChecked(true);
}

// More phone numbers stand at the end of the menu, below the mark that breaks the overtime out.
void ViewMenu::addEntry(const BoardColumn& column) {
    auto* entry = new QAction(QString::fromUtf16(column.entry.caption), m_ui.mnuColumns);
    entry->setObjectName(QString::fromUtf16(column.entry.name));
    entry->setCheckable(true);
    entry->setChecked(column.entry.checkedAtFirst);
    m_ui.mnuColumns->insertAction(column.kind == CellKind::Phone ? nullptr : m_ui.mnuBreakOut,
                                  entry);
    m_columns.push_back(entry);
    connectMark(entry);
}

// The platform toggles the check mark itself before it calls the handler.
void ViewMenu::connectMark(QAction* mark) {
    Events::connect(mark, &QAction::triggered, &m_window, [this] { m_changed(); });
}

void ViewMenu::connectTotal(QAction* chosen, QAction* other) {
    Events::connect(chosen, &QAction::triggered, &m_window, [this, chosen, other] {
        chosen->setChecked(true);
        other->setChecked(false);
        m_changed();
    });
}

BoardOptions ViewMenu::options() const {
    BoardOptions options;
    options.blankForZero = m_ui.mnuBlank0->isChecked();
    options.multiply = m_ui.mnuMult->isChecked();
    options.breakOut = m_ui.mnuBreakOut->isChecked();
    options.totalWithAccepted = m_ui.mnuTot_0->isChecked();
    for (const QAction* entry : m_columns) {
        if (entry->isChecked())
            options.columns.append(entry->objectName());
    }
    return options;
}

std::vector<QObject*> ViewMenu::marks() const {
    std::vector<QObject*> marks{m_ui.mnuBlank0, m_ui.mnuMult, m_ui.mnuBreakOut, m_ui.mnuDateLine,
                                m_ui.mnuSigLine};
    marks.insert(marks.end(), m_columns.begin(), m_columns.end());
    return marks;
}

QString ViewMenu::totalCaption() const {
    return (m_ui.mnuTot_0->isChecked() ? m_ui.mnuTot_0 : m_ui.mnuTot_1)->text();
}

} // namespace tallyroom
