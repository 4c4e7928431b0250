// Components of assemblies. The sizes of the buffers come from the headers of their own subjects.
#pragma once

#include <uf_cfi.h>
#include <uf_defs.h>
#include <uf_obj_types.h>

/* What a component places, whether or not that is loaded: the part's full path, or its encoded name when it is managed;
   the reference set and the place are those of an untouched component. */
NXOPEN_C int UF_ASSEM_ask_component_data(tag_t component, char part_name[MAX_FSPEC_BUFSIZE],
                                         char refset_name[UF_OBJ_NAME_BUFSIZE],
                                         char instance_name[UF_CFI_MAX_FILE_NAME_BUFSIZE], double origin[3],
                                         double csys_matrix[9], double transform[4][4]);
