#include "canvass/CanvassState.h"

#include "store/Workspace.h"

namespace tallyroom {

Recordset& CanvassState::rows() const {
    if (!CanvassRs)
        throw RunError::make(ErrorNumber::objectNotSet);
    return *CanvassRs;
}

void CanvassState::openHostOptions() {
    HostOptionsDb = Workspace::openHostOptions(DataPath);
    HostOptionsDb->setProgress(progress);
    HostOptionsDb->setListener(listener);
}

const std::shared_ptr<Database>& CanvassState::hostOptions() {
    if (!HostOptionsDb)
        throw RunError::make(ErrorNumber::objectNotSet);
    if (!HostOptionsDb->isInPlace())
        openHostOptions();
    return HostOptionsDb;
}

} // namespace tallyroom
