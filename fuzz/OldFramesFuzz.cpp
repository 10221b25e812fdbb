// Frames from the program that reads old files, which a mangled file may have taken over.
#include "fuzz/Fuzz.h"
#include "host/oldfiles/OldFrames.h"

using namespace tallyroom;
using namespace tallyroom::host;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QByteArray bytes = bytesOf(data, size);
    try {
        while (const auto frame = OldFrames::taken(bytes)) {
            const QByteArray once = OldFrames::written(*frame);
            QByteArray again = once;
            const auto same = OldFrames::taken(again);
            require(same && again.isEmpty(), "what is written is one frame");
            require(OldFrames::written(*same) == once, "and stays the same");
        }
    } catch (const OldFileRefused&) {
        return 0; // nonsense is refused
    }
    return 0;
}
