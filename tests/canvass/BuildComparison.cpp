#include "tests/canvass/BuildComparison.h"

#include "canvass/QuickBuild.h"
#include "canvass/TotalsBuild.h"
#include "common/DateParser.h"

namespace tallyroom {

namespace {

std::string value(const QString& text) {
    return text.isNull() ? "NULL" : "'" + text.toStdString() + "'";
}

} // namespace

BuildComparison::BuildComparison(unsigned seed, bool onServer)
    : m_random(seed), m_folder(onServer) {
    addEmployees();
    addQualifications();
    addHistory();
    m_folder.executeNatively(hostFile, m_made.c_str()); // past the store, which would mend values
    static const char16_t* const filters[] = {u"like '*'", u"<> Null",
                                              u"in ('a1', 'B1', 'b2', 'e1')", u"> 'a'",
                                              u"in ('a1', 'A10', 'B1', 'b2', 'E1', 'z', '12')"};
    m_host.filter = QString::fromUtf16(filters[upTo(5)]);
    build();
}

// Few different codes, so that they meet; in either case and with what sorts differently.
QString BuildComparison::anyCode() {
    static const char16_t* const codes[] = {u"a1", u"A1", u"a10", u"B1", u"b2",  u"b2 ", u"e1",
                                            u"E1", u"é1", u"É1",  u"z",  u"a-1", u"a 1", u"12"};
    return upTo(25) == 0 ? QString() : QString::fromUtf16(codes[upTo(14)]);
}

QString BuildComparison::anyAmount(bool isWhole) {
    switch (upTo(6)) {
    case 0:
        return {};
    case 1:
        return upTo(9) == 0 ? QStringLiteral("3000000000") : QStringLiteral("0");
    default:
        return isWhole ? QString::number(upTo(2000) - 100)
                       : QString::number((upTo(2000) + upTo(2) * 0.5) / 1440, 'g', 17);
    }
}

void BuildComparison::add(const std::string& statement) {
    m_made += statement + ";\n";
}

void BuildComparison::addEmployees() {
    const bool unique = upTo(3) > 0;
    if (!unique)
        add("DROP INDEX \"Employee_Code\"");
    for (int count = upTo(9); count > 0; --count) {
        const QString seniority = upTo(3) == 0 ? QString() : QString::number(upTo(9) * 0.5);
        add("INSERT INTO \"Employee\" VALUES (" + value(anyCode()) + ", 'N', " +
            (upTo(2) == 0 ? "NULL" : "'2020-02-0" + std::to_string(1 + upTo(9)) + " 00:00:00'") +
            ", " + (seniority.isNull() ? "NULL" : seniority.toStdString()) +
            ", 'D1', NULL, 'S1', " + value(upTo(2) == 0 ? QString() : anyCode()) +
            ") ON CONFLICT DO NOTHING");
    }
}

void BuildComparison::addQualifications() {
    std::map<QString, bool> known;
    for (int count = upTo(6); count > 0; --count) {
        const QString code = anyCode();
        const bool isFirst = known.emplace(code.toLower().trimmed(), true).second;
        add("INSERT INTO \"Emp_Qualifications\" VALUES (" + value(code) + ", 'Q', " +
            (isFirst || upTo(10) == 0 ? "-1" : "0") + ")");
    }
}

void BuildComparison::addHistory() {
    static const char* const types[] = {"TR", "AR", "hr", "XX"};
    for (int count = upTo(25); count > 0; --count) {
        std::string amounts;
        for (int column = 0; column < 6; ++column) {
            const QString amount = anyAmount(column >= 2);
            amounts += ", " + (amount.isNull() ? "NULL" : amount.toStdString());
        }
        add("INSERT INTO \"TimeHistory\" (thist_emp, shift_date, thist_record_type, t15, t20, "
            "\"tlyrAccepted\", \"tlyrAccepted2\", \"tlyrDeclined\", \"tlyrDeclined2\") VALUES (" +
            value(anyCode()) + ", '2020-02-0" + std::to_string(1 + upTo(9)) + " 00:00:00', '" +
            types[upTo(4)] + "'" + amounts + ")");
    }
}

void BuildComparison::build() {
    const HostContext context = m_host.context(m_folder.path());
    CanvassState state;
    state.DataPath = m_folder.path();
    state.openHostOptions();
    if (upTo(2) == 0)
        state.period = TotallingPeriod{*Dates::parse(QStringLiteral("2/3/2020")),
                                       *Dates::parse(QStringLiteral("2/7/2020"))};
    const bool multiply = upTo(2) == 0;
    const ErrorQuestion ignore = [this](const RunError&) {
        ++m_failures;
        return ErrorAnswer::Ignore;
    };
    m_quick = QuickBuild::run(state, context.BucketForm, multiply);
    m_quickCells = cells();
    TotalsBuild build(state, context.BucketForm, multiply, ignore);
    if (!build.run())
        ++m_failures;
    m_cells = cells();
}

// With their types, in the order in which the rows lie.
QStringList BuildComparison::cells() const {
    const auto rows =
        m_folder.open(mainFile)->openRecordset(QStringLiteral("tlyrTemp"), RecordsetType::Snapshot);
    QStringList result;
    for (; !rows->eof(); rows->moveNext()) {
        for (int column = 0; column < rows->fieldCount(); ++column) {
            const Variant value = rows->field(column);
            result << QStringLiteral("%1 = %2 (%3)")
                          .arg(rows->fieldName(column),
                               value.isNull() ? QStringLiteral("Null") : value.toText())
                          .arg(static_cast<int>(value.type()));
        }
    }
    return result;
}

QString BuildComparison::difference() const {
    if (!m_quick)
        return m_failures > 0 ? QString() : QStringLiteral("the quick way gave up for no failure");
    if (m_failures > 0)
        return QStringLiteral("the quick way passed over a failure");
    const qsizetype count = std::max(m_quickCells.size(), m_cells.size());
    for (qsizetype at = 0; at < count; ++at) {
        if (m_quickCells.value(at) != m_cells.value(at))
            return m_quickCells.value(at) + QStringLiteral(" differs from ") + m_cells.value(at);
    }
    return {};
}

} // namespace tallyroom
