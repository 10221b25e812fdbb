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

enum class NodeKind { Literal, Name, Apply, Call, InList, InSelect, Subquery };

struct Expression {
    NodeKind kind = NodeKind::Literal;
    Variant value;                           // Literal
    QString qualifier;                       // Name: the table's part, or empty
    QString name;                            // Name, Call
    bool bracketed = false;                  // Name: never a function's
    Operation operation = {};                // Apply
    std::vector<ExpressionPtr> operands;     // InList and InSelect: the left side comes first
    QStringList texts;                       // InList: its other items, which are text literals
    std::unique_ptr<SelectStatement> select; // InSelect, Subquery

    ~Expression();
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
    std::vector<ExpressionPtr> values;
    std::unique_ptr<SelectStatement> select; // instead of values
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

inline Expression::~Expression() = default;

} // namespace tallyroom::sql
