// What the main window keeps open while it lives.
#pragma once

#include "common/HostContext.h"
#include "common/RunError.h"
#include "setup/TotallingPeriod.h"
#include "store/Database.h"
#include "store/Recordset.h"

#include <memory>
#include <optional>

namespace tallyroom {

// The host options connection and the totals recordset are the only ones that outlive a routine.
struct CanvassState {
    QString DataPath;                                 // the host's data folder, as it was at load
    std::shared_ptr<Database> HostOptionsDb;          // bcx.mdb
    std::shared_ptr<Recordset> CanvassRs;             // all of tlyrTemp, replaced by every build
    std::optional<TotallingPeriod> period;            // nothing: the totals cover all dates
    std::function<void()> progress;                   // called during long queries on bcx.mdb
    std::function<void(const QStringList&)> listener; // told what other desks announce

    // What the derived columns were computed for. They hold as long as the file stays the same.
    struct Derived {
        std::weak_ptr<Database> database;
        bool multiply;
        ChangeMark mark;
    };
    std::optional<Derived> derived;

    // CanvassRs, which is not there as long as no build came that far: then raises 91.
    Recordset& rows() const;

    // Opens bcx.mdb; raises what hinders it.
    void openHostOptions();
    // HostOptionsDb, opened again when another file has taken the place of the one it has open: a
    // file that is gone still shows its last figures. Raises 91 when it was never opened.
    const std::shared_ptr<Database>& hostOptions();
};

} // namespace tallyroom
