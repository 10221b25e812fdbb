// What the checks of a range of recording days look at, read at once.
#pragma once

#include "audit/Standing.h"
#include "common/AnswerKind.h"
#include "reports/HostData.h"
#include "reports/ReportRequest.h"
#include "setup/TotallingPeriod.h"

#include <QHash>
#include <QSet>
#include <vector>

namespace tallyroom {

// Folded, so that two spellings of a code meet.
using PersonDay = std::pair<QString, QDate>;
PersonDay personDay(const QString& code, QDate day);

struct CheckedEntry : Standing::EntryKey {
    bool isInRange = false; // recorded on the days that are checked

    bool isAnswer() const {
        return action == AuditAction::Accepted || action == AuditAction::Declined;
    }
    QDate day() const { return Dates::dayOf(date); }
    PersonDay personDay() const { return tallyroom::personDay(code, day()); }
};

// Minutes in an answer column of the history.
struct HistoryAnswer {
    QString code;
    QDate day;
    const AnswerKind* kind;
    std::int32_t minutes;
};

// What the history holds of one employee on the days that are checked.
struct HistoryOfCode {
    QString code; // of several spellings the one that a board meets
    int records;
    Variant last; // day
};

struct CheckedData {
    Period recorded;
    // The first and the last day of overtime that answers of the range can be for: those that they
    // are for, and as far ahead as an offer usually lies.
    Period offered;
    std::vector<CheckedEntry> entries; // for these days, by their recording
    std::vector<HistoryAnswer> transactions;
    QSet<PersonDay> absences; // on days for which anybody was asked; answers are none
    std::vector<HistoryOfCode> history;
    HostData host;
    QHash<QString, const Employee*> employees; // by folded code
    std::optional<TotallingPeriod> period;
    QStringList notes; // what could not be read

    const Employee* employee(const QString& code) const;
    QString described(const QString& code) const; // "1006 Thompson, Paula"
};

// The last two weeks in which anything was recorded; those up to today where nothing was.
Period recordingDays(Database& addIn);

// Raises what the database raises; throws Cancelled.
std::unique_ptr<CheckedData> readCheckedData(const QString& dataFolder, Database& host,
                                             Database& addIn, const Period& recorded,
                                             const ReportProgress& progress);

} // namespace tallyroom
