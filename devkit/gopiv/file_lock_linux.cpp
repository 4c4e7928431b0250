#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <stdexcept>

#include "file_lock.h"

namespace gopiv {

FileLock::FileLock(const std::filesystem::path& file)
    : handle_(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644)) {
    if (handle_ < 0) {
        throw std::runtime_error("The lock file " + file.string() + " cannot be opened.");
    }
    while (flock(static_cast<int>(handle_), LOCK_EX) != 0 && errno == EINTR) {
    }
}

FileLock::~FileLock() {
    close(static_cast<int>(handle_));
}

}  // namespace gopiv
