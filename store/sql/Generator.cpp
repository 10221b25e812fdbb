#include "store/sql/Generator.h"

#include "common/RunError.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <algorithm>

namespace tallyroom::sql {

namespace {

constexpr qsizetype maximumLength = 8'000'000;

// The template with its marks $1 to $9 replaced by the parts.
QString filled(const char16_t* text, const QStringList& parts) {
    QString result;
    for (QStringView rest(text); !rest.isEmpty(); rest = rest.sliced(1)) {
        if (rest.front() != u'$') {
            result += rest.front();
            continue;
        }
        rest = rest.sliced(1);
        result += parts.at(rest.front().digitValue() - 1);
    }
    return result;
}

QString quoted(QChar quote, const QString& text) {
    if (!text.contains(quote))
        return quote + text + quote;
    QString doubled = text;
    doubled.replace(quote, QString(2, quote));
    return quote + doubled + quote;
}

// All digits, and always a point or an exponent: a number without is a whole one to an engine.
QString realText(double value) {
    const QString text = QString::number(value, 'g', 17);
    const bool whole = !text.contains(u'.') && !text.contains(u'e');
    return whole ? text + QStringLiteral(".0") : text;
}

bool needsEscape(QChar c) {
    return c < u' ' || c == u'"' || c == u'\\';
}

// Codes hardly ever need more than the quotes.
void appendJson(QString& out, const QString& text) {
    if (std::any_of(text.begin(), text.end(), needsEscape)) {
        const QByteArray array = QJsonDocument(QJsonArray{text}).toJson(QJsonDocument::Compact);
        out += QString::fromUtf8(array.sliced(1, array.size() - 2));
        return;
    }
    out += u'"';
    out += text;
    out += u'"';
}

} // namespace

QString Generator::rows(const BoundSelect& query) {
    return select(query, columns(query)) + order(query);
}

QString Generator::keys(const BoundSelect& query) {
    return select(query, key(*query.source)) + order(query);
}

QString Generator::rowByKey(const BoundSelect& query) {
    return QStringLiteral("SELECT %1 FROM %2 WHERE %3 = %4")
        .arg(columns(query), source(*query.source), key(*query.source), parameter(1));
}

QString Generator::keysWhere(const BoundSelect& query, const BoundPtr& criteria) {
    return QStringLiteral("SELECT %1 FROM %2%3")
        .arg(key(*query.source), source(*query.source), clause(u" WHERE ", criteria));
}

QString Generator::deleteRows(const BoundDelete& statement) {
    return filled(m_dialect.deleteRows,
                  {tableName(*statement.target.table), quotedName(statement.target.alias),
                   clause(u" WHERE ", statement.where)});
}

QString Generator::insertRows(const BoundInsert& statement) {
    const QString rowsText = statement.select
                                 ? rows(*statement.select)
                                 : QStringLiteral("VALUES (%1)").arg(texts(statement.values));
    return filled(m_dialect.insertRows,
                  {tableName(*statement.target.table),
                   quotedNames(statement.columns).join(QStringLiteral(", ")), rowsText});
}

QString Generator::updateRows(const BoundUpdate& statement) {
    return filled(m_dialect.updateRows,
                  {tableName(*statement.target.table), quotedName(statement.target.alias),
                   assignmentTexts(statement.assignments), clause(u" WHERE ", statement.where)});
}

QString Generator::assignmentTexts(const std::vector<BoundAssignment>& assignments) {
    QStringList result;
    for (const BoundAssignment& assignment : assignments)
        result << quotedName(assignment.column) + QStringLiteral(" = ") + text(*assignment.value);
    return result.join(QStringLiteral(", "));
}

QString Generator::dropTable(const BoundDrop& statement) {
    return filled(m_dialect.dropTable, {tableName(*statement.target.table)});
}

QString Generator::insertRow(const CatalogTable& table, const QStringList& names) const {
    return filled(m_dialect.insertRow,
                  {tableName(table), quotedNames(names).join(QStringLiteral(", ")),
                   parameters(names.size()).join(QStringLiteral(", "))});
}

QString Generator::insertRowOrSkip(const CatalogTable& table, const QStringList& names) const {
    return filled(
        m_dialect.insertRows,
        {tableName(table), quotedNames(names).join(QStringLiteral(", ")),
         QStringLiteral("VALUES (%1)").arg(parameters(names.size()).join(QStringLiteral(", ")))});
}

QString Generator::updateRow(const CatalogTable& table, const QStringList& names) const {
    QStringList assignments;
    for (const QString& name : names)
        assignments << quotedName(name) + QStringLiteral(" = ") + parameter(assignments.size() + 1);
    return filled(m_dialect.updateRow,
                  {tableName(table), assignments.join(QStringLiteral(", ")),
                   QString::fromUtf16(m_dialect.keyColumn), parameter(names.size() + 1)});
}

QString Generator::deleteRow(const CatalogTable& table) const {
    return filled(m_dialect.deleteRow,
                  {tableName(table), QString::fromUtf16(m_dialect.keyColumn), parameter(1)});
}

QString Generator::tableName(const CatalogTable& table) const {
    return quotedName(table.place) + u'.' + quotedName(table.name);
}

QString Generator::quotedName(const QString& name) const {
    return quoted(m_dialect.nameQuote, name);
}

QStringList Generator::quotedNames(const QStringList& names) const {
    QStringList result;
    for (const QString& name : names)
        result << quotedName(name);
    return result;
}

QStringList Generator::parameters(qsizetype count) const {
    QStringList result;
    for (qsizetype number = 1; number <= count; ++number)
        result << parameter(number);
    return result;
}

QString Generator::key(const BoundSource& source) const {
    return quotedName(source.alias) + u'.' + QString::fromUtf16(m_dialect.keyColumn);
}

QString Generator::parameter(qsizetype number) const {
    return filled(m_dialect.parameter, {QString::number(number)});
}

QString Generator::source(const BoundSource& source) {
    const QString rowsText =
        source.rows ? u'(' + namedRows(*source.rows) + u')' : tableName(*source.table);
    return filled(m_dialect.tableWithAlias, {rowsText, quotedName(source.alias)});
}

// The order of rows that another query reads is of no consequence.
QString Generator::namedRows(const BoundSelect& query) {
    QStringList result;
    for (const BoundColumn& column : query.columns)
        result << text(*column.value) + QStringLiteral(" AS ") + quotedName(column.name);
    return select(query, result.join(QStringLiteral(", ")));
}

// Appends to one text throughout, so that long lists are not copied once a level.
QString Generator::text(const BoundNode& node) {
    QString outer;
    outer.swap(m_out);
    append(node);
    outer.swap(m_out);
    return outer;
}

QString Generator::texts(const std::vector<BoundPtr>& nodes) {
    QStringList result;
    for (const BoundPtr& node : nodes)
        result << text(*node);
    return result.join(QStringLiteral(", "));
}

QString Generator::columns(const BoundSelect& query) {
    QStringList result;
    for (const BoundColumn& column : query.columns)
        result << text(*column.value);
    return result.join(QStringLiteral(", "));
}

QString Generator::select(const BoundSelect& query, const QString& columnTexts) {
    QString result =
        query.distinct ? QStringLiteral("SELECT DISTINCT ") : QStringLiteral("SELECT ");
    result += columnTexts;
    if (query.source)
        result += QStringLiteral(" FROM ") + source(*query.source);
    result += clause(u" WHERE ", query.where);
    if (!query.groupBy.empty())
        result += QStringLiteral(" GROUP BY ") + texts(query.groupBy);
    return result + clause(u" HAVING ", query.having);
}

// Rows of a table that the order leaves equal come in the order in which they were added.
QString Generator::order(const BoundSelect& query) {
    QStringList items;
    for (const BoundOrder& item : query.orderBy)
        items << filled(item.descending ? m_dialect.descending : m_dialect.ascending,
                        {text(*item.value)});
    if (query.updatable())
        items << key(*query.source);
    return items.isEmpty() ? QString()
                           : QStringLiteral(" ORDER BY ") + items.join(QStringLiteral(", "));
}

QString Generator::clause(const char16_t* keyword, const BoundPtr& condition) {
    return condition ? QString::fromUtf16(keyword) + text(*condition) : QString();
}

// The order of a subquery's rows is of no consequence.
QString Generator::subselect(const BoundSelect& query) {
    return select(query, text(*query.columns.front().value) + QStringLiteral(" AS ") +
                             quotedName(QStringLiteral("v")));
}

void Generator::append(const BoundNode& node) {
    if (m_out.size() > maximumLength)
        throw RunError::make(ErrorNumber::tooComplex);
    switch (node.kind) {
    case BoundKind::Literal:
        appendLiteral(node);
        break;
    case BoundKind::Column:
        m_out += quotedName(node.source) + u'.' + quotedName(node.column);
        break;
    case BoundKind::Apply:
        appendTemplate(m_dialect.operation(node.operation), node.operands);
        break;
    case BoundKind::InList:
    case BoundKind::InSelect:
        appendIn(node);
        break;
    case BoundKind::Subquery:
        appendSubquery(*node.select);
        break;
    }
}

void Generator::appendTemplate(const char16_t* text, const std::vector<BoundPtr>& operands) {
    for (QStringView rest(text); !rest.isEmpty(); rest = rest.sliced(1)) {
        if (rest.front() != u'$') {
            m_out += rest.front();
            continue;
        }
        rest = rest.sliced(1);
        append(*operands[static_cast<std::size_t>(rest.front().digitValue() - 1)]);
    }
}

void Generator::appendLiteral(const BoundNode& literal) {
    switch (literal.type) {
    case ValueType::Null:
        m_out += QStringView(m_dialect.nullLiteral);
        break;
    case ValueType::Boolean:
        m_out +=
            QStringView(literal.value.toBoolean() ? m_dialect.trueLiteral : m_dialect.falseLiteral);
        break;
    case ValueType::Date:
        m_out += quoted(m_dialect.textQuote, Dates::toIso(literal.value.toDate()));
        break;
    case ValueType::Text:
        m_out += quoted(m_dialect.textQuote, literal.value.toText());
        break;
    case ValueType::Long:
        m_out += QString::number(literal.value.toLong());
        break;
    case ValueType::Double:
        m_out += realText(literal.value.toDouble());
        break;
    }
}

const char16_t* Generator::inTemplate(const BoundNode& in) const {
    const bool texts =
        in.kind == BoundKind::InSelect && in.operands.front()->type == ValueType::Text;
    return texts ? m_dialect.inTexts : m_dialect.inSet;
}

void Generator::appendIn(const BoundNode& in) {
    for (QStringView rest(inTemplate(in)); !rest.isEmpty(); rest = rest.sliced(1)) {
        if (rest.front() != u'$') {
            m_out += rest.front();
            continue;
        }
        rest = rest.sliced(1);
        if (rest.front() == u'1')
            append(*in.operands.front());
        else
            appendSet(in);
    }
}

void Generator::appendSet(const BoundNode& in) {
    if (in.kind == BoundKind::InSelect) {
        m_out += subselect(*in.select);
        return;
    }
    if (!in.texts.isEmpty()) {
        m_out += textSet(in.texts);
        return;
    }
    for (std::size_t at = 1; at < in.operands.size(); ++at) {
        if (at > 1)
            m_out += QStringLiteral(", ");
        append(*in.operands[at]);
    }
}

// One literal to the engine, whose parser is slow with thousands.
QString Generator::textSet(const QStringList& texts) const {
    QString json;
    for (const QString& text : texts) {
        json += json.isEmpty() ? u'[' : u',';
        appendJson(json, text);
    }
    json += u']';
    return filled(m_dialect.textSet, {quoted(m_dialect.textQuote, json)});
}

// Totals without groups are one row in any case.
void Generator::appendSubquery(const BoundSelect& query) {
    const QString rowsText = subselect(query);
    if (query.totals && query.groupBy.empty())
        m_out += u'(' + rowsText + u')';
    else
        m_out += filled(m_dialect.singleValue, {rowsText});
}

} // namespace tallyroom::sql
