// An add-in's module: found, loaded, and unloaded when it agrees.
#pragma once

#include "common/Objects.h"

namespace tallyroom::host {

// The module's file: the given one, else that of Places. Raises 429 with its name when it is not
// there.
QString findModule(const QString& given);

class AddInModule {
public:
    // Raises 429 with the loader's words when the file is no add-in's module.
    explicit AddInModule(const QString& file);
    // Unloads the module if it says that it can be; all references to its objects must be gone.
    ~AddInModule();
    AddInModule(const AddInModule&) = delete;
    AddInModule& operator=(const AddInModule&) = delete;

    // A new object of one of the module's classes; raises 429.
    ObjectRef createObject(const Guid& classId) const;

private:
    void* exported(const char* name) const;

    void* m_handle;
    DllGetClassObjectFunction* m_getClassObject = nullptr;
    DllCanUnloadNowFunction* m_canUnloadNow = nullptr;
};

} // namespace tallyroom::host
