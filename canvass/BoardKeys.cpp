#include "canvass/BoardKeys.h"

#include "common/ui/Events.h"
#include "ui_Tallyroom.h"

#include <QShortcut>

namespace tallyroom::BoardKeys {

namespace {

void add(QWidget& window, const QKeySequence& keys, const std::function<void()>& handler) {
    auto* shortcut = new QShortcut(keys, &window);
    shortcut->setAutoRepeat(false);
    Events::connect(shortcut, &QShortcut::activated, &window, handler);
}

// Over the line under the board, until that has something to say.
void explainSearch(const Ui::Tallyroom& ui) {
    constexpr int milliseconds = 8000;
    ui.Grid->setFocus();
    ui.StatusBar1->showMessage(
        QStringLiteral("Type the beginning of a name, quickly; the same letter again goes on to "
                       "the next. Down and Space select."),
        milliseconds);
}

// The toolkit opens its menus by Alt alone.
void openMenus(QMenuBar& menus) {
    menus.setActiveAction(menus.actions().constFirst());
}

} // namespace

void connect(QMainWindow& window, const Ui::Tallyroom& ui) {
    ui.mnuRefresh->setShortcut(QKeySequence::Refresh);
    ui.mnuBuckets->setShortcut(QKeySequence(QStringLiteral("Ctrl+B")));
    ui.mnuUndo->setShortcut(QKeySequence::Undo);
    ui.Grid->setSearchHeading(QStringLiteral("Name"));
    add(window, QKeySequence::Find, [&ui] { explainSearch(ui); });
    add(window, QKeySequence::Print, [&ui] { ui.Command2->click(); });
    add(window, QKeySequence(Qt::Key_F10), [&ui] { openMenus(*ui.menubar); });
}

} // namespace tallyroom::BoardKeys
