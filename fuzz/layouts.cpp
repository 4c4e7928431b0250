// Layouts of dialogs: each is read as its file says, or refused with a sentence that begins with the file's name.
#include "target.h"

#include <devkit/dialog.h>

#include <stdexcept>

namespace {

void checkBlocks(devkit::DialogData& dialog, const devkit::BlockData& container) {
    for (const auto& block : container.children) {
        require(block->parent == &container, "a block knows its container");
        require(dialog.find(block->id) == block.get(), "a block is found by its id");
        require(devkit::textProperty(*block, "BlockID") == block->id, "a block has its id as a property");
        require(devkit::property<bool>(*block, "Show") != nullptr, "a block is shown or not");
        for (const auto& name : block->enumerations) {
            const auto* chosen = devkit::property<int>(*block, name);
            require(chosen != nullptr && *chosen >= 0, "a list has a choice");
        }
        checkBlocks(dialog, *block);
    }
}

}  // namespace

void check(const std::string& input) {
    const auto file = folder().writeFile("layout.dlx", input);
    try {
        const auto dialog = devkit::readLayout(file);
        require(dialog->title == devkit::textProperty(dialog->top, "Label"), "the title is the dialog's label");
        checkBlocks(*dialog, dialog->top);
    } catch (const std::runtime_error& error) {
        require(std::string(error.what()).starts_with("layout.dlx: "), "a refusal names the file");
    }
}
