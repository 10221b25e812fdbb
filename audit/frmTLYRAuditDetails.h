// Lists the recorded answers that were asked for.
#pragma once

#include "audit/AuditSelection.h"
#include "common/HostContext.h"
#include "common/ui/FormWindow.h"

#include <QMenu>
#include <functional>
#include <memory>

namespace Ui {
class frmTLYRAuditDetails;
}

namespace tallyroom {

class frmTLYRAuditDetails : public FormWindow {
    Q_OBJECT

public:
    // `selection` gives the browser's choices; it is asked at every fill.
    frmTLYRAuditDetails(const HostContext& context, std::function<bool()> breakOut,
                        std::function<AuditSelection()> selection, QWidget* parent = nullptr);
    ~frmTLYRAuditDetails() override;

protected:
    void Form_Load() override;
    void Form_QueryUnload() override;

private:
    void Command1_Click();
    void Command2_Click();
    void mnuDelete_Click();

    void fillGrid();

    const HostContext& m_context;
    std::function<bool()> m_breakOut;
    std::function<AuditSelection()> m_selection;
    std::unique_ptr<Ui::frmTLYRAuditDetails> m_ui;
    QMenu* m_popup; // mnuPop; no gesture opens it
};

} // namespace tallyroom
