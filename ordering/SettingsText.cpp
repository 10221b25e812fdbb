#include "ordering/SettingsText.h"

#include <utility>

namespace tallyroom {

namespace {

constexpr QLatin1Char pairSeparator('|');

} // namespace

SettingsText::SettingsText(const QString& text)
    : m_pairs(text.isEmpty() ? QStringList() : text.split(pairSeparator)), m_index(m_pairs) {
    for (int position = 0; position < m_pairs.size(); ++position)
        m_index.enter(position, position);
}

QString SettingsText::text() const {
    return m_pairs.join(pairSeparator);
}

QString SettingsText::value(const QString& key, const QString& defaultValue) const {
    const auto position = m_index.first(key);
    if (!position)
        return defaultValue;
    const QString& pair = m_pairs[*position];
    const QString value = pair.mid(pair.indexOf(QLatin1Char('=')) + 1);
    return value.isEmpty() ? defaultValue : value;
}

// The index takes the old pairs and the new ones at once, and gives places to those that hold.
void SettingsText::set(const std::vector<Setting>& settings) {
    QStringList pairs = m_pairs;
    for (const Setting& setting : settings) {
        pairs.append(setting.key + QLatin1Char('=') + setting.value);
        Q_ASSERT(!pairs.last().contains(pairSeparator));
    }
    m_index = PrefixIndex(pairs);
    std::vector<int> holding; // by position
    const auto hold = [&](int pair, std::size_t position) {
        if (position == holding.size())
            holding.push_back(pair);
        else
            m_index.leave(std::exchange(holding[position], pair));
        m_index.enter(pair, static_cast<int>(position));
    };
    for (int pair = 0; pair < m_pairs.size(); ++pair)
        hold(pair, holding.size());
    int pair = static_cast<int>(m_pairs.size());
    for (const Setting& setting : settings) {
        const auto answering = m_index.first(setting.key);
        hold(pair++, answering ? static_cast<std::size_t>(*answering) : holding.size());
    }
    m_pairs.clear();
    for (const int held : holding)
        m_pairs.append(pairs[held]);
}

QString GetTagValue(const QString& text, const QString& key, const QString& defaultValue) {
    return SettingsText(text).value(key, defaultValue);
}

QString SetTagValue(const QString& text, const QString& key, const QString& value) {
    SettingsText settings(text);
    settings.set({{key, value}});
    return settings.text();
}

QString indexKey(int position) {
    return QStringLiteral("Index") + QString::number(position);
}

// The default is no element's name; an ordering that stores it ends there as well.
QStringList indexedElements(const SettingsText& details) {
    const QString noMorePositions = QStringLiteral("wmeq");
    QStringList elements;
    for (;;) {
        const QString element =
            details.value(indexKey(static_cast<int>(elements.size())), noMorePositions);
        if (element == noMorePositions)
            return elements;
        elements.append(element);
    }
}

} // namespace tallyroom
