#include "common/ui/Messages.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace tallyroom;

namespace {

TEST(Messages, EnterPressesTheFirstButtonAndLettersChooseTheOthers) {
    const struct {
        QMessageBox::StandardButtons buttons;
        QMessageBox::StandardButton pressed;
    } cases[] = {
        {QMessageBox::Ok, QMessageBox::Ok},
        {QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes},
        {QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore, QMessageBox::Abort}};
    for (const auto& c : cases) {
        QTimer::singleShot(0, [&c] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            for (const auto* button : box->buttons())
                EXPECT_TRUE(button->text().contains(u'&') || c.buttons == QMessageBox::Ok)
                    << button->text().toStdString();
            QTest::keyClick(box, Qt::Key_Enter);
            if (box->isVisible())
                box->done(QMessageBox::NoButton);
        });
        EXPECT_EQ(Messages::show(nullptr, QString(), QMessageBox::Information, c.buttons),
                  c.pressed);
    }
}

} // namespace
