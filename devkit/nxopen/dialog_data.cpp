#include <devkit/dialog.h>

namespace devkit {

namespace {

BlockData* findBelow(BlockData& block, const std::string& id) {
    for (const auto& child : block.children) {
        if (child->id == id) return child.get();
        if (BlockData* found = findBelow(*child, id)) return found;
    }
    return nullptr;
}

template <class T>
const T* property(const BlockData& block, const std::string& name) {
    const auto found = block.properties.find(name);
    return found == block.properties.end() ? nullptr : std::get_if<T>(&found->second);
}

}  // namespace

BlockData* DialogData::find(const std::string& id) {
    return findBelow(top, id);
}

std::string textProperty(const BlockData& block, const std::string& name) {
    const auto* text = property<std::string>(block, name);
    return text != nullptr ? *text : std::string();
}

bool flagProperty(const BlockData& block, const std::string& name, bool fallback) {
    const auto* flag = property<bool>(block, name);
    return flag != nullptr ? *flag : fallback;
}

int numberProperty(const BlockData& block, const std::string& name, int fallback) {
    const auto* number = property<int>(block, name);
    return number != nullptr ? *number : fallback;
}

}  // namespace devkit
