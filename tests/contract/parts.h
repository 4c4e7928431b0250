// What the checks ask of the displayed part to find out whether they can be tried.
#pragma once

#include <NXOpen/BasePart.hxx>

#include <filesystem>
#include <string>

namespace contract {

/// Throws Needs when no part is displayed.
NXOpen::BasePart& displayedPart();
/// The displayed part, which must have a file on the local disk. Throws Needs.
NXOpen::BasePart& nativePart();
/// The displayed part, whose full path must be no path on the disk. Throws Needs.
NXOpen::BasePart& managedPart();

/// The name that the C interface gives for the part, in its own code page. Throws as require().
std::string nameOf(NXOpen::BasePart& part);
/// The status of decoding such a name; at 0 `number` is the part's number.
int decode(const std::string& name, std::string& number);

std::filesystem::path fileOf(NXOpen::BasePart& part);
bool isAscii(const std::string& text);
/// `text` in the process's file-system code page. Throws Needs when that lacks the letter.
std::string narrowText(const std::string& text);
/// The user's folder for temporary files. Throws Needs.
std::filesystem::path temporaryFolder();

}  // namespace contract
