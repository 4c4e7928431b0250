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
        return name();
    } catch (...) {
        return {};
    }
}

/// The text that is known, or the one that `ask` gets from the host.
template <typename Ask>
const std::string& once(std::optional<std::string>& known, Ask ask) {
    if (!known) known = utf8(ask());
    return *known;
}

}  // namespace

bool checkNxStatus(const char* operation, int status) noexcept {
    if (status == 0) return true;
    logging::logBuilt(logging::LogLevel::warning, [&] {
        return std::string(operation) + " failed with NX status " + std::to_string(status) + ".";
    });
    return false;
}

const std::string& PartNames::leaf(NXOpen::BasePart& part) {
    return once(known_[&part].leaf, [&] { return part.Leaf(); });
}

const std::string& PartNames::fullPath(NXOpen::BasePart& part) {
    return once(known_[&part].fullPath, [&] { return part.FullPath(); });
}

const std::string& PartNames::uniqueIdentifier(NXOpen::BasePart& part) {
    return once(known_[&part].uniqueIdentifier, [&] { return part.UniqueIdentifier(); });
}

std::string PartNames::logLabel(NXOpen::BasePart* part) {
    if (part == nullptr) return "<null part>";
    const std::string name = textOrEmpty([&] { return leaf(*part); });
    const std::string path = textOrEmpty([&] { return fullPath(*part); });
    if (path.empty()) return name.empty() ? "<unnamed NX part>" : name;
    return name.empty() ? path : path + " (" + name + ")";
}

std::string partLogLabel(NXOpen::BasePart* part) {
    return PartNames().logLabel(part);
}

}  // namespace nx
