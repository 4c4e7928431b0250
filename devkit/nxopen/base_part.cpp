#include <devkit/live_objects.h>
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

BasePart::BasePart(devkit::PartData& data)
    : data_(data),
      assembly_(std::make_unique<Assemblies::ComponentAssembly>(data)),
      plotManager_(std::make_unique<NXOpen::PlotManager>(data)) {}

BasePart::~BasePart() = default;

NXString BasePart::Name() {
    devkit::enter("NXOpen::BasePart::Name");
    return devkit::hostString(data_.leaf);
}

NXString BasePart::FullPath() {
    devkit::enter("NXOpen::BasePart::FullPath");
    return devkit::hostString(data_.fullPath);
}

NXString BasePart::Leaf() {
    devkit::enter("NXOpen::BasePart::Leaf");
    return devkit::hostString(data_.leaf);
}

NXString BasePart::UniqueIdentifier() {
    devkit::enter("NXOpen::BasePart::UniqueIdentifier");
    return devkit::hostString(data_.uniqueIdentifier);
}

PartSaveStatus* BasePart::Save(SaveComponents, CloseAfterSave) {
    using devkit::SaveOutcome;
    if (!devkit::enterForPointer("NXOpen::BasePart::Save")) return nullptr;
    const bool saved = data_.save == SaveOutcome::saved || data_.save == SaveOutcome::nullStatus;
    if (saved) data_.modified = false;
    devkit::Session::instance().report("part-saved", {{"part", data_.name}, {"saved", saved}});
    switch (data_.save) {
        case SaveOutcome::throws:
            devkit::fail("The part could not be saved.");
        case SaveOutcome::nullStatus:
            return nullptr;
        default:
            return new PartSaveStatus(data_.save == SaveOutcome::unsavedParts,
                                      data_.save == SaveOutcome::unsavedObjects);
    }
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

PartSaveStatus::PartSaveStatus(int unsavedParts, int unsavedObjects)
    : unsavedParts_(unsavedParts), unsavedObjects_(unsavedObjects) {
    ++devkit::liveObjects().saveStatuses;
}

PartSaveStatus::~PartSaveStatus() {
    --devkit::liveObjects().saveStatuses;
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
