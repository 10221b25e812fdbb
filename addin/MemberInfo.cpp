#include "addin/MemberInfo.h"

#include "addin/Application.h"

namespace tallyroom {

MemberInfo::MemberInfo() {
    addMethod(QStringLiteral("dllVersion"),
              [](const Arguments&) { return Variant(applicationInfo().version()); });
}

} // namespace tallyroom
