// An ordered list of the dialogs that a command must show, and what is done in each.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QTimer>
#include <deque>
#include <functional>
#include <vector>

namespace tallyroom {

// Watches the active modal window. Each new one must be the next of the script; it is acted on from
// the event loop, so that an action may open the next dialog. An unexpected dialog, one that did
// not appear by finish(), and one that stays open after its action each fail the test by name.
class DialogScript : public QObject {
    Q_OBJECT

public:
    using Action = std::function<void(QWidget&)>;

    DialogScript();
    ~DialogScript() override;

    // A message box with this text, and the button to press.
    void expectBox(const QString& text, QMessageBox::StandardButton press = QMessageBox::Ok,
                   QMessageBox::Icon icon = QMessageBox::NoIcon,
                   const QString& title = QStringLiteral("Tallyroom"));
    // The report of a run-time error.
    void expectReport(int number, const QString& description);
    // A window by its object name. The action has to close it in the end.
    void expectWindow(QStringView name, Action action);

    void finish();

private:
    struct Step {
        QString name;
        Action action;
    };
    void poll();
    void start(QWidget& window);
    void closeStuck(QWidget& window);

    QTimer m_timer;
    QElapsedTimer m_sinceProgress;
    std::deque<Step> m_steps;
    std::vector<QPointer<QWidget>> m_started;
};

// Finds a child by object name; fails the test when there is none.
template<class Type>
Type& child(QWidget& window, QStringView name);

// Clicks a button of a window as a user does; the button must be visible and enabled.
void clickButton(QWidget& window, QStringView name);
// Chooses a menu entry; it must be visible and enabled.
void trigger(QWidget& window, QStringView action);

template<class Type>
Type& child(QWidget& window, QStringView name) {
    auto* found = window.findChild<Type*>(name.toString());
    if (!found)
        qFatal("no %s in %s", qPrintable(name.toString()), qPrintable(window.objectName()));
    return *found;
}

} // namespace tallyroom
