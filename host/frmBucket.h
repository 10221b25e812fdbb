// The employee-selection form.
#pragma once

#include "host/BucketModel.h"
#include "host/NamedBuckets.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmBucket;
}

namespace tallyroom::host {

class frmBucket : public QDialog {
    Q_OBJECT

public:
    // Ends accepted when the selection is to be kept; checked() is that selection. What is passed
    // must outlive the form.
    frmBucket(const BucketSelection& selection, NamedBuckets& buckets, const HostData& hostData,
              bool allowSort, QWidget* parent);
    ~frmBucket() override;

    const std::vector<bool>& checked() const { return m_model.checked(); }
    // The bucket that is chosen in the list, if just its members are checked; "" otherwise.
    QString chosenName() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setUpTable(bool allowSort);
    void connectControls();

    void listBuckets(const QString& current);
    QString listedName() const; // "" for everybody
    std::vector<bool> listedMembers() const;
    void chooseListed();
    void saveBucket();
    void removeBucket();
    void setCriteria(const BucketCriteria& criteria);
    BucketCriteria criteria() const;
    QString criteriaText() const;
    QStringList checkedCodes() const;

    void toggleSelectedRows();
    void showFiltered();
    void showCount();

    std::unique_ptr<Ui::frmBucket> m_ui;
    NamedBuckets& m_buckets;
    const HostData& m_data;
    BucketModel m_model;
    BucketFilter m_filter;
};

} // namespace tallyroom::host
