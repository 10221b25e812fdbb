// The object through which add-ins reach the selection of employees.
#pragma once

#include "host/BucketSelection.h"
#include "host/NamedBuckets.h"

namespace tallyroom::host {

// Members: `FillSpot`(list) fills the list and remembers it until the next `Show`; `fillalist`
// (list) only fills; `Show`([modal]) opens the form and, when it ends by OK, fills the remembered
// list anew; properties `AllowSort`, `employeefilter`, and `BucketName`, "" for a choice without.
class BucketObject : public LateBoundObject {
public:
    // All must outlive the object.
    BucketObject(BucketSelection& selection, NamedBuckets& buckets, const HostData& hostData);

    void forgetTarget() { m_target = {}; }

private:
    void Show();

    BucketSelection& m_selection;
    NamedBuckets& m_buckets;
    const HostData& m_data;
    ObjectRef m_target; // the list of the add-in that awaits the next choice
    bool m_allowSort = true;
};

} // namespace tallyroom::host
