// Compares files and server on as many made-up sets of tables as asked for, from a seed on: a long
// run, of which the tests do a small one. All that differs is told, up to a few.
#include "tests/store/EngineComparison.h"

#include <cstdio>
#include <cstdlib>

int main(int count, char** arguments) {
    const int rounds = count > 1 ? std::atoi(arguments[1]) : 1000;
    const unsigned first = count > 2 ? static_cast<unsigned>(std::atoi(arguments[2])) : 1;
    constexpr int enough = 10;
    int differing = 0;
    tallyroom::EngineComparison engines;
    for (int round = 0; round < rounds && differing < enough; ++round) {
        const unsigned seed = first + static_cast<unsigned>(round);
        if (const QString difference = engines.difference(seed); !difference.isEmpty()) {
            std::printf("seed %u: %s\n", seed, qPrintable(difference));
            ++differing;
        }
    }
    std::printf("%d statements, %d of them refused by both; %d differ\n", engines.statements(),
                engines.refused(), differing);
    return differing > 0 ? 1 : 0;
}
