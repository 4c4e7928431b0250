#include <platform/window.h>

#include "event_loop.h"

namespace platform {

WindowHandle activeWindow() {
    return devkit::EventLoop::instance().activeWindow();
}

void postClose(WindowHandle window) {
    if (window) devkit::EventLoop::instance().postClose(window);
}

}  // namespace platform
