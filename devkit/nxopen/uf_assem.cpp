#include <uf_assem.h>
#include <NXOpen/Assemblies_Component.hxx>

#include <algorithm>

#include "calls.h"
#include "host_objects.h"
#include "host_text.h"
#include "managed_name.h"
#include "uf_status.h"

int UF_ASSEM_ask_component_data(tag_t component, char part_name[MAX_FSPEC_BUFSIZE],
                                char refset_name[UF_OBJ_NAME_BUFSIZE], char instance_name[UF_CFI_MAX_FILE_NAME_BUFSIZE],
                                double origin[3], double csys_matrix[9], double transform[4][4]) {
    using devkit::copyNarrow;
    if (const int status = devkit::enterUf("UF_ASSEM_ask_component_data")) return status;
    const auto* found = devkit::HostObjects::instance().find<NXOpen::Assemblies::Component>(component);
    if (found == nullptr) return devkit::status::badTag;
    const devkit::PartData* part = found->referencedPart();
    std::string name = part != nullptr ? part->fullPath : "";
    if (part != nullptr && part->managed) name = devkit::encodeManagedName(*part->managed);
    constexpr double identity[9] = {1, 0, 0, 0, 1, 0, 0, 0, 1};
    std::copy(identity, identity + 9, csys_matrix);
    std::fill(origin, origin + 3, 0.0);
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) transform[row][column] = row == column ? 1 : 0;
    const bool fits = copyNarrow(name, part_name, MAX_FSPEC_BUFSIZE) &&
                      copyNarrow("Entire Part", refset_name, UF_OBJ_NAME_BUFSIZE) &&
                      copyNarrow("", instance_name, UF_CFI_MAX_FILE_NAME_BUFSIZE);
    return fits ? 0 : devkit::status::textTooLong;
}
