// Edits the totalling period.
#pragma once

#include "common/HostContext.h"
#include "common/ui/DateBinding.h"
#include "common/ui/FormWindow.h"
#include "setup/TotallingPeriod.h"

#include <memory>

namespace Ui {
class frmTLYRPeriod;
}

namespace tallyroom {

class frmTLYRPeriod : public FormWindow {
    Q_OBJECT

public:
    explicit frmTLYRPeriod(const HostContext& context, QWidget* parent = nullptr);
    ~frmTLYRPeriod() override;

protected:
    void Form_Load() override;
    void Form_QueryUnload() override;

private:
    void SSCheck1_Click(bool checked);
    void Command1_Click();
    void Command2_Click();
    void showPeriod(const std::optional<TotallingPeriod>& period);
    bool checkDate(QLineEdit* box);

    const HostContext& m_context;
    std::unique_ptr<Ui::frmTLYRPeriod> m_ui;
    std::unique_ptr<DateBinding> m_dates; // while the window is loaded
};

} // namespace tallyroom
