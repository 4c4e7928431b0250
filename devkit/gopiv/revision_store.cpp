#include "revision_store.h"

#include <algorithm>
#include <fstream>
#include <vector>

#include "file_lock.h"
#include "sha256.h"
#include "text.h"

namespace gopiv {
namespace {

using nlohmann::json;
namespace fs = std::filesystem;

constexpr const char* descriptionFile = "revision.json";

/// Readers see the old file or the new one, never a part of it.
void writeAtomically(const fs::path& file, const json& content) {
    fs::path temporary = file;
    temporary += ".tmp";
    std::ofstream stream(temporary, std::ios::binary | std::ios::trunc);
    stream << content.dump(2) << '\n';
    stream.close();
    if (!stream) {
        throw Refusal("The development service cannot write " + utf8FromPath(file) + ".");
    }
    fs::rename(temporary, file);
}

/// The name under which a file is stored: a plain name that leads nowhere else.
std::string plainName(const json& file) {
    std::string name = file.value("fileName", "");
    if (name.empty()) {
        name = utf8FromPath(pathFromUtf8(file.value("path", "")).filename());
    }
    const bool hasForbidden = std::any_of(name.begin(), name.end(), [](unsigned char c) {
        return c < ' ' || std::string_view("\\/:*?\"<>|").find(static_cast<char>(c)) != std::string_view::npos;
    });
    if (hasForbidden || name.find_first_not_of('.') == std::string::npos) {
        throw Refusal("\"" + name + "\" is no name for an uploaded file.");
    }
    return name;
}

/// `folder / name`, or when that is taken the same name in the first free numbered folder below.
fs::path freePlace(const fs::path& folder, const std::string& name) {
    fs::path place = folder / pathFromUtf8(name);
    for (int number = 2; fs::exists(place); ++number) {
        place = folder / std::to_string(number) / pathFromUtf8(name);
    }
    fs::create_directories(place.parent_path());
    return place;
}

struct Copied {
    std::uintmax_t size = 0;
    std::string sha256;
};

Copied copyFile(const fs::path& from, const fs::path& to) {
    std::ifstream source(from, std::ios::binary);
    std::ofstream target(to, std::ios::binary | std::ios::trunc);
    std::vector<char> piece(std::size_t{64} * 1024);
    Copied copied;
    Sha256 digest;
    while (source && target) {
        source.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        const auto length = static_cast<std::size_t>(source.gcount());
        target.write(piece.data(), source.gcount());
        digest.update({piece.data(), length});
        copied.size += length;
    }
    target.close();
    if (!source.eof() || !target) {
        throw Refusal("The file " + utf8FromPath(source.eof() ? to : from) + " cannot be " +
                      (source.eof() ? "written." : "read."));
    }
    copied.sha256 = digest.finish();
    return copied;
}

/// The line of uploads.jsonl: the description without what differs from run to run.
json uploadLine(const json& revision) {
    json line = revision;
    line.erase("createdAt");
    for (json& file : line["files"]) {
        file.erase("storedAs");
    }
    return line;
}

}  // namespace

json RevisionStore::revisions() const {
    if (!fs::exists(folder_)) {
        return json::array();
    }
    const FileLock lock(folder_ / "index.lock");
    return readIndex()["revisions"];
}

std::int64_t RevisionStore::reserve() const {
    fs::create_directories(folder_);
    const FileLock lock(folder_ / "index.lock");
    json index = readIndex();
    const auto id = index["nextRevisionId"].get<std::int64_t>();
    index["nextRevisionId"] = id + 1;
    writeIndex(index);
    fs::create_directories(revisionFolder(id));
    writeAtomically(revisionFolder(id) / descriptionFile, json::object());  // so that no upload takes that name
    return id;
}

json RevisionStore::storeFile(std::int64_t id, const json& file) const {
    const std::string name = plainName(file);
    const fs::path place = freePlace(revisionFolder(id), name);
    const Copied copied = copyFile(pathFromUtf8(file.at("path")), place);
    const std::u8string storedAs = place.lexically_relative(revisionFolder(id)).generic_u8string();
    return {{"name", name},
            {"storedAs", std::string(storedAs.begin(), storedAs.end())},
            {"fileId", file.value("fileId", "")},
            {"revision", file.value("revision", "")},
            {"size", copied.size},
            {"sha256", copied.sha256}};
}

void RevisionStore::commit(const json& revision) const {
    const FileLock lock(folder_ / "index.lock");
    writeAtomically(revisionFolder(revision.at("revisionId")) / descriptionFile, revision);
    std::ofstream(folder_ / "uploads.jsonl", std::ios::binary | std::ios::app) << uploadLine(revision).dump() << '\n';
    json index = readIndex();
    index["revisions"].push_back(revision);
    writeIndex(index);
}

fs::path RevisionStore::revisionFolder(std::int64_t id) const {
    return folder_ / "revisions" / std::to_string(id);
}

json RevisionStore::readIndex() const {
    std::ifstream stream(folder_ / "index.json", std::ios::binary);
    // Ids below the first are left to the revisions of service.json.
    return stream ? json::parse(stream) : json{{"nextRevisionId", 1001}, {"revisions", json::array()}};
}

void RevisionStore::writeIndex(const json& index) const {
    writeAtomically(folder_ / "index.json", index);
}

}  // namespace gopiv
