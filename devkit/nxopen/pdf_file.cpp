#include "pdf_file.h"

#include <cstddef>
#include <cstdio>

namespace devkit {

namespace {

std::string literal(const std::string& text) {
    std::string result = "(";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x80 && byte < 0xC0) continue;  // one "?" a character, not a byte
        if (c == '(' || c == ')' || c == '\\') result += '\\';
        result += byte < 0x20 || byte > 0x7E ? '?' : c;
    }
    return result + ")";
}

std::string reference(std::size_t object) {
    return std::to_string(object) + " 0 R";
}

/// Collects numbered objects and ends them with the table of their places.
class PdfObjects {
 public:
    void add(const std::string& body) {
        places_.push_back(bytes_.size());
        bytes_ += std::to_string(places_.size()) + " 0 obj\n" + body + "\nendobj\n";
    }

    void addStream(const std::string& content) {
        add("<< /Length " + std::to_string(content.size()) + " >>\nstream\n" + content + "\nendstream");
    }

    std::string finish() const {
        const std::string size = std::to_string(places_.size() + 1);
        std::string result = bytes_ + "xref\n0 " + size + "\n0000000000 65535 f \n";
        for (const std::size_t place : places_) {
            char line[32];
            std::snprintf(line, sizeof line, "%010zu 00000 n \n", place);
            result += line;
        }
        return result + "trailer\n<< /Size " + size + " /Root 1 0 R >>\nstartxref\n" + std::to_string(bytes_.size()) +
               "\n%%EOF\n";
    }

 private:
    std::string bytes_ = "%PDF-1.4\n";
    std::vector<std::size_t> places_;
};

constexpr std::size_t firstPage = 4;

}  // namespace

std::string pdfWithPages(const std::vector<std::string>& texts) {
    std::string kids;
    for (std::size_t i = 0; i < texts.size(); ++i) kids += reference(firstPage + 2 * i) + " ";

    PdfObjects objects;
    objects.add("<< /Type /Catalog /Pages 2 0 R >>");
    objects.add("<< /Type /Pages /Kids [" + kids + "] /Count " + std::to_string(texts.size()) + " >>");
    objects.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
    for (std::size_t i = 0; i < texts.size(); ++i) {
        objects.add(
            "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Resources << /Font << /F1 3 0 R >> >> /Contents " +
            reference(firstPage + 2 * i + 1) + " >>");
        objects.addStream("BT /F1 24 Tf 72 720 Td " + literal(texts[i]) + " Tj ET");
    }
    return objects.finish();
}

}  // namespace devkit
