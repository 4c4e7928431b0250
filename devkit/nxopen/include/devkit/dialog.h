// A block dialog as read from its layout file, and what a presenter needs to show it.
#pragma once

#include <nxopen_export.h>

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <variant>
#include <vector>

namespace devkit {

using PropertyValue = std::variant<bool, int, std::string>;

/// One block: its class ("UICOMP_label", "UICOMP_button", "UICOMP_enum", "UGS::UICOMP_group", "UICOMP_separator") and
/// its properties by interface name ("Label", "Bitmap", "Show", …). An enumeration keeps its members in `members` and
/// the index of the chosen one in "Value" (an int).
struct BlockData {
    std::string id;
    std::string type;
    std::map<std::string, PropertyValue> properties;
    std::set<std::string> enumerations;  ///< the properties that choose from a list; each is held as an int
    std::vector<std::string> members;
    std::vector<std::unique_ptr<BlockData>> children;
    BlockData* parent = nullptr;
};

/// A dialog: its blocks in layout order, and the plug-in's handlers, which the presenter calls on the host's thread.
/// They never throw: an exception that leaves the plug-in's function is a violation and goes no further.
struct DialogData {
    std::string name;   ///< the layout's file name: "start.dlx"
    std::string title;  ///< shown title
    BlockData top;
    std::function<void()> onInitialize = [] {};
    std::function<void()> onShown = [] {};
    std::function<void(BlockData& changed)> onUpdate = [](BlockData&) {};

    /// The block with that id, or null.
    NXOPEN_EXPORT BlockData* find(const std::string& id);
};

/// The value of a property; null when the block lacks it or has it as another type.
template <class T>
const T* property(const BlockData& block, const std::string& name) {
    const auto found = block.properties.find(name);
    return found == block.properties.end() ? nullptr : std::get_if<T>(&found->second);
}

/// Its value; the fallback when the block has none of that type.
template <class T>
T propertyOr(const BlockData& block, const std::string& name, const T& fallback) {
    const T* value = property<T>(block, name);
    return value != nullptr ? *value : fallback;
}

inline std::string textProperty(const BlockData& block, const std::string& name) {
    return propertyOr(block, name, std::string());
}

/// Reads a layout file. Throws std::runtime_error with the file's name and what is wrong.
NXOPEN_EXPORT std::unique_ptr<DialogData> readLayout(const std::filesystem::path& file);

}  // namespace devkit
