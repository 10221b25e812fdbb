// A walk through every window of the board and of the host.
#pragma once

#include "host/frmStart.h"
#include "tests/system/SystemFixture.h"

#include <QApplication>

namespace tallyroom {

// Not a test of its own: a test makes one as soon as there is an application, and says what is to
// be looked at in each window.
class Tour : public SystemTest {
public:
    using Look = std::function<void(QWidget& window)>;

    explicit Tour(Look look) : SystemTest(false), m_look(std::move(look)) {}
    void TestBody() override {}

    void walk() {
        host::frmStart start;
        start.show();
        lookAt(start);
        start.hide();
        openBoard(QStringLiteral("master"), [this](QWidget& board) {
            lookAt(board);
            visit(board, u"mnuAssoc", u"frmTLYRAssoc");
            trigger(board, u"mnuBreakOut");
            lookAt(board);
            visit(board, u"mnuAssoc", u"frmTLYRAssoc2");
            visitTheRest(board);
            for (QWidget* window : QApplication::topLevelWidgets()) {
                if (window->objectName() == QStringLiteral("frmMenu")) {
                    window->show();
                    lookAt(*window);
                    lookAtHelp(*window);
                }
            }
        });
    }

private:
    void visitTheRest(QWidget& board) {
        visit(board, u"mnuDefinePeriod", u"frmTLYRPeriod",
              [this](QWidget& window) { press(window, u"SSCommand2", u"frmDatePicker"); });
        visit(board, u"mnuBuckets", u"frmBucket",
              [this](QWidget& window) { press(window, u"SaveBucket", u"frmBucketName"); });
        visit(board, u"MnuOrder_0", u"frmTLYROrderList",
              [this](QWidget& window) { press(window, u"Command1", u"frmTLYROrders"); });
        visit(board, u"mnuAudit", u"frmTLYRAudit", [this](QWidget& window) {
            clickButton(window, u"Check1");
            clickButton(window, u"Check2");
            lookAt(window);
            clickButton(window, u"Check1");
            clickButton(window, u"Check2");
            clickButton(window, u"Command2");
            press(window, u"Command4", u"frmTLYRAuditDetails");
        });
        visit(board, u"mnuUndo", u"frmUndo");
        visit(board, u"mnuETA", u"frmTransactions");
        visit(board, u"mnuDSched", u"frmSchedule");
        visit(board, u"mnuOTAnalysis", u"frmOvertime");
        script.expectBox(
            QStringLiteral("Are you sure that you want to print the Canvassing Details?"),
            QMessageBox::Yes, QMessageBox::Question);
        press(board, u"Command2", u"ReportPreview");
    }

    void lookAtHelp(QWidget& menu) {
        visit(menu, u"mnuHelpAbout", u"frmAbout");
        trigger(menu, u"mnuHelpContents");
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QStringLiteral("frmHelp")) {
                lookAt(*window);
                window->close();
            }
        }
    }

    void lookAt(QWidget& window) {
        QCoreApplication::processEvents();
        m_look(window);
    }

    void expect(QStringView name, const std::function<void(QWidget&)>& use) {
        script.expectWindow(name, [this, use](QWidget& window) {
            lookAt(window);
            if (use)
                use(window);
            static_cast<QDialog&>(window).reject();
        });
    }
    void visit(QWidget& board, QStringView entry, QStringView name,
               const std::function<void(QWidget&)>& use = {}) {
        expect(name, use);
        trigger(board, entry);
    }
    void press(QWidget& window, QStringView button, QStringView name) {
        expect(name, {});
        clickButton(window, button);
    }

    Look m_look;
};

} // namespace tallyroom
