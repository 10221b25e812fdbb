#include "tests/support/DialogScript.h"

#include "tests/support/Printing.h"

#include <QAction>
#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <algorithm>

namespace tallyroom {

namespace {

constexpr int stuckAfterMs = 20000;

QString describe(const QWidget& window) {
    const auto* box = qobject_cast<const QMessageBox*>(&window);
    return box ? QStringLiteral("box: ") + box->text() : window.objectName();
}

void pressButton(QWidget& window, QMessageBox::StandardButton press) {
    auto* box = qobject_cast<QMessageBox*>(&window);
    QAbstractButton* button = box ? box->button(press) : nullptr;
    ASSERT_TRUE(button) << describe(window).toStdString() << " lacks the button";
    button->click();
}

} // namespace

DialogScript::DialogScript() {
    connect(&m_timer, &QTimer::timeout, this, &DialogScript::poll);
    m_timer.start(2);
    m_sinceProgress.start();
}

DialogScript::~DialogScript() {
    finish();
}

void DialogScript::expectBox(const QString& text, QMessageBox::StandardButton press,
                             QMessageBox::Icon icon, const QString& title) {
    m_steps.push_back({QStringLiteral("box: ") + text, [=](QWidget& window) {
                           auto* box = qobject_cast<QMessageBox*>(&window);
                           EXPECT_EQ(box->icon(), icon) << text.toStdString();
                           EXPECT_EQ(box->windowTitle(), title);
                           EXPECT_FALSE(QApplication::overrideCursor()) << text.toStdString();
                           pressButton(window, press);
                       }});
}

void DialogScript::expectReport(int number, const QString& description) {
    expectBox(
        QStringLiteral("Run-time error '%1':\n\n%2").arg(QString::number(number), description),
        QMessageBox::Ok, QMessageBox::Critical);
}

void DialogScript::expectWindow(QStringView name, Action action) {
    m_steps.push_back({name.toString(), std::move(action)});
}

void DialogScript::finish() {
    m_timer.stop();
    for (const Step& step : m_steps)
        ADD_FAILURE() << "did not appear: " << step.name.toStdString();
    m_steps.clear();
}

void DialogScript::poll() {
    QWidget* window = QApplication::activeModalWidget();
    if (!window || !window->isVisible())
        return;
    const auto known = std::find(m_started.begin(), m_started.end(), window);
    if (known == m_started.end())
        start(*window);
    else if (m_sinceProgress.elapsed() > stuckAfterMs)
        closeStuck(*window);
}

void DialogScript::start(QWidget& window) {
    m_started.emplace_back(&window);
    m_sinceProgress.restart();
    if (m_steps.empty() || m_steps.front().name != describe(window)) {
        ADD_FAILURE() << "unexpected: " << describe(window).toStdString() << "\n  instead of: "
                      << (m_steps.empty() ? QString() : m_steps.front().name).toStdString();
        closeStuck(window);
        return;
    }
    const Action action = m_steps.front().action;
    m_steps.pop_front();
    const QPointer<QWidget> target = &window;
    QMetaObject::invokeMethod(
        &window,
        [this, action, target] {
            if (target && QTest::qWaitForWindowActive(target, stuckAfterMs) && target)
                action(*target);
            m_sinceProgress.restart();
        },
        Qt::QueuedConnection);
}

void DialogScript::closeStuck(QWidget& window) {
    if (m_sinceProgress.elapsed() > stuckAfterMs)
        ADD_FAILURE() << "stays open: " << describe(window).toStdString();
    m_sinceProgress.restart();
    if (auto* box = qobject_cast<QMessageBox*>(&window))
        QTimer::singleShot(0, box, [box] { box->buttons().constFirst()->click(); });
    else if (auto* dialog = qobject_cast<QDialog*>(&window))
        QTimer::singleShot(0, dialog, &QDialog::reject);
    else if (auto* exit = window.findChild<QPushButton*>(QStringLiteral("Command1")))
        QTimer::singleShot(0, exit, &QPushButton::click);
}

void clickButton(QWidget& window, QStringView name) {
    auto& button = child<QAbstractButton>(window, name);
    EXPECT_TRUE(button.isVisible()) << button.objectName().toStdString();
    EXPECT_TRUE(button.isEnabled()) << button.objectName().toStdString();
    button.click();
}

void trigger(QWidget& window, QStringView action) {
    auto& entry = child<QAction>(window, action);
    EXPECT_TRUE(entry.isVisible()) << entry.objectName().toStdString();
    EXPECT_TRUE(entry.isEnabled()) << entry.objectName().toStdString();
    entry.trigger();
}

} // namespace tallyroom
