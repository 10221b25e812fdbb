// What fuzz targets share. A target takes any bytes; it stops the process where a promise is
// broken.
#pragma once

#include "common/RunError.h"

#include <QStringList>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace tallyroom {

inline void require(bool holds, const char* promise) {
    if (holds)
        return;
    std::fprintf(stderr, "broken: %s\n", promise);
    std::abort();
}

// The error that a command raises, 0 when it succeeds. Nothing but a RunError may leave it.
template<class Command>
int errorOf(const Command& command) {
    try {
        command();
        return 0;
    } catch (const RunError& error) {
        return error.number();
    }
}

inline QByteArray bytesOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)};
}

// The lines of the input, at least `count`; the last one is all that is left.
inline QStringList linesOf(const std::uint8_t* data, std::size_t size, int count) {
    const QString text = QString::fromUtf8(bytesOf(data, size));
    QStringList lines = text.split(u'\n');
    while (lines.size() < count)
        lines << QString();
    lines[count - 1] = text.section(u'\n', count - 1);
    return lines.mid(0, count);
}

} // namespace tallyroom
