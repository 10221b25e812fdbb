#include "reports/StandingReading.h"

#include "audit/EmployeeKey.h"
#include "common/Units.h"
#include "reports/AuditReading.h"
#include "reports/Group.h"
#include "reports/Ordered.h"
#include "store/Readable.h"
#include "store/Recordset.h"
#include "store/SqlText.h"

#include <algorithm>

namespace tallyroom {

namespace {

void subtract(Minutes& figure, std::int32_t minutes) {
    if (figure)
        *figure -= minutes;
}

// Unweighed, an answer counts the same in all figures that hold it.
void takeOut(BoardRow& row, const Standing::EntryKey& entry) {
    const bool isDouble = rateOf(entry.historyColumn) == Rate::Double;
    const bool accepted = entry.action == AuditAction::Accepted;
    using Figure = Minutes BoardRow::*;
    const Figure figures[] = {
        accepted ? (isDouble ? &BoardRow::xT20Accepted : &BoardRow::xT15Accepted)
                 : (isDouble ? &BoardRow::xT20Declined : &BoardRow::xT15Declined),
        accepted ? (isDouble ? &BoardRow::T20Accepted : &BoardRow::T15Accepted)
                 : (isDouble ? &BoardRow::T20Declined : &BoardRow::T15Declined),
        accepted ? &BoardRow::AcceptedOT : &BoardRow::DeclinedOT, &BoardRow::TotalOT1};
    for (const Figure figure : figures)
        subtract(row.*figure, entry.minutes);
    if (!accepted)
        subtract(row.TotalOT2, entry.minutes);
}

bool isAnswer(const Standing::EntryKey& entry) {
    return entry.action == AuditAction::Accepted || entry.action == AuditAction::Declined;
}

void takeOutLater(std::vector<BoardRow>& rows, const std::vector<Standing::EntryKey>& later) {
    QHash<QString, BoardRow*> byCode;
    for (BoardRow& row : rows)
        byCode.insert(employeeKey(row.code().textOrEmpty()), &row);
    for (const Standing::EntryKey& entry : later) {
        if (BoardRow* row = byCode.value(employeeKey(entry.code)); row && isAnswer(entry))
            takeOut(*row, entry);
    }
}

void sortByTotal(std::vector<BoardRow>& rows) {
    std::ranges::stable_sort(rows, {}, [](const BoardRow& row) { return row.TotalOT1; });
}

QString shownTotal(const BoardRow& row) {
    return row.TotalOT1 ? TimeConversion::toTimeText(*row.TotalOT1) : QString();
}

Standing::Snapshot rebuiltBoard(const QString& dataFolder, Database& host, Database& addIn,
                                const Standing::EntryKey& entry, const QString& order) {
    const auto period = TotallingPeriod::read(dataFolder);
    std::vector<BoardRow> rows = BoardRows::read(
        host, [] { return groupFilter({}); }, period, false);
    takeOutLater(rows, entriesSince(addIn, entry.now, period));
    if (order.isEmpty())
        sortByTotal(rows);
    else
        sortBy(rows, dataFolder, order);
    Standing::Snapshot board;
    board.ordering = order;
    if (period)
        board.period = {period->from, period->to};
    board.listed = static_cast<int>(rows.size());
    for (const BoardRow& row : rows)
        board.rows.push_back({row.code().textOrEmpty(), shownTotal(row), false});
    return board;
}

// Nothing where none was kept, or what was kept cannot be read.
std::optional<Stood> keptStanding(Database& addIn, const Standing::EntryKey& entry) {
    const auto own = addIn.openRecordset(
        QStringLiteral("Select [Command], [Place], [Seniority] from [TLYR_Standing] where "
                       "([Emp_Code] = %1) and ([Date] = %2) and ([Now] = %3) and "
                       "([tHistField] = %4);")
            .arg(SqlText::literal(entry.code), SqlText::literal(entry.date),
                 SqlText::literal(entry.now), SqlText::literal(entry.historyColumn)),
        RecordsetType::Snapshot);
    if (own->eof())
        return std::nullopt;
    auto board = snapshotOf(addIn, Readable::text(own->field(0)));
    const Variant place = Readable::number(own->field(1));
    const bool isListed = board && !place.isNull() && place.toLong() > 0 &&
                          static_cast<std::size_t>(place.toLong()) <= board->rows.size();
    if (!isListed)
        return std::nullopt;
    return Stood{std::move(*board), place.toLong(), own->field(2), false};
}

std::optional<Stood> keptStandingIfAny(Database& addIn, const Standing::EntryKey& entry) {
    try {
        return keptStanding(addIn, entry);
    } catch (const RunError& error) {
        if (!Standing::isMissing(error.number()))
            throw;
        return std::nullopt;
    }
}

} // namespace

std::optional<Standing::Snapshot> snapshotOf(Database& addIn, const QString& command) {
    const auto rows = addIn.openRecordset(
        QStringLiteral("Select [Details] from [TLYR_Standing] where ([Command] = %1) and "
                       "IsNull([Emp_Code]);")
            .arg(SqlText::literal(command)),
        RecordsetType::Snapshot);
    return rows->eof() ? std::nullopt : Standing::fromText(Readable::text(rows->field(0)));
}

Stood readStanding(const QString& dataFolder, Database& host, Database& addIn,
                   const Standing::EntryKey& entry, const QString& order) {
    if (auto kept = keptStandingIfAny(addIn, entry))
        return std::move(*kept);
    Stood rebuilt{rebuiltBoard(dataFolder, host, addIn, entry, order), 0, Variant::null(), true};
    const auto& rows = rebuilt.board.rows;
    const auto own = std::ranges::find_if(rows, [&](const Standing::Listed& listed) {
        return employeeKey(listed.code) == employeeKey(entry.code);
    });
    rebuilt.place = own == rows.end() ? 0 : static_cast<int>(own - rows.begin()) + 1;
    return rebuilt;
}

QString whatRebuildingLacks() {
    return QStringLiteral(
        "Rebuilt from the time history, less what was recorded later. It cannot know which order, "
        "period, options and selection were in force, hours that were entered later, employees who "
        "have changed since, and answers that were taken back.");
}

} // namespace tallyroom
