// Timing two ways of one job in turns, and the table that they go into.
#pragma once

#include <functional>
#include <vector>

namespace tallyroom::bench {

// Runs a program: 0, or 1 when it throws, which is printed.
int exitCodeOf(const std::function<void()>& program);

double seconds(const std::function<void()>& job);
double median(std::vector<double> values);

struct Comparison {
    double product; // seconds, medians
    double floor;
    double ratio; // the median of the rounds' own ratios, which a noisy neighbour moves least
};

// Runs both in turns, so that what slows the machine down meets both. `agree` is called after each
// round and throws when the two came to different results.
Comparison inTurns(int rounds, const std::function<double()>& product,
                   const std::function<double()>& floor, const std::function<void()>& agree);

void printHeading();
// Beside the times of a job on a server, how often it waits for the server to answer.
void printRow(const char* job, const Comparison& times, double target, long roundTrips = 0);

// Peak resident size of the process since this was made, in megabytes.
class PeakMemory {
public:
    PeakMemory();
    double megabytes() const;
};

std::size_t bytesInUse(); // of the heap

} // namespace tallyroom::bench
