#include "host/oldfiles/reader/MdbHeader.h"

#include "host/oldfiles/OldValue.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <span>

namespace tallyroom::host {

namespace {

// Source of the places, and of the mask over the password: HACKING.md of mdbtools, "Database
// Definition Page". The library has taken off what lies over the whole page.
constexpr int passwordPlace = 0x42;
constexpr int creationPlace = 0x72; // a date, as a double
constexpr int oldestPasswordSize = 20;
constexpr int passwordSize = 40;

// Four bytes of the day on which the file was made lie over the password, again and again.
std::array<uchar, 4> passwordMask(const MdbHandle& mdb) {
    std::array<uchar, 4> mask{};
    if (!isOldestVersion(mdb)) {
        const double created = qFromLittleEndian<double>(mdb.pg_buf + creationPlace);
        constexpr double largest = 1e9; // far beyond all dates
        const qint32 day = created >= 0 && created < largest ? static_cast<qint32>(created) : 0;
        qToLittleEndian(day, mask.data());
    }
    return mask;
}

bool hasPassword(const MdbHandle& mdb) {
    const std::span password(mdb.pg_buf + passwordPlace,
                             isOldestVersion(mdb) ? oldestPasswordSize : passwordSize);
    const std::array<uchar, 4> mask = passwordMask(mdb);
    for (std::size_t at = 0; at < password.size(); ++at) {
        if (password[at] != mask[at % mask.size()])
            return true;
    }
    return false;
}

} // namespace

void requireReadable(MdbHandle& mdb) {
    const auto version = mdb.f->jet_version;
    if (version != MDB_VER_JET3 && version != MDB_VER_JET4)
        throw OldFileRefused{OldRefusal::Unknown,
                             QStringLiteral("it is of a version that is not known.")};
    if (mdb.f->db_key != 0)
        throw OldFileRefused{OldRefusal::Encrypted, QStringLiteral("it is encrypted.")};
    if (hasPassword(mdb))
        throw OldFileRefused{OldRefusal::Password, QStringLiteral("it has a password.")};
}

} // namespace tallyroom::host
