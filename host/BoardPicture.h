// Prints and photographs the board as soon as it is up, and closes it.
#pragma once

#include "host/BoardWatch.h"

#include <QElapsedTimer>
#include <QTimer>

class QTableView;

namespace tallyroom::host {

// A table as aligned lines of text, heading first; each line ends with a line break.
QString tableText(const QTableView& table);

// Watches while the add-in's own event loop runs. When another window stands in the board's way,
// what it says goes to standard error, its picture is saved, and the process ends with that exit
// exitUnexpectedWindow at once: nobody is there to answer it.
class BoardPicture : public QObject {
    Q_OBJECT

public:
    explicit BoardPicture(const QString& file);

    bool isTaken() const { return m_isTaken; }

private:
    void poll();
    void take(QWidget& board);
    bool save(QWidget& window) const;
    [[noreturn]] void giveUp(QWidget* window, const QString& reason) const;

    QString m_file;
    QTimer m_timer;
    QElapsedTimer m_waiting;
    BoardWatch m_watch;
    bool m_isTaken = false;
};

} // namespace tallyroom::host
