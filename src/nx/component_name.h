// The name that a component has in the C interface.
#pragma once

#include <uf.h>
#include <uf_assem.h>
#include <uf_cfi.h>
#include <uf_defs.h>
#include <uf_obj_types.h>

namespace nx {

/// Writes the file or, for a part of Teamcenter, the database name of the part that `component` places into `name`, in
/// the host's code page, whether or not the part is loaded. Returns the status. Host's thread, within an open bracket.
inline int askComponentName(tag_t component, char (&name)[MAX_FSPEC_BUFSIZE]) {
    char referenceSet[UF_OBJ_NAME_BUFSIZE] = "";
    char instance[UF_CFI_MAX_FILE_NAME_BUFSIZE] = "";
    double origin[3] = {};
    double matrix[9] = {};
    double transform[4][4] = {};
    return UF_ASSEM_ask_component_data(component, name, referenceSet, instance, origin, matrix, transform);
}

}  // namespace nx
