#include "audit/Standing.h"

#include "common/RunError.h"
#include "store/Database.h"
#include "store/Recordset.h"
#include "store/SqlText.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace tallyroom::Standing {

namespace {

using SqlText::literal;

const QString comma = QStringLiteral(", ");

QString bracketed(const QStringList& columns) {
    return QLatin1Char('[') + columns.join(QStringLiteral("], [")) + QLatin1Char(']');
}

QString numberOrNull(const Variant& value) {
    return value.isNull() ? QStringLiteral("Null") : QString::number(value.toDouble(), 'g', 15);
}

// A tab or a line break inside a text would begin another one.
QString field(QString text) {
    return text.replace(QLatin1Char('\t'), QLatin1Char(' ')).replace(QLatin1Char('\n'), u' ');
}

// A line for each row. As one text it takes a third of what an array of objects takes.
QString rowLines(const std::vector<Listed>& rows) {
    QString lines;
    for (const Listed& row : rows)
        lines += field(row.code) + u'\t' + field(row.total) +
                 (row.wasAsked ? QStringLiteral("\t*\n") : QStringLiteral("\t\n"));
    return lines;
}

std::vector<Listed> rowsOf(const QString& lines) {
    std::vector<Listed> rows;
    for (const QString& line : lines.split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList fields = line.split(u'\t');
        rows.push_back({fields.value(0), fields.value(1), !fields.value(2).isEmpty()});
    }
    return rows;
}

std::optional<std::pair<Date, Date>> periodOf(const QJsonObject& object) {
    const auto from = Dates::fromIso(object[u"from"].toString());
    const auto to = Dates::fromIso(object[u"to"].toString());
    return from && to ? std::optional(std::pair(*from, *to)) : std::nullopt;
}

QString equals(const QString& column, const QString& value) {
    return QStringLiteral("([%1] = %2)").arg(column, value);
}

// The condition that a standing is the entry's. Raises what a value raises that is not as the
// add-in wrote it.
QString isOfEntry(const Recordset& entry) {
    const EntryKey key{entry.field(QStringLiteral("now")).toDate(),
                       entry.field(QStringLiteral("user")).toText(),
                       entry.field(QStringLiteral("emp_code")).toText(),
                       entry.field(QStringLiteral("date")).toDate(),
                       static_cast<AuditAction>(entry.field(QStringLiteral("action")).toLong()),
                       entry.field(QStringLiteral("ot")).toLong(),
                       entry.field(QStringLiteral("thistfield")).toText()};
    return QStringList{equals(QStringLiteral("Emp_Code"), literal(key.code)),
                       equals(QStringLiteral("Date"), literal(key.date)),
                       equals(QStringLiteral("Now"), literal(key.now)),
                       equals(QStringLiteral("User"), literal(key.user)),
                       equals(QStringLiteral("OT"), QString::number(key.minutes)),
                       equals(QStringLiteral("tHistField"), literal(key.historyColumn))}
        .join(QStringLiteral(" and "));
}

} // namespace

QStringList keyColumns() {
    return {QStringLiteral("Now"),       QStringLiteral("User"),   QStringLiteral("Emp_Code"),
            QStringLiteral("Date"),      QStringLiteral("Action"), QStringLiteral("OT"),
            QStringLiteral("tHistField")};
}

QString keyValues(const EntryKey& key) {
    return QStringList{literal(key.now),
                       literal(key.user),
                       literal(key.code),
                       literal(key.date),
                       QString::number(static_cast<int>(key.action)),
                       QString::number(key.minutes),
                       literal(key.historyColumn)}
        .join(comma);
}

QString keepSnapshot(const QString& command, const Snapshot& snapshot) {
    return QStringLiteral("Insert Into [TLYR_Standing] ([Command], [Listed], [Details]) Values (") +
           literal(command) + comma + QString::number(snapshot.listed) + QStringLiteral(", '") +
           SqlText::escaped(toText(snapshot)) + QStringLiteral("');");
}

QString keepPlace(const EntryKey& key, const Place& place) {
    return QStringLiteral("Insert Into [TLYR_Standing] ([Command], ") + bracketed(keyColumns()) +
           QStringLiteral(", [Place], [Listed], [Total], [Seniority]) Values (") +
           QStringList{literal(place.command),       keyValues(key),
                       QString::number(place.place), QString::number(place.listed),
                       numberOrNull(place.total),    numberOrNull(place.seniority)}
               .join(comma) +
           QStringLiteral(");");
}

QStringList takeBack(const Recordset& entry) {
    try {
        const QString own = isOfEntry(entry);
        // What is left of a command without answers is found by them: its number is not known here.
        return {QStringLiteral("Delete * from [TLYR_Standing] where ") + own + u';',
                QStringLiteral("Delete * from [TLYR_Standing] where IsNull([Emp_Code]) and "
                               "([Command] not in (Select [Command] from [TLYR_Standing] where "
                               "([Emp_Code] <> NULL)));")};
    } catch (const RunError&) { // silent by design: no standing of ours has such values
        return {};
    }
}

QString markDeleted(const QString& condition) {
    return QStringLiteral("Update [TLYR_Standing] Set [Action] = 2 Where ") + condition + u';';
}

void write(Database& addIn, const QStringList& statements) {
    try {
        if (!statements.isEmpty())
            addIn.executeAll(statements);
    } catch (const RunError&) { // silent by design
    }
}

bool isMissing(int errorNumber) {
    return errorNumber == ErrorNumber::unknownTable ||
           errorNumber == ErrorNumber::unknownOutputTable;
}

QString toText(const Snapshot& snapshot) {
    QJsonObject object{
        {QStringLiteral("ordering"), snapshot.ordering},
        {QStringLiteral("settings"), snapshot.settings},
        {QStringLiteral("multiply"), snapshot.multiply},
        {QStringLiteral("breakOut"), snapshot.breakOut},
        {QStringLiteral("totalWithAccepted"), snapshot.totalWithAccepted},
        {QStringLiteral("bucket"), snapshot.bucket},
        {QStringLiteral("listed"), snapshot.listed},
        {QStringLiteral("rows"), rowLines(snapshot.rows)},
    };
    if (snapshot.period) {
        object[u"from"] = Dates::toIso(snapshot.period->first);
        object[u"to"] = Dates::toIso(snapshot.period->second);
    }
    return QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact));
}

std::optional<Snapshot> fromText(const QString& text) {
    const QJsonDocument document = QJsonDocument::fromJson(text.toUtf8());
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    return Snapshot{object[u"ordering"].toString(),
                    object[u"settings"].toString(),
                    periodOf(object),
                    object[u"multiply"].toBool(),
                    object[u"breakOut"].toBool(),
                    object[u"totalWithAccepted"].toBool(),
                    object[u"bucket"].toString(),
                    object[u"listed"].toInt(),
                    rowsOf(object[u"rows"].toString())};
}

} // namespace tallyroom::Standing
