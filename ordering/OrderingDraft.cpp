#include "ordering/OrderingDraft.h"

#include "common/Variant.h"
#include "ordering/SettingsText.h"

#include <QStringList>
#include <algorithm>

namespace tallyroom {

namespace {

constexpr const char16_t* elementNames[] = {u"Employee Code",
                                            u"Employee Name",
                                            u"Home Department",
                                            u"Position",
                                            u"Seniority Date",
                                            u"Seniority Number",
                                            u"1.5",
                                            u"2.0",
                                            u"Worked Overtime",
                                            u"Accepted 1.5",
                                            u"Accepted 2.0",
                                            u"Declined 1.5",
                                            u"Declined 2.0",
                                            u"Accepted Overtime",
                                            u"Declined Overtime",
                                            u"Total Overtime"};

const QString stateSuffix = QStringLiteral("_State");
const QString orderSuffix = QStringLiteral("_Order");
const QString directionSuffix = QStringLiteral("_Direction");

QString truthText(bool value) {
    return Variant(value).toText();
}

bool readsAsTrue(const QString& text) {
    const bool isTrue = text.compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
    return isTrue || parseNumber(text).value_or(0) != 0;
}

} // namespace

OrderingDraft::OrderingDraft() {
    for (const char16_t* element : elementNames) {
        const QString name = QString::fromUtf16(element);
        set(name + stateSuffix, truthText(false));
        set(name + orderSuffix, QString::number(count()));
        set(name + directionSuffix, QStringLiteral("0"));
        m_elements.push_back({name});
    }
}

void OrderingDraft::load(const QString& stored) {
    std::erase_if(m_elements, [&](const Element& element) {
        return !GetTagValue(stored, element.name + stateSuffix).isEmpty();
    });
    for (const QString& name : indexedElements(stored))
        append(name, stored);
}

void OrderingDraft::append(const QString& name, const QString& stored) {
    const bool takesPart =
        readsAsTrue(GetTagValue(stored, name + QStringLiteral("_state"), QStringLiteral("false")));
    m_elements.push_back({name, takesPart});
    if (takesPart)
        set(name + stateSuffix, truthText(true));
    for (const QString& suffix : {QStringLiteral("_order"), QStringLiteral("_direction")})
        set(name + suffix, GetTagValue(stored, name + suffix));
}

OrderingDraft::Direction OrderingDraft::direction(int position) const {
    const QString code = GetTagValue(m_details, name(position) + directionSuffix);
    return parseNumber(code).value_or(0) == 0 ? Ascending : Descending;
}

bool OrderingDraft::anyTakesPart() const {
    return std::any_of(m_elements.begin(), m_elements.end(),
                       [](const Element& element) { return element.takesPart; });
}

void OrderingDraft::setTakesPart(int position, bool takesPart) {
    at(position).takesPart = takesPart;
    set(name(position) + stateSuffix, truthText(takesPart));
}

void OrderingDraft::setDirection(int position, Direction direction) {
    set(name(position) + directionSuffix, QString::number(direction));
}

void OrderingDraft::exchange(int position, int other) {
    std::swap(at(position), at(other));
    for (int n = 0; n < count(); ++n)
        set(name(n) + orderSuffix, QString::number(n));
}

QString OrderingDraft::summary() const {
    QStringList parts;
    for (int n = 0; n < count(); ++n) {
        if (takesPart(n))
            parts.append(name(n) + (direction(n) == Ascending ? QStringLiteral(" (Asc)")
                                                              : QStringLiteral(" (Desc)")));
    }
    return parts.join(QStringLiteral(" / "));
}

QString OrderingDraft::detailsToStore() {
    for (int n = 0; n < count(); ++n)
        set(indexKey(n), name(n));
    return m_details;
}

void OrderingDraft::set(const QString& key, const QString& value) {
    m_details = SetTagValue(m_details, key, value);
}

} // namespace tallyroom
