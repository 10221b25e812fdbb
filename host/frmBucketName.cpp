#include "host/frmBucketName.h"

#include "common/look/WindowFit.h"
#include "ui_frmBucketName.h"

#include <QPushButton>

namespace tallyroom::host {

frmBucketName::frmBucketName(const NamedBuckets& buckets, BucketChoice choice, QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::frmBucketName>()), m_buckets(buckets),
      m_choice(std::move(choice)) {
    m_ui->setupUi(this);
    WindowFit::grow(*this);
    const bool hasCriteria = !m_choice.criteria.isEmpty();
    m_ui->KeepChosen->setText(QStringLiteral("These %1 &employees").arg(m_choice.codes.size()));
    m_ui->KeepCriteria->setText(
        hasCriteria ? QStringLiteral("&Whoever is in %1, now and later").arg(m_choice.criteriaText)
                    : QStringLiteral("&Whoever meets the criteria (none are set)"));
    m_ui->KeepCriteria->setEnabled(hasCriteria);
    (hasCriteria ? m_ui->KeepCriteria : m_ui->KeepChosen)->setChecked(true);
    m_ui->BucketName->setText(m_choice.criteriaText);
    m_ui->BucketName->selectAll();
    connect(m_ui->BucketName, &QLineEdit::textChanged, this, &frmBucketName::showWhatSavingDoes);
    connect(m_ui->Buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_ui->Buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    showWhatSavingDoes();
    WindowFit::fit(*this);
}

frmBucketName::~frmBucketName() = default;

NamedBucket frmBucketName::bucket() const {
    NamedBucket result{m_ui->BucketName->text().trimmed(), m_choice.codes};
    if (m_ui->KeepCriteria->isChecked())
        result.content = m_choice.criteria;
    return result;
}

void frmBucketName::showWhatSavingDoes() {
    const QString name = m_ui->BucketName->text().trimmed();
    const NamedBucket* known = m_buckets.find(name);
    m_ui->Buttons->button(QDialogButtonBox::Save)->setEnabled(!name.isEmpty());
    m_ui->Replaces->setText(known ? QStringLiteral("Replaces the bucket \"%1\".").arg(known->name)
                                  : QStringLiteral(" "));
}

} // namespace tallyroom::host
