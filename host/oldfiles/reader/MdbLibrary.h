// The library's own header, and owners for what it makes.
#pragma once

#include <glib.h> // before the next one, which takes what it declares for its own

#include <mdbtools.h>

#include <cstdlib>
#include <memory>

namespace tallyroom::host {

template<auto Release>
struct Releaser {
    template<class Owned>
    void operator()(Owned* owned) const {
        Release(owned);
    }
};

using MdbHandlePtr = std::unique_ptr<MdbHandle, Releaser<mdb_close>>;
using MdbTablePtr = std::unique_ptr<MdbTableDef, Releaser<mdb_free_tabledef>>;
using MdbText = std::unique_ptr<char, Releaser<g_free>>;

inline bool isOldestVersion(const MdbHandle& mdb) {
    return mdb.f->jet_version == MDB_VER_JET3;
}

// Elements of the library's lists, which may be null.
template<class Element>
Element* elementOf(GPtrArray* list, guint at) {
    return list && at < list->len ? static_cast<Element*>(g_ptr_array_index(list, at)) : nullptr;
}

} // namespace tallyroom::host
