// Which of many texts is the first to begin with a key.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace tallyroom {

// The texts are given at once, sorted once, and named by their index; each may then take a place
// and leave it again. Every question and every change takes a time that grows with the logarithm of
// their number. Case does not count: letters are compared one by one in upper case.
class PrefixIndex {
public:
    explicit PrefixIndex(const QStringList& texts);

    void enter(int text, int place); // one place a text
    void leave(int text);

    // The lowest place of a text that begins with the key; nothing when none has a place.
    std::optional<int> first(const QString& key) const;

private:
    void setPlace(int text, int place);
    int lowest(std::size_t from, std::size_t to) const;

    std::vector<QString> m_sorted;   // in upper case
    std::vector<std::size_t> m_rank; // of each text in that order
    // A binary tree: the places by rank are its last half, above them the lower of each two.
    std::vector<int> m_places;
};

} // namespace tallyroom
