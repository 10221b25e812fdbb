#include "store/Schema.h"

#include <stdexcept>

namespace tallyroom::Schema {

const Table& table(std::u16string_view name) {
    for (const File& file : files()) {
        for (const Table& candidate : file.tables) {
            if (candidate.name == name)
                return candidate;
        }
    }
    throw std::logic_error("no such table in the schema");
}

const Column& column(const Table& table, std::u16string_view name) {
    for (const Column& candidate : table.columns) {
        if (candidate.name == name)
            return candidate;
    }
    throw std::logic_error("no such column in the schema");
}

} // namespace tallyroom::Schema
