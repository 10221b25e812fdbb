// Creates or edits one user-defined ordering.
#pragma once

#include "common/HostContext.h"
#include "common/ui/FormWindow.h"
#include "ordering/OrderingDraft.h"

#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <memory>

namespace Ui {
class frmTLYROrders;
}

namespace tallyroom {

class frmTLYROrders : public FormWindow {
    Q_OBJECT

public:
    explicit frmTLYROrders(const HostContext& context, QWidget* parent = nullptr);
    ~frmTLYROrders() override;

    // Makes the window edit the stored ordering of this description instead of a new one. Says so
    // when there is none.
    void Load(const QString& Description);

protected:
    void Form_Load() override;

private:
    void List1_Click();
    void List1_ItemCheck(const QListWidgetItem* item);
    void Combo1_Click();
    void SSCommand1_Click();
    void SSCommand2_Click();
    void Command1_Click();
    void Command2_Click();

    void connectControls();
    void prepareMove(QPushButton* button, QStyle::StandardPixmap arrow, Qt::Key key,
                     const QString& name);
    void fillList();
    void showElement(int position);
    void move(int from, int to);
    void showSummary();
    void refuse(const QString& message, bool description);

    const HostContext& m_context;
    std::unique_ptr<Ui::frmTLYROrders> m_ui;
    OrderingDraft m_draft;
    bool m_showing = false; // the list is being written, not used
};

} // namespace tallyroom
