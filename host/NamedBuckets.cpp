#include "host/NamedBuckets.h"

#include "common/RunError.h"
#include "common/TextOrder.h"
#include "store/FormOptionsTable.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <algorithm>

namespace tallyroom::host {

namespace {

const QString window = QStringLiteral("frmBucket");
const QString bucketsKey = QStringLiteral("buckets");
const QString chosenKey = QStringLiteral("chosen");
const QString userKey = QStringLiteral("user");
const QString nameKey = QStringLiteral("name");
const QString codesKey = QStringLiteral("codes");
const QString departmentKey = QStringLiteral("department");
const QString shiftKey = QStringLiteral("shift");
const QString qualificationKey = QStringLiteral("qualification");

QJsonObject toJson(const NamedBucket& bucket) {
    QJsonObject object{{nameKey, bucket.name}};
    if (const auto* codes = std::get_if<QStringList>(&bucket.content)) {
        object.insert(codesKey, QJsonArray::fromStringList(*codes));
        return object;
    }
    const auto& criteria = std::get<BucketCriteria>(bucket.content);
    object.insert(departmentKey, criteria.department);
    object.insert(shiftKey, criteria.shift);
    object.insert(qualificationKey, criteria.qualification);
    return object;
}

NamedBucket fromJson(const QJsonObject& object) {
    NamedBucket bucket{object.value(nameKey).toString(), {}};
    if (object.contains(codesKey)) {
        QStringList codes;
        for (const QJsonValue& code : object.value(codesKey).toArray())
            codes << code.toString();
        bucket.content = codes;
    } else {
        bucket.content = BucketCriteria{object.value(departmentKey).toString(),
                                        object.value(shiftKey).toString(),
                                        object.value(qualificationKey).toString()};
    }
    return bucket;
}

QString toText(const std::vector<NamedBucket>& buckets, const QString& chosen,
               const QString& user) {
    QJsonArray array;
    for (const NamedBucket& bucket : buckets)
        array << toJson(bucket);
    const QJsonObject kept{{bucketsKey, array}, {chosenKey, chosen}, {userKey, user}};
    return QString::fromUtf8(QJsonDocument(kept).toJson(QJsonDocument::Compact));
}

} // namespace

bool BucketCriteria::isEmpty() const {
    return department.isEmpty() && shift.isEmpty() && qualification.isEmpty();
}

bool BucketCriteria::hold(const Employee& employee) const {
    return (department.isEmpty() || employee.department == department) &&
           (shift.isEmpty() || employee.shift == shift) &&
           (qualification.isEmpty() || employee.qualifications.contains(qualification));
}

std::vector<bool> NamedBucket::members(const std::vector<Employee>& employees) const {
    std::vector<bool> result;
    result.reserve(employees.size());
    if (const auto* codes = std::get_if<QStringList>(&content)) {
        const QSet<QString> wanted(codes->begin(), codes->end());
        for (const Employee& employee : employees)
            result.push_back(wanted.contains(employee.code));
    } else {
        for (const Employee& employee : employees)
            result.push_back(std::get<BucketCriteria>(content).hold(employee));
    }
    return result;
}

NamedBuckets::NamedBuckets(const QString& dataFolder, const QString& user)
    : m_dataFolder(dataFolder), m_user(user) {
    if (!canKeep())
        return;
    const QJsonObject kept =
        QJsonDocument::fromJson(FormOptionsTable::read(dataFolder, user, window).toUtf8()).object();
    for (const QJsonValue& bucket : kept.value(bucketsKey).toArray())
        m_buckets.push_back(fromJson(bucket.toObject()));
    if (TextOrder::isSame(kept.value(userKey).toString(), user)) // else those of the master user
        m_chosen = kept.value(chosenKey).toString();
}

const NamedBucket* NamedBuckets::find(const QString& name) const {
    const auto found = std::ranges::find_if(
        m_buckets, [&](const NamedBucket& bucket) { return TextOrder::isSame(bucket.name, name); });
    return found != m_buckets.end() ? &*found : nullptr;
}

void NamedBuckets::save(const NamedBucket& bucket) {
    std::vector<NamedBucket> buckets = m_buckets;
    std::erase_if(buckets, [&](const NamedBucket& other) {
        return TextOrder::isSame(other.name, bucket.name);
    });
    const auto place = std::ranges::find_if(buckets, [&](const NamedBucket& other) {
        return TextOrder::compare(QStringView(bucket.name), other.name) < 0;
    });
    buckets.insert(place, bucket);
    keep(std::move(buckets), m_chosen);
}

void NamedBuckets::remove(const QString& name) {
    std::vector<NamedBucket> buckets = m_buckets;
    std::erase_if(buckets,
                  [&](const NamedBucket& other) { return TextOrder::isSame(other.name, name); });
    keep(std::move(buckets), m_chosen);
}

void NamedBuckets::choose(const QString& name) {
    if (canKeep() && name != m_chosen)
        keep(m_buckets, name);
}

// Writing what a window remembers is silent; what comes back tells whether it was kept.
void NamedBuckets::keep(std::vector<NamedBucket> buckets, const QString& chosen) {
    const QString text = toText(buckets, chosen, m_user);
    FormOptionsTable::write(m_dataFolder, m_user, window, text);
    if (FormOptionsTable::read(m_dataFolder, m_user, window) != text)
        throw RunError(ErrorNumber::readOnly,
                       QStringLiteral("The buckets could not be kept in the data folder."),
                       QStringLiteral("Brightclock"));
    m_buckets = std::move(buckets);
    m_chosen = chosen;
}

} // namespace tallyroom::host
