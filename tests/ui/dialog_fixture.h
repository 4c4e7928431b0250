// Dialogs in the stand-in host, and one upload with scripted preparation and upload.
#pragma once

#include <devkit/call_interceptor.h>
#include <devkit/session.h>
#include <support/message_loop.h>
#include <support/plugin_folder.h>
#include <support/scripted_host.h>
#include "ui/upload_progress_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace ui_test {

using test_support::OpenDialog;
using test_support::turnMessageLoop;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

inline pivra::UploadExecutionResult success() {
    pivra::UploadExecutionResult result;
    result.attempted = result.succeeded = true;
    result.responseEntries = {{"revisionId", "7"}, {"link", "https://pivra.example/m?revisionId=7"}};
    return result;
}

inline pivra::UploadExecutionResult failure(const std::string& message) {
    pivra::UploadExecutionResult result;
    result.attempted = true;
    result.message = message;
    return result;
}

class DialogTest : public testing::Test {
 protected:
    DialogTest() { folder.startLogging(); }
    ~DialogTest() override { EXPECT_EQ(devkit::liveObjects(), 0); }

    static void fail(const char* call, std::size_t number, devkit::FaultKind kind = devkit::FaultKind::error) {
        devkit::CallInterceptor::instance().addFault({call, number, 1, "Fault.", kind});
    }

    test_support::PluginFolder folder;
    test_support::ScriptedHost host;
    devkit::CallInterceptor& interceptor = devkit::CallInterceptor::instance();
};

class ProgressDialog : public DialogTest {
 protected:
    ProgressDialog() {
        request->metadata = std::make_shared<pivra::ModelMetadata>();
        request->executeUpload = success;
    }
    bool show() { return ui::showUploadProgressDialog(request); }

    /// Turns the message loop until the worker's end has been seen; fails the test when that takes too long.
    static void turnUntil(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!condition() && std::chrono::steady_clock::now() < end) {
            turnMessageLoop(std::chrono::milliseconds(50));
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        EXPECT_TRUE(condition());
    }

    std::shared_ptr<ui::UploadProgressRequest> request = std::make_shared<ui::UploadProgressRequest>();
};

}  // namespace ui_test
