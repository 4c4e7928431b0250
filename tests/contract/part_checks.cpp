// One part: its names, its identifier, its attributes, its family.
#include "check.h"
#include "parts.h"

#include <nx/text.h>
#include <platform/text_encoding.h>

#include <uf_fam.h>
#include <uf_part.h>

namespace contract {
namespace {

using NXOpen::NXObject;

constexpr int noArrayIndex = -1;
// A part of this leaf name carries the attribute of this title and text: whoever runs the checks has seen to it.
const std::string attributePart = "contract-attribute";
const std::string attributeTitle = "PIVRA_CONTRACT";
const std::string attributeText = "Ø80";

/// What the C interface says of the part's family.
struct Family {
    logical isInstance{};
    logical isTemplate{};
    tag_t instance = NULL_TAG;
    Statuses statuses;

    explicit Family(NXOpen::BasePart& part) {
        const tag_t tag = part.Tag();
        statuses.note("UF_PART_is_family_instance", UF_PART_is_family_instance(tag, &isInstance));
        statuses.note("UF_PART_is_family_template", UF_PART_is_family_template(tag, &isTemplate));
        statuses.note("UF_PART_ask_family_instance", UF_PART_ask_family_instance(tag, &instance));
    }
};

std::string path() {
    auto& part = nativePart();
    const auto assumed = platform::utf8FromPath(fileOf(part));
    if (!isAscii(assumed)) throw Needs{"a native part whose path is ASCII"};
    const auto name = nx::utf8FromLocale(nameOf(part).c_str());
    return unless(name == assumed, name);
}

std::string foreignPath() {
    auto& part = nativePart();
    const auto assumed = platform::utf8FromPath(fileOf(part));
    if (isAscii(assumed)) throw Needs{"a native part with other letters than ASCII in its path"};
    narrowText(assumed);
    const auto name = nx::utf8FromLocale(nameOf(part).c_str());
    return unless(name == assumed, name);
}

std::string leaf() {
    auto& part = nativePart();
    const auto seen = nx::utf8(part.Leaf());
    return unless(seen == platform::utf8FromPath(fileOf(part).stem()), seen);
}

std::string identifier() {
    return unless(!nx::utf8(nativePart().UniqueIdentifier()).empty(), "an empty text");
}

std::string absentAttribute() {
    const auto title = nx::toHost("PIVRA_NO_SUCH_ATTRIBUTE");
    const bool found = displayedPart().HasUserAttribute(title, NXObject::AttributeTypeString, noArrayIndex);
    return unless(!found, "it is there");
}

std::string attribute() {
    auto& part = displayedPart();
    if (nx::utf8(part.Leaf()).find(attributePart) == std::string::npos)
        throw Needs{"a part \"" + attributePart + "\" with the attribute " + attributeTitle};
    const auto title = nx::toHost(attributeTitle);
    if (!part.HasUserAttribute(title, NXObject::AttributeTypeString, noArrayIndex)) return "it is not found";
    const auto text = nx::utf8(part.GetUserAttributeAsString(title, NXObject::AttributeTypeString, noArrayIndex));
    return unless(text == attributeText, text);
}

std::string noFamily() {
    const Bracket bracket;
    const Family family(displayedPart());
    if (family.isInstance || family.isTemplate) throw Needs{"a part that is in no part family"};
    return family.statuses.seen() + unless(family.instance == NULL_TAG, "it has instance data");
}

std::string familyMember() {
    const Bracket bracket;
    const Family family(displayedPart());
    if (!family.isInstance) throw Needs{"a member of a part family"};
    tag_t owner = NULL_TAG;
    int member = -1;
    require("UF_FAM_ask_instance_data", UF_FAM_ask_instance_data(family.instance, &owner, &member));
    return family.statuses.seen() + unless(member >= 0, "the member's index is " + std::to_string(member));
}

}  // namespace

std::vector<Check> partChecks() {
    return {
        {"part-path", path},
        {"part-path-letters", foreignPath},
        {"part-leaf", leaf},
        {"part-identifier", identifier},
        {"attribute-absent", absentAttribute},
        {"attribute-no-array", attribute},
        {"family-none", noFamily},
        {"family-member", familyMember},
    };
}

}  // namespace contract
