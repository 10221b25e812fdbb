// The date picker as add-ins see it.
#pragma once

#include "common/Objects.h"

namespace tallyroom::host {

// Properties `MonthView1` (an object whose property `Value` is the day shown and picked) and
// `WasPicked`; method `Show`([modal]).
class DatePickerObject : public LateBoundObject {
public:
    DatePickerObject();

private:
    void Show();

    ObjectRef m_monthView;
    bool m_wasPicked = false;
};

} // namespace tallyroom::host
