// Which audit entries the audit browser asks for.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>

namespace tallyroom {

// The browser's choices as plain values.
struct AuditSelection {
    enum class Kind { Both, Accepted, Declined };

    // A range of days, as typed; the texts read as dates.
    struct Range {
        QString from;
        QString to;
    };

    QStringList users;
    int employees = 0;      // how many the host's filter lets through; for description() alone
    bool breakOut = false;  // time and a half and double time apart: the four marks below count
    Kind kind = Kind::Both; // otherwise this one does
    bool accepted15 = false;
    bool accepted20 = false;
    bool declined15 = false;
    bool declined20 = false;
    std::optional<Range> systemDate;  // of the recording
    std::optional<Range> canvassDate; // of the overtime

    // The condition on the rows of the audit. Raises 3075 for a user with an apostrophe. Entries
    // that were deleted afterwards come with every plain choice and with none of the choices of the
    // broken-out view.
    QString clause() const;

    // The choices in words, a line each, for the head of a report.
    QStringList description() const;
};

} // namespace tallyroom
