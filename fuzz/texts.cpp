// Everything that reads texts from outside, and what must hold for each of them whatever the text is. The first byte
// chooses the reader.
#include "config/log_settings.h"
#include "config/properties.h"
#include "platform/text.h"
#include "platform/text_encoding.h"
#include "service/workspaces.h"
#include "traceability/nx_uuid.h"
#include "ui/dialog_text.h"
#include "ui/upload_link.h"

#include <array>
#include <cstdint>
#include <cstdlib>
#include <sstream>

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

bool isTrimmed(const std::string& text) {
    return platform::Trim(text) == text;
}

void properties(const std::string& text) {
    std::istringstream stream(text);
    for (const auto& [key, value] : config::parseProperties(stream)) require(isTrimmed(key) && isTrimmed(value));
    config::ParseBooleanSetting("key", text, true);
    config::applyLogLevel("key", text);
}

void names(const std::string& text) {
    require(platform::fileStem(text) + platform::fileExtension(text) == platform::lastPathComponent(text));
    const std::string safe = platform::sanitizeFileName(text);
    require(!safe.empty() && safe.find_first_of("\"*/:<>?\\|") == std::string::npos);
    const std::string round = platform::utf8FromPath(platform::pathFromUtf8(text));
    require(platform::utf8FromPath(platform::pathFromUtf8(round)) == round);
    pivra::isNxUuidFormat(text);
}

void dialogTexts(const std::string& text) {
    const auto line = ui::fileNameLine(text);
    require(line.tooltip.empty() || line.tooltip == text);
    const auto chosen = ui::selectedIndex({"0", text, "x"}, text, -1);
    require(!chosen || *chosen < 3);
    ui::failureReport(text, text, text);
}

void lookupKey(const std::string& text) {
    pivra::ModelMetadata metadata;
    metadata.sourceFileId = text.substr(0, text.size() / 2);
    metadata.fileName = text.substr(text.size() / 2);
    metadata.isPartFamily = true;
    const std::string key = pivra::revisionLookupKey(metadata);
    require(key.rfind(metadata.sourceFileId, 0) == 0);
    metadata.sourceFileId = key;
    require(pivra::revisionLookupKey(metadata) == key);
}

/// Lines of the text are the entries' values, beneath an id.
void uploadResponse(const std::string& text) {
    std::map<std::string, std::string> entries{{"revisionId", "1001"}};
    std::istringstream lines(text);
    int number = 0;
    for (std::string line; std::getline(lines, line);) entries.emplace("entry" + std::to_string(number++), line);
    const auto link = ui::uploadLink(entries);
    if (!link) return;
    require(platform::toLower(*link).rfind("http", 0) == 0);
    for (const char character : *link) require(character > ' ' && character < '\x7f');
}

constexpr std::array readers{properties, names, dialogTexts, lookupKey, uploadResponse};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    readers[data[0] % readers.size()](std::string(data + 1, data + size));
    return 0;
}
