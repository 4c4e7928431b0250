#include "managed_name.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace devkit {

namespace {

constexpr const char* internalHead = "%UGMGR=";
constexpr const char* cliHead = "@DB/";

struct Piece {
    const char* key;
    std::string ManagedItem::*value;
};

const std::array<Piece, 4> pieces{{{" PN=", &ManagedItem::number},
                                   {" PRN=", &ManagedItem::revision},
                                   {" AT=", &ManagedItem::fileType},
                                   {" AN=", &ManagedItem::fileName}}};

/// Where the piece that starts at `begin` ends: at the next key, since values may hold blanks.
std::size_t endOfPiece(const std::string& name, std::size_t begin) {
    std::size_t end = name.size();
    for (const Piece& piece : pieces) end = std::min(end, name.find(piece.key, begin));
    return end;
}

ManagedItem decodeInternal(const std::string& name) {
    ManagedItem item;
    for (const Piece& piece : pieces) {
        const std::size_t key = name.find(piece.key);
        if (key == std::string::npos) continue;
        const std::size_t begin = key + std::string(piece.key).size();
        item.*piece.value = name.substr(begin, endOfPiece(name, begin) - begin);
    }
    return item;
}

ManagedItem decodeCli(const std::string& name) {
    ManagedItem item;
    std::size_t begin = std::string(cliHead).size();
    for (const Piece& piece : pieces) {
        if (begin > name.size()) break;
        const std::size_t slash = std::min(name.find('/', begin), name.size());
        item.*piece.value = name.substr(begin, slash - begin);
        begin = slash + 1;
    }
    return item;
}

}  // namespace

std::string encodeManagedName(const ManagedItem& item) {
    std::string name = std::string(internalHead) + "V3.2";
    for (const Piece& piece : pieces) {
        if (!(item.*piece.value).empty()) name += piece.key + item.*piece.value;
    }
    return name;
}

std::string commandLineName(const ManagedItem& item) {
    std::string name = cliHead + item.number + "/" + item.revision;
    if (!item.fileType.empty() || !item.fileName.empty()) name += "/" + item.fileType;
    return item.fileName.empty() ? name : name + "/" + item.fileName;
}

bool isCommandLineName(const std::string& name) {
    return name.rfind(cliHead, 0) == 0;
}

std::optional<ManagedItem> decodeManagedName(const std::string& name) {
    if (name.rfind(internalHead, 0) == 0) return decodeInternal(name);
    if (isCommandLineName(name)) return decodeCli(name);
    return std::nullopt;
}

}  // namespace devkit
