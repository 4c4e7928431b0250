#include "message_loop.h"

#include <event_loop.h>

namespace test_support {

void turnMessageLoop(std::chrono::milliseconds span) {
    devkit::EventLoop::instance().advance(span);
}

}  // namespace test_support
