// Compares the two ways of building the board on as many made-up folders as asked for, or on sites
// with "server": a long run, of which the tests do a small one.
#include "tests/canvass/BuildComparison.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

int main(int count, char** arguments) {
    const unsigned rounds = count > 1 ? static_cast<unsigned>(std::atoi(arguments[1])) : 1000;
    const bool onServer = count > 2 && std::string_view(arguments[2]) == "server";
    unsigned quick = 0;
    for (unsigned seed = 1; seed <= rounds; ++seed) {
        const tallyroom::BuildComparison comparison(seed, onServer);
        quick += comparison.isQuick() ? 1 : 0;
        if (const QString difference = comparison.difference(); !difference.isEmpty()) {
            std::printf("folder %u: %s\n", seed, qPrintable(difference));
            return 1;
        }
    }
    std::printf("%u folders, %u of them the quick way: no difference\n", rounds, quick);
}
