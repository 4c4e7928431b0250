// A block dialog behind its interface: the layout's data, and its blocks as host objects.
#pragma once

#include <devkit/dialog.h>
#include <NXOpen/BlockStyler_UIBlock.hxx>

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace devkit {

class DialogState {
 public:
    explicit DialogState(std::unique_ptr<DialogData> data);

    DialogData& data() { return *data_; }
    NXOpen::BlockStyler::UIBlock* objectOf(const BlockData& block) { return blocks_.at(&block).get(); }

    /// Sets a property that the block has with that type; otherwise throws NXException.
    void set(BlockData& block, const std::string& name, const PropertyValue& value);
    /// Calls a handler of the plug-in and stops what it throws.
    void call(const std::string& name, const std::function<void()>& handler) const;
    /// Shows the dialog through the presenter.
    void show();

 private:
    void addObjects(BlockData& block);

    std::unique_ptr<DialogData> data_;
    std::map<const BlockData*, std::unique_ptr<NXOpen::BlockStyler::UIBlock>> blocks_;
    bool shown_ = false;
};

}  // namespace devkit
