#include "canvass/SortExpression.h"

#include "common/Variant.h"
#include "ordering/SettingsText.h"

namespace tallyroom {

namespace {

bool takesPart(const SettingsText& details, const QString& element) {
    return Variant(details.value(element + QStringLiteral("_State"), QStringLiteral("false")))
        .toBoolean();
}

QString direction(const SettingsText& details, const QString& element) {
    const Variant code(details.value(element + QStringLiteral("_direction"), QStringLiteral("0")));
    return code.toDouble() == 0 ? QStringLiteral(" asc") : QStringLiteral(" desc");
}

} // namespace

QString sortExpression(const QString& stored, const BoardOptions& options,
                       const std::function<void()>& unknownElement) {
    const SettingsText details(stored);
    QString expression;
    for (const QString& element : indexedElements(details)) {
        if (!takesPart(details, element))
            continue;
        if (!expression.isEmpty())
            expression += QStringLiteral(", ");
        if (const BoardColumn* column = BoardColumns::ofElement(element))
            expression += QLatin1Char('[') + column->fieldFor(options) + QLatin1Char(']');
        else
            unknownElement();
        expression += direction(details, element);
    }
    return expression;
}

} // namespace tallyroom
