// In place of the engine, where the server's library was not there when the program was built.
#include "store/ErrorSource.h"
#include "store/postgres/PostgresSite.h"
#include "store/postgres/ServerAddress.h"

namespace tallyroom {

namespace {

[[noreturn]] void refuse() {
    throw RunError(ErrorNumber::connectionFailed,
                   QStringLiteral("This program was built without support for servers."),
                   ErrorSource::workspace);
}

} // namespace

QString postgresVersion() {
    return {};
}

std::shared_ptr<Database> openOnServer(const QString& path, WhenInUse, CopySearchMaker) {
    parseServerAddress(path);
    refuse();
}

void createSite(const QString&, const std::function<void()>&, std::span<const Schema::File>) {
    refuse();
}

void completeOnServer(const QString&, const FileCompletion&) {
    refuse();
}

} // namespace tallyroom
