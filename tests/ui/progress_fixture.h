// One upload for the progress dialog, with scripted preparation and upload.
#pragma once

#include <support/message_loop.h>
#include <support/plugin_folder.h>
#include <support/scripted_host.h>
#include <ui/upload_progress_dialog.h>

#include <gtest/gtest.h>
#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

/// A point that one thread reaches and others wait for.
class Step {
 public:
    void reach() {
        const std::lock_guard lock(mutex_);
        reached_ = true;
        condition_.notify_all();
    }
    void wait() {
        std::unique_lock lock(mutex_);
        condition_.wait(lock, [this] { return reached_; });
    }

 private:
    std::mutex mutex_;
    std::condition_variable condition_;
    bool reached_ = false;
};

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

class ProgressDialog : public testing::Test {
 protected:
    ProgressDialog() {
        request->metadata = std::make_shared<pivra::ModelMetadata>();
        request->metadata->fileName = "schräg.prt";
        request->metadata->fileSizeMb = 1;
        request->workspaceName = "Main";
        request->userEmail = "zoe@pivra.example";
        request->executeUpload = success;
    }

    bool show() { return ui::showUploadProgressDialog(request); }

    /// Turns the message loop until the worker's end has been seen; fails the test when that takes too long.
    static void turnUntil(const std::function<bool()>& condition) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!condition() && std::chrono::steady_clock::now() < end) {
            test_support::turnMessageLoop(std::chrono::milliseconds(50));
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        EXPECT_TRUE(condition());
    }

    bool logged(const std::string& text) const {
        const auto lines = folder.logLines();
        return std::any_of(lines.begin(), lines.end(), [&](const auto& line) { return line.ends_with(text); });
    }

    test_support::PluginFolder folder;
    test_support::ScriptedHost host;
    std::shared_ptr<ui::UploadProgressRequest> request = std::make_shared<ui::UploadProgressRequest>();
};
