#include "host/BoardRun.h"

#include "host/BoardPicture.h"
#include "host/BoardWatch.h"
#include "host/ExitCodes.h"
#include "host/Host.h"
#include "host/HostMessages.h"
#include "host/KeptMemory.h"

namespace tallyroom::host {

namespace {

int endOf(bool isShown) {
    if (isShown)
        return exitSuccess;
    printError(QStringLiteral("The board was not shown."));
    return exitFailure;
}

} // namespace

int runBoard(const Options& options) {
    if (options.pictureFile.isEmpty()) {
        const BoardWatch watch;
        Host(options).callEntry(options.openEntry);
        return endOf(watch.wasSeen() || !options.opensBoard());
    }
    const KeptMemory kept(options.dataFolder, options.user);
    const BoardPicture picture(options.pictureFile);
    Host(options).callEntry(options.openEntry);
    return endOf(picture.isTaken());
}

} // namespace tallyroom::host
