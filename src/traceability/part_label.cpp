#include "traceability/part_label.h"

#include "nx/text.h"

#include <NXOpen/BasePart.hxx>

namespace pivra {

namespace {

std::string nameOrEmpty(NXOpen::BasePart& part, NXOpen::NXString (NXOpen::BasePart::*name)()) {
    try {
        return nx::utf8((part.*name)());
    } catch (...) {
        return {};
    }
}

}  // namespace

std::string partLogLabel(NXOpen::BasePart* part) {
    if (part == nullptr) return "<null part>";
    const std::string leaf = nameOrEmpty(*part, &NXOpen::BasePart::Leaf);
    const std::string path = nameOrEmpty(*part, &NXOpen::BasePart::FullPath);
    if (path.empty()) return leaf.empty() ? "<unnamed NX part>" : leaf;
    return leaf.empty() ? path : path + " (" + leaf + ")";
}

}  // namespace pivra
