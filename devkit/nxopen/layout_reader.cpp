#include <devkit/dialog.h>

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <charconv>
#include <set>
#include <sstream>
#include <stdexcept>

#include "host_text.h"
#include "layout_text.h"

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
    for (const auto& [childName, child] : element) {
        if (childName == name) function(child);
    }
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

template <class T>
T number(const std::string& text) {
    T result{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
    if (error != std::errc() || end != text.data() + text.size()) {
        throw std::runtime_error("\"" + text + "\" is no number");
    }
    return result;
}

std::vector<std::string> namesOf(const Element& property, const std::string& child, const std::string& nameAttribute) {
    std::vector<std::string> names;
    forEachChild(property, child, [&](const Element& entry) { names.push_back(attribute(entry, nameAttribute)); });
    return names;
}

void readEnumeration(const Element& property, const std::string& name, BlockData& block) {
    const auto options = namesOf(property, "Option", "name");
    const int selected = number<int>(attribute(property, "selected"));
    if (selected < 0 || (selected > 0 && selected >= static_cast<int>(options.size()))) {
        throw std::runtime_error("the selected option is not in the list");
    }
    block.properties[name] = selected;
    block.enumerations.insert(name);
    if (name == "Value") block.members = options;
}

void readProperty(const Element& property, BlockData& block) {
    // Only run-time data counts here; places, vectors and containers are the designer's.
    static const std::set<std::string> designerTypes{"attachment", "stlvector", "bits", "point", "vector", "array"};
    const std::string type = attribute(property, "type");
    if (designerTypes.count(type) != 0) return;
    const std::string name = attribute(property, "sname");
    if (type == "logical") {
        block.properties[name] = flag(attribute(property, "value"));
    } else if (type == "string" || type == "utfstring" || type == "file") {
        block.properties[name] = attribute(property, "value");
    } else if (type == "integer") {
        block.properties[name] = number<int>(attribute(property, "value"));
    } else if (type == "double") {
        block.properties[name] = number<double>(attribute(property, "value"));
    } else if (type == "strings" || type == "utfstrings") {
        block.properties[name] = namesOf(property, "Strings", "value");
    } else if (type == "enum") {
        readEnumeration(property, name, block);
    } else {
        throw std::runtime_error("the type \"" + type + "\" is unknown");
    }
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
    void readBlocks(const Element& container, BlockData& parent) {
        forEachChild(container, "item", [&](const Element& item) { readBlock(item, parent); });
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
        readMembers(propertiesOf(item), *block);
        parent.children.push_back(std::move(block));
    }

    /// A container's blocks lie in its property "Members", each in a wrapper of the same class and id or directly.
    void readMembers(const Element& properties, BlockData& block) {
        forEachChild(properties, "Property", [&](const Element& property) {
            if (attribute(property, "id") != "Members") return;
            const Element& container = propertiesOf(property);
            readBlocks(container, block);
            forEachChild(container, "Property", [&](const Element& wrapper) { readWrapped(wrapper, block); });
        });
    }

    void readWrapped(const Element& wrapper, BlockData& parent) {
        forEachChild(wrapper, "item", [&](const Element& item) {
            if (attribute(wrapper, "id") != attribute(item, "id") ||
                attribute(wrapper, "class") != attribute(item, "class")) {
                throw std::runtime_error("block \"" + attribute(item, "id") + "\": its wrapper differs");
            }
            readBlock(item, parent);
        });
    }

    std::set<std::string> ids_;
};

void readDialog(const std::string& text, DialogData& dialog) {
    Element document;
    std::istringstream in(text);
    boost::property_tree::read_xml(in, document);
    const auto root = document.find("Dialog");
    if (root == document.not_found()) throw std::runtime_error("the root element is no Dialog");
    readProperties(propertiesOf(root->second), dialog.top);
    dialog.top.id = "Dialog";
    dialog.top.type = "Dialog";
    dialog.title = textProperty(dialog.top, "Label");
    LayoutReader().readBlocks(root->second, dialog.top);
}

}  // namespace

std::unique_ptr<DialogData> readLayout(const std::filesystem::path& file) {
    auto dialog = std::make_unique<DialogData>();
    dialog->file = file;
    dialog->name = utf8FromPath(file.filename());
    try {
        readDialog(readLayoutText(file), *dialog);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(dialog->name + ": " + error.what());
    }
    return dialog;
}

}  // namespace devkit
