// The View menu's check marks: which columns the board shows, and how it counts.
#pragma once

#include "common/BoardColumns.h"

#include <QAction>
#include <functional>

namespace Ui {
class Tallyroom;
}

namespace tallyroom {

class ViewMenu {
public:
    // Adds the entries of the columns to the Columns menu and marks what is shown at first. The
    // window and its controls must outlive this. `changed` runs after each change of a mark by the
    // user, except that of mnuBreakOut, which is the window's.
    ViewMenu(QWidget& window, const Ui::Tallyroom& ui, std::function<void()> changed);

    BoardOptions options() const;
    std::vector<QObject*> marks() const; // all entries that a user checks, but for the total's
    QString totalCaption() const;        // of the entry that says what the Total column counts

private:
    void addEntry(const BoardColumn& column);
    void connectMark(QAction* mark);
    void connectTotal(QAction* chosen, QAction* other);

    QWidget& m_window;
    const Ui::Tallyroom& m_ui;
    std::function<void()> m_changed;
    std::vector<QAction*> m_columns; // owned by the Columns menu
};

} // namespace tallyroom
