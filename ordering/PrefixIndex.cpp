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
    : m_sorted(texts.begin(), texts.end()), m_rank(m_sorted.size()),
      m_places(2 * m_sorted.size(), noPlace) {
    std::ranges::transform(m_sorted, m_sorted.begin(), upperCase);
    std::vector<std::size_t> order(m_sorted.size());
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::sort(order, {},
                      [this](std::size_t text) -> const QString& { return m_sorted[text]; });
    for (std::size_t rank = 0; rank < order.size(); ++rank)
        m_rank[order[rank]] = rank;
    std::ranges::sort(m_sorted);
}

void PrefixIndex::enter(int text, int place) {
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
