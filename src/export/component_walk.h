// The components of an assembly, one after the other.
#pragma once

#include <functional>

namespace NXOpen {
class BasePart;
class Part;
namespace Assemblies {
class Component;
}
}  // namespace NXOpen

namespace pivra {

/// The root of the component tree of `part` (may be null); null for a part that is no assembly. Host's thread.
NXOpen::Assemblies::Component* rootComponent(NXOpen::BasePart* part);

/// Calls `visit` with the part that each component of `assembly` below `root` places, depth first, parents before
/// children, children in the host's order. Components without a loaded part have no visit of their own, but their
/// children are walked. The walk ends when `visit` returns false.
///
/// Every placement is visited, since two placements of a subassembly need not hold the same components; two calls of
/// the host for each. Below a part that is placed inside itself the walk does not go again, so that it always ends; its
/// depth is bounded by memory alone. Host's thread; host exceptions and those of `visit` pass through.
void walkComponents(NXOpen::BasePart& assembly, NXOpen::Assemblies::Component& root,
                    const std::function<bool(NXOpen::Part&)>& visit);

}  // namespace pivra
