#include <uf_fam.h>
#include <uf_part.h>

#include <cstdlib>

#include "c_memory.h"
#include "calls.h"
#include "host_objects.h"
#include "host_text.h"
#include "managed_name.h"
#include "uf_status.h"

namespace {

struct FamilyInstance;
struct Family;

devkit::PartData* partOf(tag_t tag) {
    auto* part = devkit::HostObjects::instance().find<NXOpen::BasePart>(tag);
    return part != nullptr ? &part->data() : nullptr;
}

}  // namespace

int UF_PART_free_load_status(UF_PART_load_status_p_t load_status) {
    const int status = devkit::Gate::instance().enterUf("UF_PART_free_load_status", false);
    devkit::freeStrings(load_status->n_parts, load_status->file_names);
    std::free(load_status->statuses);
    *load_status = {};
    return status;
}

int UF_PART_ask_part_name(tag_t part, char part_fspec[MAX_FSPEC_BUFSIZE]) {
    if (const int status = devkit::enterUf("UF_PART_ask_part_name")) return status;
    const devkit::PartData* data = partOf(part);
    if (data == nullptr) return devkit::status::badTag;
    const std::string name = data->managed ? devkit::encodeManagedName(*data->managed) : data->fullPath;
    return devkit::copyNarrow(name, part_fspec, MAX_FSPEC_BUFSIZE) ? 0 : devkit::status::textTooLong;
}

tag_t UF_PART_ask_display_part() {
    if (devkit::enterUf("UF_PART_ask_display_part") != 0) return NULL_TAG;
    auto& session = devkit::Session::instance();
    const NXOpen::BasePart* part = session.object(session.displayed());
    return part != nullptr ? part->Tag() : NULL_TAG;
}

logical UF_PART_is_modified(tag_t part) {
    if (devkit::enterUf("UF_PART_is_modified") != 0) return false;
    const devkit::PartData* data = partOf(part);
    return data != nullptr && data->modified;
}

int UF_PART_is_family_instance(tag_t part, logical* is_family_instance) {
    if (const int status = devkit::enterUf("UF_PART_is_family_instance")) return status;
    const devkit::PartData* data = partOf(part);
    if (data == nullptr) return devkit::status::badTag;
    *is_family_instance = data->familyInstance;
    return 0;
}

int UF_PART_is_family_template(tag_t part, logical* is_family_template) {
    if (const int status = devkit::enterUf("UF_PART_is_family_template")) return status;
    const devkit::PartData* data = partOf(part);
    if (data == nullptr) return devkit::status::badTag;
    *is_family_template = data->familyTemplate;
    return 0;
}

int UF_PART_ask_family_instance(tag_t part, tag_t* instance) {
    if (const int status = devkit::enterUf("UF_PART_ask_family_instance")) return status;
    devkit::PartData* data = partOf(part);
    if (data == nullptr) return devkit::status::badTag;
    auto& objects = devkit::HostObjects::instance();
    *instance = data->familyMember ? objects.make<devkit::TaggedPart<FamilyInstance>>(*data)->Tag() : NULL_TAG;
    return 0;
}

int UF_FAM_ask_instance_data(tag_t instance, tag_t* family, int* member_index) {
    if (const int status = devkit::enterUf("UF_FAM_ask_instance_data")) return status;
    auto& objects = devkit::HostObjects::instance();
    const auto* found = objects.find<devkit::TaggedPart<FamilyInstance>>(instance);
    if (found == nullptr || !found->part.familyMember) return devkit::status::badTag;
    *family = objects.make<devkit::TaggedPart<Family>>(found->part)->Tag();
    *member_index = *found->part.familyMember;
    return 0;
}
