// A data folder with audit entries and the transactions they stand for.
#pragma once

#include "tests/support/DataFolder.h"

namespace tallyroom {

class AuditFolder : public DataFolder {
public:
    // An answer on 2/3/2020, recorded at noon of the given day of January 2020. The transaction
    // goes into the column as well unless that is empty.
    void addAnswer(QStringView user, QStringView emp, int action, int minutes, QStringView column,
                   int recordedDay = 2) const {
        execute(addInFile,
                QStringLiteral("Insert Into [TLYR_Audit] ([Now], [User], [Emp_Code], [Date], "
                               "[Action], [OT], [tHistField]) Values (#1/%1/2020 12:00:00 PM#, "
                               "'%2', '%3', #2/3/2020#, %4, %5, %6);")
                    .arg(recordedDay)
                    .arg(user, emp)
                    .arg(action)
                    .arg(minutes)
                    .arg(column.isEmpty() ? QStringLiteral("Null")
                                          : QStringLiteral("'%1'").arg(column)));
        if (!column.isEmpty())
            execute(hostFile, QStringLiteral("Insert Into [TimeHistory] ([thist_emp], "
                                             "[shift_date], [thist_record_type], [%1]) Values "
                                             "('%2', #2/3/2020#, 'AR', %3);")
                                  .arg(column, emp)
                                  .arg(minutes));
    }
    QStringList audit() const {
        return rows(addInFile,
                    u"Select [User], [Emp_Code], [Action], [OT], [tHistField] from [TLYR_Audit];");
    }
    QStringList history() const {
        return rows(hostFile, u"Select [thist_emp], [tlyrAccepted], [tlyrAccepted2], "
                              u"[tlyrDeclined] from [TimeHistory];");
    }
};

inline const QString acceptedColumn = QStringLiteral("tlyrAccepted");
inline const QString accepted2Column = QStringLiteral("tlyrAccepted2");
inline const QString declinedColumn = QStringLiteral("tlyrDeclined");

} // namespace tallyroom
