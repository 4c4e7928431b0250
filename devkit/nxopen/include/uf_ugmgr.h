// Parts that Teamcenter manages.
#pragma once

#include <uf_defs.h>

#define UF_UGMGR_PARTNO_BUFSIZE (4 * 128 + 1)
#define UF_UGMGR_PARTREV_BUFSIZE (4 * 32 + 1)
#define UF_UGMGR_FTYPE_BUFSIZE (4 * 64 + 1)
#define UF_UGMGR_FNAME_BUFSIZE (4 * 128 + 1)
#define UF_UGMGR_NAME_BUFSIZE (4 * 128 + 1)

/* An object of the database, not of the session. */
typedef tag_t UF_UGMGR_tag_t;
#define UF_UGMGR_null_tag ((UF_UGMGR_tag_t)0)

/* The pieces of "%UGMGR=V3.2 PN=number PRN=revision AT=type AN=name" or "@DB/number/revision[/type/name]". Absent
   pieces are empty. A name of neither form is refused. */
NXOPEN_C int UF_UGMGR_decode_part_file_name(const char* encoded_name, char part_number[UF_UGMGR_PARTNO_BUFSIZE],
                                            char part_revision[UF_UGMGR_PARTREV_BUFSIZE],
                                            char part_file_type[UF_UGMGR_FTYPE_BUFSIZE],
                                            char part_file_name[UF_UGMGR_FNAME_BUFSIZE]);
/* The form "@DB/…" of an encoded name, to be freed with UF_free. */
NXOPEN_C int UF_UGMGR_convert_file_name_to_cli(const char* internal_name, char** cli_name);
NXOPEN_C int UF_UGMGR_ask_part_tag(char* part_number, UF_UGMGR_tag_t* database_part_tag);
NXOPEN_C int UF_UGMGR_ask_configured_rev(UF_UGMGR_tag_t database_part_tag, UF_UGMGR_tag_t* part_revision);
NXOPEN_C int UF_UGMGR_ask_part_revision_id(UF_UGMGR_tag_t part_revision, char revision_id[UF_UGMGR_NAME_BUFSIZE]);
