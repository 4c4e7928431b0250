#include "parts.h"

#include "check.h"

#include <nx/display_part.h>
#include <nx/text.h>
#include <platform/files.h>
#include <platform/temp_path.h>
#include <platform/text_encoding.h>

#include <uf_part.h>
#include <uf_ugmgr.h>

#include <algorithm>
#include <system_error>

namespace contract {

NXOpen::BasePart& displayedPart() {
    auto* part = nx::displayedPart();
    if (part == nullptr) throw Needs{"a displayed part"};
    return *part;
}

NXOpen::BasePart& nativePart() {
    auto& part = displayedPart();
    if (!platform::isRegularFile(fileOf(part))) throw Needs{"a displayed part with a file on the local disk"};
    return part;
}

NXOpen::BasePart& managedPart() {
    auto& part = displayedPart();
    if (fileOf(part).is_absolute()) throw Needs{"a displayed part that Teamcenter manages"};
    return part;
}

std::string nameOf(NXOpen::BasePart& part) {
    const Bracket bracket;
    char name[MAX_FSPEC_BUFSIZE] = "";
    require("UF_PART_ask_part_name", UF_PART_ask_part_name(part.Tag(), name));
    return name;
}

int decode(const std::string& name, std::string& number) {
    const Bracket bracket;
    char decoded[UF_UGMGR_PARTNO_BUFSIZE] = "";
    char revision[UF_UGMGR_PARTREV_BUFSIZE] = "";
    char fileType[UF_UGMGR_FTYPE_BUFSIZE] = "";
    char fileName[UF_UGMGR_FNAME_BUFSIZE] = "";
    const int status = UF_UGMGR_decode_part_file_name(name.c_str(), decoded, revision, fileType, fileName);
    number = decoded;
    return status;
}

std::filesystem::path fileOf(NXOpen::BasePart& part) {
    return platform::pathFromUtf8(nx::utf8(part.FullPath()));
}

bool isAscii(const std::string& text) {
    return std::all_of(text.begin(), text.end(), [](char letter) { return static_cast<unsigned char>(letter) < 0x80; });
}

std::string narrowText(const std::string& text) {
    try {
        return platform::fileSystemTextFromPath(platform::pathFromUtf8(text));
    } catch (const std::system_error&) {
        throw Needs{"a code page with the letters of \"" + text + "\""};
    }
}

std::filesystem::path temporaryFolder() {
    const auto folder = platform::userTempDirectory();
    if (!folder) throw Needs{"a folder for temporary files"};
    return *folder;
}

}  // namespace contract
