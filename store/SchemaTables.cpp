// The tables themselves: the add-in's own, the shared scratch table and the host's.
#include "store/Schema.h"

namespace tallyroom::Schema {

namespace {

using enum ColumnType;

constexpr int codeWidth = 9;
constexpr int nameWidth = 50;
constexpr int phoneWidth = 20;
constexpr int widestText = 255;
constexpr int commandWidth = 36; // a UUID

constexpr Column assocColumns[] = {
    {u"Accepted", Text, codeWidth},
    {u"Declined", Text, codeWidth},
    {u"Accepted2", Text, codeWidth},
    {u"Declined2", Text, codeWidth},
};

constexpr Column periodColumns[] = {
    {u"from_date", Date},
    {u"to_date", Date},
};

constexpr Column orderColumns[] = {
    {u"descr", Text, nameWidth},
    {u"details", Memo},
};

constexpr Column auditColumns[] = {
    {u"Now", Date},
    {u"User", Text, widestText}, // a name that is cut is not found again
    {u"Emp_Code", Text, codeWidth},
    {u"Date", Date},
    {u"Action", Long},
    {u"OT", Long},
    {u"tHistField", Text, nameWidth},
};
constexpr const char16_t* auditOrder[] = {u"Now", u"Emp_Code"};
constexpr const char16_t* auditEmployee[] = {u"Emp_Code", u"Date"};
constexpr Index auditIndexes[] = {
    {u"TLYR_Audit_Now", auditOrder},
    {u"TLYR_Audit_Employee", auditEmployee},
};

// Where employees stood when their answers were given. The rows of one command share its number;
// the first has no employee and holds the list as it stood, the others belong to one row of the
// audit each and repeat its key.
constexpr Column standingColumns[] = {
    {u"Command", Text, commandWidth},
    {u"Now", Date},
    {u"User", Text, widestText},
    {u"Emp_Code", Text, codeWidth},
    {u"Date", Date},
    {u"Action", Long}, // as in the audit: 2 once the answer was deleted there
    {u"OT", Long},
    {u"tHistField", Text, nameWidth},
    {u"Place", Long},  // from 1
    {u"Listed", Long}, // how many were on the board
    {u"Total", Long},  // minutes, as the board showed them
    {u"Seniority", Double},
    {u"Details", Memo},
};
constexpr const char16_t* standingEmployee[] = {u"Emp_Code", u"Date"};
constexpr const char16_t* standingCommand[] = {u"Command"};
constexpr Index standingIndexes[] = {
    {u"TLYR_Standing_Employee", standingEmployee},
    {u"TLYR_Standing_Command", standingCommand},
};

// What came of a call that ended without an answer.
constexpr Column contactColumns[] = {
    {u"Now", Date},     {u"User", Text, widestText},   {u"Emp_Code", Text, codeWidth},
    {u"Date", Date}, // of the overtime
    {u"Outcome", Long}, {u"Remark", Text, widestText},
};
constexpr const char16_t* contactDay[] = {u"Date", u"Emp_Code"};
constexpr Index contactIndexes[] = {{u"TLYR_Contact_Day", contactDay}};

constexpr Table addInTables[] = {
    {u"tlyr_assoc", assocColumns, {}},
    {u"tlyr_period", periodColumns, {}},
    {u"tlyr_order", orderColumns, {}},
    {u"TLYR_Audit", auditColumns, auditIndexes},
    {u"TLYR_Standing", standingColumns, standingIndexes},
    {u"TLYR_Contact", contactColumns, contactIndexes},
};

// The minute columns have no default: an employee without history keeps Null in them.
constexpr Column scratchColumns[] = {
    {u"emp_code", Text, codeWidth},
    {u"emp_name", Text, nameWidth},
    {u"sendate", Date},
    {u"Seniority", Double},
    {u"emp_dept", Text, codeWidth},
    {u"phone", Text, phoneWidth},
    {u"altphone", Text, phoneWidth},
    {u"cellphone", Text, phoneWidth},
    {u"pager", Text, phoneWidth},
    {u"emp_shift", Text, codeWidth},
    {u"defaulttimecalc", Text, codeWidth},
    {u"Qual_Code", Text, codeWidth},
    {u"T15Hours", Long},
    {u"T20Hours", Long},
    {u"T15Hours_Mult", Long},
    {u"T20Hours_Mult", Long},
    {u"xT15Accepted", Long},
    {u"xT20Accepted", Long},
    {u"xT15Declined", Long},
    {u"xT20Declined", Long},
    {u"T15Accepted", Long},
    {u"T20Accepted", Long},
    {u"T15Declined", Long},
    {u"T20Declined", Long},
    {u"WorkedOT", Long},
    {u"AcceptedOT", Long},
    {u"DeclinedOT", Long},
    {u"TotalOT1", Long},
    {u"TotalOT2", Long},
};
constexpr const char16_t* scratchEmployee[] = {u"emp_code"};
constexpr Index scratchIndexes[] = {{u"tlyrTemp_Employee", scratchEmployee}};

constexpr Table mainTables[] = {{u"tlyrTemp", scratchColumns, scratchIndexes, true}};

constexpr Column employeeColumns[] = {
    {u"emp_code", Text, codeWidth},
    {u"emp_name", Text, nameWidth},
    {u"sendate", Date},
    {u"Seniority", Double},
    {u"emp_dept", Text, codeWidth},
    {u"phone", Text, phoneWidth},
    {u"emp_shift", Text, codeWidth},
    {u"defaulttimecalc", Text, codeWidth},
};
constexpr const char16_t* employeeCode[] = {u"emp_code"};
constexpr Index employeeIndexes[] = {{u"Employee_Code", employeeCode, true}};

constexpr Column qualificationColumns[] = {
    {u"Emp_Code", Text, codeWidth},
    {u"Qual_Code", Text, codeWidth},
    {u"Default", Boolean},
};
constexpr const char16_t* qualificationEmployee[] = {u"Emp_Code"};
constexpr Index qualificationIndexes[] = {{u"Emp_Qualifications_Employee", qualificationEmployee}};

constexpr Column historyColumns[] = {
    {u"thist_emp", Text, codeWidth},
    {u"rule", Text, codeWidth},
    {u"thist_date", Date},
    {u"shift_date", Date},
    {u"thist_record_type", Text, 2},
    {u"thist_shift", Text, codeWidth},
    {u"thist_dept", Text, codeWidth},
    {u"thist_start_time", Date},
    {u"thist_stop_time", Date},
    {u"thist_attend_code", Text, codeWidth},
    {u"t15", Double},
    {u"t20", Double},
    {u"tlyrAccepted", Long},
    {u"tlyrAccepted2", Long},
    {u"tlyrDeclined", Long},
    {u"tlyrDeclined2", Long},
    {u"Notes", Memo},
};
// Covers what totals over a period read, so that they never touch the history's rows.
constexpr const char16_t* historyTotals[] = {
    u"thist_emp",    u"shift_date",    u"thist_record_type", u"t15",           u"t20",
    u"tlyrAccepted", u"tlyrAccepted2", u"tlyrDeclined",      u"tlyrDeclined2",
};
// A server's index holds keys of texts, so that the rows are read all the same: those of a period
// are found at once.
constexpr const char16_t* historyDates[] = {u"shift_date"};
constexpr Index historyIndexes[] = {{u"TimeHistory_Totals", historyTotals},
                                    {u"TimeHistory_Dates", historyDates, false, true}};

constexpr Column shiftColumns[] = {
    {u"Shift_Code", Text, codeWidth},
    {u"Shift_Rule_Num", Text, codeWidth},
    {u"shift_descr", Text, nameWidth},
    {u"shift_start", Date},
    {u"shift_stop", Date},
};
constexpr const char16_t* shiftCode[] = {u"Shift_Code"};
constexpr Index shiftIndexes[] = {{u"Shift_Code_Key", shiftCode, true}};

constexpr Column absenteeColumns[] = {
    {u"absent_code", Text, codeWidth},
    {u"absent_descr", Text, nameWidth},
};
constexpr const char16_t* absenteeCode[] = {u"absent_code"};
constexpr Index absenteeIndexes[] = {{u"Absentee_Code", absenteeCode, true}};

constexpr Column formOptionColumns[] = {
    {u"Username", Text, nameWidth},
    {u"formname", Text, nameWidth},
    {u"formoptions", Memo},
};
constexpr const char16_t* formOptionUser[] = {u"Username", u"formname"};
constexpr Index formOptionIndexes[] = {{u"FormOptions_User", formOptionUser}};

constexpr Column departmentColumns[] = {
    {u"dept_code", Text, codeWidth},
    {u"dept_descr", Text, nameWidth},
};
constexpr const char16_t* departmentCode[] = {u"dept_code"};
constexpr Index departmentIndexes[] = {{u"Department_Code", departmentCode, true}};

constexpr Column scheduleColumns[] = {
    {u"sched_emp", Text, codeWidth},
    {u"sched_date", Date},
    {u"sched_shift", Text, codeWidth},
};
constexpr const char16_t* scheduleEmployee[] = {u"sched_emp", u"sched_date"};
constexpr Index scheduleIndexes[] = {{u"Schedule_Employee", scheduleEmployee}};

constexpr Table hostTables[] = {
    {u"Employee", employeeColumns, employeeIndexes},
    {u"Emp_Qualifications", qualificationColumns, qualificationIndexes},
    {u"TimeHistory", historyColumns, historyIndexes},
    {u"Shift", shiftColumns, shiftIndexes},
    {u"Absentee", absenteeColumns, absenteeIndexes},
    {u"FormOptions", formOptionColumns, formOptionIndexes},
    {u"Department", departmentColumns, departmentIndexes},
    {u"Schedule", scheduleColumns, scheduleIndexes},
};

constexpr File allFiles[] = {
    {u"aidb01.mdb", addInTables},
    {u"vrlxdb01.mdb", mainTables},
    {u"bcx.mdb", hostTables},
};

} // namespace

std::span<const File> files() {
    return allFiles;
}

} // namespace tallyroom::Schema
