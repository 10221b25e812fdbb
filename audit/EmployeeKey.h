// By what the rows of an employee are known as his.
#pragma once

#include "common/TextOrder.h"

namespace tallyroom {

// Codes are those of the same employee where these are the same; they may have blanks at their
// ends.
inline QString employeeKey(const QString& code) {
    return TextOrder::folded(code.trimmed());
}

} // namespace tallyroom
