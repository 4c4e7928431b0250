// The components of an assembly, one after the other.
#pragma once

#include <functional>
#include <string>

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

/// A component, and the part that it places: null for a part that is not loaded, and for an object of the host that is
/// no part.
struct Placement {
    NXOpen::Assemblies::Component* component;
    NXOpen::Part* part;
    bool isLoaded;
};

/// Calls `visit` for each component of `assembly` below `root`, depth first, parents before children, children in the
/// host's order; null components are passed over. The walk ends when `visit` returns false.
///
/// Every placement is visited, since two placements of a subassembly need not hold the same components; two calls of
/// the host for each. Below a part that is placed inside itself the walk does not go again, so that it always ends; its
/// depth is bounded by memory alone. Host's thread; host exceptions and those of `visit` pass through.
void walkComponents(NXOpen::BasePart& assembly, NXOpen::Assemblies::Component& root,
                    const std::function<bool(const Placement&)>& visit);

/// The file that a component refers to, whether or not it is loaded (UTF-8). Empty when none is known, and for a part
/// of Teamcenter, which has a name in the database and no file. Host's thread.
std::string fileOfComponent(NXOpen::Assemblies::Component& component);

}  // namespace pivra
