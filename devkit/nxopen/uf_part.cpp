#include <uf_assem.h>
#include <uf_fam.h>
#include <uf_part.h>
#include <NXOpen/Assemblies_Component.hxx>

#include <algorithm>
#include <cstdlib>

#include "c_memory.h"
#include "calls.h"
#include "host_objects.h"
#include "host_text.h"
#include "managed_name.h"

namespace {

using devkit::copyNarrow;
using devkit::HostObjects;

struct FamilyInstance;
struct Family;

devkit::PartData* partOf(tag_t tag) {
    auto* part = HostObjects::instance().find<NXOpen::BasePart>(tag);
    return part != nullptr ? &part->data() : nullptr;
}

/// Answers a question about a part, which its tag must be of.
int ask(const char* call, tag_t tag, const std::function<int(devkit::PartData&)>& answer,
        int (*enter)(const char*) = devkit::enterUf) {
    if (const int status = enter(call)) return status;
    devkit::PartData* part = partOf(tag);
    return part != nullptr ? answer(*part) : devkit::status::badTag;
}

/// How the C interface names a part: by its full path, or by its encoded name when it is managed.
int copyName(const devkit::PartData* part, char name[MAX_FSPEC_BUFSIZE]) {
    std::string text;
    if (part != nullptr) text = part->managed ? devkit::encodeManagedName(*part->managed) : part->fullPath;
    return copyNarrow(text, name, MAX_FSPEC_BUFSIZE) ? 0 : devkit::status::textTooLong;
}

}  // namespace

int UF_PART_free_load_status(UF_PART_load_status_p_t load_status) {
    const int status = devkit::enterUfAnywhere("UF_PART_free_load_status");
    devkit::freeStrings(load_status->n_parts, load_status->file_names);
    std::free(load_status->statuses);
    *load_status = {};
    return status;
}

int UF_PART_ask_part_name(tag_t part, char part_fspec[MAX_FSPEC_BUFSIZE]) {
    return ask(
        "UF_PART_ask_part_name", part, [=](const auto& data) { return copyName(&data, part_fspec); },
        devkit::enterUfForText);
}

logical UF_PART_is_modified(tag_t part) {
    bool modified = false;
    const int status = ask("UF_PART_is_modified", part, [&](const auto& data) {
        modified = data.modified;
        return 0;
    });
    return status == 0 && modified;
}

int UF_PART_is_family_instance(tag_t part, logical* is_family_instance) {
    return ask("UF_PART_is_family_instance", part, [=](const auto& data) {
        *is_family_instance = data.familyInstance;
        return 0;
    });
}

int UF_PART_is_family_template(tag_t part, logical* is_family_template) {
    return ask("UF_PART_is_family_template", part, [=](const auto& data) {
        *is_family_template = data.familyTemplate;
        return 0;
    });
}

int UF_PART_ask_family_instance(tag_t part, tag_t* instance) {
    return ask("UF_PART_ask_family_instance", part, [=](auto& data) {
        auto& objects = HostObjects::instance();
        *instance = data.familyMember ? objects.make<devkit::TaggedPart<FamilyInstance>>(data)->Tag() : NULL_TAG;
        return 0;
    });
}

int UF_FAM_ask_instance_data(tag_t instance, tag_t* family, int* member_index) {
    if (const int status = devkit::enterUf("UF_FAM_ask_instance_data")) return status;
    auto& objects = HostObjects::instance();
    const auto* found = objects.find<devkit::TaggedPart<FamilyInstance>>(instance);
    if (found == nullptr || !found->part.familyMember) return devkit::status::badTag;
    *family = objects.make<devkit::TaggedPart<Family>>(found->part)->Tag();
    *member_index = *found->part.familyMember;
    return 0;
}

int UF_ASSEM_ask_component_data(tag_t component, char part_name[MAX_FSPEC_BUFSIZE],
                                char refset_name[UF_OBJ_NAME_BUFSIZE], char instance_name[UF_CFI_MAX_FILE_NAME_BUFSIZE],
                                double origin[3], double csys_matrix[9], double transform[4][4]) {
    if (const int status = devkit::enterUfForText("UF_ASSEM_ask_component_data")) return status;
    const auto* found = HostObjects::instance().find<NXOpen::Assemblies::Component>(component);
    if (found == nullptr) return devkit::status::badTag;
    std::fill_n(origin, 3, 0.0);
    std::fill_n(csys_matrix, 9, 0.0);
    std::fill_n(&transform[0][0], 16, 0.0);
    for (int i = 0; i < 3; ++i) csys_matrix[4 * i] = 1;
    for (int i = 0; i < 4; ++i) transform[i][i] = 1;
    copyNarrow("Entire Part", refset_name, UF_OBJ_NAME_BUFSIZE);
    copyNarrow("", instance_name, UF_CFI_MAX_FILE_NAME_BUFSIZE);
    return copyName(found->referencedPart(), part_name);
}
