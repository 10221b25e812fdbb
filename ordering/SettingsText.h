// Texts of key=value pairs joined by "|", in which orderings and menu tags keep their settings.
#pragma once

#include "ordering/PrefixIndex.h"

#include <QString>
#include <QStringList>
#include <vector>

namespace tallyroom {

struct Setting {
    QString key;
    QString value;
};

// Such a text, split once, for whoever asks for many keys or sets many.
class SettingsText {
public:
    explicit SettingsText(const QString& text = {});
    QString text() const;

    QString value(const QString& key, const QString& defaultValue = {}) const; // as GetTagValue
    // Each in its turn, as SetTagValue. None of them may hold a "|".
    void set(const std::vector<Setting>& settings);

private:
    QStringList m_pairs;
    PrefixIndex m_index; // of the pairs by their position
};

// The value of the first pair whose start equals the key, without regard to case: "Index1" is also
// answered by a pair "Index12=…" that stands before its own. A pair without "=" is its own value.
// No such pair, or an empty value, gives the default.
QString GetTagValue(const QString& text, const QString& key, const QString& defaultValue = {});

// Replaces the first pair that answers to the key, found as above, or appends one.
QString SetTagValue(const QString& text, const QString& key, const QString& value);

// Key of the element at a position of an ordering, counted from 0: "Index0", "Index1", …
QString indexKey(int position);

// The elements of an ordering by position, up to the first position that has none.
QStringList indexedElements(const SettingsText& details);

} // namespace tallyroom
