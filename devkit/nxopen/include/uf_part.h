// Questions about a part.
#pragma once

#include <uf_defs.h>

/* What could not be loaded: `n_parts` names (UF_free_string_array) and statuses (UF_free). */
typedef struct UF_PART_load_status_s {
    logical failed;
    logical user_abort;
    int n_parts;
    char** file_names;
    int* statuses;
} UF_PART_load_status_t, *UF_PART_load_status_p_t;

/* Frees what a load status holds. */
NXOPEN_C int UF_PART_free_load_status(UF_PART_load_status_p_t load_status);

/* The part's full path, or its encoded name when it is managed. */
NXOPEN_C int UF_PART_ask_part_name(tag_t part, char part_fspec[MAX_FSPEC_BUFSIZE]);
NXOPEN_C logical UF_PART_is_modified(tag_t part);

NXOPEN_C int UF_PART_is_family_instance(tag_t part, logical* is_family_instance);
NXOPEN_C int UF_PART_is_family_template(tag_t part, logical* is_family_template);
/* The part's instance object, NULL_TAG when it has none. */
NXOPEN_C int UF_PART_ask_family_instance(tag_t part, tag_t* instance);
