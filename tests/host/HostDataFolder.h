// A folder or a site of demonstration data for a test.
#pragma once

#include "host/demo/DemoData.h"
#include "reports/HostData.h"
#include "store/Workspace.h"
#include "tests/support/DataFolder.h"

#include <QTemporaryDir>

namespace tallyroom::host {

inline DemoSettings smallSettings(const QString& folder) {
    DemoSettings settings;
    settings.folder = folder;
    settings.employees = 40;
    settings.days = 60;
    settings.seed = 7;
    settings.end = QDate(2024, 3, 31);
    return settings;
}

class HostDataFolder {
public:
    explicit HostDataFolder(const std::function<void(DemoSettings&)>& change = {}) {
        DemoSettings settings = smallSettings(path());
        if (change)
            change(settings);
        createDemoData(settings, [](int, int) {});
    }

    const QString& path() const { return m_path; }

    std::shared_ptr<Database> open(const QString& file) const {
        return Workspace::openDatabase(path() + QLatin1Char('\\') + file);
    }

    // The first field of the first row.
    Variant value(const QString& file, const QString& sql) const {
        return open(file)->openRecordset(sql, RecordsetType::Snapshot)->field(0);
    }

    int hostCount(const QString& tableAndCondition) const {
        return value(QStringLiteral("bcx.mdb"),
                     QStringLiteral("Select Count(*) from %1;").arg(tableAndCondition))
            .toLong();
    }

    int addInCount(const QString& tableAndCondition) const {
        return value(QStringLiteral("aidb01.mdb"),
                     QStringLiteral("Select Count(*) from %1;").arg(tableAndCondition))
            .toLong();
    }

    // All rows of all tables as texts.
    QStringList everything() const;

private:
    QTemporaryDir m_folder;
    QString m_path = testsOnServer() ? newSite() : m_folder.filePath(QStringLiteral("data"));
};

} // namespace tallyroom::host
