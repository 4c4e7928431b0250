#include "export/drawing_pdf_export.h"

#include "export/host_numbers.h"
#include "export/part_queries.h"
#include "logging/log.h"
#include "nx/session.h"
#include "nx/text.h"
#include "platform/error_text.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/text_encoding.h"

#include <NXOpen/Drawings_DrawingSheet.hxx>
#include <NXOpen/Drawings_DrawingSheetCollection.hxx>
#include <NXOpen/Part.hxx>
#include <NXOpen/PlotManager.hxx>
#include <NXOpen/PlotSourceBuilder.hxx>
#include <NXOpen/PrintPDFBuilder.hxx>

#include <memory>
#include <optional>
#include <vector>

namespace pivra {

namespace fs = std::filesystem;

namespace {

using logging::LogInfo;
using logging::LogWarning;
using logging::quoted;

using Sheets = std::vector<NXOpen::NXObject*>;

constexpr auto printAction = static_cast<NXOpen::PrintPDFBuilder::ActionOption>(host_numbers::printAction);

/// Destroys a builder; an exception of the host is logged.
struct BuilderDestroy {
    void operator()(NXOpen::PrintPDFBuilder* builder) const noexcept try {
        const auto error = platform::errorOf([builder] { builder->Destroy(); });
        if (error) LogWarning("PDF builder could not be destroyed:", quoted("error", *error));
    } catch (...) {
        // Out of memory: the line is lost.
    }
};

Sheets sheetsOf(NXOpen::BasePart& part) {
    Sheets sheets;
    auto* drawn = dynamic_cast<NXOpen::Part*>(&part);
    NXOpen::Drawings::DrawingSheetCollection* collection = drawn != nullptr ? drawn->DrawingSheets() : nullptr;
    if (collection == nullptr) return sheets;
    for (auto sheet = collection->begin(); sheet != collection->end(); ++sheet) sheets.push_back(*sheet);
    return sheets;
}

/// Selects all sheets, if this release of the host has that setting.
template <typename Source>
void selectSheets(Source& source, int count) {
    if constexpr (requires { source.SetSelectedSheets(count); }) source.SetSelectedSheets(count);
}

std::optional<platform::FileTime> writeTime(const fs::path& file) {
    const auto facts = platform::fileFacts(file);
    return facts ? std::optional(facts->written) : std::nullopt;
}

/// Prints the sheets. False, with the reason in the log, when the host does not give what printing needs.
bool print(NXOpen::BasePart& part, Sheets& sheets, const std::string& destination) {
    const auto fail = [&](const char* head) {
        LogWarning(head, quoted("part", nx::partLogLabel(&part)), quoted("destination", destination));
        return false;
    };
    NXOpen::PlotManager* manager = part.PlotManager();
    if (manager == nullptr) return fail("Drawing PDF export failed because NX returned no plot manager:");
    const std::unique_ptr<NXOpen::PrintPDFBuilder, BuilderDestroy> builder(manager->CreatePrintPdfbuilder());
    NXOpen::PlotSourceBuilder* source = builder != nullptr ? builder->SourceBuilder() : nullptr;
    if (source == nullptr) return fail("Drawing PDF export failed because NX returned no PDF source builder:");
    builder->SetAction(printAction);
    builder->SetAppend(false);
    builder->SetFilename(nx::toHost(destination));
    source->SetSheets(sheets);
    selectSheets(*source, static_cast<int>(sheets.size()));
    builder->Commit();
    return true;
}

}  // namespace

std::string exportDrawingPdf(NXOpen::BasePart* part, const std::string& sourcePath, const ExportRun& run) {
    if (part == nullptr) {
        LogWarning("Drawing PDF export skipped because there is no displayed NX part.");
        return {};
    }
    Sheets sheets = sheetsOf(*part);
    const std::string label = nx::partLogLabel(part);
    if (sheets.empty()) {
        LogWarning("Drawing PDF export skipped because no drawing sheets were found:", quoted("part", label),
                   quoted("source", sourcePath));
        return {};
    }
    const fs::path file = run.directory() / platform::pathFromUtf8(drawingPdfBaseName(part, sourcePath) + ".pdf");
    std::string destination = platform::utf8FromPath(file);
    const auto before = writeTime(file);
    LogInfo("Starting NX drawing PDF export:", quoted("part", label), logging::number("sheets", sheets.size()),
            quoted("destination", destination));
    if (!print(*part, sheets, destination)) return {};
    const auto after = writeTime(file);
    if (after && (!before || *after > *before)) {
        LogInfo("NX drawing PDF export complete:", quoted("destination", destination));
        return destination;
    }
    LogWarning("Drawing PDF export did not produce a new or updated file:", quoted("part", label),
               quoted("destination", destination));
    return {};
}

std::string drawingPdfBaseName(NXOpen::BasePart* part, const std::string& sourcePath) {
    if (const auto name = decodeManagedPartName(part)) return platform::sanitizeFileName(name->partNumber);
    const std::string leafStem = platform::fileStem(nx::utf8(part->Leaf()));
    const std::string stem = leafStem.empty() ? platform::fileStem(sourcePath) : leafStem;
    return stem.empty() ? "drawing" : platform::sanitizeFileName(stem);
}

}  // namespace pivra
