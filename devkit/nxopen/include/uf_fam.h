// Part families.
#pragma once

#include <uf_defs.h>

/* The family and the member's index of an instance object. */
NXOPEN_C int UF_FAM_ask_instance_data(tag_t instance, tag_t* family, int* member_index);
