#include "setup/AssociationLists.h"

#include "common/CoreFunctions.h"
#include "common/ui/FixedPitch.h"
#include "common/ui/Messages.h"
#include "common/ui/WaitPointer.h"
#include "setup/Associations.h"

namespace tallyroom::AssociationLists {

namespace {

void selectStored(const Lists& lists, const Associations::Codes& codes,
                  const QStringList& entries) {
    Q_ASSERT(lists.size() <= codes.size());
    for (std::size_t kind = 0; kind < lists.size(); ++kind) {
        const QString code = codes[kind].textOrEmpty();
        const int found = code.isEmpty() ? -1 : CoreFunctions::FindInBox(entries, code);
        // The search goes by the start of an entry; another, longer code is not the stored one.
        if (found >= 0 &&
            CoreFunctions::GetCode(entries[found]).compare(code.trimmed(), Qt::CaseInsensitive) ==
                0)
            lists[kind]->setCurrentIndex(found);
    }
}

void reportNoCodes(QWidget* window, const QString& dataPath) {
    Messages::show(window,
                   QStringLiteral("The Tallyroom cannot continue until you setup at least one "
                                  "absent code from Brightclock."),
                   QMessageBox::Warning);
    Associations::removeAll(dataPath);
}

QStringList chosenCodes(const Lists& lists) {
    QStringList codes;
    for (const QComboBox* list : lists)
        codes.append(CoreFunctions::GetCode(list->currentText()));
    return codes;
}

} // namespace

bool load(QWidget* window, const QString& dataPath, const Lists& lists) {
    const QStringList entries = Associations::absentCodeEntries(dataPath);
    for (QComboBox* list : lists) {
        useFixedPitch(list);
        list->clear();
        list->addItems(entries);
        list->setCurrentIndex(-1);
    }
    if (entries.isEmpty()) {
        reportNoCodes(window, dataPath);
        return false;
    }
    if (const auto codes = Associations::read(dataPath))
        selectStored(lists, *codes, entries);
    return true;
}

bool save(QWidget* window, const QString& dataPath, const Lists& lists,
          const QStringList& messages) {
    Q_ASSERT(messages.size() == std::ssize(lists));
    WaitPointer::show();
    for (std::size_t kind = 0; kind < lists.size(); ++kind) {
        if (lists[kind]->currentIndex() < 0) {
            Messages::show(window, messages[static_cast<qsizetype>(kind)], QMessageBox::Critical);
            return false;
        }
    }
    Associations::save(dataPath, chosenCodes(lists));
    return true;
}

} // namespace tallyroom::AssociationLists
