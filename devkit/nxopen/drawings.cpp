#include <devkit/session.h>
#include <NXOpen/Drawings_DrawingSheetCollection.hxx>
#include <NXOpen/PlotManager.hxx>
#include <NXOpen/PrintPDFBuilder.hxx>

#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>

#include "calls.h"
#include "host_objects.h"
#include "host_text.h"

namespace NXOpen::Drawings {

NXString DrawingSheet::Name() {
    devkit::enterForText("NXOpen::Drawings::DrawingSheet::Name");
    return devkit::hostString(name());
}

const std::string& DrawingSheet::name() const {
    if (index_ >= part_.sheets.size()) devkit::fail("The sheet is no longer in its part.");
    return part_.sheets[index_];
}

DrawingSheetCollection::iterator DrawingSheetCollection::first() {
    while (sheets_.size() < part_.sheets.size())
        sheets_.push_back(devkit::HostObjects::instance().make<DrawingSheet>(part_, sheets_.size()));
    return sheets_.data();
}

DrawingSheetCollection::iterator DrawingSheetCollection::begin() {
    devkit::enter("NXOpen::Drawings::DrawingSheetCollection::begin");
    return first();
}

DrawingSheetCollection::iterator DrawingSheetCollection::end() {
    return first() + part_.sheets.size();
}

}  // namespace NXOpen::Drawings

namespace NXOpen {

namespace {

/// What is not ASCII becomes "?", one a character.
std::string pdfText(const std::string& text) {
    std::string result = "(";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 && byte < 0xC0) continue;
        if (c == '(' || c == ')' || c == '\\') result += '\\';
        result += byte < 0x20 || byte > 0x7E ? '?' : c;
    }
    return result + ")";
}

std::string paddedTo10(std::size_t number) {
    const std::string digits = std::to_string(number);
    return std::string(10 - digits.size(), '0') + digits;
}

/// A PDF file of numbered objects, the first of which is the catalogue, with the table of their places.
std::string pdfOf(const std::vector<std::string>& objects) {
    std::string pdf = "%PDF-1.4\n";
    std::string table = "0000000000 65535 f \n";
    for (std::size_t i = 0; i < objects.size(); ++i) {
        table += paddedTo10(pdf.size()) + " 00000 n \n";
        pdf += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::string size = std::to_string(objects.size() + 1);
    return pdf + "xref\n0 " + size + "\n" + table + "trailer\n<< /Size " + size + " /Root 1 0 R >>\nstartxref\n" +
           std::to_string(pdf.size()) + "\n%%EOF\n";
}

/// One A4 page for each text, which stands on it in one line.
std::string pdfWithPages(const std::vector<std::string>& texts) {
    std::string pages;
    std::vector<std::string> objects{"<< /Type /Catalog /Pages 2 0 R >>", "",
                                     "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>"};
    for (const std::string& text : texts) {
        pages += std::to_string(objects.size() + 1) + " 0 R ";
        objects.push_back(
            "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Resources << /Font << /F1 3 0 R >> >> /Contents " +
            std::to_string(objects.size() + 2) + " 0 R >>");
        const std::string content = "BT /F1 24 Tf 72 720 Td " + pdfText(text) + " Tj ET";
        objects.push_back("<< /Length " + std::to_string(content.size()) + " >>\nstream\n" + content + "\nendstream");
    }
    objects[1] = "<< /Type /Pages /Kids [" + pages + "] /Count " + std::to_string(texts.size()) + " >>";
    return pdfOf(objects);
}

std::vector<std::string> namesOf(const std::vector<NXObject*>& sheets, const devkit::PartData& part) {
    std::vector<std::string> names;
    for (NXObject* object : sheets) {
        auto* sheet = dynamic_cast<Drawings::DrawingSheet*>(object);
        if (sheet == nullptr || &sheet->part() != &part) devkit::fail("Only sheets of the part itself can be printed.");
        names.push_back(sheet->name());
    }
    return names;
}

}  // namespace

PrintPDFBuilder* PlotManager::CreatePrintPdfbuilder() {
    if (!devkit::enterForPointer("NXOpen::PlotManager::CreatePrintPdfbuilder")) return nullptr;
    return new PrintPDFBuilder(part_);
}

Builder::Builder() {
    ++devkit::liveObjects();
}

Builder::~Builder() {
    --devkit::liveObjects();
}

void Builder::Destroy() {
    const std::shared_ptr<Builder> gone(this, [](Builder* builder) { delete builder; });
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

PlotSourceBuilder* PrintPDFBuilder::SourceBuilder() {
    return devkit::enterForPointer("NXOpen::PrintPDFBuilder::SourceBuilder") ? &source_ : nullptr;
}

void PrintPDFBuilder::check() const {
    if (filename_.GetUTF8Text()[0] == '\0') devkit::fail("The PDF file has no name.");
    if (source_.sheets().empty()) devkit::fail("No sheets are set.");
    if (source_.selectedSheets() != static_cast<int>(source_.sheets().size()))
        devkit::fail("The number of selected sheets is not that of the sheets.");
    if (append_ || action_ == ActionOptionAppend) devkit::fail("The stand-in does not append to a PDF file.");
    std::error_code ignored;
    const bool exists = std::filesystem::exists(devkit::pathOf(filename_.GetUTF8Text()), ignored);
    if (action_ == ActionOptionNew && exists) devkit::fail("The PDF file exists.");
}

NXObject* PrintPDFBuilder::Commit() {
    if (!devkit::enterForPointer("NXOpen::PrintPDFBuilder::Commit")) return nullptr;
    check();
    const std::vector<std::string> names = namesOf(source_.sheets(), part_);
    const std::filesystem::path file = devkit::pathOf(filename_.GetUTF8Text());
    if (!devkit::writeWholeFile(file, pdfWithPages(names))) devkit::fail("The PDF file could not be written.");
    devkit::Session::instance().report(
        "pdf", {{"part", part_.name}, {"file", devkit::utf8(file.filename())}, {"sheets", names}});
    return nullptr;
}

}  // namespace NXOpen
