#include "store/sql/Generator.h"

#include "common/RunError.h"
#include "store/sql/Filling.h"
#include "store/sql/LiteralTexts.h"

#include <QScopedValueRollback>
#include <algorithm>
#include <utility>

namespace tallyroom::sql {

namespace {

constexpr qsizetype maximumLength = 8'000'000;
constexpr std::size_t maximumParameters = 100; // more values than that do not come again

// What a kind of node speaks of, and nothing that another kind does.
bool hasItsFields(const BoundNode& node) {
    const bool isIn = node.kind == BoundKind::InList || node.kind == BoundKind::InSelect;
    const bool selects = node.kind == BoundKind::InSelect || node.kind == BoundKind::Subquery;
    return (node.kind == BoundKind::Column) == !node.source.isEmpty() &&
           (selects == (node.select != nullptr)) &&
           (node.kind == BoundKind::InList || node.texts.isEmpty()) &&
           (node.kind == BoundKind::Apply || isIn == !node.operands.empty());
}

} // namespace

template<class TextOf>
Native Generator::withParameters(const TextOf& textOf) {
    const QScopedValueRollback taken(m_takesParameters, true);
    QString nativeText = textOf();
    return {std::move(nativeText), std::exchange(m_values, {})};
}

QString Generator::rows(const BoundSelect& query) {
    const QScopedValueRollback inFull(m_takesParameters, false);
    return select(query, columns(query)) + order(query);
}

QString Generator::keys(const BoundSelect& query) {
    return select(query, key(*query.source)) + order(query);
}

QString Generator::keysAndRows(const BoundSelect& query) {
    return select(query, key(*query.source) + QStringLiteral(", ") + columns(query)) + order(query);
}

QString Generator::rowsByKey(const BoundSelect& query) {
    const QString keyText = key(*query.source);
    return QStringLiteral("SELECT %1, %2 FROM %3 WHERE %4")
        .arg(keyText, columns(query), source(*query.source),
             filled(dialect().hasKey, {keyText, parameter(1)}));
}

Native Generator::rowsWhere(const BoundSelect& query, const BoundPtr& criteria) {
    return withParameters([&] {
        return QStringLiteral("SELECT %1, %2 FROM %3%4")
            .arg(key(*query.source), columns(query), source(*query.source),
                 clause(u" WHERE ", criteria));
    });
}

Native Generator::keysWhere(const BoundSelect& query, const BoundPtr& criteria) {
    return withParameters([&] {
        return QStringLiteral("SELECT %1 FROM %2%3")
            .arg(key(*query.source), source(*query.source), clause(u" WHERE ", criteria));
    });
}

Native Generator::deleteRows(const BoundDelete& statement) {
    return withParameters([&] {
        return filled(dialect().deleteRows,
                      {tableName(*statement.target.table), quotedName(statement.target.alias),
                       clause(u" WHERE ", statement.where)});
    });
}

Native Generator::insertRows(const BoundInsert& statement) {
    const auto* values = std::get_if<std::vector<BoundPtr>>(&statement.rows);
    return withParameters([&] {
        return filled(
            dialect().insertRows,
            {tableName(*statement.target.table), quotedNames(statement.columns),
             values ? rowOf(texts(*values)) : rows(std::get<BoundSelect>(statement.rows))});
    });
}

Native Generator::updateRows(const BoundUpdate& statement) {
    return withParameters([&] {
        return filled(dialect().updateRows,
                      {tableName(*statement.target.table), quotedName(statement.target.alias),
                       assignmentTexts(statement.assignments),
                       clause(u" WHERE ", statement.where)});
    });
}

QString Generator::assignmentTexts(const std::vector<BoundAssignment>& assignments) {
    return list(assignments, [this](const BoundAssignment& assignment) {
        return quotedName(assignment.column) + QStringLiteral(" = ") + text(*assignment.value);
    });
}

QString Generator::dropTable(const BoundDrop& statement) {
    return filled(dialect().dropTable, {tableName(*statement.target.table)});
}

QString Generator::key(const BoundSource& source) const {
    return quotedName(source.alias) + u'.' + QString::fromUtf16(dialect().keyColumn);
}

QString Generator::source(const BoundSource& source) {
    const QString rowsText =
        source.rows ? u'(' + namedRows(*source.rows) + u')' : tableName(*source.table);
    return filled(dialect().tableWithAlias, {rowsText, quotedName(source.alias)});
}

// The order of rows that another query reads is of no consequence.
QString Generator::namedRows(const BoundSelect& query) {
    return select(query, list(query.columns, [&](const BoundColumn& column) {
                      return columnText(query, column) + QStringLiteral(" AS ") +
                             quotedName(column.name);
                  }));
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
    return list(nodes, [this](const BoundPtr& node) { return text(*node); });
}

QString Generator::columns(const BoundSelect& query) {
    return list(query.columns,
                [&](const BoundColumn& column) { return columnText(query, column); });
}

QString Generator::select(const BoundSelect& query, const QString& columnTexts) {
    QString result = QStringLiteral("SELECT ");
    if (query.distinct)
        result += distinct(query);
    result += columnTexts;
    if (query.source)
        result += QStringLiteral(" FROM ") + source(*query.source);
    result += clause(u" WHERE ", query.where);
    if (!query.groupBy.empty())
        result += QStringLiteral(" GROUP BY ") + texts(query.groupBy);
    return result + clause(u" HAVING ", query.having);
}

QString Generator::distinct(const BoundSelect& query) {
    if (dialect().distinct == Dialect::Distinct::Values)
        return QStringLiteral("DISTINCT ");
    QStringList keys;
    for (const BoundColumn& column : query.columns) {
        if (!column.value->constant) // an engine may take one for a column's position
            keys << text(*column.value);
    }
    return keys.isEmpty() ? QStringLiteral("DISTINCT ")
                          : QStringLiteral("DISTINCT ON (%1) ").arg(keys.join(QLatin1String(", ")));
}

// A text is left out by its key; what is read may have to be the text beside it.
QString Generator::columnText(const BoundSelect& query, const BoundColumn& column) {
    const bool keyed = query.distinct && dialect().distinct == Dialect::Distinct::OnKeys &&
                       column.value->applies(Operation::Collated);
    return text(keyed ? *column.value->operands.front() : *column.value);
}

// Rows of a table that the order leaves equal come in the order in which they were added.
QString Generator::order(const BoundSelect& query) {
    QStringList items;
    for (const BoundOrder& item : query.orderBy)
        items << filled(item.descending ? dialect().descending : dialect().ascending,
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
    const QScopedValueRollback inFull(m_takesParameters, false);
    return select(query, columnText(query, query.columns.front()) + QStringLiteral(" AS ") +
                             quotedName(QStringLiteral("v")));
}

void Generator::append(const BoundNode& node) {
    Q_ASSERT(hasItsFields(node));
    if (m_out.size() > maximumLength)
        throw RunError::make(ErrorNumber::tooComplex);
    switch (node.kind) {
    case BoundKind::Literal:
        return appendLiteral(node);
    case BoundKind::Column:
        m_out += quotedName(node.source) + u'.' + quotedName(node.column);
        return;
    case BoundKind::Apply:
        return appendOperation(node);
    case BoundKind::InList:
        if (isOneByOne(node))
            return appendOneByOne(node);
        [[fallthrough]];
    case BoundKind::InSelect:
        return appendFilled(m_out, inTemplate(node), [&](int at) {
            at == 0 ? append(*node.operands.front()) : appendSet(node);
        });
    case BoundKind::Subquery:
        return appendSubquery(*node.select);
    }
}

// A pattern is taken to pieces once, unless it may be another one in each row.
void Generator::appendOperation(const BoundNode& node) {
    const QScopedValueRollback inFull(m_takesParameters,
                                      m_takesParameters && node.operation != Operation::Like);
    appendFilled(m_out, dialect().operation(node.operation),
                 [&](int at) { append(*node.operands[static_cast<std::size_t>(at)]); });
}

void Generator::appendLiteral(const BoundNode& literal) {
    const QString value = valueText(literal.value);
    switch (literal.type) {
    case ValueType::Date:
        m_out += filled(dialect().dateLiteral, {value});
        break;
    case ValueType::Boolean:
        m_out += literal.value.isNull() ? filled(dialect().wholeLiteral, {value}) : value;
        break;
    case ValueType::Long:
        m_out += filled(dialect().wholeLiteral, {value});
        break;
    case ValueType::Double:
        m_out += filled(dialect().realLiteral, {value});
        break;
    case ValueType::Text:
        m_out += filled(dialect().textLiteral, {value});
        break;
    default:
        m_out += value;
    }
}

// Logical values are two only, and Nulls take part in what type a value has.
bool Generator::isParameter(const Variant& value) const {
    return m_takesParameters && m_values.size() < maximumParameters && !value.isNull() &&
           value.type() != Variant::Type::Boolean;
}

QString Generator::valueText(const Variant& value) {
    if (!isParameter(value))
        return literalText(value);
    m_values.push_back(value);
    return parameter(static_cast<qsizetype>(m_values.size()));
}

QString Generator::literalText(const Variant& value) const {
    switch (value.type()) {
    case Variant::Type::Boolean:
        return QString::fromUtf16(value.toBoolean() ? dialect().trueLiteral
                                                    : dialect().falseLiteral);
    case Variant::Type::Date:
        return quoted(dialect().textQuote, Dates::toIso(value.toDate()));
    case Variant::Type::Text:
        return quoted(dialect().textQuote, value.toText());
    case Variant::Type::Long:
        return QString::number(value.toLong());
    case Variant::Type::Double:
        return realText(value.toDouble());
    default:
        return QString::fromUtf16(dialect().nullLiteral);
    }
}

const char16_t* Generator::inTemplate(const BoundNode& in) const {
    const BoundNode& left = *in.operands.front();
    if (in.kind == BoundKind::InSelect)
        return left.type == ValueType::Text ? dialect().inTexts : dialect().inSet;
    if (in.texts.isEmpty())
        return dialect().inSet;
    return left.applies(Operation::CaseBlind) ? dialect().inCaseBlindTexts
                                              : dialect().inCollatedTexts;
}

void Generator::appendSet(const BoundNode& in) {
    if (in.kind == BoundKind::InSelect) {
        m_out += subselect(*in.select);
        return;
    }
    if (!in.texts.isEmpty()) { // one literal to the engine, whose parser is slow with thousands
        m_out += quoted(dialect().textQuote, jsonArray(in.texts));
        return;
    }
    const QScopedValueRollback inFull(m_takesParameters, false);
    for (std::size_t at = 1; at < in.operands.size(); ++at) {
        m_out += at > 1 ? QLatin1String(", ") : QLatin1String();
        append(*in.operands[at]);
    }
}

bool Generator::isOneByOne(const BoundNode& in) const {
    constexpr std::ptrdiff_t fewValues = 4;
    const auto unfolded = [](const BoundPtr& node) {
        return node->applies(Operation::CaseBlind) ? node->operands.front()->kind : node->kind;
    };
    const auto isLiteral = [&](const BoundPtr& item) {
        return unfolded(item) == BoundKind::Literal;
    };
    const auto first = in.operands.begin() + 1;
    return dialect().comparesFewOneByOne && in.texts.isEmpty() &&
           in.operands.end() - first <= fewValues &&
           unfolded(in.operands.front()) == BoundKind::Column &&
           std::all_of(first, in.operands.end(), isLiteral);
}

void Generator::appendOneByOne(const BoundNode& in) {
    const QScopedValueRollback inFull(m_takesParameters, false);
    m_out += u'(';
    for (std::size_t at = 1; at < in.operands.size(); ++at) {
        m_out += at > 1 ? QLatin1String(" OR ") : QLatin1String();
        appendFilled(m_out, dialect().operation(Operation::Equal),
                     [&](int side) { append(*in.operands[side == 0 ? 0 : at]); });
    }
    m_out += u')';
}

// Totals without groups are one row in any case.
void Generator::appendSubquery(const BoundSelect& query) {
    const QString rowsText = subselect(query);
    if (query.totals && query.groupBy.empty())
        m_out += u'(' + rowsText + u')';
    else
        m_out += filled(dialect().singleValue, {rowsText});
}

} // namespace tallyroom::sql
