#include "by_hand.h"

#include <stdexcept>

namespace nxhost {

std::vector<std::string> useByHand(const Replay&, Stage&) {
    throw std::runtime_error("The native program has no windows: --interactive is for the Windows program.");
}

}  // namespace nxhost
