// Compares the two ways of building the board on as many made-up folders as asked for, with
// "server" also on sites, whose boards must be those of the folders: a long run, of which the tests
// do a small one.
#include "tests/canvass/BuildComparison.h"

#include <cstdio>
#include <cstdlib>

namespace {

using tallyroom::BuildComparison;

QString siteDifference(unsigned seed, const BuildComparison& files) {
    const BuildComparison site(seed, true);
    if (const QString difference = site.difference(); !difference.isEmpty())
        return QStringLiteral("on the server ") + difference;
    return site.board() == files.board() ? QString()
                                         : QStringLiteral("the server's board is another");
}

} // namespace

int main(int count, char** arguments) {
    const unsigned rounds = count > 1 ? static_cast<unsigned>(std::atoi(arguments[1])) : 1000;
    const bool withSites = count > 2 && std::string_view(arguments[2]) == "server";
    unsigned quick = 0;
    for (unsigned seed = 1; seed <= rounds; ++seed) {
        const BuildComparison comparison(seed, false);
        quick += comparison.isQuick() ? 1 : 0;
        QString difference = comparison.difference();
        if (difference.isEmpty() && withSites)
            difference = siteDifference(seed, comparison);
        if (!difference.isEmpty()) {
            std::printf("folder %u: %s\n", seed, qPrintable(difference));
            return 1;
        }
    }
    std::printf("%u folders, %u of them the quick way: no difference\n", rounds, quick);
}
