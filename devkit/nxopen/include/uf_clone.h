// Clone sessions: here the export of managed parts to native files.
//
// One session at a time, from UF_CLONE_initialise to UF_CLONE_terminate; every other call needs it open. Names of parts
// are encoded names, as UF_UGMGR_decode_part_file_name takes them.
#pragma once

#include <uf_defs.h>
#include <uf_part.h>

#define UF_CLONE_err_not_active 1100001
#define UF_CLONE_err_active 1100002
#define UF_CLONE_err_naming_failures 1100003
#define UF_CLONE_err_comp_not_found 1100004
#define UF_CLONE_err_invalid_setting 1100005
#define UF_CLONE_err_part_not_found 1100006
#define UF_CLONE_err_nothing_added 1100007
#define UF_CLONE_err_write_failed 1100008

typedef enum UF_CLONE_operation_class_e {
    UF_CLONE_clone_operation = 1,
    UF_CLONE_import_operation,
    UF_CLONE_export_operation,
    UF_CLONE_edit_operation
} UF_CLONE_operation_class_t;

typedef enum UF_CLONE_action_e {
    UF_CLONE_clone,
    UF_CLONE_retain,
    UF_CLONE_replace,
    UF_CLONE_overwrite,
    UF_CLONE_use_existing,
    UF_CLONE_default_action
} UF_CLONE_action_t;

typedef enum UF_CLONE_family_treatment_e {
    UF_CLONE_treat_as_lost,
    UF_CLONE_strip_family_status,
    UF_CLONE_give_error
} UF_CLONE_family_treatment_t;

typedef enum UF_CLONE_naming_technique_e {
    UF_CLONE_default_naming,
    UF_CLONE_autogen,
    UF_CLONE_naming_rule,
    UF_CLONE_user_name
} UF_CLONE_naming_technique_t;

typedef enum UF_CLONE_name_rule_type_e { UF_CLONE_replace_string } UF_CLONE_name_rule_type_t;

typedef struct UF_CLONE_name_rule_def_s {
    UF_CLONE_name_rule_type_t type;
    char* base_string;
    char* new_string;
} UF_CLONE_name_rule_def_t, *UF_CLONE_name_rule_def_p_t;

/* `n_failures` statuses (UF_free) and names (UF_free_string_array); output names may be null. */
typedef struct UF_CLONE_naming_failures_s {
    int n_failures;
    int* statuses;
    char** input_names;
    char** output_names;
} UF_CLONE_naming_failures_t, *UF_CLONE_naming_failures_p_t;

NXOPEN_C int UF_CLONE_initialise(UF_CLONE_operation_class_t operation_class);
/* Ends the session; a failing status ends it all the same. */
NXOPEN_C int UF_CLONE_terminate(void);

/* Empties the record without freeing what it held. */
NXOPEN_C int UF_CLONE_init_naming_failures(UF_CLONE_naming_failures_p_t failures);
NXOPEN_C int UF_CLONE_set_def_action(UF_CLONE_action_t action);
NXOPEN_C int UF_CLONE_set_def_directory(const char* directory_name);
NXOPEN_C int UF_CLONE_set_assoc_file_root_dir(const char* root_directory);
NXOPEN_C int UF_CLONE_set_family_treatment(UF_CLONE_family_treatment_t treatment);
NXOPEN_C int UF_CLONE_set_def_naming(UF_CLONE_naming_technique_t naming_technique);
/* The rule for the files' names: its base string, in which "${DB_PART_NO}" stands for the part's number. */
NXOPEN_C int UF_CLONE_set_name_rule(UF_CLONE_name_rule_def_p_t name_rule, UF_CLONE_naming_failures_p_t naming_failures);
/* A dry run would need a log file, which the stand-in has not. */
NXOPEN_C int UF_CLONE_set_dryrun(logical dryrun);

/* Adds a part with its members; members that are not found are named in the status, which the caller frees. */
NXOPEN_C int UF_CLONE_add_assembly(const char* part_name, UF_PART_load_status_p_t load_status);
NXOPEN_C int UF_CLONE_add_part(const char* part_name);

NXOPEN_C int UF_CLONE_apply_defaults(UF_CLONE_naming_failures_p_t naming_failures);
NXOPEN_C int UF_CLONE_perform_clone(UF_CLONE_naming_failures_p_t naming_failures);
