// Names of the parts that errors come from.
#pragma once

#include "common/RunError.h"

#include <QString>

namespace tallyroom {

namespace ErrorSource {
inline const QString database = QStringLiteral("DAO.Database");
inline const QString recordset = QStringLiteral("DAO.Recordset");
inline const QString workspace = QStringLiteral("DAO.Workspace");
inline const QString fields = QStringLiteral("DAO.Fields");
inline const QString field = QStringLiteral("DAO.Field");
} // namespace ErrorSource

// The same error, reported by another part.
inline RunError withSource(const RunError& error, const QString& source) {
    return {error.number(), error.description(), source};
}

} // namespace tallyroom
