#include <devkit/session.h>
#include <NXOpen/Assemblies_ComponentAssembly.hxx>
#include <NXOpen/BasePart.hxx>
#include <NXOpen/Drawings_DrawingSheetCollection.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PartSaveStatus.hxx>
#include <NXOpen/PlotManager.hxx>

#include <nlohmann/json.hpp>

#include "calls.h"
#include "host_text.h"

namespace NXOpen {

namespace {

constexpr int noArrayIndex = -1;

devkit::PartData& attributeOwner(NXObject& object) {
    auto* part = dynamic_cast<BasePart*>(&object);
    if (part == nullptr) devkit::fail("The object carries no user attributes.");
    return part->data();
}

bool has(NXObject& object, const std::string& title, NXObject::AttributeType type, int index) {
    const bool kept = type == NXObject::AttributeTypeString && index == noArrayIndex;
    return kept && attributeOwner(object).attributes.count(title) != 0;
}

void require(NXObject& object, const std::string& title, NXObject::AttributeType type, int index) {
    if (!has(object, title, type, index)) devkit::fail("The object has no attribute \"" + title + "\" of that type.");
}

}  // namespace

bool NXObject::HasUserAttribute(const NXString& title, AttributeType type, int index) {
    devkit::enter("NXOpen::NXObject::HasUserAttribute");
    return has(*this, title.GetUTF8Text(), type, index);
}

NXString NXObject::GetUserAttributeAsString(const NXString& title, AttributeType type, int index) {
    devkit::enterForText("NXOpen::NXObject::GetUserAttributeAsString");
    require(*this, title.GetUTF8Text(), type, index);
    return devkit::hostString(attributeOwner(*this).attributes.at(title.GetUTF8Text()));
}

void NXObject::SetUserAttribute(const NXString& title, int index, const NXString& value, Update::Option) {
    devkit::enter("NXOpen::NXObject::SetUserAttribute");
    const std::string name = title.GetUTF8Text();
    if (index != noArrayIndex) devkit::fail("The attribute \"" + name + "\" is no array.");
    devkit::PartData& part = attributeOwner(*this);
    part.attributes[name] = value.GetUTF8Text();
    part.modified = true;
    devkit::Session::instance().report("attribute-written",
                                       {{"part", part.name}, {"title", name}, {"value", part.attributes[name]}});
}

void NXObject::DeleteUserAttribute(AttributeType type, const NXString& title, bool, Update::Option) {
    devkit::enter("NXOpen::NXObject::DeleteUserAttribute");
    const std::string name = title.GetUTF8Text();
    require(*this, name, type, noArrayIndex);
    devkit::PartData& part = attributeOwner(*this);
    part.attributes.erase(name);
    part.modified = true;
    devkit::Session::instance().report("attribute-deleted", {{"part", part.name}, {"title", name}});
}

BasePart::BasePart(devkit::PartData& data)
    : data_(data),
      assembly_(std::make_unique<Assemblies::ComponentAssembly>(data)),
      plotManager_(std::make_unique<NXOpen::PlotManager>(data)) {}

BasePart::~BasePart() = default;

NXString BasePart::FullPath() {
    devkit::enterForText("NXOpen::BasePart::FullPath");
    return devkit::hostString(data_.fullPath);
}

NXString BasePart::Leaf() {
    devkit::enterForText("NXOpen::BasePart::Leaf");
    return devkit::hostString(data_.leaf);
}

NXString BasePart::UniqueIdentifier() {
    devkit::enterForText("NXOpen::BasePart::UniqueIdentifier");
    return devkit::hostString(data_.uniqueIdentifier);
}

PartSaveStatus* BasePart::Save(SaveComponents, CloseAfterSave) {
    using devkit::SaveOutcome;
    if (!devkit::enterForPointer("NXOpen::BasePart::Save")) return nullptr;
    const bool saved = data_.save == SaveOutcome::saved || data_.save == SaveOutcome::nullStatus;
    if (saved) data_.modified = false;
    devkit::Session::instance().report("part-saved", {{"part", data_.name}, {"saved", saved}});
    if (data_.save == SaveOutcome::throws) devkit::fail("The part could not be saved.");
    if (data_.save == SaveOutcome::nullStatus) return nullptr;
    return new PartSaveStatus(data_.save == SaveOutcome::unsavedParts, data_.save == SaveOutcome::unsavedObjects);
}

Assemblies::ComponentAssembly* BasePart::ComponentAssembly() {
    return devkit::enterForPointer("NXOpen::BasePart::ComponentAssembly") ? assembly_.get() : nullptr;
}

NXOpen::PlotManager* BasePart::PlotManager() {
    return devkit::enterForPointer("NXOpen::BasePart::PlotManager") ? plotManager_.get() : nullptr;
}

Part::Part(devkit::PartData& data)
    : BasePart(data), sheets_(std::make_unique<Drawings::DrawingSheetCollection>(data)) {}

Part::~Part() = default;

Drawings::DrawingSheetCollection* Part::DrawingSheets() {
    return devkit::enterForPointer("NXOpen::Part::DrawingSheets") ? sheets_.get() : nullptr;
}

int PartSaveStatus::NumberUnsavedParts() {
    devkit::enter("NXOpen::PartSaveStatus::NumberUnsavedParts");
    return unsavedParts_;
}

int PartSaveStatus::NumberUnsavedObjects() {
    devkit::enter("NXOpen::PartSaveStatus::NumberUnsavedObjects");
    return unsavedObjects_;
}

}  // namespace NXOpen
