// The text of an exported registry: keys, each with named values.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>
#include <vector>

namespace tallyroom {

// Changes only what it is asked to change: all else stays byte for byte, values of other kinds,
// comments and other roots included. Keys are paths under HKEY_LOCAL_MACHINE, parts separated by
// "\"; keys and names compare without regard to case.
class RegistryText {
public:
    explicit RegistryText(const QByteArray& text); // in UTF-8; an empty one gets its heading
    QByteArray text() const;

    bool hasKey(const QString& key) const;
    // Nothing for a value of another kind than text, too. An empty name is the default value.
    std::optional<QString> value(const QString& key, const QString& name) const;

    void deleteKey(const QString& key); // with the keys below it; there may be none
    // Creates the key if need be.
    void setValue(const QString& key, const QString& name, const QString& text);

private:
    struct Entry {
        enum class Kind { Key, Value, Other };
        Kind kind = Kind::Other;
        QString name;      // of the key, with its root, or of the value, as it is spelled
        QByteArray stored; // of a value, what stands after the "="
        QByteArray lines;
        bool isOpen = false; // the text ends before the value does

        void add(const QByteArray& line);
        bool isKey(const QString& path) const;
    };
    using Entries = std::vector<Entry>;

    static Entry valueEntry(const QString& name, const QString& text);
    static Entry read(const QByteArray& line);

    // A path is a key with its root.
    std::size_t positionOf(const QString& path, const QString& name) const; // past the end: none
    void closeLastValue();
    Entries::iterator sectionOf(const QString& path);
    Entries::iterator endOf(Entries::iterator section);

    Entries m_entries;
};

} // namespace tallyroom
