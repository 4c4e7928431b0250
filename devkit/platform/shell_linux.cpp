#include <platform/shell.h>

#include "event_loop.h"

namespace platform {

int shellOpen(const std::string& address) {
    return devkit::EventLoop::instance().shellOpen(address);
}

}  // namespace platform
