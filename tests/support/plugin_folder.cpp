#include "plugin_folder.h"

#include "config/log_settings.h"
#include "config/properties.h"
#include "logging/log.h"
#include "platform/environment.h"
#include "platform/module.h"
#include "platform/remove_tree.h"

#include <cstdlib>
#include <cwchar>
#include <fstream>
#include <iterator>
#include <random>
#include <stdexcept>

namespace fs = std::filesystem;

namespace {

fs::path& moduleFile() {
    static fs::path file;
    return file;
}

// TMP is what Windows reads, TMPDIR the other.
constexpr const char* movedVariables[] = {"LOCALAPPDATA", "TMP", "TMPDIR"};

fs::path freshFolder() {
    const auto base = platform::userTempDirectory().value();
    std::random_device random;
    for (;;) {
        auto folder = base / ("nx-pivra-" + std::to_string(random()));
        if (fs::create_directory(folder)) return folder;
    }
}

}  // namespace

fs::path platform::moduleFileName() {
    if (moduleFile().empty()) throw std::runtime_error("Failed to resolve nx-integration module path.");
    return moduleFile();
}

namespace test_support {

PluginFolder::PluginFolder() : path_(freshFolder()) {
    for (const char* name : movedVariables) outer_.push_back(platform::environmentPath(name).value_or(fs::path()));
    fs::create_directory(temp());
    fs::create_directory(localAppData());
    setEnvironment("LOCALAPPDATA", localAppData());
    setEnvironment("TMP", temp());
    setEnvironment("TMPDIR", temp());
    setModuleFileName(path_ / "nx-integration.dll");
}

PluginFolder::~PluginFolder() {
    // A line logged late, or the next test, must find nothing of this one.
    logging::setLogDirectory({});
    logging::setCurrentLevel(logging::LogLevel::info);
    platform::removeTree(path_);
    config::LoadProperties();
    setModuleFileName({});
    for (std::size_t i = 0; i < outer_.size(); ++i) setEnvironment(movedVariables[i], outer_[i]);
}

void PluginFolder::writeProperties(const std::string& text) const {
    writeFile("pivra.properties", text);
}

void PluginFolder::startLogging(const std::string& extra) const {
    writeProperties("pivra_nx_log_directory = logs\npivra_nx_log_level = debug\n" + extra);
    config::ApplyLogSettings();
}

std::vector<std::string> PluginFolder::logLines() const {
    std::ifstream log(path_ / "logs" / logging::logFileName, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(log, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        const auto timeEnd = line.find("] ");
        lines.push_back(timeEnd == std::string::npos ? line : line.substr(timeEnd + 2));
    }
    return lines;
}

fs::path PluginFolder::writeFile(const fs::path& name, const std::string& content) const {
    const auto file = path_ / name;
    fs::create_directories(file.parent_path());
    std::ofstream stream(file, std::ios::binary);
    if (!(stream << content).flush()) throw std::runtime_error("A test file could not be written.");
    return file;
}

void setEnvironment(const char* name, const fs::path& value) {
#ifdef _WIN32
    ::_wputenv_s(fs::path(name).c_str(), value.c_str());
#else
    value.empty() ? ::unsetenv(name) : ::setenv(name, value.c_str(), 1);
#endif
}

void setModuleFileName(const fs::path& file) {
    moduleFile() = file;
}

std::string readFile(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace test_support
