// Associates absent codes with accepted and declined overtime.
#pragma once

#include "common/HostContext.h"
#include "common/ui/FormWindow.h"

#include <memory>

namespace Ui {
class frmTLYRAssoc;
}

namespace tallyroom {

class frmTLYRAssoc : public FormWindow {
    Q_OBJECT

public:
    explicit frmTLYRAssoc(const HostContext& context, QWidget* parent = nullptr);
    ~frmTLYRAssoc() override;

protected:
    void Form_Load() override;
    void Form_Activate() override;

private:
    void Command1_Click();
    void Command2_Click();

    const HostContext& m_context;
    std::unique_ptr<Ui::frmTLYRAssoc> m_ui;
    bool m_noCodes = false; // the window is to close at once
};

} // namespace tallyroom
