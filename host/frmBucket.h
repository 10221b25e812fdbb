// The employee-selection form, and the object through which add-ins reach it.
#pragma once

#include "host/BucketModel.h"

#include <QDialog>
#include <memory>

namespace Ui {
class frmBucket;
}

namespace tallyroom::host {

class frmBucket : public QDialog {
    Q_OBJECT

public:
    // Ends accepted when the selection is to be kept; checked() is that selection. Selection and
    // data must outlive the form.
    frmBucket(const BucketSelection& selection, const HostData& hostData, bool allowSort,
              QWidget* parent);
    ~frmBucket() override;

    const std::vector<bool>& checked() const { return m_model.checked(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setUpTable(bool allowSort);
    void setUpChoices(const HostData& hostData);
    void connectControls();
    void toggleSelectedRows();
    void showFiltered();
    void showCount();

    std::unique_ptr<Ui::frmBucket> m_ui;
    BucketModel m_model;
    BucketFilter m_filter;
};

// Members: `FillSpot`(list) fills the list and remembers it until the next `Show`; `fillalist`
// (list) only fills; `Show`([modal]) opens the form and, when it ends by OK, fills the remembered
// list anew; properties `AllowSort` and `employeefilter`.
class BucketObject : public LateBoundObject {
public:
    // Both must outlive the object.
    BucketObject(BucketSelection& selection, const HostData& hostData);

    void forgetTarget() { m_target = {}; }

private:
    void Show();

    BucketSelection& m_selection;
    const HostData& m_data;
    ObjectRef m_target; // the list of the add-in that awaits the next choice
    bool m_allowSort = true;
};

} // namespace tallyroom::host
