// Takes out of a transcript what must not stand there, or differs from one run to the next.
#include "transcript.h"

#include "text.h"

#include <algorithm>
#include <boost/algorithm/string/replace.hpp>
#include <functional>
#include <regex>

namespace nxhost {

namespace {

// The text with each match replaced by what `name` makes of it.
std::string rewrite(const std::string& text, const std::regex& pattern,
                    const std::function<std::string(const std::string&)>& name) {
    std::string result;
    auto rest = text.begin();
    for (auto at = std::sregex_iterator(text.begin(), text.end(), pattern); at != std::sregex_iterator(); ++at) {
        result.append(rest, (*at)[0].first);
        result += name(at->str());
        rest = (*at)[0].second;
    }
    return result.append(rest, text.end());
}

}  // namespace

Redactor::Redactor(const std::filesystem::path& sandbox) : sandbox_(genericUtf8(sandbox)) {}

std::string Redactor::operator()(const std::string& text) const {
    static const std::regex secret("([?&](state|code|code_challenge|[a-z_]*token)=)[^&\"\\s]*");
    // Compared in one slash style, which has the same length as the text itself.
    auto slashed = text;
    std::replace(slashed.begin(), slashed.end(), '\\', '/');
    std::string result;
    std::size_t rest = 0;
    for (auto at = slashed.find(sandbox_); at != std::string::npos; at = slashed.find(sandbox_, rest)) {
        const auto end = std::min(slashed.find_first_of("\"\r\n", at), slashed.size());
        result += text.substr(rest, at - rest) + "<sandbox>" +
                  boost::replace_all_copy(slashed.substr(at + sandbox_.size(), end - at - sandbox_.size()), sandbox_,
                                          "<sandbox>");
        rest = end;
    }
    return std::regex_replace(result + text.substr(rest), secret, "$1***");
}

Placeholders::Placeholders(const std::string& replay) {
    for (std::sregex_iterator at(replay.begin(), replay.end(), uuidPattern()), end; at != end; ++at)
        kept_.insert(at->str());
}

std::string Placeholders::numbered(const std::string& kind, const std::string& value) {
    auto& name = names_[value];
    if (name.empty()) name = "<" + kind + "-" + std::to_string(++counts_[kind]) + ">";
    return name;
}

std::string Placeholders::operator()(const std::string& text) {
    static const std::regex time(
        "\\d{4}-\\d{2}-\\d{2}[T ]\\d{2}:\\d{2}(:\\d{2}(\\.\\d+)?)?(Z| UTC| ?[+-]\\d{2}:?\\d{2})?"
        "|[A-Z][a-z]+ \\d{2}, \\d{4} - \\d{2}:\\d{2} [AP]M");
    static const std::regex port("(127\\.0\\.0\\.1)(:|%3A)\\d+");
    static const std::regex temporary("pivra-[0-9a-f]{16}");
    auto result = std::regex_replace(std::regex_replace(text, time, "<time>"), port, "$1$2<port>");
    result = rewrite(result, temporary, [this](const std::string& name) { return numbered("temp", name); });
    return rewrite(result, uuidPattern(),
                   [this](const std::string& uuid) { return kept_.contains(uuid) ? uuid : numbered("uuid", uuid); });
}

}  // namespace nxhost
