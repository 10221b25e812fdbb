// From the totals query's text to the engine's own.
#include "bench/BenchData.h"
#include "bench/Jobs.h"
#include "bench/Measure.h"
#include "board/BoardStatements.h"
#include "store/sql/Parser.h"
#include "store/sql/StatementBinder.h"
#include "store/sqlite/SqliteCatalog.h"
#include "store/sqlite/SqliteDialect.h"

#include <cstdio>

namespace tallyroom::bench {

void translatingTotals() {
    const QString folder = keptFolder(5000);
    SqliteConnection connection(fileIn(folder, "bcx.mdb"));
    const SqliteCatalog catalog(connection);
    for (const auto& [name, filter] : {std::pair{"5,000 codes", everybody(folder)},
                                       std::pair{"one code", QStringLiteral("= '1001'")}}) {
        const QString sql = BoardStatements::totals(filter, {});
        std::vector<double> times;
        for (int round = 0; round < 51; ++round) {
            times.push_back(seconds([&] {
                const sql::Statement statement = sql::parseStatement(sql);
                const auto& select = std::get<sql::SelectStatement>(statement);
                sqliteGenerator().rows(sql::bindSelect(catalog, select, nullptr));
            }));
        }
        std::printf("6 translating the totals query with %-20s %8.0f us\n", name,
                    median(times) * 1e6);
    }
}

} // namespace tallyroom::bench
