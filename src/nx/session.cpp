#include "nx/session.h"

#include "logging/log.h"
#include "nx/text.h"

#include <NXOpen/BasePart.hxx>

namespace nx {

namespace {

/// The text that `name` gets from the host; empty when the host throws.
template <typename Name>
std::string textOrEmpty(Name name) {
    try {
        return utf8(name());
    } catch (...) {
        return {};
    }
}

}  // namespace

bool checkNxStatus(const char* operation, int status) noexcept {
    if (status == 0) return true;
    logging::logBuilt(logging::LogLevel::warning, [&] {
        return std::string(operation) + " failed with NX status " + std::to_string(status) + ".";
    });
    return false;
}

std::string partLogLabel(NXOpen::BasePart* part) {
    if (part == nullptr) return "<null part>";
    const std::string leaf = textOrEmpty([&] { return part->Leaf(); });
    const std::string path = textOrEmpty([&] { return part->FullPath(); });
    if (path.empty()) return leaf.empty() ? "<unnamed NX part>" : leaf;
    return leaf.empty() ? path : path + " (" + leaf + ")";
}

}  // namespace nx
