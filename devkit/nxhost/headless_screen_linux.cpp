// A screen without windows, on the event loop with its manual clock.
#include "screen.h"

#include <event_loop.h>

#include <stdexcept>
#include <thread>

namespace nxhost {

namespace {

using devkit::EventLoop;

class HeadlessScreen : public Screen {
 public:
    using Screen::Screen;

    void showFrame() override { EventLoop::instance().setActiveWindow(this); }
    void useByHand(const std::string&, ReplayContext&) override {
        throw std::runtime_error("The native program has no windows: --interactive is for the Windows program.");
    }
    void changed(devkit::DialogData&, devkit::BlockData&) override {}
    void press(devkit::BlockData& button) override { update(button); }

    void choose(devkit::BlockData& list, int entry) override {
        list.properties["Value"] = entry;
        update(list);
    }

    void close() override { EventLoop::instance().postClose(EventLoop::instance().activeWindow()); }
    void savePicture(const std::filesystem::path&) override {}
    bool hasTimers() const override { return EventLoop::instance().hasTimers(); }
    std::chrono::milliseconds now() const override { return EventLoop::instance().now(); }

    // A short real pause lets worker threads, which run in real time, get on.
    void advance() override {
        EventLoop::instance().advance(std::chrono::milliseconds(50));
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }

 protected:
    std::unique_ptr<Window> open(devkit::DialogData&) override { return std::make_unique<HeadlessWindow>(); }

    void showBox(const std::string&, devkit::BoxKind, const std::string&) override {
        HeadlessWindow box;
        EventLoop::instance().advance(boxTime);
    }

    bool frameAskedToClose() override { return EventLoop::instance().takeClose(this); }

 private:
    // Its own address is the handle, as the screen's is the frame's.
    class HeadlessWindow : public Window {
     public:
        HeadlessWindow() : before_(EventLoop::instance().activeWindow()) {
            EventLoop::instance().setActiveWindow(this);
        }
        ~HeadlessWindow() override { EventLoop::instance().setActiveWindow(before_); }
        bool closed() override { return EventLoop::instance().takeClose(this); }

     private:
        void* before_;
    };
};

}  // namespace

std::unique_ptr<Screen> makeScreen(Transcript& transcript, const std::vector<std::filesystem::path>&) {
    return std::make_unique<HeadlessScreen>(transcript);
}

}  // namespace nxhost
