#include "common/RunError.h"

#include <algorithm>
#include <iterator>

namespace tallyroom {

namespace {

struct ErrorText {
    int number;
    const char16_t* text;
};

// Numbers and texts of the old run time (below 3000) and of the desktop database engine.
// "|" marks an insert.
constexpr ErrorText errorTexts[] = {
    {5, u"Invalid procedure call or argument"},
    {6, u"Overflow"},
    {7, u"Out of memory"},
    {9, u"Subscript out of range"},
    {13, u"Type mismatch"},
    {51, u"Internal error"},
    {91, u"Object variable or With block variable not set"},
    {94, u"Invalid use of Null"},
    {424, u"Object required"},
    {429, u"The add-in cannot open its window: |"},
    {438, u"Object doesn't support this property or method"},
    {450, u"Wrong number of arguments or invalid property assignment"},
    {481, u"Invalid picture"},
    {3010, u"Table '|' already exists."},
    {3020, u"Update or CancelUpdate without AddNew or Edit."},
    {3021, u"No current record."},
    {3022, u"The changes you requested to the table were not successful because they would create "
           u"duplicate values in the index, primary key, or relationship."},
    {3024, u"Could not find file '|'."},
    {3026, u"Not enough space on disk."},
    {3027, u"Cannot update. Database or object is read-only."},
    {3029, u"Not a valid account name or password."},
    {3033, u"You do not have the necessary permissions to use the '|' object. Have your system "
           u"administrator or the person who created this object establish the appropriate "
           u"permissions for you."},
    {3043, u"Your network access was interrupted. To continue, close the database, and then open "
           u"it again."},
    {3044, u"'|' is not a valid path. Make sure that the path name is spelled correctly and that "
           u"you are connected to the server on which the file resides."},
    {3049, u"Cannot open database '|'. It may not be a database that your application recognizes, "
           u"or the file may be corrupt."},
    {3051, u"The Microsoft Jet database engine cannot open the file '|'. It is already opened "
           u"exclusively by another user, or you need permission to view its data."},
    {3061, u"Too few parameters. Expected |."},
    {3063, u"Duplicate output destination '|'."},
    {3065, u"Cannot execute a select query."},
    {3070, u"The Microsoft Jet database engine does not recognize '|' as a valid field name or "
           u"expression."},
    {3075, u"| in query expression '|'."},
    {3077, u"| in expression."},
    {3078, u"The Microsoft Jet database engine cannot find the input table or query '|'. Make sure "
           u"it exists and that its name is spelled correctly."},
    {3085, u"Undefined function '|' in expression."},
    {3093, u"ORDER BY clause (|) conflicts with DISTINCT."},
    {3096, u"Cannot have aggregate function in WHERE clause (|)."},
    {3103, u"Circular reference caused by alias '|' in query definition's SELECT list."},
    {3122, u"You tried to execute a query that does not include the specified expression '|' as "
           u"part of an aggregate function."},
    {3126, u"Invalid bracketing of name '|'."},
    {3127, u"The INSERT INTO statement contains the following unknown field name: '|'. Make sure "
           u"you have typed the name correctly, and try the operation again."},
    {3129, u"Invalid SQL statement; expected 'DELETE', 'INSERT', 'PROCEDURE', 'SELECT', or "
           u"'UPDATE'."},
    {3131, u"Syntax error in FROM clause."},
    {3134, u"Syntax error in INSERT INTO statement."},
    {3138, u"Syntax error in ORDER BY clause."},
    {3141, u"The SELECT statement includes a reserved word or an argument name that is misspelled "
           u"or missing, or the punctuation is incorrect."},
    {3142, u"Characters found after end of SQL statement."},
    {3144, u"Syntax error in UPDATE statement."},
    {3151, u"Connection to '|' failed: |"},
    {3163, u"The field is too small to accept the amount of data you attempted to add. Try "
           u"inserting or pasting less data."},
    {3164, u"Field cannot be updated."},
    {3167, u"Record is deleted."},
    {3192, u"Could not find output table '|'."},
    {3196, u"The database '|' is already in use by another person or process. When the database is "
           u"available, try the operation again."},
    {3204, u"Database '|' already exists."},
    {3219, u"Invalid operation."},
    {3265, u"Item not found in this collection."},
    {3295, u"Syntax error in DROP TABLE or DROP INDEX."},
    {3306, u"You have written a subquery that can return more than one field."},
    {3314, u"The field '|' cannot contain a Null value because the Required property for this "
           u"field is set to True. Enter a value in this field."},
    {3317, u"One or more values are prohibited by the validation rule set for '|'. Enter a value "
           u"that the expression for this field can accept."},
    {3343, u"Unrecognized database format '|'."},
    {3346, u"Number of query values and destination fields are not the same."},
    {3354, u"At most one record can be returned by this subquery."},
    {3360, u"Query is too complex."},
    {3376, u"Table '|' does not exist."},
    {3420, u"Object invalid or no longer set."},
    {3421, u"Data type conversion error."},
    {3464, u"Data type mismatch in criteria expression."},
};

static_assert(std::ranges::is_sorted(errorTexts, {}, &ErrorText::number));

const ErrorText* findText(int number) {
    const auto* found = std::ranges::lower_bound(errorTexts, number, {}, &ErrorText::number);
    return found != std::end(errorTexts) && found->number == number ? found : nullptr;
}

QString withInserts(QString text, const QStringList& inserts) {
    qsizetype from = 0;
    for (const QString& insert : inserts) {
        const qsizetype mark = text.indexOf(QLatin1Char('|'), from);
        if (mark < 0)
            break;
        text.replace(mark, 1, insert);
        from = mark + insert.size();
    }
    return text;
}

} // namespace

RunError::RunError(int number, QString description, QString source)
    : m_number(number), m_description(std::move(description)), m_source(std::move(source)),
      m_what(QByteArray::number(number) + ": " + m_description.toUtf8()) {}

RunError RunError::make(int number, const QStringList& inserts, const QString& source) {
    const ErrorText* entry = findText(number);
    const QString text = entry ? QString::fromUtf16(entry->text)
                               : QStringLiteral("Application-defined or object-defined error");
    const QString origin =
        number < 3000 ? QStringLiteral("Tallyroom") : QStringLiteral("DAO.Database");
    return {number, withInserts(text, inserts), source.isEmpty() ? origin : source};
}

} // namespace tallyroom
