#include "dialog_state.h"

#include <devkit/presenter.h>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_Enumeration.hxx>
#include <NXOpen/BlockStyler_Group.hxx>
#include <NXOpen/BlockStyler_Label.hxx>

#include <algorithm>
#include <exception>

namespace devkit {

namespace {

using namespace NXOpen::BlockStyler;

std::unique_ptr<UIBlock> makeObject(DialogState& dialog, BlockData& block) {
    if (block.parent == nullptr) return std::make_unique<CompositeBlock>(dialog, block);
    if (block.type == "UICOMP_label") return std::make_unique<Label>(dialog, block);
    if (block.type == "UICOMP_button") return std::make_unique<Button>(dialog, block);
    if (block.type == "UICOMP_enum") return std::make_unique<Enumeration>(dialog, block);
    if (block.type == "UGS::UICOMP_group") return std::make_unique<Group>(dialog, block);
    return std::make_unique<UIBlock>(dialog, block);
}

/// Calls the plug-in's handlers and stops what they throw.
template <class Handlers, class... Arguments>
void callAll(const Handlers& handlers, const std::string& what, Arguments... arguments) {
    try {
        for (const auto& handler : handlers) (*handler)(arguments...);
    } catch (const std::exception& error) {
        Gate::instance().addViolation("An exception left the " + what + ": " + error.what());
    } catch (...) {
        Gate::instance().addViolation("An exception of unknown type left the " + what + ".");
    }
}

}  // namespace

DialogState::DialogState(std::unique_ptr<DialogData> data) : data_(std::move(data)) {
    addObjects(data_->top);
}

void DialogState::addObjects(BlockData& block) {
    blocks_[&block] = makeObject(*this, block);
    for (const auto& child : block.children) addObjects(*child);
}

UIBlock* DialogState::find(const std::string& id) {
    const BlockData* block = data_->find(id);
    return block != nullptr ? blocks_.at(block).get() : nullptr;
}

void DialogState::changed(BlockData& block) {
    if (shown_) presenter()->changed(*data_, block);
}

void DialogState::set(BlockData& block, const std::string& name, PropertyValue value) {
    std::visit([&](auto& given) { property<std::decay_t<decltype(given)>>(block, name) = std::move(given); }, value);
    changed(block);
}

void DialogState::choose(BlockData& block, const std::string& name, int index) {
    int& chosen = enumeration(block, name);
    const bool isList = name == "Value";
    if (index < 0 || (isList && index >= static_cast<int>(block.members.size()))) {
        fail("The enumeration \"" + block.id + "\" has no member " + std::to_string(index) + ".");
    }
    chosen = index;
    changed(block);
}

void DialogState::choose(BlockData& block, const std::string& name, const std::string& member) {
    const auto& members = membersOf(block, name);
    const auto found = std::find(members.begin(), members.end(), member);
    if (found == members.end()) fail("The enumeration \"" + block.id + "\" has no member \"" + member + "\".");
    choose(block, name, static_cast<int>(found - members.begin()));
}

void DialogState::setMembers(BlockData& block, const std::string& name, std::vector<std::string> members) {
    membersOf(block, name) = std::move(members);
    enumeration(block, name) = 0;
    changed(block);
}

void DialogState::connect() {
    const std::string ofDialog = " handler of " + data_->name;
    data_->onInitialize = [=, this] { callAll(initializeHandlers, "initialize" + ofDialog); };
    data_->onShown = [=, this] { callAll(shownHandlers, "dialog shown" + ofDialog); };
    data_->onClose = [=, this] { callAll(closeHandlers, "close" + ofDialog); };
    data_->onUpdate = [=, this](BlockData& block) {
        callAll(updateHandlers, "update" + ofDialog, blocks_.at(&block).get());
    };
}

void DialogState::show() {
    connect();
    shown_ = true;
    presenter()->show(*data_);
    shown_ = false;
}

int& enumeration(BlockData& block, const std::string& name) {
    int& value = property<int>(block, name);
    if (block.enumerations.count(name) == 0) fail("\"" + name + "\" of \"" + block.id + "\" is no enumeration.");
    return value;
}

int& integer(BlockData& block, const std::string& name) {
    int& value = property<int>(block, name);
    if (block.enumerations.count(name) != 0) fail("\"" + name + "\" of \"" + block.id + "\" is an enumeration.");
    return value;
}

std::vector<std::string>& membersOf(BlockData& block, const std::string& name) {
    enumeration(block, name);
    if (name != "Value") fail("The members of \"" + name + "\" of \"" + block.id + "\" are fixed.");
    return block.members;
}

std::string chosenMember(BlockData& block, const std::string& name) {
    const auto& members = membersOf(block, name);
    const int index = enumeration(block, name);
    const bool isMember = index >= 0 && index < static_cast<int>(members.size());
    return isMember ? members[static_cast<std::size_t>(index)] : std::string();
}

}  // namespace devkit
