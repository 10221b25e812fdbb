// The machine-wide registry: keys with named text values and an unnamed default value.
#pragma once

#include "addin/RegistryText.h"

#include <QString>
#include <functional>
#include <optional>

namespace tallyroom {

// Kept as one text file in the form that registries are exported in, so that any editor reads it.
// The file lies in the system's variable-data folder; the environment variable TALLYROOM_REGISTRY
// names another one. Every change takes a lock, reads the file, and replaces it as a whole; what
// others have written in it stays as it is.
class Registry {
public:
    // Opens nothing yet; each operation does.
    explicit Registry(QString file = defaultFile());

    static QString defaultFile();

    // Writes all changes of `edit` at once. False when the registry cannot be read or written;
    // nothing has changed then.
    [[nodiscard]] bool change(const std::function<void(RegistryText&)>& edit);

    // An empty name is the key's default value. Nothing for a value of another kind, too.
    std::optional<QString> value(const QString& key, const QString& name) const;
    bool hasKey(const QString& key) const;

private:
    std::optional<RegistryText> read() const; // nothing when the file is there but cannot be read
    bool write(const RegistryText& text) const;

    QString m_file;
};

} // namespace tallyroom
