// The running host: its data, the objects that it offers to add-ins, and the add-in.
#pragma once

#include "host/AddInEntries.h"
#include "host/AddInModule.h"
#include "host/BucketObject.h"
#include "host/Options.h"
#include "host/frmMenu.h"

#include <memory>

namespace tallyroom::host {

class Host {
public:
    // Raises what opening the data folder raises, and 5 for unknown employee codes.
    explicit Host(const Options& options);
    // Lets go of everything that the add-in holds or gave, then unloads it.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // Shows the main window with the add-in's entries. Without an add-in it says why and shows
    // none.
    void showMenu();

    // Calls an entry of the add-in; returns when the user has closed what it opened. Raises what
    // the add-in reports, and 438 for an entry that it does not describe.
    void callEntry(const QString& callName);

private:
    void select(const QStringList& codes);
    const std::vector<AddInEntry>& entries(); // loads the add-in when it is first needed
    Variant valueOf(std::int32_t kind) const;

    Options m_options;
    std::shared_ptr<Database> m_database;
    HostData m_data;
    NamedBuckets m_buckets;
    BucketSelection m_selection;
    std::unique_ptr<frmMenu> m_menu;
    BucketObject* m_bucket;
    ObjectRef m_bucketForm;
    ObjectRef m_datePickerForm;
    ObjectRef m_menuForm;
    ObjectRef m_splashPicture;
    std::unique_ptr<AddInModule> m_module;
    std::vector<AddInEntry> m_entries;
};

} // namespace tallyroom::host
