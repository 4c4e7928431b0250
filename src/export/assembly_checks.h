// What the dialogs warn about in an assembly. Host's thread only.
#pragma once

namespace NXOpen {
class BasePart;
}

namespace pivra {

class ExportRun;

/// True when a part that `part` (may be null) holds as a component, at any depth, has changes that are not saved. Each
/// part is asked once, and none after the first hit; `part` itself is not asked. A host exception of a part is logged
/// and skips that part; one that ended the reading of the tree is logged after the parts that were read.
bool hasUnsavedComponent(NXOpen::BasePart* part, ExportRun& run);

/// True when a component, loaded or not, is backed by something else than a .prt file on the local disk. Parts under
/// Teamcenter are supported, and so are components of which no file is known. Otherwise as hasUnsavedComponent().
bool hasUnsupportedComponent(NXOpen::BasePart* part, ExportRun& run);

/// True when `part` has changes that are not saved or, unless its drawing is what counts, one of its components has.
bool hasUnsavedChanges(NXOpen::BasePart* part, bool isDrawing, ExportRun& run);

}  // namespace pivra
