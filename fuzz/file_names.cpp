// Names of files and other short texts of the host.
#include "platform/text.h"
#include "platform/text_encoding.h"
#include "target.h"
#include "ui/dialog_text.h"

namespace {

bool isUtf8(std::string_view text) {
    while (const auto length = platform::utf8CharacterLength(text)) text.remove_prefix(length);
    return text.empty();
}

void checkPieces(const std::string& name) {
    const auto last = platform::lastPathComponent(name);
    const auto extension = platform::fileExtension(name);
    require(name.ends_with(last) && last.find_first_of("\\/") == std::string::npos, "a component is one");
    require(platform::fileStem(name) + extension == last, "stem and extension are the name");
    require(extension.empty() || extension.rfind('.') == 0, "an extension begins at its only full stop");
    require(platform::hasExtension(name, platform::toLower(extension)), "a name has its extension");
    const auto safe = platform::sanitizeFileName(name);
    require(!safe.empty() && safe.find_first_of("\"*/:<>?\\|") == std::string::npos, "a safe name can be a file's");
    require(platform::sanitizeFileName(safe) == safe, "a safe name is safe");
}

}  // namespace

void check(const std::string& input) {
    checkPieces(input);
    const auto system = platform::utf8FromSystemText(input);
    require(isUtf8(input) ? system == input : isUtf8(system), "a text of the system becomes UTF-8, once");
    const auto round = platform::utf8FromPath(platform::pathFromUtf8(input));
    require(!isUtf8(input) || round == input, "a name comes back");
    const auto [text, tooltip] = ui::fileNameLine(input);
    require(platform::characterCount(text) <= 65, "a line of the dialog has an end");
    require(tooltip.empty() || tooltip == input, "a name that is cut is the tooltip");
    require(!isUtf8(input) || isUtf8(text), "a name is cut between characters");
}
