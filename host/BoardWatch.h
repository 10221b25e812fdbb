// Notices the board, a window that belongs to the add-in.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

namespace tallyroom::host {

class BoardWatch : public QObject {
    Q_OBJECT

public:
    BoardWatch(); // needs the application; watches as long as it lives

    bool wasSeen() const { return m_wasSeen; }
    QWidget* board() const { return m_board; } // painted at least once; null while there is none

    static bool isBoard(const QObject& object);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QPointer<QWidget> m_board;
    bool m_wasSeen = false;
};

} // namespace tallyroom::host
