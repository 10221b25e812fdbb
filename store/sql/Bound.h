// Statements with every name looked up and every value typed: what an engine's text is made from.
#pragma once

#include "common/Variant.h"
#include "store/sql/Catalog.h"

#include <optional>
#include <variant>

namespace tallyroom::sql {

struct BoundNode;
struct BoundSelect;
using BoundPtr = std::shared_ptr<const BoundNode>; // aliases share what they stand for

enum class BoundKind { Literal, Column, Apply, InList, InSelect, Subquery };

struct BoundNode {
    BoundKind kind = BoundKind::Literal;
    ValueType type = ValueType::Null;
    int width = 0;                   // of a text; 0 is any length
    Variant value = Variant::null(); // Literal
    QString source;                  // Column: the alias that the statement gives its table
    QString column;                  // Column
    Operation operation = {};        // Apply
    bool constant = false;           // the same for all rows, on every engine
    bool aggregate = false;          // here or in an operand, rows are summed up
    std::vector<BoundPtr> operands;  // InList and InSelect: the left side comes first
    QStringList texts;               // InList: its items, if they are no operands
    std::shared_ptr<const BoundSelect> select; // InSelect, Subquery

    bool applies(Operation wanted) const { return kind == BoundKind::Apply && operation == wanted; }
};

struct BoundSource {
    std::shared_ptr<const CatalogTable> table;
    QString alias;                                     // unique in the statement
    std::shared_ptr<const BoundSelect> rows = nullptr; // instead of a table
};

struct BoundColumn {
    QString name;
    BoundPtr value;
};

struct BoundOrder {
    BoundPtr value;
    bool descending = false;
};

struct BoundSelect {
    bool distinct = false;
    bool totals = false;               // one row a group, or one in all
    std::optional<BoundSource> source; // of totals, this may be another query's rows
    std::vector<BoundColumn> columns;
    BoundPtr where;
    std::vector<BoundPtr> groupBy;
    BoundPtr having;
    std::vector<BoundOrder> orderBy;

    // Each of its rows is one row of a table.
    bool updatable() const { return source && !distinct && !totals && source->table->keyed; }
};

struct BoundDelete {
    BoundSource target;
    BoundPtr where;
};

struct BoundInsert {
    BoundSource target;
    QStringList columns;
    std::variant<std::vector<BoundPtr>, BoundSelect> rows; // one of values, or many
};

struct BoundAssignment {
    QString column;
    BoundPtr value;
};

struct BoundUpdate {
    BoundSource target;
    std::vector<BoundAssignment> assignments;
    BoundPtr where;
};

struct BoundDrop {
    BoundSource target;
};

} // namespace tallyroom::sql
