// A temporary data folder, or a site on a server, with the three database files and a few known
// rows.
#pragma once

#include "store/Recordset.h"
#include "store/Workspace.h"

#include <QString>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace tallyroom {

// The rows as texts, cells joined by "|", Null as "Null".
QStringList textsOf(Recordset& rows);

// Whether this run of the test program puts all data on a server: the environment says so in
// TALLYROOM_TESTS_ON_SERVER.
bool testsOnServer();

// The address of a site on the program's server that is not there yet.
QString newSite();

class DataFolder {
public:
    // Makes the files with all tables and no rows.
    explicit DataFolder(bool onServer = testsOnServer());

    // The folder as a host gives it to the add-in.
    const QString& path() const { return m_path; }
    // Of a folder, not of a site.
    QString file(const char16_t* name) const;

    std::shared_ptr<Database> open(const char16_t* file) const;
    void execute(const char16_t* file, QStringView sql) const;
    // As another program does, in the SQL of the engine underneath. On a server there are neither
    // values of another type than their column's nor the board's own table.
    void executeNatively(const char16_t* file, const char* sql) const;

    // The rows of a query as texts.
    QStringList rows(const char16_t* file, QStringView sql) const;

    // One shift, four absent codes, and employees E1 to E`employees` in departments D0 to D2.
    void addHost(int employees = 3) const;
    void addHistory(QStringView emp, QStringView shiftDate, double t15Minutes, double t20Minutes,
                    QStringView recordType = u"TR") const;
    void associateAll() const;
    void setPeriod(QStringView from, QStringView to) const;

private:
    bool m_onServer;
    QTemporaryDir m_folder;
    QString m_path;
};

inline constexpr const char16_t* addInFile = u"aidb01.mdb";
inline constexpr const char16_t* mainFile = u"vrlxdb01.mdb";
inline constexpr const char16_t* hostFile = u"bcx.mdb";

} // namespace tallyroom
