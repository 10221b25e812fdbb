// A folder with the three files, and what the tests of the store ask again and again.
#pragma once

#include "common/RunError.h"
#include "store/Database.h"
#include "store/Recordset.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace tallyroom {

class DataFolder {
public:
    DataFolder(); // creates the files

    QString path(const QString& name = {}) const { return m_folder.filePath(name); }
    QString hostPath() const; // as the host writes it, with "\"
    std::shared_ptr<Database> open(const QString& name) const;

private:
    QTemporaryDir m_folder;
};

// 'a text', 12, 1.5d for a Double, #1/2/2008#, True, Null.
QString shown(const Variant& value);
// All rows from the current one on; values are joined by " | ".
QStringList rowsOf(Recordset& recordset);

// The number of the error that the action raises, 0 for none; `error` receives it.
template<class Action>
int errorOf(Action action, std::optional<RunError>* error = nullptr) {
    try {
        action();
        return 0;
    } catch (const RunError& raised) {
        if (error)
            error->emplace(raised);
        return raised.number();
    }
}

} // namespace tallyroom

// So that a failing comparison of texts shows them.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << text.toStdString();
}
