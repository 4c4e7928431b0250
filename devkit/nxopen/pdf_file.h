// A small PDF file: one page a text.
#pragma once

#include <string>
#include <vector>

namespace devkit {

/// The bytes of a PDF with one A4 page for each text, which stands on it in one line; what is not ASCII becomes "?".
std::string pdfWithPages(const std::vector<std::string>& texts);

}  // namespace devkit
