#include "host/KeptMemory.h"

#include "store/SqlText.h"
#include "store/Workspace.h"

namespace tallyroom::host {

namespace {

const QString formField = QStringLiteral("formname");
const QString optionsField = QStringLiteral("formoptions");

// Under this name add-ins remember what windows are like while nobody is signed in.
const QString nobody = QStringLiteral("*Master*");

std::shared_ptr<Recordset> rowsOf(const QString& dataFolder, const QString& user) {
    return Workspace::openHostOptions(dataFolder)
        ->openRecordset(QStringLiteral("Select * from [FormOptions] where [Username] = '%1';")
                            .arg(SqlText::escaped(user)),
                        RecordsetType::Dynaset);
}

} // namespace

KeptMemory::KeptMemory(const QString& dataFolder, const QString& user)
    : m_rows(rowsOf(dataFolder, user.isEmpty() ? nobody : user)) {
    for (; !m_rows->eof(); m_rows->moveNext())
        m_options.insert(m_rows->field(formField).textOrEmpty(),
                         m_rows->field(optionsField).textOrEmpty());
}

KeptMemory::~KeptMemory() {
    try {
        putBack();
    } catch (const std::exception&) {
        // A size that is remembered anew is no reason to fail a picture that has been taken.
    }
}

void KeptMemory::putBack() {
    for (m_rows->requery(); !m_rows->eof(); m_rows->moveNext()) {
        const auto kept = m_options.constFind(m_rows->field(formField).textOrEmpty());
        if (kept == m_options.constEnd()) {
            m_rows->remove();
        } else if (m_rows->field(optionsField).textOrEmpty() != *kept) {
            m_rows->edit();
            m_rows->setField(optionsField, Variant(*kept));
            m_rows->update();
        }
    }
}

} // namespace tallyroom::host
