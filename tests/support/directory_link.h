// A link from one directory to another, for tests of what must not follow it.
#pragma once

#include <filesystem>

namespace test_support {

/// Makes `link` lead to the directory `target`; removes it again on destruction, if it is still there. Throws
/// std::runtime_error when the system cannot make one. On Windows a junction, under Wine a link of the system below.
class DirectoryLink {
 public:
    DirectoryLink(const std::filesystem::path& link, const std::filesystem::path& target);
    ~DirectoryLink();
    DirectoryLink(const DirectoryLink&) = delete;
    DirectoryLink& operator=(const DirectoryLink&) = delete;

 private:
    std::filesystem::path link_;
};

}  // namespace test_support
