// The text of an exported registry: keys, each with named values.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

namespace tallyroom {

// Changes only what it is asked to change: all else stays byte for byte, values of other kinds,
// comments and other roots included. Paths of keys begin with their root; paths and names compare
// without regard to case.
class RegistryText {
public:
    explicit RegistryText(const QByteArray& text); // in UTF-8; an empty one gets its heading
    QByteArray text() const;

    bool hasKey(const QString& key) const;
    // Nothing for a value of another kind than text, too. An empty name is the default value.
    std::optional<QString> value(const QString& key, const QString& name) const;

    void createKey(const QString& key);
    bool deleteKey(const QString& key); // with the keys below it; false when there is none
    void setValue(const QString& key, const QString& name, const QString& text);

private:
    struct Entry {
        enum class Kind { Key, Value, Other };
        Kind kind = Kind::Other;
        QString name;      // of the key or the value, as it is spelled
        QByteArray stored; // of a value, what stands after the "="
        QByteArray lines;
    };
    using Entries = std::vector<Entry>;

    static Entry valueEntry(const QString& name, const QString& text);
    static Entry read(const QByteArray& line);

    static bool isKey(const Entry& entry, const QString& key);
    std::size_t positionOf(const QString& key, const QString& name) const; // past the end: none
    Entries::iterator endOf(Entries::iterator key);

    Entries m_entries;
};

} // namespace tallyroom
