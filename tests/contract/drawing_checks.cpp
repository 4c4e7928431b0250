// Drawings: the PDF builder takes our settings. It is never committed, so nothing is printed.
#include "check.h"
#include "parts.h"

#include <export/host_numbers.h>
#include <nx/text.h>
#include <platform/text_encoding.h>

#include <NXOpen/Drawings_DrawingSheet.hxx>
#include <NXOpen/Drawings_DrawingSheetCollection.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PlotManager.hxx>
#include <NXOpen/PlotSourceBuilder.hxx>
#include <NXOpen/PrintPDFBuilder.hxx>

#include <memory>

namespace contract {
namespace {

struct Destroy {
    void operator()(NXOpen::PrintPDFBuilder* builder) const noexcept {
        try {
            builder->Destroy();
        } catch (...) {
            // pdf-builder looks at that.
        }
    }
};
using BuilderOwner = std::unique_ptr<NXOpen::PrintPDFBuilder, Destroy>;

std::vector<NXOpen::NXObject*> sheetsOf(NXOpen::BasePart& part) {
    std::vector<NXOpen::NXObject*> sheets;
    auto* drawn = dynamic_cast<NXOpen::Part*>(&part);
    auto* collection = drawn != nullptr ? drawn->DrawingSheets() : nullptr;
    if (collection == nullptr) throw std::runtime_error("no collection of sheets");
    for (auto sheet = collection->begin(); sheet != collection->end(); ++sheet) sheets.push_back(*sheet);
    if (sheets.empty()) throw Needs{"a part with a drawing sheet"};
    return sheets;
}

BuilderOwner builderOf(NXOpen::BasePart& part) {
    auto* manager = part.PlotManager();
    BuilderOwner builder(manager != nullptr ? manager->CreatePrintPdfbuilder() : nullptr);
    if (builder == nullptr) throw std::runtime_error("no builder");
    if (builder->SourceBuilder() == nullptr) throw std::runtime_error("no source builder");
    return builder;
}

std::string printBuilder() {
    sheetsOf(displayedPart());
    builderOf(displayedPart()).release()->Destroy();
    return {};
}

std::string printSettings() {
    sheetsOf(displayedPart());
    const auto builder = builderOf(displayedPart());
    builder->SetAction(static_cast<NXOpen::PrintPDFBuilder::ActionOption>(pivra::host_numbers::printAction));
    builder->SetAppend(false);
    builder->SetFilename(nx::toHost(platform::utf8FromPath(temporaryFolder() / "nx-contract.pdf")));
    return {};
}

std::string allSheets() {
    auto sheets = sheetsOf(displayedPart());
    builderOf(displayedPart())->SourceBuilder()->SetSheets(sheets);
    return {};
}

template <typename Source>
std::string selectSheets(Source& source, int count) {
    if constexpr (requires { source.SetSelectedSheets(count); }) {
        source.SetSelectedSheets(count);
        return {};
    } else {
        return "it takes no number of sheets";
    }
}

std::string numberOfSheets() {
    auto sheets = sheetsOf(displayedPart());
    const auto builder = builderOf(displayedPart());
    auto& source = *builder->SourceBuilder();
    source.SetSheets(sheets);
    return selectSheets(source, static_cast<int>(sheets.size()));
}

}  // namespace

std::vector<Check> drawingChecks() {
    return {
        {"pdf-builder", printBuilder},
        {"pdf-settings", printSettings},
        {"pdf-sheets", allSheets},
        {"pdf-selected-sheets", numberOfSheets},
    };
}

}  // namespace contract
