// Values as they stand in a statement.
#pragma once

#include "common/Dates.h"

#include <QString>

// Statements are joined as texts, so what goes into one must not change what the statement means. A
// text that would is refused with the error that the broken statement raises: no such statement
// reaches the engine, whatever else stands in it.
namespace tallyroom::SqlText {

// 'the text', its letters as they are. Raises 3075 for a text with an apostrophe, which would end
// the literal, or with a NUL, which would end the statement.
QString literal(const QString& text);

// The same in the criteria of a search, where it raises 3077.
QString criterion(const QString& text);

// #1/2/2008#, with the time of day when there is one.
QString literal(Date date);

// [column]. Raises 3126 for a name that is blank or holds a bracket.
QString name(const QString& column);

// The text with its apostrophes doubled, to stand between two of them: for what no statement may
// fail for, such as the data folder.
QString escaped(const QString& text);

} // namespace tallyroom::SqlText
