// What the engine underneath reports, as errors of the desktop engine.
#pragma once

#include "common/RunError.h"

#include <SQLiteCpp/Exception.h>

namespace tallyroom {

// Names of the parts that errors come from.
namespace ErrorSource {
inline const QString database = QStringLiteral("DAO.Database");
inline const QString recordset = QStringLiteral("DAO.Recordset");
inline const QString workspace = QStringLiteral("DAO.Workspace");
inline const QString fields = QStringLiteral("DAO.Fields");
inline const QString field = QStringLiteral("DAO.Field");
} // namespace ErrorSource

// A scalar subquery found a second row; registered functions report with this text.
inline constexpr char moreThanOneRowMark[] = "tallyroom: more than one row";

// Whether an engine's result code means that a file fails, rather than a statement.
bool isFileError(int code);

// `file` is the database that was worked on.
RunError storeError(const SQLite::Exception& error, const QString& file);

// The same error, reported by another part.
RunError withSource(const RunError& error, const QString& source);

} // namespace tallyroom
