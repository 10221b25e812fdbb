// The same tables in a folder and in a site, which must answer the same statements alike.
#pragma once

#include "tests/store/StatementMaker.h"
#include "tests/support/DataFolder.h"

namespace tallyroom {

class EngineComparison {
public:
    EngineComparison();

    // Fills the tables anew and runs statements that belong to the seed. The first one that
    // differs, with both answers; empty when there is none.
    QString difference(unsigned seed);

    int statements() const { return m_statements; }
    int refused() const { return m_refused; } // of these, by both

private:
    struct Answer {
        std::vector<Row> rows;
        int error = 0;
        QString told; // of the error
    };

    void fill(StatementMaker& maker);
    Answer ask(Database& database, const QString& sql) const;
    QString compareQuery(const MadeQuery& query);
    QString compareChange(const QString& sql);
    QString compareTables();

    DataFolder m_folder{false};
    DataFolder m_site{true};
    std::shared_ptr<Database> m_files = m_folder.open(hostFile);
    std::shared_ptr<Database> m_server = m_site.open(hostFile);
    int m_statements = 0;
    int m_refused = 0;
};

} // namespace tallyroom
