#include <devkit/dialog.h>

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <fstream>
#include <set>
#include <stdexcept>

#include "host_text.h"

namespace devkit {

namespace {

using Element = boost::property_tree::ptree;

std::string attribute(const Element& element, const std::string& name) {
    const auto value = element.get_optional<std::string>(Element::path_type("<xmlattr>|" + name, '|'));
    if (!value) throw std::runtime_error("the attribute \"" + name + "\" is missing");
    return *value;
}

template <class Function>
void forEachChild(const Element& element, const std::string& name, Function function) {
    for (const auto& [childName, child] : element)
        if (childName == name) function(child);
}

const Element& propertiesOf(const Element& element) {
    const auto found = element.find("PropertyList");
    if (found == element.not_found()) throw std::runtime_error("a PropertyList is missing");
    return found->second;
}

bool flag(const std::string& text) {
    if (text != "True" && text != "False") throw std::runtime_error("\"" + text + "\" is neither True nor False");
    return text == "True";
}

int number(const std::string& text) {
    const auto result = Element(text).get_value_optional<int>();
    if (!result) throw std::runtime_error("\"" + text + "\" is no number");
    return *result;
}

void readEnumeration(const Element& property, const std::string& name, BlockData& block) {
    std::vector<std::string> options;
    forEachChild(property, "Option", [&](const Element& option) { options.push_back(attribute(option, "name")); });
    const int selected = number(attribute(property, "selected"));
    if (selected < 0 || (selected > 0 && selected >= static_cast<int>(options.size())))
        throw std::runtime_error("the selected option is not in the list");
    block.properties[name] = selected;
    block.enumerations.insert(name);
    if (name == "Value") block.members = options;
}

void readProperty(const Element& property, BlockData& block) {
    // Of no use here: what is the designer's, containers, and what no interface gives.
    static const std::set<std::string> ignored{"attachment", "stlvector", "bits",    "point",     "vector",
                                               "array",      "double",    "strings", "utfstrings"};
    const std::string type = attribute(property, "type");
    if (ignored.count(type) != 0) return;
    const std::string name = attribute(property, "sname");
    if (type == "logical")
        block.properties[name] = flag(attribute(property, "value"));
    else if (type == "string" || type == "utfstring" || type == "file")
        block.properties[name] = attribute(property, "value");
    else if (type == "integer")
        block.properties[name] = number(attribute(property, "value"));
    else if (type == "enum")
        readEnumeration(property, name, block);
    else
        throw std::runtime_error("the type \"" + type + "\" is unknown");
}

void readProperties(const Element& list, BlockData& block) {
    forEachChild(list, "Property", [&](const Element& property) {
        try {
            readProperty(property, block);
        } catch (const std::runtime_error& error) {
            const auto id = property.get_optional<std::string>("<xmlattr>.id");
            throw std::runtime_error("property \"" + id.value_or("") + "\": " + error.what());
        }
    });
}

/// Properties that the host gives a block of each class, whether or not the layout names them.
void addDefaults(BlockData& block) {
    const auto add = [&](const char* name, PropertyValue value) { block.properties.emplace(name, std::move(value)); };
    add("BlockID", block.id);
    add("Label", std::string());
    add("Show", true);
    add("Enable", true);
    add("Group", false);
    if (block.type == "UICOMP_label" || block.type == "UICOMP_button") {
        for (const char* name : {"Bitmap", "Tooltip", "BalloonTooltipText"}) add(name, std::string());
    } else if (block.type == "UICOMP_enum") {
        add("LabelVisibility", true);
        add("Value", 0);
        block.enumerations.insert("Value");
    } else if (block.type == "UGS::UICOMP_group") {
        for (const char* name : {"Expanded", "ShowLabel"}) add(name, true);
        add("BalloonTooltipText", std::string());
    }
}

class LayoutReader {
 public:
    /// Blocks lie in their container directly, or each in a wrapper of the same class and id.
    void readBlocks(const Element& container, BlockData& parent) {
        forEachChild(container, "item", [&](const Element& item) { readBlock(item, parent); });
        forEachChild(container, "Property", [&](const Element& wrapper) {
            forEachChild(wrapper, "item", [&](const Element& item) {
                for (const char* name : {"id", "class"}) {
                    if (attribute(wrapper, name) == attribute(item, name)) continue;
                    throw std::runtime_error("block \"" + attribute(item, "id") + "\": its wrapper differs");
                }
                readBlock(item, parent);
            });
        });
    }

 private:
    void readBlock(const Element& item, BlockData& parent) {
        auto block = std::make_unique<BlockData>();
        block->id = attribute(item, "id");
        block->type = attribute(item, "class");
        block->parent = &parent;
        if (!ids_.insert(block->id).second) throw std::runtime_error("two blocks are named \"" + block->id + "\"");
        try {
            readProperties(propertiesOf(item), *block);
            addDefaults(*block);
            const bool named = attribute(item, "name") == block->id && textProperty(*block, "BlockID") == block->id;
            if (!named) throw std::runtime_error("id, name and BlockID differ");
        } catch (const std::runtime_error& error) {
            throw std::runtime_error("block \"" + block->id + "\": " + error.what());
        }
        forEachChild(propertiesOf(item), "Property", [&](const Element& property) {
            if (attribute(property, "id") == "Members") readBlocks(propertiesOf(property), *block);
        });
        parent.children.push_back(std::move(block));
    }

    std::set<std::string> ids_;
};

void readDialog(const std::filesystem::path& file, DialogData& dialog) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("the file cannot be read");
    Element document;
    boost::property_tree::read_xml(in, document);
    const auto root = document.find("Dialog");
    if (root == document.not_found()) throw std::runtime_error("the root element is no Dialog");
    readProperties(propertiesOf(root->second), dialog.top);
    dialog.top.id = "Dialog";
    dialog.top.type = "Dialog";
    dialog.title = textProperty(dialog.top, "Label");
    LayoutReader().readBlocks(root->second, dialog.top);
}

BlockData* findBelow(BlockData& block, const std::string& id) {
    for (const auto& child : block.children) {
        if (child->id == id) return child.get();
        if (BlockData* found = findBelow(*child, id)) return found;
    }
    return nullptr;
}

}  // namespace

BlockData* DialogData::find(const std::string& id) {
    return findBelow(top, id);
}

std::unique_ptr<DialogData> readLayout(const std::filesystem::path& file) {
    auto dialog = std::make_unique<DialogData>();
    dialog->name = utf8(file.filename());
    try {
        readDialog(file, *dialog);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(dialog->name + ": " + error.what());
    }
    return dialog;
}

}  // namespace devkit
