#include "ordering/PrefixIndex.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace tallyroom {

namespace {

constexpr int noPlace = std::numeric_limits<int>::max();

// Keeps the length, unlike upper case for reading ("ß").
QString upperCase(QString text) {
    for (QChar& letter : text)
        letter = letter.toUpper();
    return text;
}

} // namespace

PrefixIndex::PrefixIndex(const QStringList& texts)
    : m_rank(static_cast<std::size_t>(texts.size())), m_places(2 * m_rank.size(), noPlace) {
    std::vector<QString> upper(texts.begin(), texts.end());
    std::ranges::transform(upper, upper.begin(), upperCase);
    std::vector<std::size_t> order(upper.size());
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::sort(order, {}, [&](std::size_t text) -> const QString& { return upper[text]; });
    for (const std::size_t text : order) {
        m_rank[text] = m_sorted.size();
        m_sorted.push_back(std::move(upper[text]));
    }
}

void PrefixIndex::enter(int text, int place) {
    Q_ASSERT(place >= 0 && place < noPlace);
    setPlace(text, place);
}

void PrefixIndex::leave(int text) {
    setPlace(text, noPlace);
}

void PrefixIndex::setPlace(int text, int place) {
    std::size_t at = m_rank[static_cast<std::size_t>(text)] + m_sorted.size();
    m_places[at] = place;
    for (at /= 2; at > 0; at /= 2)
        m_places[at] = std::min(m_places[2 * at], m_places[2 * at + 1]);
}

std::optional<int> PrefixIndex::first(const QString& key) const {
    const QString start = upperCase(key);
    const auto from = std::ranges::lower_bound(m_sorted, start);
    const auto to = std::partition_point(
        from, m_sorted.end(), [&](const QString& text) { return text.startsWith(start); });
    const int place = lowest(static_cast<std::size_t>(from - m_sorted.begin()),
                             static_cast<std::size_t>(to - m_sorted.begin()));
    return place == noPlace ? std::nullopt : std::optional(place);
}

// Of the ranks from `from` up to, not including, `to`.
int PrefixIndex::lowest(std::size_t from, std::size_t to) const {
    int place = noPlace;
    for (from += m_sorted.size(), to += m_sorted.size(); from < to; from /= 2, to /= 2) {
        if (from % 2 == 1)
            place = std::min(place, m_places[from++]);
        if (to % 2 == 1)
            place = std::min(place, m_places[--to]);
    }
    return place;
}

} // namespace tallyroom
