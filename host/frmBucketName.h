// Asks what a choice of employees is called, and what of it is kept.
#pragma once

#include "host/NamedBuckets.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmBucketName;
}

namespace tallyroom::host {

// What the bucket form has at the moment.
struct BucketChoice {
    QStringList codes;
    BucketCriteria criteria;
    QString criteriaText; // "Machining, DAY"
};

class frmBucketName : public QDialog {
    Q_OBJECT

public:
    // `buckets` must outlive the form.
    frmBucketName(const NamedBuckets& buckets, BucketChoice choice, QWidget* parent);
    ~frmBucketName() override;

    NamedBucket bucket() const; // once the form has ended accepted

private:
    void showWhatSavingDoes();

    std::unique_ptr<Ui::frmBucketName> m_ui;
    const NamedBuckets& m_buckets;
    BucketChoice m_choice;
};

} // namespace tallyroom::host
