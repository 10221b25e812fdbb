#include "host/screens/CallBar.h"

#include "host/screens/FlowLayout.h"
#include "ui_CallBar.h"

#include <QShortcut>

namespace tallyroom::host {

CallBar::CallBar(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::CallBar>()) {
    using enum Contacts::Outcome;
    m_ui->setupUi(this);
    new FlowLayout(this);
    const std::pair<QPushButton*, Contacts::Outcome> outcomes[] = {
        {m_ui->NoAnswer, NoAnswer},
        {m_ui->LeftMessage, LeftMessage},
        {m_ui->NotAvailable, NotAvailable}};
    for (const auto& [button, outcome] : outcomes)
        connect(button, &QPushButton::clicked, this,
                [this, outcome = outcome] { Q_EMIT ended(outcome); });
}

CallBar::~CallBar() = default;

void CallBar::listenIn(QWidget& list) {
    const std::pair<QPushButton*, Qt::Key> letters[] = {{m_ui->NoAnswer, Qt::Key_N},
                                                        {m_ui->LeftMessage, Qt::Key_M},
                                                        {m_ui->NotAvailable, Qt::Key_V}};
    for (const auto& [button, letter] : letters) {
        auto* key =
            new QShortcut(QKeySequence(letter), &list, nullptr, nullptr, Qt::WidgetShortcut);
        connect(key, &QShortcut::activated, button, &QPushButton::click);
        m_keys << key;
    }
}

void CallBar::setCalled(const QString& name) {
    m_ui->Called->setText(name.isEmpty() ? QStringLiteral("Nobody to call")
                                         : QStringLiteral("Call to %1:").arg(name));
    setEnabled(!name.isEmpty());
    for (QShortcut* key : m_keys) // else they would find names
        key->setEnabled(isEnabled());
}

QString CallBar::remark() const {
    return m_ui->Remark->text();
}

void CallBar::clearRemark() {
    m_ui->Remark->clear();
}

} // namespace tallyroom::host
