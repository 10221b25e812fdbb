// The server through its own C interface, as a program without this project's store would use it.
#pragma once

#include "setup/TotallingPeriod.h"

#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

struct pg_conn;

namespace tallyroom::bench {

// A connection with the settings of the store's own. Everything here throws std::runtime_error when
// the server reports an error.
class PlainServer {
public:
    explicit PlainServer(const QString& conninfo);

    void run(const QString& statements); // one or several
    std::vector<QStringList> cells(const QString& sql);
    QStringList rows(const QString& sql); // cells joined by "|"

    void prepare(const char* name, const QString& sql);
    void runPrepared(const char* name, const QStringList& parameters);

private:
    std::shared_ptr<pg_conn> m_connection;
};

// The board of a site in a scratch table of its own: everybody, no weighing.
class PlainServerBoard {
public:
    PlainServerBoard(const QString& conninfo, const QString& site);

    // Empties the scratch table and fills it with one statement, in one transaction.
    void write(const std::optional<TotallingPeriod>& period);
    // In order of total overtime, a text for each column of the grid.
    std::vector<QStringList> sortedRows();

    PlainServer& connection() { return m_connection; }

private:
    PlainServer m_connection;
    QString m_site;
};

// The columns of the board that both sides are compared by.
extern const QString comparedColumns;

} // namespace tallyroom::bench
