// Text of the host in its encodings: UTF-8 in the model, the file-system code page in the C interface.
#pragma once

#include <devkit/files.h>
#include <NXOpen/NXString.hxx>

#include <cstddef>
#include <string>

namespace devkit {

std::string utf8FromNarrow(const std::string& text);
std::string narrowFromUtf8(const std::string& text);

/// The text that the host's present call returns.
NXOpen::NXString hostString(const std::string& utf8);

/// Copies UTF-8 `text` into a buffer of the C interface; false when it does not fit.
bool copyNarrow(const std::string& text, char* buffer, std::size_t size);

}  // namespace devkit
