// Takes back recorded answers.
#pragma once

#include "common/HostContext.h"
#include "common/ui/FormWindow.h"

#include <functional>
#include <memory>

namespace Ui {
class frmUndo;
}

namespace tallyroom {

class frmUndo : public FormWindow {
    Q_OBJECT

public:
    // `breakOut` says whether time and a half and double time are shown apart.
    frmUndo(const HostContext& context, std::function<bool()> breakOut, QWidget* parent = nullptr);
    ~frmUndo() override;

    void Update(); // fills the list, in which nothing is selected then

protected:
    void Form_Load() override;
    void Form_QueryUnload() override;

private:
    void showEmployee();
    void Command1_Click();
    void Command2_Click();

    const HostContext& m_context;
    std::function<bool()> m_breakOut;
    std::unique_ptr<Ui::frmUndo> m_ui;
};

} // namespace tallyroom
