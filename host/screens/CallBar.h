// Where it is said what came of a call.
#pragma once

#include "reports/CallOutcome.h"

#include <QWidget>
#include <memory>

class QShortcut;
namespace Ui {
class CallBar;
}

namespace tallyroom::host {

// Who is called, a remark, and a button for each outcome that is no answer.
class CallBar : public QWidget {
    Q_OBJECT

public:
    explicit CallBar(QWidget* parent = nullptr);
    ~CallBar() override;

    // In this list, while there is somebody to call, a letter is as good as a button: one hand has
    // the phone.
    void listenIn(QWidget& list);

    void setCalled(const QString& name); // "" for nobody
    QString remark() const;
    void clearRemark();

Q_SIGNALS:
    void ended(tallyroom::Contacts::Outcome outcome);

private:
    std::unique_ptr<Ui::CallBar> m_ui;
    QList<QShortcut*> m_keys; // the list's
};

} // namespace tallyroom::host
