#include "traceability/part_label.h"

#include "nx/text.h"

#include <NXOpen/BasePart.hxx>

namespace pivra {

namespace {

/// What `name` asks of the host; empty when the host throws.
template <typename Name>
std::string textOrEmpty(Name name) {
    try {
        return nx::utf8(name());
    } catch (...) {
        return {};
    }
}

}  // namespace

std::string partLogLabel(NXOpen::BasePart* part) {
    if (part == nullptr) return "<null part>";
    const std::string leaf = textOrEmpty([&] { return part->Leaf(); });
    const std::string path = textOrEmpty([&] { return part->FullPath(); });
    if (path.empty()) return leaf.empty() ? "<unnamed NX part>" : leaf;
    return leaf.empty() ? path : path + " (" + leaf + ")";
}

}  // namespace pivra
