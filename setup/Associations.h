// The host's absent codes that stand for accepted and declined overtime.
#pragma once

#include "common/AnswerKind.h"
#include "common/Variant.h"

#include <QStringList>
#include <array>
#include <optional>

namespace tallyroom::Associations {

// Accepted and declined, then the same two for double time: the order of the windows' lists.
inline constexpr std::array kinds = {&answerKind(AuditAction::Accepted, Rate::OneAndAHalf),
                                     &answerKind(AuditAction::Declined, Rate::OneAndAHalf),
                                     &answerKind(AuditAction::Accepted, Rate::Double),
                                     &answerKind(AuditAction::Declined, Rate::Double)};
// One for each kind. A Null is a code that is not set up.
using Codes = std::array<Variant, kinds.size()>;

// All routines take the host's data folder and raise what the database raises.

// One list entry for each absent code of the host that can be read, by code; see
// CoreFunctions::listEntry().
QStringList absentCodeEntries(const QString& dataPath);

// The stored codes, one that cannot be read as a Null; nothing before the first setup.
std::optional<Codes> read(const QString& dataPath);

void removeAll(const QString& dataPath);

// Replaces the stored codes by two (double time is then not set up) or four, in the order
// of `kinds`.
// The statements stand on their own: a failure of the second one, as for a code with an apostrophe
// (3075), leaves no codes.
void save(const QString& dataPath, const QStringList& codes);

} // namespace tallyroom::Associations
