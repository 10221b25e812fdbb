// Statement texts to trees. One function a grammar rule; nesting is limited.
#pragma once

#include "store/sql/Ast.h"

namespace tallyroom::sql {

// Each raises a RunError with the desktop engine's number for what it does not understand: 3075
// with the expression, 3131 (From), 3134 (Insert), 3138 (Order By), 3141 (Select), 3144 (Update),
// 3126 (brackets), 3129 (no statement), 3142 (text after the end), 3360 (nested too deeply).
Statement parseStatement(const QString& text);

// The body of a Where clause; raises 3077 in place of 3075.
ExpressionPtr parseCriteria(const QString& text);

// The body of an Order By clause.
std::vector<OrderItem> parseSort(const QString& text);

// True for a text that is nothing but a table's name.
bool isTableName(const QString& text);

} // namespace tallyroom::sql
