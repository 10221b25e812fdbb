// A file of the old desktop engine, read through libmdb.
#pragma once

#include "host/oldfiles/OldFile.h"

#include <memory>

namespace tallyroom::host {

// libmdb trusts what it reads: a mangled file may end the whole process, so this is used in one of
// its own. The file is never written to.
class MdbFile final : public OldFile {
public:
    // For the code page see MdbTexts. Throws OldFileRefused for what is not to be read: see
    // OldFile.
    MdbFile(const QString& path, int codePage);
    ~MdbFile() override;
    MdbFile(const MdbFile&) = delete;
    MdbFile& operator=(const MdbFile&) = delete;

    std::vector<OldTable> tables() override;
    qint64 readRows(const OldTable& table, const TakeOldRows& take) override;

private:
    struct Handle;
    std::unique_ptr<Handle> m_handle;
};

} // namespace tallyroom::host
