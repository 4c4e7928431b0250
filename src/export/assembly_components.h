// The components of an assembly. Host's thread only.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace NXOpen {
class BasePart;
class Part;
namespace Assemblies {
class Component;
}
}  // namespace NXOpen

namespace pivra {

/// The root of the component tree of `part` (may be null); null for a part that is no assembly. Host exceptions pass
/// through.
NXOpen::Assemblies::Component* rootComponent(NXOpen::BasePart* part);

/// A component, and the part that it places: null for a part that is not loaded, and for an object of the host that is
/// no part.
struct Placement {
    NXOpen::Assemblies::Component* component;
    NXOpen::Part* part;
    bool isLoaded;
    bool isFirst;  ///< the first placement of its part, or one without a part
};

/// The components below a part.
struct AssemblyComponents {
    bool isAssembly = false;
    /// Depth first, parents before children, children in the host's order, without null components.
    std::vector<Placement> placements;
    /// What ended the reading; `placements` are those that came before.
    std::optional<std::string> error;
};

/// Reads the component tree of `part` (may be null). A component costs two calls of the host; a repeated one, whose
/// part is no assembly, costs one.
///
/// Every placement is listed, since two placements of a subassembly need not hold the same components. Below a part
/// that is placed inside itself the reading does not go again, so that it always ends; the depth is bounded by memory
/// alone. Host exceptions end up in `error`.
AssemblyComponents readComponents(NXOpen::BasePart* part);

/// The file that a component refers to, whether or not it is loaded (UTF-8). Empty when none is known, and for a part
/// of Teamcenter, which has a name in the database and no file. Absent, with the reason in the log, when the host could
/// not answer. Host exceptions pass through.
std::optional<std::string> fileOfComponent(NXOpen::Assemblies::Component& component);

}  // namespace pivra
