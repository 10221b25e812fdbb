// What is there of answers after a desk has been cut off.
#pragma once

#include "tests/support/DataFolder.h"

namespace tallyroom {

struct RecordedAnswers {
    RecordedAnswers(const DataFolder& site, const QString& date)
        : audit(codes(site, addInFile,
                      QStringLiteral("Select Emp_Code From TLYR_Audit Where [Date] = #%1#"), date)),
          history(codes(site, hostFile,
                        QStringLiteral("Select thist_emp From TimeHistory Where shift_date = #%1#"),
                        date)) {}

    // What is wrong when the desk was told so many answers to be recorded; empty when nothing is.
    QString fault(const QStringList& told) const {
        if (audit != history)
            return QStringLiteral("an answer is there in part");
        if (QStringList(audit).removeDuplicates() > 0)
            return QStringLiteral("an answer is there twice");
        for (const QString& code : told) {
            if (!audit.contains(code))
                return QStringLiteral("%1 was told to be recorded and is not").arg(code);
        }
        return audit.size() > told.size() + 1
                   ? QStringLiteral("more is recorded than was asked for")
                   : QString();
    }
    bool hasMoreThan(const QStringList& told) const { return audit.size() > told.size(); }

    QStringList audit;
    QStringList history;

private:
    static QStringList codes(const DataFolder& site, const char16_t* file, const QString& query,
                             const QString& date) {
        QStringList all = site.rows(file, query.arg(date));
        all.sort();
        return all;
    }
};

} // namespace tallyroom
