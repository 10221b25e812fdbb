#include "host/oldfiles/reader/MdbFile.h"

#include "host/oldfiles/reader/MdbHeader.h"
#include "host/oldfiles/reader/MdbRows.h"

#include <QFile>

namespace tallyroom::host {

struct MdbFile::Handle {
    MdbHandlePtr mdb;
    MdbTexts texts;
};

namespace {

MdbHandlePtr opened(const QString& path) {
    MdbHandlePtr mdb(mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS));
    if (!mdb)
        throw OldFileRefused{OldRefusal::Unreadable, QStringLiteral("it cannot be opened.")};
    requireReadable(*mdb);
    return mdb;
}

GPtrArray* catalogue(MdbHandle& mdb, int kind) {
    GPtrArray* entries = mdb_read_catalog(&mdb, kind);
    if (!entries)
        throw OldFileRefused{OldRefusal::Damaged,
                             QStringLiteral("the list of its tables cannot be read.")};
    return entries;
}

void refuseLinks(MdbHandle& mdb) {
    constexpr int linkedOverOdbc = 4; // the library has no name for it
    for (const int kind : {int(MDB_LINKED_TABLE), linkedOverOdbc}) {
        if (const auto* link = elementOf<MdbCatalogEntry>(catalogue(mdb, kind), 0))
            throw OldFileRefused{
                OldRefusal::Linked,
                QStringLiteral("the table %1 lies in another file and is only linked from here.")
                    .arg(QString::fromUtf8(link->object_name))};
    }
}

// With its columns; the entry belongs to the catalogue, which is read anew for each.
MdbTablePtr definition(MdbCatalogEntry* entry) {
    MdbTablePtr table(mdb_read_table(entry));
    if (!table || !mdb_read_columns(table.get()) || table->columns->len != table->num_cols)
        throw OldFileRefused{OldRefusal::Damaged,
                             QStringLiteral("the columns of the table %1 cannot be read.")
                                 .arg(QString::fromUtf8(entry->object_name))};
    return table;
}

OldType typeOf(const MdbColumn& column) {
    switch (column.col_type) {
    case MDB_BOOL:
        return OldType::Boolean;
    case MDB_BYTE:
    case MDB_INT:
    case MDB_LONGINT:
        return OldType::Whole;
    case MDB_FLOAT:
        return OldType::Single;
    case MDB_DOUBLE:
        return OldType::Double;
    case MDB_MONEY:
    case MDB_NUMERIC:
        return OldType::Decimal;
    case MDB_DATETIME:
        return OldType::Date;
    case MDB_TEXT:
        return OldType::Text;
    case MDB_MEMO:
        return OldType::Memo;
    case MDB_REPID:
        return OldType::Guid;
    case MDB_BINARY:
    case MDB_OLE:
        return OldType::Binary;
    default:
        throw OldFileRefused{OldRefusal::Unknown,
                             QStringLiteral("the column %1 is of the type %2, which is not known.")
                                 .arg(QString::fromUtf8(column.name))
                                 .arg(column.col_type)};
    }
}

OldTable described(const MdbHandle& mdb, const MdbTableDef& table) {
    OldTable result{QString::fromUtf8(table.name), {}};
    for (guint at = 0; at < table.num_cols; ++at) {
        const auto& column = *elementOf<MdbColumn>(table.columns, at);
        const int bytesPerCharacter = isOldestVersion(mdb) ? 1 : 2;
        const OldType type = typeOf(column);
        result.columns.push_back({QString::fromUtf8(column.name), type,
                                  type == OldType::Text ? column.col_size / bytesPerCharacter : 0});
    }
    return result;
}

MdbCatalogEntry* entryNamed(GPtrArray* entries, const QString& name) {
    for (guint at = 0; auto* entry = elementOf<MdbCatalogEntry>(entries, at); ++at) {
        if (mdb_is_user_table(entry) && QString::fromUtf8(entry->object_name) == name)
            return entry;
    }
    throw OldFileRefused{OldRefusal::Damaged, QStringLiteral("the table %1 is gone.").arg(name)};
}

} // namespace

MdbFile::MdbFile(const QString& path, int codePage) {
    MdbHandlePtr mdb = opened(path);
    MdbHandle& handle = *mdb;
    m_handle.reset(new Handle{std::move(mdb), MdbTexts(handle, codePage)});
}

MdbFile::~MdbFile() = default;

std::vector<OldTable> MdbFile::tables() {
    MdbHandle& mdb = *m_handle->mdb;
    refuseLinks(mdb);
    std::vector<OldTable> result;
    GPtrArray* entries = catalogue(mdb, MDB_TABLE);
    for (guint at = 0; auto* entry = elementOf<MdbCatalogEntry>(entries, at); ++at) {
        if (mdb_is_user_table(entry))
            result.push_back(described(mdb, *definition(entry)));
    }
    return result;
}

qint64 MdbFile::readRows(const OldTable& table, const TakeOldRows& take) {
    GPtrArray* entries = catalogue(*m_handle->mdb, MDB_TABLE);
    const MdbTablePtr found = definition(entryNamed(entries, table.name));
    MdbRows(*found, m_handle->texts).read(take);
    return found->num_rows;
}

} // namespace tallyroom::host
