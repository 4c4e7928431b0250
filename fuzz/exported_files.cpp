// Which of the exported files is a part's. The first line is the part's number; each other one is a file, after a byte
// that is its age.
#include "export/exported_files.h"
#include "platform/text.h"
#include "platform/text_encoding.h"
#include "target.h"

namespace {

std::string nameOf(const pivra::ExportedFile& file) {
    return platform::utf8FromPath(file.path);
}

std::pair<bool, platform::FileTime> rankOf(const pivra::ExportedFile& file) {
    return {platform::hasExtension(nameOf(file), ".prt"), file.facts.written};
}

void checkChoice(const std::string& number, const std::vector<pivra::ExportedFile>& files) {
    const auto key = number.empty() ? "" : platform::toLower(platform::sanitizeFileName(number));
    const auto isCalledSo = [&](const auto& file) {
        return platform::toLower(platform::fileStem(nameOf(file))) == key;
    };
    const pivra::FilesByPartNumber byNumber(files);
    const auto* chosen = byNumber.find(number);
    require(chosen == nullptr || (isCalledSo(*chosen) && !number.empty()), "a file has the part's number");
    for (const auto& file : files) {
        if (number.empty() || !isCalledSo(file)) continue;
        require(chosen != nullptr, "a file of the number is found");
        require(rankOf(*chosen) >= rankOf(file), "parts come before drawings, and then the newest");
    }
}

}  // namespace

void check(const std::string& input) {
    const auto lines = linesOf(input);
    std::vector<pivra::ExportedFile> files;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        if (lines[i].empty()) continue;
        const platform::FileTime written{std::chrono::seconds(lines[i][0])};
        files.push_back({platform::pathFromUtf8(lines[i].substr(1)), {1, written}});
    }
    checkChoice(lines.empty() ? "" : lines[0], files);
    for (const auto& file : files) checkChoice(platform::fileStem(nameOf(file)), files);
}
