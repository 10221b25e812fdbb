// An old file as what a copy is made of.
#pragma once

#include "common/RunError.h"
#include "host/copy/CopySource.h"
#include "host/oldfiles/CopyReport.h"
#include "host/oldfiles/OldFile.h"

namespace tallyroom::host {

// Tables and columns that the program knows get its names and types, others the nearest type that
// there is. A text's column is as wide as the wider of both. What a column of ours cannot hold is
// changed, and a row whose key is there already left out: the report is told of each.
class OldSource final : public CopySource {
public:
    // `path` is for messages. Raises RunErrors for a file that is refused, with its path:
    // 3031 (a password, encrypted), 3049 (damaged), 3343 (not known), 3219 (a table is linked).
    OldSource(const Schema::File& file, QString path, std::unique_ptr<OldFile> old,
              CopyReport& report);

    const std::vector<TableFormat>& tables() const override { return m_formats; }
    void readRows(const TableFormat& table, const TakeRows& take) override;
    void requireUnchanged() const override;

private:
    class Conversion;

    RunError refused(const OldFileRefused& refused) const;

    const Schema::File& m_file;
    QString m_path;
    std::unique_ptr<OldFile> m_old;
    CopyReport& m_report;
    std::vector<OldTable> m_tables;     // those that are copied
    std::vector<TableFormat> m_formats; // of each
};

} // namespace tallyroom::host
