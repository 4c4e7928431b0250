#include <devkit/live_objects.h>
#include <devkit/session.h>
#include <NXOpen/Drawings_DrawingSheet.hxx>
#include <NXOpen/PlotManager.hxx>
#include <NXOpen/PrintPDFBuilder.hxx>

#include <filesystem>
#include <fstream>
#include <memory>
#include <nlohmann/json.hpp>

#include "calls.h"
#include "host_text.h"
#include "pdf_file.h"

namespace NXOpen {

namespace {

std::vector<std::string> namesOf(const std::vector<NXObject*>& sheets, const devkit::PartData& part) {
    std::vector<std::string> names;
    for (NXObject* object : sheets) {
        auto* sheet = dynamic_cast<Drawings::DrawingSheet*>(object);
        if (sheet == nullptr || &sheet->part() != &part) devkit::fail("Only sheets of the part itself can be printed.");
        names.push_back(sheet->Name().GetUTF8Text());
    }
    return names;
}

}  // namespace

PrintPDFBuilder* PlotManager::CreatePrintPdfbuilder() {
    if (!devkit::enterForPointer("NXOpen::PlotManager::CreatePrintPdfbuilder")) return nullptr;
    return new PrintPDFBuilder(part_);
}

Builder::Builder() {
    ++devkit::liveObjects().builders;
}

Builder::~Builder() {
    --devkit::liveObjects().builders;
}

void Builder::Destroy() {
    struct Deleter {
        void operator()(Builder* builder) const { delete builder; }
    };
    const std::unique_ptr<Builder, Deleter> gone(this);
    devkit::enter("NXOpen::Builder::Destroy");
}

void PlotSourceBuilder::SetSheets(const std::vector<NXObject*>& sheets) {
    devkit::enter("NXOpen::PlotSourceBuilder::SetSheets");
    sheets_ = sheets;
}

void PlotSourceBuilder::SetSelectedSheets(int count) {
    devkit::enter("NXOpen::PlotSourceBuilder::SetSelectedSheets");
    selectedSheets_ = count;
}

void PrintPDFBuilder::SetAction(ActionOption action) {
    devkit::enter("NXOpen::PrintPDFBuilder::SetAction");
    action_ = action;
}

void PrintPDFBuilder::SetAppend(bool append) {
    devkit::enter("NXOpen::PrintPDFBuilder::SetAppend");
    append_ = append;
}

void PrintPDFBuilder::SetFilename(const NXString& filename) {
    devkit::enter("NXOpen::PrintPDFBuilder::SetFilename");
    filename_ = filename;
}

void PrintPDFBuilder::SetFilename(const char* filename) {
    SetFilename(NXString(filename));
}

PlotSourceBuilder* PrintPDFBuilder::SourceBuilder() {
    return devkit::enterForPointer("NXOpen::PrintPDFBuilder::SourceBuilder") ? &source_ : nullptr;
}

void PrintPDFBuilder::check() const {
    if (filename_.GetUTF8Text()[0] == '\0') devkit::fail("The PDF file has no name.");
    if (source_.sheets().empty()) devkit::fail("No sheets are set.");
    if (source_.selectedSheets() != static_cast<int>(source_.sheets().size())) {
        devkit::fail("The number of selected sheets is not that of the sheets.");
    }
    if (append_ || action_ == ActionOptionAppend) devkit::fail("The stand-in does not append to a PDF file.");
    std::error_code ignored;
    const bool exists = std::filesystem::exists(devkit::pathFromUtf8(filename_.GetUTF8Text()), ignored);
    if (action_ == ActionOptionNew && exists) devkit::fail("The PDF file exists.");
}

NXObject* PrintPDFBuilder::Commit() {
    if (!devkit::enterForPointer("NXOpen::PrintPDFBuilder::Commit")) return nullptr;
    check();
    const std::vector<std::string> names = namesOf(source_.sheets(), part_);
    const std::filesystem::path file = devkit::pathFromUtf8(filename_.GetUTF8Text());
    std::ofstream out(file, std::ios::binary);
    out << devkit::pdfWithPages(names);
    out.close();
    if (!out) devkit::fail("The PDF file could not be written.");
    devkit::Session::instance().report(
        "pdf", {{"part", part_.name}, {"file", devkit::utf8FromPath(file.filename())}, {"sheets", names}});
    return nullptr;
}

}  // namespace NXOpen
