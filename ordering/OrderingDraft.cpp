#include "ordering/OrderingDraft.h"

#include "common/BoardColumns.h"
#include "common/Variant.h"

#include <algorithm>

namespace tallyroom {

namespace {

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
    std::vector<Setting> settings;
    for (const QString& name : BoardColumns::elements()) {
        settings.push_back({name + stateSuffix, truthText(false)});
        settings.push_back({name + orderSuffix, QString::number(count())});
        settings.push_back({name + directionSuffix, QStringLiteral("0")});
        m_elements.push_back({name});
    }
    m_details.set(settings);
}

void OrderingDraft::load(const QString& stored) {
    const SettingsText details(stored);
    std::erase_if(m_elements, [&](const Element& element) {
        return !details.value(element.name + stateSuffix).isEmpty();
    });
    std::vector<Setting> settings;
    for (const QString& name : indexedElements(details)) {
        const QString state =
            details.value(name + QStringLiteral("_state"), QStringLiteral("false"));
        m_elements.push_back({name, readsAsTrue(state)});
        if (m_elements.back().takesPart)
            settings.push_back({name + stateSuffix, truthText(true)});
        for (const QString& suffix : {QStringLiteral("_order"), QStringLiteral("_direction")})
            settings.push_back({name + suffix, details.value(name + suffix)});
    }
    m_details.set(settings);
}

OrderingDraft::Direction OrderingDraft::direction(int position) const {
    const QString code = m_details.value(name(position) + directionSuffix);
    return parseNumber(code).value_or(0) == 0 ? Ascending : Descending;
}

bool OrderingDraft::anyTakesPart() const {
    return std::any_of(m_elements.begin(), m_elements.end(),
                       [](const Element& element) { return element.takesPart; });
}

void OrderingDraft::setTakesPart(int position, bool takesPart) {
    at(position).takesPart = takesPart;
    m_details.set({{name(position) + stateSuffix, truthText(takesPart)}});
}

void OrderingDraft::setDirection(int position, Direction direction) {
    m_details.set({{name(position) + directionSuffix, QString::number(direction)}});
}

void OrderingDraft::exchange(int position, int other) {
    Q_ASSERT(std::abs(position - other) == 1);
    std::swap(at(position), at(other));
    std::vector<Setting> settings;
    for (int n = 0; n < count(); ++n)
        settings.push_back({name(n) + orderSuffix, QString::number(n)});
    m_details.set(settings);
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
    std::vector<Setting> settings;
    for (int n = 0; n < count(); ++n)
        settings.push_back({indexKey(n), name(n)});
    m_details.set(settings);
    return m_details.text();
}

} // namespace tallyroom
