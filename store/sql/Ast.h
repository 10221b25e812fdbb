// Statements as they were written, before any name is looked up.
#pragma once

#include "common/Variant.h"
#include "store/sql/Operation.h"

#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace tallyroom::sql {

struct Expression;
struct SelectStatement;
using ExpressionPtr = std::unique_ptr<Expression>;

struct Literal {
    Variant value;
};

struct Name {
    QString qualifier; // the table's part, or empty
    QString name;
    bool bracketed = false; // never a function's
};

struct Apply {
    Operation operation;
    std::vector<ExpressionPtr> operands;
};

struct Call {
    QString function;
    std::vector<ExpressionPtr> arguments;
};

struct InList {
    ExpressionPtr left;
    std::vector<ExpressionPtr> items;
    QStringList texts; // further items, which are plain texts
};

struct InSelect {
    ExpressionPtr left;
    std::unique_ptr<SelectStatement> select;
};

struct Subquery {
    std::unique_ptr<SelectStatement> select;
};

struct Expression {
    std::variant<Literal, Name, Apply, Call, InList, InSelect, Subquery> node;
};

struct SelectItem {
    ExpressionPtr expression; // null for all columns
    QString alias;
    QString table; // of "table.*"
};

struct OrderItem {
    ExpressionPtr expression;
    bool descending = false;
};

struct TableReference {
    QString name;
    QString alias; // the name itself without one
};

struct SelectStatement {
    bool distinct = false;
    std::vector<SelectItem> items;
    std::optional<TableReference> from;
    ExpressionPtr where;
    std::vector<ExpressionPtr> groupBy;
    ExpressionPtr having;
    std::vector<OrderItem> orderBy;
};

struct DeleteStatement {
    QString table;
    ExpressionPtr where;
};

struct InsertStatement {
    QString table;
    QString file; // of the "In" clause, or empty
    QStringList columns;
    std::variant<std::vector<ExpressionPtr>, SelectStatement> rows; // one of values, or many
};

struct Assignment {
    QString column;
    ExpressionPtr value;
};

struct UpdateStatement {
    QString table;
    std::vector<Assignment> assignments;
    ExpressionPtr where;
};

struct DropStatement {
    QString table;
};

using Statement =
    std::variant<SelectStatement, DeleteStatement, InsertStatement, UpdateStatement, DropStatement>;

} // namespace tallyroom::sql
