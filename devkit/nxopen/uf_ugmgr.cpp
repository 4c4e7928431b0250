#include <uf_ugmgr.h>

#include <algorithm>
#include <array>
#include <cstddef>

#include "c_memory.h"
#include "calls.h"
#include "host_objects.h"
#include "host_text.h"
#include "managed_name.h"

namespace devkit {

namespace {

constexpr const char* internalHead = "%UGMGR=";
constexpr const char* cliHead = "@DB/";

struct Piece {
    const char* key;
    std::string ManagedItem::*value;
};

const std::array<Piece, 4> pieces{{{" PN=", &ManagedItem::number},
                                   {" PRN=", &ManagedItem::revision},
                                   {" AT=", &ManagedItem::fileType},
                                   {" AN=", &ManagedItem::fileName}}};

/// Where the piece that starts at `begin` ends: at the next key, since values may hold blanks.
std::size_t endOfPiece(const std::string& name, std::size_t begin) {
    std::size_t end = name.size();
    for (const Piece& piece : pieces) end = std::min(end, name.find(piece.key, begin));
    return end;
}

ManagedItem decodeInternal(const std::string& name) {
    ManagedItem item;
    for (const Piece& piece : pieces) {
        const std::size_t key = name.find(piece.key);
        if (key == std::string::npos) continue;
        const std::size_t begin = key + std::string(piece.key).size();
        item.*piece.value = name.substr(begin, endOfPiece(name, begin) - begin);
    }
    return item;
}

ManagedItem decodeCli(const std::string& name) {
    ManagedItem item;
    std::size_t begin = std::string(cliHead).size();
    for (const Piece& piece : pieces) {
        if (begin > name.size()) break;
        const std::size_t slash = std::min(name.find('/', begin), name.size());
        item.*piece.value = name.substr(begin, slash - begin);
        begin = slash + 1;
    }
    return item;
}

}  // namespace

std::string encodeManagedName(const ManagedItem& item) {
    std::string name = std::string(internalHead) + "V3.2";
    for (const Piece& piece : pieces)
        if (!(item.*piece.value).empty()) name += piece.key + item.*piece.value;
    return name;
}

std::string commandLineName(const ManagedItem& item) {
    std::string name = cliHead + item.number + "/" + item.revision;
    if (!item.fileType.empty() || !item.fileName.empty()) name += "/" + item.fileType;
    return item.fileName.empty() ? name : name + "/" + item.fileName;
}

bool isCommandLineName(const std::string& name) {
    return name.rfind(cliHead, 0) == 0;
}

std::optional<ManagedItem> decodeManagedName(const std::string& name) {
    if (name.rfind(internalHead, 0) == 0) return decodeInternal(name);
    if (isCommandLineName(name)) return decodeCli(name);
    return std::nullopt;
}

}  // namespace devkit

namespace {

struct DatabasePart;
struct DatabaseRevision;

}  // namespace

int UF_UGMGR_decode_part_file_name(const char* encoded_name, char part_number[UF_UGMGR_PARTNO_BUFSIZE],
                                   char part_revision[UF_UGMGR_PARTREV_BUFSIZE],
                                   char part_file_type[UF_UGMGR_FTYPE_BUFSIZE],
                                   char part_file_name[UF_UGMGR_FNAME_BUFSIZE]) {
    using devkit::copyNarrow;
    if (const int status = devkit::enterUfForText("UF_UGMGR_decode_part_file_name")) return status;
    const auto item = devkit::decodeManagedName(devkit::utf8FromNarrow(encoded_name));
    if (!item) return devkit::status::badName;
    const bool fits = copyNarrow(item->number, part_number, UF_UGMGR_PARTNO_BUFSIZE) &&
                      copyNarrow(item->revision, part_revision, UF_UGMGR_PARTREV_BUFSIZE) &&
                      copyNarrow(item->fileType, part_file_type, UF_UGMGR_FTYPE_BUFSIZE) &&
                      copyNarrow(item->fileName, part_file_name, UF_UGMGR_FNAME_BUFSIZE);
    return fits ? 0 : devkit::status::textTooLong;
}

int UF_UGMGR_convert_file_name_to_cli(const char* internal_name, char** cli_name) {
    if (const int status = devkit::enterUfForText("UF_UGMGR_convert_file_name_to_cli")) return status;
    const auto item = devkit::decodeManagedName(devkit::utf8FromNarrow(internal_name));
    if (!item) return devkit::status::badName;
    *cli_name = devkit::newString(devkit::commandLineName(*item));
    return 0;
}

int UF_UGMGR_ask_part_tag(char* part_number, UF_UGMGR_tag_t* database_part_tag) {
    if (const int status = devkit::enterUf("UF_UGMGR_ask_part_tag")) return status;
    *database_part_tag = UF_UGMGR_null_tag;
    devkit::PartData* part = devkit::Session::instance().findManaged(devkit::utf8FromNarrow(part_number));
    if (part == nullptr) return devkit::status::notFound;
    *database_part_tag = devkit::HostObjects::instance().make<devkit::TaggedPart<DatabasePart>>(*part)->Tag();
    return 0;
}

int UF_UGMGR_ask_configured_rev(UF_UGMGR_tag_t database_part_tag, UF_UGMGR_tag_t* part_revision) {
    if (const int status = devkit::enterUf("UF_UGMGR_ask_configured_rev")) return status;
    auto& objects = devkit::HostObjects::instance();
    const auto* found = objects.find<devkit::TaggedPart<DatabasePart>>(database_part_tag);
    if (found == nullptr) return devkit::status::badTag;
    *part_revision = objects.make<devkit::TaggedPart<DatabaseRevision>>(found->part)->Tag();
    return 0;
}

int UF_UGMGR_ask_part_revision_id(UF_UGMGR_tag_t part_revision, char revision_id[UF_UGMGR_NAME_BUFSIZE]) {
    if (const int status = devkit::enterUfForText("UF_UGMGR_ask_part_revision_id")) return status;
    const auto* found = devkit::HostObjects::instance().find<devkit::TaggedPart<DatabaseRevision>>(part_revision);
    if (found == nullptr || !found->part.managed) return devkit::status::badTag;
    const std::string& id = found->part.managed->configuredRevision;
    return devkit::copyNarrow(id, revision_id, UF_UGMGR_NAME_BUFSIZE) ? 0 : devkit::status::textTooLong;
}
