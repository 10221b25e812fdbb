// The data of the benchmarks and the host that serves them.
#pragma once

#include "common/HostContext.h"

#include <QString>

namespace tallyroom::bench {

// Makes a folder or a site with that many employees and their history.
void makeData(const QString& place, int employees, int days);

// A folder with that many employees and their history, kept between runs. 1,430 days of 5,000
// employees are 5.2 million history rows.
QString keptFolder(int employees, int days = 1430);

// The last day of the histories.
Date lastDay();

// A host of a folder or a site for whom everybody is selected, which it says by the list of all
// their codes.
HostContext hostOf(const QString& folder);
QString everybody(const QString& folder);

QString fileIn(const QString& folder, const char* name);

// Copies the three files of a folder.
void copyFolder(const QString& from, const QString& to);

} // namespace tallyroom::bench
