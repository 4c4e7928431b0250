#include "export/part_queries.h"

#include "export/host_numbers.h"
#include "logging/log.h"
#include "nx/session.h"
#include "nx/text.h"
#include "platform/files.h"
#include "platform/text_encoding.h"

#include <uf.h>
#include <uf_fam.h>
#include <uf_part.h>
#include <uf_ugmgr.h>
#include <NXOpen/BasePart.hxx>

#include <utility>

namespace pivra {

namespace {

/// Whether the bracket is open; if not, the log has the reason.
bool opened(const nx::UfSession& session) {
    return nx::checkNxStatus("UF_initialize", session.status());
}

bool isFamilyInstance(tag_t part) {
    logical isInstance{};
    return nx::checkNxStatus("UF_PART_is_family_instance", UF_PART_is_family_instance(part, &isInstance)) && isInstance;
}

bool isFamilyTemplate(tag_t part) {
    logical isTemplate{};
    return nx::checkNxStatus("UF_PART_is_family_template", UF_PART_is_family_template(part, &isTemplate)) && isTemplate;
}

bool hasFamilyInstanceData(tag_t part) {
    tag_t instance = NULL_TAG;
    tag_t family = NULL_TAG;
    int member = -1;
    return nx::checkNxStatus("UF_PART_ask_family_instance", UF_PART_ask_family_instance(part, &instance)) &&
           instance != NULL_TAG &&
           nx::checkNxStatus("UF_FAM_ask_instance_data", UF_FAM_ask_instance_data(instance, &family, &member)) &&
           member >= 0;
}

std::string configuredRevisionIdOf(const std::string& partNumber) {
    std::string number = nx::localeText(partNumber);
    UF_UGMGR_tag_t part = UF_UGMGR_null_tag;
    UF_UGMGR_tag_t revision = UF_UGMGR_null_tag;
    char id[UF_UGMGR_NAME_BUFSIZE] = "";
    const bool found = nx::checkNxStatus("UF_UGMGR_ask_part_tag", UF_UGMGR_ask_part_tag(number.data(), &part)) &&
                       nx::checkNxStatus("UF_UGMGR_ask_configured_rev", UF_UGMGR_ask_configured_rev(part, &revision)) &&
                       nx::checkNxStatus("UF_UGMGR_ask_part_revision_id", UF_UGMGR_ask_part_revision_id(revision, id));
    return found ? nx::utf8FromLocale(id) : std::string();
}

}  // namespace

std::optional<bool> askDrawingContext() {
    const nx::UfSession session;
    if (!opened(session)) return std::nullopt;
    int module{};
    if (!nx::checkNxStatus("UF_ask_application_module", UF_ask_application_module(&module))) return std::nullopt;
    return module == host_numbers::draftingModule;
}

bool isDrawingContext() {
    return askDrawingContext().value_or(false);
}

bool isPartModified(NXOpen::BasePart* part, std::string_view check) {
    const nx::UfSession session;
    if (session) return UF_PART_is_modified(part->Tag()) != 0;
    logging::LogWarning(
        std::string(check) + " failed because UF_initialize returned status " + std::to_string(session.status()) + ":",
        logging::quoted("part", nx::partLogLabel(part)));
    return false;
}

bool isPartFamilyMember(NXOpen::BasePart* part) {
    const nx::UfSession session;
    if (!opened(session)) return false;
    const tag_t tag = part->Tag();
    return isFamilyInstance(tag) || isFamilyTemplate(tag) || hasFamilyInstanceData(tag);
}

int decodeEncodedName(const char* encoded, ManagedPartName& name) {
    char number[UF_UGMGR_PARTNO_BUFSIZE] = "";
    char revision[UF_UGMGR_PARTREV_BUFSIZE] = "";
    char fileType[UF_UGMGR_FTYPE_BUFSIZE] = "";
    char fileName[UF_UGMGR_FNAME_BUFSIZE] = "";
    const int status = UF_UGMGR_decode_part_file_name(encoded, number, revision, fileType, fileName);
    if (status == 0) {
        name = {nx::utf8FromLocale(number), nx::utf8FromLocale(revision), nx::utf8FromLocale(fileType),
                nx::utf8FromLocale(fileName)};
    }
    return status;
}

std::string commandLineNameOf(const char* encoded) {
    char* name = nullptr;
    const bool converted =
        nx::checkNxStatus("UF_UGMGR_convert_file_name_to_cli", UF_UGMGR_convert_file_name_to_cli(encoded, &name));
    const nx::HostText owned(name);
    return converted && owned ? owned.get() : "";
}

bool askManagedPartName(NXOpen::BasePart* part, std::optional<ManagedPartName>& name) {
    const nx::UfSession session;
    if (!opened(session)) return false;
    char encoded[MAX_FSPEC_BUFSIZE] = "";
    if (!nx::checkNxStatus("UF_PART_ask_part_name", UF_PART_ask_part_name(part->Tag(), encoded))) return false;
    ManagedPartName decoded;
    // A native part's name cannot be decoded; that is an answer and no failure.
    if (decodeEncodedName(encoded, decoded) == 0 && !decoded.partNumber.empty()) name = std::move(decoded);
    return true;
}

std::optional<ManagedPartName> decodeManagedPartName(NXOpen::BasePart* part) {
    std::optional<ManagedPartName> name;
    askManagedPartName(part, name);
    return name;
}

bool hasUsableLocalSource(std::string_view path) {
    return !path.empty() && platform::isRegularFile(platform::pathFromUtf8(path));
}

std::string configuredRevisionId(const std::optional<ManagedPartName>& name) {
    constexpr const char* noRevision = "1";
    if (!name) return noRevision;
    const nx::UfSession session;
    if (!opened(session)) return noRevision;
    const std::string id = configuredRevisionIdOf(name->partNumber);
    return id.empty() ? noRevision : id;
}

}  // namespace pivra
