#include <devkit/presenter.h>
#include <NXOpen/BlockStyler_BlockDialog.hxx>
#include <NXOpen/BlockStyler_Button.hxx>
#include <NXOpen/BlockStyler_CompositeBlock.hxx>
#include <NXOpen/BlockStyler_Enumeration.hxx>
#include <NXOpen/BlockStyler_PropertyList.hxx>

#include "calls.h"
#include "dialog_state.h"
#include "host_text.h"

namespace devkit {

namespace {

using namespace NXOpen::BlockStyler;

std::unique_ptr<UIBlock> makeObject(DialogState& dialog, BlockData& block) {
    if (block.parent == nullptr) return std::make_unique<CompositeBlock>(dialog, block);
    if (block.type == "UICOMP_button") return std::make_unique<Button>(dialog, block);
    if (block.type == "UICOMP_enum") return std::make_unique<Enumeration>(dialog, block);
    return std::make_unique<UIBlock>(dialog, block);
}

/// The value of a property that the block has with that type.
template <class T>
const T& get(const BlockData& block, const std::string& name) {
    const T* value = property<T>(block, name);
    if (value == nullptr) fail("The block \"" + block.id + "\" has no property \"" + name + "\" of that type.");
    return *value;
}

/// The index that an enumeration has chosen.
int enumeration(const BlockData& block, const std::string& name) {
    const int index = get<int>(block, name);
    if (block.enumerations.count(name) == 0) fail("\"" + name + "\" of \"" + block.id + "\" is no enumeration.");
    return index;
}

}  // namespace

DialogState::DialogState(std::unique_ptr<DialogData> data) : data_(std::move(data)) {
    addObjects(data_->top);
}

void DialogState::addObjects(BlockData& block) {
    blocks_[&block] = makeObject(*this, block);
    for (const auto& child : block.children) addObjects(*child);
}

void DialogState::set(BlockData& block, const std::string& name, const PropertyValue& value) {
    std::visit([&](const auto& given) { get<std::decay_t<decltype(given)>>(block, name); }, value);
    block.properties[name] = value;
    const NeighbourTime time;
    if (shown_) presenter()->changed(*data_, block);
}

void DialogState::call(const std::string& name, const std::function<void()>& handler) const {
    CallInterceptor::instance().guard("the " + name + " handler of " + data_->name, handler);
    if (name == "dialog shown") CallInterceptor::instance().dialogShown(data_->name);
}

void DialogState::show() {
    shown_ = true;
    presenter()->show(*data_);
    shown_ = false;
}

}  // namespace devkit

namespace NXOpen::BlockStyler {

BlockDialog::BlockDialog(std::unique_ptr<devkit::DialogState> state) : state_(std::move(state)) {}

BlockDialog::~BlockDialog() = default;

void BlockDialog::AddInitializeHandler(const Initialize& initializeCb) {
    devkit::enter("NXOpen::BlockStyler::BlockDialog::AddInitializeHandler");
    state_->data().onInitialize = [=, this] { state_->call("initialize", initializeCb); };
}

void BlockDialog::AddDialogShownHandler(const DialogShown& dialogShownCb) {
    devkit::enter("NXOpen::BlockStyler::BlockDialog::AddDialogShownHandler");
    state_->data().onShown = [=, this] { state_->call("dialog shown", dialogShownCb); };
}

void BlockDialog::AddUpdateHandler(const Update& updateCb) {
    devkit::enter("NXOpen::BlockStyler::BlockDialog::AddUpdateHandler");
    state_->data().onUpdate = [=, this](devkit::BlockData& block) {
        state_->call("update", [&] { updateCb(state_->objectOf(block)); });
    };
}

int BlockDialog::Show() {
    devkit::enter("NXOpen::BlockStyler::BlockDialog::Show");
    const devkit::NeighbourTime time;
    state_->show();
    return 0;
}

CompositeBlock* BlockDialog::TopBlock() {
    if (!devkit::enterForPointer("NXOpen::BlockStyler::BlockDialog::TopBlock")) return nullptr;
    return static_cast<CompositeBlock*>(state_->objectOf(state_->data().top));
}

PropertyList* BlockDialog::GetBlockProperties(const NXString& blockId) {
    if (!devkit::enterForPointer("NXOpen::BlockStyler::BlockDialog::GetBlockProperties")) return nullptr;
    devkit::BlockData* block = state_->data().find(blockId.GetUTF8Text());
    if (block == nullptr) devkit::fail(std::string("The dialog has no block \"") + blockId.GetUTF8Text() + "\".");
    return new PropertyList(*state_, *block);
}

UIBlock* CompositeBlock::FindBlock(const NXString& blockName) {
    if (!devkit::enterForPointer("NXOpen::BlockStyler::CompositeBlock::FindBlock")) return nullptr;
    const devkit::BlockData* block = dialog_.data().find(blockName.GetUTF8Text());
    return block != nullptr ? dialog_.objectOf(*block) : nullptr;
}

void Enumeration::SetEnumMembers(const std::vector<NXString>& members) {
    devkit::enter("NXOpen::BlockStyler::Enumeration::SetEnumMembers");
    data_.members.clear();
    for (const NXString& member : members) data_.members.emplace_back(member.GetUTF8Text());
    dialog_.set(data_, "Value", 0);
}

NXString PropertyList::GetString(const NXString& name) {
    devkit::enterForText("NXOpen::BlockStyler::PropertyList::GetString");
    return devkit::hostString(devkit::get<std::string>(block_, name.GetUTF8Text()));
}

void PropertyList::SetString(const NXString& name, const NXString& value) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::SetString");
    dialog_.set(block_, name.GetUTF8Text(), std::string(value.GetUTF8Text()));
}

bool PropertyList::GetLogical(const NXString& name) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::GetLogical");
    return devkit::get<bool>(block_, name.GetUTF8Text());
}

void PropertyList::SetLogical(const NXString& name, bool value) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::SetLogical");
    dialog_.set(block_, name.GetUTF8Text(), value);
}

int PropertyList::GetEnum(const NXString& name) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::GetEnum");
    return devkit::enumeration(block_, name.GetUTF8Text());
}

void PropertyList::SetEnum(const NXString& name, int value) {
    devkit::enter("NXOpen::BlockStyler::PropertyList::SetEnum");
    devkit::enumeration(block_, name.GetUTF8Text());
    const bool isList = std::string(name.GetUTF8Text()) == "Value";
    if (value < 0 || (isList && value >= static_cast<int>(block_.members.size())))
        devkit::fail("The enumeration \"" + block_.id + "\" has no member " + std::to_string(value) + ".");
    dialog_.set(block_, name.GetUTF8Text(), value);
}

NXString PropertyList::GetEnumAsString(const NXString& name) {
    devkit::enterForText("NXOpen::BlockStyler::PropertyList::GetEnumAsString");
    const auto index = static_cast<std::size_t>(devkit::enumeration(block_, name.GetUTF8Text()));
    if (std::string(name.GetUTF8Text()) != "Value") devkit::fail("The enumeration's members are fixed.");
    return index < block_.members.size() ? devkit::hostString(block_.members[index]) : NXString();
}

}  // namespace NXOpen::BlockStyler
