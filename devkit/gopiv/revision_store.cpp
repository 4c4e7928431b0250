#include "revision_store.h"

#include <fstream>
#include <mutex>
#include <sstream>

#include "sha256.h"
#include "text.h"

namespace gopiv {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

// Ids below this one are left to the revisions of service.json.
constexpr std::int64_t firstId = 1001;
constexpr const char* descriptionFile = "revision.json";

std::string readBytes(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw Refusal("The file " + utf8(file) + " cannot be read.");
    std::ostringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
}

void writeBytes(const fs::path& file, const std::string& bytes) {
    if (!devkit::writeWholeFile(file, bytes)) throw Refusal("The file " + utf8(file) + " cannot be written.");
}

/// The name under which a file is stored: a plain name that leads nowhere else.
std::string plainName(const json& file) {
    const std::string given = file.value("fileName", "");
    const std::string& name = given.empty() ? utf8(pathOf(file.value("path", "")).filename()) : given;
    if (name.find_first_of("\\/:*?\"<>|\n") != std::string::npos || name.find_first_not_of('.') == std::string::npos)
        throw Refusal("\"" + name + "\" is no name for an uploaded file.");
    return name;
}

/// `name`, or when `folder` has that already the same name in the first free numbered folder below. "/" separates them.
std::string freePlace(const fs::path& folder, const std::string& name) {
    std::string place = name;
    for (int number = 2; place == descriptionFile || fs::exists(folder / pathOf(place)); ++number)
        place = std::to_string(number) + "/" + name;
    return place;
}

/// The line of uploads.jsonl: the description without what differs from run to run.
std::string uploadLine(json revision) {
    revision.erase("createdAt");
    for (json& file : revision["files"]) file.erase("storedAs");
    return revision.dump() + "\n";
}

}  // namespace

json RevisionStore::revisions(json earlier) const {
    for (std::int64_t id = firstId; fs::exists(revisionFolder(id)); ++id)
        if (std::ifstream stream(revisionFolder(id) / descriptionFile, std::ios::binary); stream)
            earlier.push_back(json::parse(stream));
    return earlier;
}

std::int64_t RevisionStore::reserve() const {
    fs::create_directories(folder_ / "revisions");
    std::int64_t id = firstId;
    while (!fs::create_directory(revisionFolder(id))) ++id;
    return id;
}

json RevisionStore::storeFile(std::int64_t id, const json& file) const {
    const std::string name = plainName(file);
    const std::string bytes = readBytes(pathOf(file.at("path")));
    const std::string storedAs = freePlace(revisionFolder(id), name);
    const fs::path place = revisionFolder(id) / pathOf(storedAs);
    fs::create_directories(place.parent_path());
    writeBytes(place, bytes);
    return {{"name", name},
            {"storedAs", storedAs},
            {"fileId", file.value("fileId", "")},
            {"revision", file.value("revision", "")},
            {"size", bytes.size()},
            {"sha256", sha256(bytes)}};
}

void RevisionStore::commit(const json& revision) const {
    static std::mutex mutex;
    const std::lock_guard lock(mutex);
    const fs::path folder = revisionFolder(revision.at("revisionId"));
    fs::path temporary = folder;
    temporary += ".tmp";
    writeBytes(temporary, revision.dump(2) + "\n");
    fs::rename(temporary, folder / descriptionFile);
    std::ofstream(folder_ / "uploads.jsonl", std::ios::binary | std::ios::app) << uploadLine(revision);
}

fs::path RevisionStore::revisionFolder(std::int64_t id) const {
    return folder_ / "revisions" / std::to_string(id);
}

}  // namespace gopiv
