// Associates absent codes with accepted and declined overtime, time and a half and double
// time apart.
#pragma once

#include "common/HostContext.h"
#include "common/ui/FormWindow.h"

#include <memory>

namespace Ui {
class frmTLYRAssoc2;
}

namespace tallyroom {

class frmTLYRAssoc2 : public FormWindow {
    Q_OBJECT

public:
    explicit frmTLYRAssoc2(const HostContext& context, QWidget* parent = nullptr);
    ~frmTLYRAssoc2() override;

protected:
    void Form_Load() override;

private:
    void Command1_Click();
    void Command2_Click();

    const HostContext& m_context;
    std::unique_ptr<Ui::frmTLYRAssoc2> m_ui;
};

} // namespace tallyroom
