#include "directory_link.h"

#include <system_error>

namespace test_support {

DirectoryLink::DirectoryLink(const std::filesystem::path& link, const std::filesystem::path& target) : link_(link) {
    std::filesystem::create_directory_symlink(target, link);
}

DirectoryLink::~DirectoryLink() {
    std::error_code ignored;
    std::filesystem::remove(link_, ignored);
}

}  // namespace test_support
