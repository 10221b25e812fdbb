// Lists the user-defined orderings.
#pragma once

#include "common/HostContext.h"
#include "common/ui/FormWindow.h"

#include <memory>

namespace Ui {
class frmTLYROrderList;
}

namespace tallyroom {

class frmTLYROrderList : public FormWindow {
    Q_OBJECT

public:
    explicit frmTLYROrderList(const HostContext& context, QWidget* parent = nullptr);
    ~frmTLYROrderList() override;

protected:
    void Form_Load() override;

private:
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    void Command4_Click();
    void List1_DblClick();

    void fillList();
    QString selected() const; // null without a selection

    const HostContext& m_context;
    std::unique_ptr<Ui::frmTLYROrderList> m_ui;
};

} // namespace tallyroom
