// The running host: its data, the objects that it offers to add-ins, and the add-in.
#pragma once

#include "host/AddInModule.h"
#include "host/Options.h"
#include "host/frmBucket.h"
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

    void showMenu();

    // Opens the add-in's board; returns when the user closes it. Raises what the add-in reports.
    void openBoard();

private:
    void select(const QStringList& codes);
    Variant boardArguments() const;

    Options m_options;
    std::shared_ptr<Database> m_database;
    HostData m_data;
    BucketSelection m_selection;
    std::unique_ptr<frmMenu> m_menu;
    BucketObject* m_bucket;
    ObjectRef m_bucketForm;
    ObjectRef m_datePickerForm;
    ObjectRef m_menuForm;
    ObjectRef m_splashPicture;
    std::unique_ptr<AddInModule> m_module; // loaded when it is first needed
};

} // namespace tallyroom::host
