// Window measures that the design gives in twips.
#pragma once

namespace tallyroom {

// One twip is 1/1440 inch, 15 of them a device-independent pixel of 1/96 inch.
constexpr int pixels(int twips) {
    return twips / 15;
}

} // namespace tallyroom
