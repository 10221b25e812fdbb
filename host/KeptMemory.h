// What windows remember of a user, put back after use by a program.
#pragma once

#include "store/Recordset.h"

#include <QHash>
#include <QString>
#include <memory>

namespace tallyroom::host {

// While one lives, windows may remember what they like of the user; at its end all is as it was. A
// picture of the board is none of the user's visits.
class KeptMemory {
public:
    // Without a name for what is remembered of nobody. Raises what the database raises.
    KeptMemory(const QString& dataFolder, const QString& user);
    ~KeptMemory();
    KeptMemory(const KeptMemory&) = delete;
    KeptMemory& operator=(const KeptMemory&) = delete;

private:
    void putBack();

    std::shared_ptr<Recordset> m_rows;
    QHash<QString, QString> m_options; // by window
};

} // namespace tallyroom::host
