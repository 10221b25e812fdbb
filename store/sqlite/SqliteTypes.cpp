#include "store/sqlite/SqliteTypes.h"

#include <QRegularExpression>

namespace tallyroom {

using Schema::ColumnType;

namespace {

// The first entry whose word the declared type contains gives the store's type.
struct TypeWord {
    QLatin1StringView word;
    ColumnType type;
};

constexpr TypeWord typeWords[] = {
    {QLatin1StringView("COUNTER"), ColumnType::Counter},
    {QLatin1StringView("LONGTEXT"), ColumnType::Memo},
    {QLatin1StringView("MEMO"), ColumnType::Memo},
    {QLatin1StringView("CHAR"), ColumnType::Text},
    {QLatin1StringView("TEXT"), ColumnType::Text},
    {QLatin1StringView("BOOL"), ColumnType::Boolean},
    {QLatin1StringView("BIT"), ColumnType::Boolean},
    {QLatin1StringView("DATE"), ColumnType::Date},
    {QLatin1StringView("TIME"), ColumnType::Date},
    {QLatin1StringView("INT"), ColumnType::Long},
    {QLatin1StringView("LONG"), ColumnType::Long},
    {QLatin1StringView("REAL"), ColumnType::Double},
    {QLatin1StringView("FLOA"), ColumnType::Double},
    {QLatin1StringView("DOUB"), ColumnType::Double},
    {QLatin1StringView("NUM"), ColumnType::Double},
    {QLatin1StringView("DEC"), ColumnType::Double},
};

int widthIn(const QString& declared) {
    static const QRegularExpression number(QStringLiteral("\\((\\d+)\\)"));
    return number.match(declared).captured(1).toInt();
}

} // namespace

QString declaredType(ColumnFormat format) {
    switch (format.type) {
    case ColumnType::Text:
        return QStringLiteral("TEXT(%1)").arg(format.width);
    case ColumnType::Memo:
        return QStringLiteral("LONGTEXT");
    case ColumnType::Long:
        return QStringLiteral("INTEGER");
    case ColumnType::Double:
        return QStringLiteral("DOUBLE");
    case ColumnType::Date:
        return QStringLiteral("DATETIME");
    case ColumnType::Boolean:
        return QStringLiteral("BOOLEAN");
    case ColumnType::Counter:
        return QStringLiteral("COUNTER");
    }
    return {};
}

ColumnFormat formatOfDeclaredType(const QString& declared) {
    for (const TypeWord& entry : typeWords) {
        if (!declared.contains(entry.word, Qt::CaseInsensitive))
            continue;
        return {entry.type, entry.type == ColumnType::Text ? widthIn(declared) : 0};
    }
    return {ColumnType::Memo, 0};
}

} // namespace tallyroom
