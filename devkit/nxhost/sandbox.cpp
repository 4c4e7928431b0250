#include "sandbox.h"

#include "system.h"
#include "text.h"

#include <http_client.h>

#include <algorithm>
#include <boost/algorithm/string/replace.hpp>
#include <utility>

namespace nxhost {

namespace fs = std::filesystem;

namespace {

constexpr const char* serverKey = "pivra_nx_server_url";

std::string propertiesText(const Json& properties) {
    if (properties.is_null()) return "";
    if (properties.is_string()) return properties.get<std::string>();
    std::string text;
    for (const auto& [key, value] : properties.items()) text += key + "=" + value.get<std::string>() + "\n";
    return text;
}

}  // namespace

Sandbox::Sandbox(const fs::path& root, fs::path temp) : temp_(std::move(temp)) {
    fs::create_directories(root);
    if (!fs::is_empty(root)) throw std::runtime_error("The sandbox " + utf8(root) + " is not empty.");
    root_ = fs::canonical(root);
}

// Copies the product into the sandbox; an installed package is used where it lies.
void Sandbox::deploy(const Options& options) {
    application_ = (options.installed.empty() ? root_ : options.installed) / "application";
    if (!options.installed.empty()) return;
    fs::copy(options.application, application_, fs::copy_options::recursive);
    const auto service = options.plugin.parent_path() / NXHOST_SERVICE;
    for (const auto& file : {options.plugin, service}) fs::copy_file(file, application_ / file.filename());
}

void Sandbox::fill(const Replay& replay, const Options& options) {
    deploy(options);
    plugin_ = application_ / options.plugin.filename();
    if (!replay.system.helpMap) fs::remove(application_ / "pivrahelp.map");
    for (const char* folder : {"parts", "temp", "local", "service"}) fs::create_directory(root_ / folder);
    writeProperties(replay.properties);
    changeService(replay.service);
    for (const char* name : {"TMP", "TEMP", "TMPDIR"}) setEnvironment(name, temp_.empty() ? root_ / "temp" : temp_);
    setEnvironment("LOCALAPPDATA", replay.system.localAppData ? root_ / "local" : fs::path());
}

void Sandbox::writeProperties(const Json& properties) const {
    auto text = boost::replace_all_copy(propertiesText(properties), "<sandbox>", utf8(root_));
    if (text.find(serverKey) == std::string::npos) {
        if (!text.empty() && text.back() != '\n') text += '\n';
        const auto data = devkit::percentEncode(genericUtf8(root_ / "service"));
        text += std::string(serverKey) + "=http://127.0.0.1:0/?data=" + data + "\n";
    }
    writeFile(application_ / "pivra.properties", text);
}

void Sandbox::changeService(const Json& members) {
    service_.update(members);
    writeFile(root_ / "service" / "service.json", service_.dump(2));
}

fs::path Sandbox::inside(const std::string& name) const {
    const auto relative = pathOf(name).lexically_normal();
    if (name.empty() || relative.has_root_path() || *relative.begin() == "..")
        throw std::runtime_error("\"" + name + "\" is no path below the sandbox.");
    return root_ / relative;
}

std::vector<std::string> Sandbox::temporaryFiles() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(root_ / "temp"))
        names.push_back(genericUtf8(entry.path().lexically_relative(root_ / "temp")));
    std::sort(names.begin(), names.end());
    return names;
}

}  // namespace nxhost
