#include "store/FormOptionsTable.h"

#include "store/Recordset.h"
#include "store/SqlText.h"
#include "store/Workspace.h"

namespace tallyroom::FormOptionsTable {

namespace {

const QString userField = QStringLiteral("Username");
const QString formField = QStringLiteral("formname");
const QString optionsField = QStringLiteral("formoptions");

std::shared_ptr<Recordset> openRows(Database& database, const QString& user, const QString& form) {
    return database.openRecordset(
        QStringLiteral("Select * from [FormOptions] where [Username] = '") +
            SqlText::escaped(user) + QStringLiteral("' and [formname] = '") +
            SqlText::escaped(form) + QStringLiteral("';"),
        RecordsetType::Dynaset);
}

} // namespace

QString read(const QString& dataPath, const QString& user, const QString& form) noexcept {
    try {
        const auto database = Workspace::openHostOptions(dataPath);
        auto rows = openRows(*database, user, form);
        if (rows->eof())
            rows = openRows(*database, QStringLiteral("MASTER"), form);
        return rows->eof() ? QString() : rows->field(optionsField).toText();
    } catch (const std::exception&) {
        return {};
    }
}

void write(const QString& dataPath, const QString& user, const QString& form,
           const QString& text) noexcept {
    try {
        const auto rows = openRows(*Workspace::openHostOptions(dataPath), user, form);
        if (rows->eof())
            rows->addNew();
        else
            rows->edit();
        rows->setField(userField, user);
        rows->setField(formField, form);
        rows->setField(optionsField, text);
        rows->update();
    } catch (const std::exception&) {
    }
}

} // namespace tallyroom::FormOptionsTable
