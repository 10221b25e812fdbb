#include "canvass/StandingNotes.h"

#include "store/Recordset.h"

#include <QUuid>

namespace tallyroom {

StandingNotes::StandingNotes(const std::optional<Standing::Snapshot>& board) : m_board(board) {
    if (!m_board)
        return;
    m_place.command = QUuid::createUuid().toString(QUuid::WithoutBraces);
    m_place.listed = m_board->listed;
    int place = 0;
    m_places.reserve(static_cast<qsizetype>(m_board->rows.size()));
    for (const Standing::Listed& listed : m_board->rows)
        m_places.insert(listed.code, ++place);
}

void StandingNotes::beginEmployee(const QString& code, const Recordset& row) {
    if (!m_board)
        return;
    m_place.place = m_places.value(code);
    m_place.total = row.field(m_board->totalWithAccepted ? QStringLiteral("totalot1")
                                                         : QStringLiteral("totalot2"));
    m_place.seniority = row.field(QStringLiteral("seniority"));
}

bool StandingNotes::write(Database& addIn, const QString& auditInsert,
                          const Standing::EntryKey& entry) {
    if (!m_board || m_failure || m_place.place == 0)
        return false;
    try {
        QStringList statements{auditInsert, Standing::keepPlace(entry, m_place)};
        if (!m_hasSnapshot)
            statements << Standing::keepSnapshot(m_place.command, *m_board);
        addIn.executeAll(statements); // a single question to a server
        return true;
    } catch (const RunError& error) {
        m_failure = error;
        return false;
    }
}

} // namespace tallyroom
