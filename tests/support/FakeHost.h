// The host's objects as a test plays them.
#pragma once

#include "common/HostContext.h"

#include <QStringList>
#include <functional>
#include <optional>

namespace tallyroom {

// Every object reads its answers from here and notes its calls here. It must outlive the context.
struct FakeHost {
    QStringList calls; // "FillSpot", "Show bucket", "ttedit_click", …
    QString filter = QStringLiteral("<> NULL");
    std::optional<QString> bucketName;  // nothing: a host that has no names for its buckets
    QStringList selection;              // what a list is filled with
    std::function<void()> onFilterRead; // may throw
    std::function<void()> onShowBucket; // what the user does in the bucket form
    Date shownDate;                     // what the date picker was set to
    Variant pickedDate;                 // Empty: the user picks nothing
    QByteArray picture;                 // of the splash

    HostContext context(const QString& dataPath, const QString& user = QStringLiteral("Ann"));
};

} // namespace tallyroom
