// The JSON Schema of replays.
#include "replay.h"

#include "text.h"

#include <valijson/adapters/nlohmann_json_adapter.hpp>
#include <valijson/schema.hpp>
#include <valijson/schema_parser.hpp>
#include <valijson/validator.hpp>

#include <map>
#include <regex>
#include <span>
#include <stdexcept>

namespace nxhost {

namespace {

using Adapter = valijson::adapters::NlohmannJsonAdapter;
using Path = std::span<const std::string>;

Json readSchema() {
    auto schema = Json::parse(readFile(pathOf(NXHOST_SCHEMA)));
    // The service checks its own description, at each call.
    schema["definitions"]["service"] = {{"type", "object"}};
    return schema;
}

// As its file says, and as the validator takes it.
struct ReplaySchema {
    ReplaySchema() { valijson::SchemaParser().populateSchema(Adapter(text), parsed); }
    const Json text = readSchema();
    valijson::Schema parsed;
};

// What the schema's `keyword` says for the value at `path` below `node`, through references and the branches of
// conditions; null when there is none.
Json keywordAt(const Json& schema, const Json& node, Path path, const char* keyword) {
    if (!node.is_object()) return {};
    if (node.contains("$ref")) {
        const Json::json_pointer target(node["$ref"].get<std::string>().substr(1));
        return keywordAt(schema, schema.at(target), path, keyword);
    }
    Json found;
    if (path.empty())
        found = node.value(keyword, Json());
    else if (node.contains("items"))
        found = keywordAt(schema, node["items"], path.subspan(1), keyword);
    else if (node.contains("properties") && node["properties"].contains(path.front()))
        found = keywordAt(schema, node["properties"][path.front()], path.subspan(1), keyword);
    else
        found = keywordAt(schema, node.value("additionalProperties", Json()), path.subspan(1), keyword);
    for (const char* branch : {"then", "else"})
        if (found.is_null()) found = keywordAt(schema, node.value(branch, Json()), path, keyword);
    return found;
}

std::string typeWords(const Json& types) {
    static const std::map<std::string, std::string> words{{"string", "a text"},         {"integer", "a whole number"},
                                                          {"object", "an object"},      {"array", "a list"},
                                                          {"boolean", "true or false"}, {"null", "null"}};
    if (types.is_string()) return words.at(types);
    std::string text;
    for (const std::string type : types) text += (text.empty() ? "" : " or ") + words.at(type);
    return text;
}

// The session is named as the host names it when it reads its parts.
std::string placeOf(Path path) {
    std::string place = path.size() > 1 && path.front() == "session" ? "" : "replay";
    for (const auto& name : path) {
        const bool isIndex = name.find_first_not_of("0123456789") == std::string::npos;
        place += isIndex ? "[" + name + "]" : (place.empty() ? "" : ".") + name;
    }
    return place;
}

std::string sentence(const Json& schema, std::vector<std::string> path, const std::string& fault) {
    static const std::regex unknown(".* 'additionalProperties' constraints: '(.*)'\\.");
    static const std::regex missing("Missing required property '(.*)'\\.");
    std::smatch name;
    const bool isUnknown = std::regex_match(fault, name, unknown);
    if (isUnknown || std::regex_match(fault, name, missing)) {
        path.push_back(name.str(1));
        return placeOf(path) + (isUnknown ? ": unknown member" : ": is missing");
    }
    if (fault.find("'type'") != std::string::npos)
        return placeOf(path) + ": expected " + typeWords(keywordAt(schema, schema, path, "type"));
    if (fault.find("enum") != std::string::npos)
        return placeOf(path) + ": expected one of " + keywordAt(schema, schema, path, "enum").dump();
    if (fault.starts_with("Expected number")) {
        const auto most = keywordAt(schema, schema, path, "maximum");
        return placeOf(path) + ": expected a whole number from " + keywordAt(schema, schema, path, "minimum").dump() +
               (most.is_null() ? "" : " to " + most.dump());
    }
    return placeOf(path) + ": " + fault;
}

}  // namespace

void checkReplay(const Json& replay) {
    static const ReplaySchema schema;
    valijson::ValidationResults results;
    if (valijson::Validator().validate(schema.parsed, Adapter(replay), &results)) return;
    // The first fault lies deepest. Its context is "<root>", "[session]", "[parts]", "[0]", …
    const auto& error = *results.begin();
    std::vector<std::string> path;
    for (std::size_t index = 1; index < error.context.size(); ++index)
        path.push_back(error.context[index].substr(1, error.context[index].size() - 2));
    throw std::runtime_error(sentence(schema.text, path, error.description));
}

}  // namespace nxhost
