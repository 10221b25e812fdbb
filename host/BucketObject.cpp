#include "host/BucketObject.h"

#include "host/HostMessages.h"
#include "host/frmBucket.h"

#include <QApplication>

namespace tallyroom::host {

BucketObject::BucketObject(BucketSelection& selection, NamedBuckets& buckets,
                           const HostData& hostData)
    : m_selection(selection), m_buckets(buckets), m_data(hostData) {
    addMethod(QStringLiteral("FillSpot"), [this](const Arguments& args) {
        m_target = argument(args, 0).toObject();
        m_selection.fill(m_target);
        return Variant();
    });
    addMethod(QStringLiteral("fillalist"), [this](const Arguments& args) {
        m_selection.fill(argument(args, 0).toObject());
        return Variant();
    });
    addMethod(QStringLiteral("Show"), [this](const Arguments&) {
        Show();
        return Variant();
    });
    addProperty(
        QStringLiteral("AllowSort"), [this](const Arguments&) { return Variant(m_allowSort); },
        [this](const Arguments& args) {
            m_allowSort = argument(args, 0).toBoolean();
            return Variant();
        });
    addProperty(QStringLiteral("employeefilter"),
                [this](const Arguments&) { return Variant(m_selection.employeeFilter()); });
    addProperty(QStringLiteral("BucketName"),
                [this](const Arguments&) { return Variant(m_selection.name()); });
}

void BucketObject::Show() {
    QWidget* parent = QApplication::activeWindow();
    frmBucket form(m_selection, m_buckets, m_data, m_allowSort, parent);
    const bool isKept = form.exec() == QDialog::Accepted;
    const ObjectRef target = std::exchange(m_target, {});
    if (!isKept)
        return;
    m_selection.setSelected(form.checked(), form.chosenName());
    if (target.isSet())
        m_selection.fill(target);
    runCommand(parent, [this, &form] { m_buckets.choose(form.chosenName()); });
}

} // namespace tallyroom::host
