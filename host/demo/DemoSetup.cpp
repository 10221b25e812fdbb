#include "host/demo/DemoSetup.h"

#include "common/AnswerKind.h"
#include "common/BoardColumns.h"
#include "host/demo/DemoPeople.h"
#include "host/demo/TableLoader.h"

#include <QHash>

namespace tallyroom::host {

namespace {

// The period under way: what is offered for the coming days counts in it.
constexpr int pastDays = 14;
constexpr int comingDays = 7;

struct Key {
    const char* element;
    bool descending = false;
};

struct Ordering {
    const char* description;
    std::vector<Key> keys; // most significant first
};

// The elements in rank order: the keys, then the others as the editor lists them.
QStringList ranked(const Ordering& ordering) {
    QStringList order;
    for (const Key& key : ordering.keys)
        order << QString::fromLatin1(key.element);
    for (const QString& element : BoardColumns::elements()) {
        if (!order.contains(element))
            order << element;
    }
    return order;
}

// The settings text that the add-in's ordering editor writes.
QString detailsText(const Ordering& ordering) {
    QHash<QString, bool> descending;
    for (const Key& key : ordering.keys)
        descending.insert(QString::fromLatin1(key.element), key.descending);
    const QStringList order = ranked(ordering);
    QStringList pairs;
    for (const QString& element : BoardColumns::elements()) {
        pairs << element + QStringLiteral("_State=") +
                     (descending.contains(element) ? QStringLiteral("True")
                                                   : QStringLiteral("False"))
              << QStringLiteral("%1_Order=%2").arg(element).arg(order.indexOf(element))
              << QStringLiteral("%1_Direction=%2")
                     .arg(element)
                     .arg(descending.value(element) ? 1 : 0);
    }
    for (qsizetype rank = 0; rank < order.size(); ++rank)
        pairs << QStringLiteral("Index%1=%2").arg(rank).arg(order[rank]);
    return pairs.join(QLatin1Char('|'));
}

const std::vector<Ordering>& orderings() {
    static const std::vector<Ordering> all{
        {"Department, then seniority", {{"Home Department"}, {"Seniority Date"}}},
        {"Least total overtime first", {{"Total Overtime"}, {"Seniority Date"}}},
        {"Most declined first", {{"Declined Overtime", true}, {"Employee Name"}}},
        {"Seniority", {{"Seniority Date"}, {"Employee Name"}}},
    };
    return all;
}

} // namespace

void loadSetup(Database& database, const DemoSettings& settings) {
    std::vector<const char16_t*> associations;
    for (const AnswerKind& kind : answerKinds)
        associations.push_back(kind.association);
    const auto codes = demoAnswerCodes();
    TableLoader assoc(database, u"tlyr_assoc", associations);
    assoc.insert(std::vector<Cell>(codes.begin(), codes.end()));
    assoc.finish();
    TableLoader period(database, u"tlyr_period", {u"from_date", u"to_date"});
    period.insert({settings.end.addDays(1 - pastDays), settings.end.addDays(comingDays)});
    period.finish();
    TableLoader rows(database, u"tlyr_order", {u"descr", u"details"});
    for (const Ordering& ordering : orderings())
        rows.insert({ordering.description, detailsText(ordering)});
    rows.finish();
}

} // namespace tallyroom::host
