// How far amounts lie from each other.
#pragma once

#include <vector>

namespace tallyroom {

// All zero for no values at all.
struct Spread {
    double lowest = 0;
    double highest = 0;
    double mean = 0;
    double deviation = 0; // standard deviation of the values as they are, not of a sample

    double range() const { return highest - lowest; }
};

Spread spreadOf(const std::vector<double>& values);

} // namespace tallyroom
