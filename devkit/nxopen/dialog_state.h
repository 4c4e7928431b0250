// A block dialog behind its interface: the layout's data, the blocks as host objects, the plug-in's handlers.
#pragma once

#include <devkit/dialog.h>
#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_UIBlock.hxx>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "calls.h"

namespace devkit {

/// Failures throw NXException.
class DialogState {
 public:
    explicit DialogState(std::unique_ptr<DialogData> data);
    DialogState(const DialogState&) = delete;
    DialogState& operator=(const DialogState&) = delete;

    NXOpen::BlockStyler::UIBlock* top() { return blocks_.at(&data_->top).get(); }
    /// Null for an unknown id.
    NXOpen::BlockStyler::UIBlock* find(const std::string& id);

    /// Sets a property that the block has with that type.
    void set(BlockData& block, const std::string& name, PropertyValue value);
    /// Chooses a member of an enumeration by its index or its text.
    void choose(BlockData& block, const std::string& name, int index);
    void choose(BlockData& block, const std::string& name, const std::string& member);
    /// Replaces an enumeration's members and chooses the first.
    void setMembers(BlockData& block, const std::string& name, std::vector<std::string> members);

    /// Shows the dialog through the presenter.
    void show();

    std::vector<std::unique_ptr<NXOpen::BlockStyler::BlockDialog::Initialize>> initializeHandlers;
    std::vector<std::unique_ptr<NXOpen::BlockStyler::BlockDialog::DialogShown>> shownHandlers;
    std::vector<std::unique_ptr<NXOpen::BlockStyler::BlockDialog::Update>> updateHandlers;
    std::vector<std::unique_ptr<NXOpen::BlockStyler::BlockDialog::Close>> closeHandlers;

 private:
    void addObjects(BlockData& block);
    void changed(BlockData& block);
    void connect();

    std::unique_ptr<DialogData> data_;
    std::map<const BlockData*, std::unique_ptr<NXOpen::BlockStyler::UIBlock>> blocks_;
    bool shown_ = false;
};

/// The value of a property that the block has with that type.
template <class T>
T& property(BlockData& block, const std::string& name) {
    const auto found = block.properties.find(name);
    if (found == block.properties.end()) fail("The block \"" + block.id + "\" has no property \"" + name + "\".");
    T* value = std::get_if<T>(&found->second);
    if (value == nullptr) fail("The property \"" + name + "\" of \"" + block.id + "\" is of another type.");
    return *value;
}

/// The index that an enumeration has chosen.
int& enumeration(BlockData& block, const std::string& name);
/// A number that is no enumeration.
int& integer(BlockData& block, const std::string& name);
/// The members of an enumeration block's "Value".
std::vector<std::string>& membersOf(BlockData& block, const std::string& name);
/// The text of the chosen one; empty when none is.
std::string chosenMember(BlockData& block, const std::string& name);

}  // namespace devkit
