// Which audit entries the audit browser asks for.
#pragma once

#include "common/AnswerKind.h"

#include <QStringList>
#include <optional>
#include <vector>

namespace tallyroom {

// The browser's choices as values.
struct AuditSelection {
    enum class Kind { Both, Accepted, Declined };

    // A range of days, as typed; the texts read as dates.
    struct Range {
        QString from;
        QString to;
    };

    QStringList users;
    int employees = 0;      // how many the host's filter lets through; for description() alone
    bool breakOut = false;  // time and a half and double time apart: `answers` counts
    Kind kind = Kind::Both; // otherwise this does
    std::vector<const AnswerKind*> answers;
    std::optional<Range> systemDate;  // of the recording
    std::optional<Range> canvassDate; // of the overtime

    // The condition on the rows of the audit. Raises 3075 for a user with an apostrophe. Entries
    // that were deleted afterwards come with every choice of the joined view and with none of the
    // broken-out one.
    QString clause() const;

    // The choices in words, a line each, for the head of a report.
    QStringList description() const;
};

} // namespace tallyroom
