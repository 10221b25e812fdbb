// What the translator must know of the tables.
#pragma once

#include "store/sql/Operation.h"

#include <QStringList>
#include <memory>
#include <vector>

namespace tallyroom::sql {

struct CatalogColumn {
    QString name;
    ValueType type = ValueType::Text;
    int width = 0; // of a text; 0 is any length
};

struct CatalogTable {
    QString place; // what the engine calls the file
    QString name;  // as the engine spells it
    std::vector<CatalogColumn> columns;
    bool keyed = true; // its rows can be found again by key
    bool keepsWhatIsWritten =
        false; // a row holds what was written into it: no triggers, rules or defaults

    // Position of the column, or −1; names are compared without regard to case.
    int indexOf(const QString& column) const;
};

class Catalog {
public:
    virtual ~Catalog() = default;

    // The table of that name in any case, or null.
    virtual std::shared_ptr<const CatalogTable> findTable(const QString& name) const = 0;
    // Likewise in the file that an Insert names in its "In" clause.
    virtual std::shared_ptr<const CatalogTable> findTargetTable(const QString& name) const = 0;
    // Of all tables of the file, but not of its views.
    virtual QStringList tableNames() const = 0;
    // Whether texts are kept under a collation for which only A to Z have a case, so that grouping
    // by it takes no key computed for each row.
    virtual bool keepsTextsCaseBlind() const = 0;
};

} // namespace tallyroom::sql
