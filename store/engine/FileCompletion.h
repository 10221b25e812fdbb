// What a file that an older version has made lacks of the tables of this one.
#pragma once

#include "store/Database.h"

#include <QStringList>

namespace tallyroom {

struct FileCompletion {
    struct Widening {
        const Schema::Column* column; // as wide as it has to be
        QString table;                // as they are found
        QString name;
        int foundWidth; // characters
    };
    std::vector<const Schema::Table*> missing;
    std::vector<const Schema::Table*> present; // whose indexes may be missing
    std::vector<Widening> widenings;
};

// Compares with the tables that were found in the file. Scratch tables are made by whoever needs
// them, and what a table has besides stays.
FileCompletion completionOf(const Schema::File& file, const std::vector<TableFormat>& found);

// What has to be done, a line for each table and column; indexes are not spoken of.
QStringList linesOf(const FileCompletion& completion);

} // namespace tallyroom
