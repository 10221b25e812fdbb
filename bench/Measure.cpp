#include "bench/Measure.h"

#include "common/RunError.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cstdio>
#include <fstream>
#include <malloc.h>
#include <string>

namespace tallyroom::bench {

int exitCodeOf(const std::function<void()>& program) {
    try {
        program();
        return 0;
    } catch (const RunError& error) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(error.description()));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return 1;
}

double seconds(const std::function<void()>& job) {
    QElapsedTimer timer;
    timer.start();
    job();
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

Comparison inTurns(int rounds, const std::function<double()>& product,
                   const std::function<double()>& floor, const std::function<void()>& agree) {
    std::vector<double> products;
    std::vector<double> floors;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        products.push_back(product());
        floors.push_back(floor());
        ratios.push_back(products.back() / floors.back());
        agree();
    }
    return {median(products), median(floors), median(ratios)};
}

void printHeading() {
    std::printf("%-52s %11s %11s %7s %7s\n", "job", "product", "floor", "ratio", "target");
}

void printRow(const char* job, const Comparison& times, double target, long roundTrips) {
    std::printf("%-52s %8.1f ms %8.1f ms %7.2f %7.1f", job, times.product * 1e3, times.floor * 1e3,
                times.ratio, target);
    if (roundTrips > 0)
        std::printf(" %6ld round trips", roundTrips);
    std::puts(times.ratio > target ? "  missed" : "");
    std::fflush(stdout);
}

// The kernel forgets the old peak on a 5.
PeakMemory::PeakMemory() {
    std::ofstream("/proc/self/clear_refs") << "5";
}

double PeakMemory::megabytes() const {
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        double kilobytes = 0;
        if (word == "VmHWM:" && status >> kilobytes)
            return kilobytes / 1024;
    }
    return 0;
}

std::size_t bytesInUse() {
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace tallyroom::bench
