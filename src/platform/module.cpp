#include <platform/module.h>

namespace platform {

std::filesystem::path moduleDirectory() {
    return moduleFileName().parent_path();
}

}  // namespace platform
