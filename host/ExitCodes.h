// What the program tells its caller.
#pragma once

namespace tallyroom::host {

inline constexpr int exitSuccess = 0;
inline constexpr int exitFailure = 1;
inline constexpr int exitFindings = 1; // of a report: a check found something
inline constexpr int exitUsage = 2;
inline constexpr int exitNoDisplay = 3;
inline constexpr int exitUnreadable = 3; // of a report: the data cannot be read
inline constexpr int exitUnexpectedWindow = 4;

} // namespace tallyroom::host
