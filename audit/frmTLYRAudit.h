// Chooses which recorded answers to look at.
#pragma once

#include "audit/AuditSelection.h"
#include "common/HostContext.h"
#include "common/ui/DateBinding.h"
#include "common/ui/FormWindow.h"
#include "common/ui/WindowMemory.h"

#include <QLineEdit>
#include <functional>
#include <memory>

namespace Ui {
class frmTLYRAudit;
}

namespace tallyroom {

class frmTLYRAudit : public FormWindow {
    Q_OBJECT

public:
    // `breakOut` says whether time and a half and double time are shown apart.
    frmTLYRAudit(const HostContext& context, std::function<bool()> breakOut,
                 QWidget* parent = nullptr);
    ~frmTLYRAudit() override;

    // The list of employees for the host to fill. Loads the window.
    ObjectRef employees();

    // Enables "Query" exactly when the list of employees is not empty; for the owner of that list.
    void EnableQuery();

protected:
    void Form_Load() override;
    void Form_QueryUnload() override;

private:
    void Check1_Click(bool checked);
    void Check2_Click(bool checked);
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void SSCommand5_Click();

    void connectControls();
    WindowMemory::Remembered remembered();
    void listUsers();
    bool checkDates();
    bool checkDate(QLineEdit* box);
    std::vector<const AnswerKind*> chosenAnswers() const; // of the broken-out view
    bool kindIsChosen() const;
    void refuse(const QString& message);
    AuditSelection selection() const;

    const HostContext& m_context;
    std::function<bool()> m_breakOut;
    std::unique_ptr<Ui::frmTLYRAudit> m_ui;
    std::unique_ptr<DateBinding> m_dates; // while the window is loaded
};

} // namespace tallyroom
