#include "ui/upload_link.h"

#include "service/system_browser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <nlohmann/json.hpp>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace ui {
namespace {

using nlohmann::json;

constexpr std::array<const char*, 2> idNames{"revisionId", "revision_id"};

/// The revision id of one entry of the response, and the address that belongs to it, if any.
struct Finding {
    std::string revisionId;
    std::string address;
};

bool isIdName(std::string_view name) {
    return std::find(idNames.begin(), idNames.end(), name) != idNames.end();
}

std::string percentDecoded(std::string_view text) {
    std::string decoded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char byte{};
        const char* digits = text.data() + i + 1;
        if (text[i] == '%' && i + 2 < text.size() && std::from_chars(digits, digits + 2, byte, 16).ptr == digits + 2) {
            decoded += static_cast<char>(byte);
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

/// Removes the text before `separator`, and the separator, from the front of `text` and returns that text.
std::string_view takeUntil(std::string_view& text, char separator) {
    const auto end = std::min(text.find(separator), text.size());
    const auto front = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return front;
}

std::string idInQuery(std::string_view address) {
    auto query = takeUntil(address, '#');
    takeUntil(query, '?');
    while (!query.empty()) {
        auto value = takeUntil(query, '&');
        const auto name = takeUntil(value, '=');
        if (isIdName(percentDecoded(name)) && !value.empty()) return percentDecoded(value);
    }
    return {};
}

std::string idInObject(const json& object) {
    for (const char* name : idNames) {
        const auto member = object.find(name);
        if (member == object.end()) continue;
        if (member->is_string() && !member->get_ref<const std::string&>().empty()) return member->get<std::string>();
        if (member->is_number_integer()) return member->dump();
    }
    return {};
}

/// The address that contains the id; failing that, the first address.
std::string addressInObject(const json& object, const std::string& revisionId) {
    std::string first;
    for (const auto& member : object) {
        if (!member.is_string()) continue;
        const auto& text = member.get_ref<const std::string&>();
        if (!auth::isWebAddress(text)) continue;
        if (idInQuery(text) == revisionId) return text;
        if (first.empty()) first = text;
    }
    return first;
}

Finding readEntry(const std::string& name, const std::string& value) {
    if (isIdName(name)) return {value, ""};
    if (auth::isWebAddress(value)) return {idInQuery(value), value};
    const auto object = json::parse(value, nullptr, false);
    if (!object.is_object()) return {};
    const auto id = idInObject(object);
    return {id, addressInObject(object, id)};
}

}  // namespace

std::optional<std::string> uploadLink(const std::map<std::string, std::string>& responseEntries) {
    std::set<std::string> named;
    std::vector<Finding> links;
    for (const auto& [name, value] : responseEntries) {
        auto finding = readEntry(name, value);
        if (finding.revisionId.empty()) continue;
        if (finding.address.empty()) {
            named.insert(finding.revisionId);
        } else {
            links.push_back(std::move(finding));
        }
    }
    const auto isOther = [&](const Finding& link) { return !named.empty() && named.count(link.revisionId) == 0; };
    links.erase(std::remove_if(links.begin(), links.end(), isOther), links.end());
    const auto isSame = [&](const Finding& link) { return link.revisionId == links.front().revisionId; };
    if (links.empty() || !std::all_of(links.begin(), links.end(), isSame)) return std::nullopt;
    return links.front().address;
}

}  // namespace ui
