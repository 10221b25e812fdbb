#include "ordering/SettingsText.h"

#include <QStringList>
#include <algorithm>

namespace tallyroom {

namespace {

constexpr QLatin1Char pairSeparator('|');

QStringList::iterator findPair(QStringList& pairs, const QString& key) {
    return std::find_if(pairs.begin(), pairs.end(), [&](const QString& pair) {
        return pair.left(key.size()).toUpper() == key.toUpper();
    });
}

} // namespace

QString GetTagValue(const QString& text, const QString& key, const QString& defaultValue) {
    QStringList pairs = text.isEmpty() ? QStringList() : text.split(pairSeparator);
    const auto found = findPair(pairs, key);
    const QString value =
        found == pairs.end() ? QString() : found->mid(found->indexOf(QLatin1Char('=')) + 1);
    return value.isEmpty() ? defaultValue : value;
}

QString SetTagValue(const QString& text, const QString& key, const QString& value) {
    const QString pair = key + QLatin1Char('=') + value;
    QStringList pairs = text.isEmpty() ? QStringList() : text.split(pairSeparator);
    const auto found = findPair(pairs, key);
    if (found == pairs.end())
        pairs.append(pair);
    else
        *found = pair;
    return pairs.join(pairSeparator);
}

QString indexKey(int position) {
    return QStringLiteral("Index") + QString::number(position);
}

// The default is no element's name; an ordering that stores it ends there as well.
QStringList indexedElements(const QString& details) {
    const QString noMorePositions = QStringLiteral("wmeq");
    QStringList elements;
    for (;;) {
        const QString element =
            GetTagValue(details, indexKey(static_cast<int>(elements.size())), noMorePositions);
        if (element == noMorePositions)
            return elements;
        elements.append(element);
    }
}

} // namespace tallyroom
