#include "reports/Spread.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tallyroom {

Spread spreadOf(const std::vector<double>& values) {
    if (values.empty())
        return {};
    const auto count = static_cast<double>(values.size());
    const auto [lowest, highest] = std::ranges::minmax(values);
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
    double squares = 0;
    for (const double value : values)
        squares += (value - mean) * (value - mean);
    return {lowest, highest, mean, std::sqrt(squares / count)};
}

} // namespace tallyroom
