#include "canvass/SortExpression.h"

#include "common/Variant.h"
#include "ordering/SettingsText.h"

#include <QHash>

namespace tallyroom {

namespace {

QString inBrackets(const QString& column) {
    return QLatin1Char('[') + column + QLatin1Char(']');
}

QString sortKey(const QString& element, const CanvassOptions& options) {
    static const QHash<QString, QString> keys = {
        {QStringLiteral("employee code"), QStringLiteral("[emp_code]")},
        {QStringLiteral("employee name"), QStringLiteral("[emp_name]")},
        {QStringLiteral("home department"), QStringLiteral("[emp_dept]")},
        {QStringLiteral("position"), QStringLiteral("[qual_code]")},
        {QStringLiteral("seniority date"), QStringLiteral("[sendate]")},
        {QStringLiteral("seniority number"), QStringLiteral("[seniority]")},
        {QStringLiteral("worked overtime"), QStringLiteral("[workedot]")},
        {QStringLiteral("accepted overtime"), QStringLiteral("[acceptedot]")},
        {QStringLiteral("declined overtime"), QStringLiteral("[declinedot]")},
        {QStringLiteral("accepted 1.5"), QStringLiteral("[T15Accepted]")},
        {QStringLiteral("accepted 2.0"), QStringLiteral("[T20Accepted]")},
        {QStringLiteral("declined 1.5"), QStringLiteral("[T15Declined]")},
        {QStringLiteral("declined 2.0"), QStringLiteral("[T20Declined]")}};
    const QString suffix = options.multiply ? QStringLiteral("_Mult") : QString();
    if (element == QLatin1String("total overtime"))
        return inBrackets(QString::fromUtf16(options.totalField()));
    if (element == QLatin1String("1.5"))
        return inBrackets(QStringLiteral("T15Hours") + suffix);
    if (element == QLatin1String("2.0"))
        return inBrackets(QStringLiteral("T20Hours") + suffix);
    return keys.value(element);
}

bool takesPart(const SettingsText& details, const QString& element) {
    return Variant(details.value(element + QStringLiteral("_State"), QStringLiteral("false")))
        .toBoolean();
}

QString direction(const SettingsText& details, const QString& element) {
    const Variant code(details.value(element + QStringLiteral("_direction"), QStringLiteral("0")));
    return code.toDouble() == 0 ? QStringLiteral(" asc") : QStringLiteral(" desc");
}

} // namespace

QString sortExpression(const QString& stored, const CanvassOptions& options,
                       const std::function<void()>& unknownElement) {
    const SettingsText details(stored);
    QString expression;
    for (const QString& element : indexedElements(details)) {
        if (!takesPart(details, element))
            continue;
        if (!expression.isEmpty())
            expression += QStringLiteral(", ");
        const QString key = sortKey(element.toLower(), options);
        if (key.isEmpty())
            unknownElement();
        expression += key + direction(details, element);
    }
    return expression;
}

} // namespace tallyroom
