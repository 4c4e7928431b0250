#include "progress_fixture.h"

#include <ui/upload_work.h>

#include <atomic>
#include <vector>

namespace {

std::shared_ptr<ui::UploadProgressRequest> requestOf(std::function<pivra::UploadExecutionResult()> upload) {
    auto request = std::make_shared<ui::UploadProgressRequest>();
    request->metadata = std::make_shared<pivra::ModelMetadata>();
    request->executeUpload = std::move(upload);
    return request;
}

TEST(UploadWork, IsCompleteOnceAndIsNotTerminalBefore) {
    for (int round = 0; round < 200; ++round) {
        const auto state = std::make_shared<ui::ProgressState>();
        ui::startUpload(requestOf(success), state);
        for (;;) {
            const auto progress = ui::lookAt(*state);
            if (progress.completed) break;
            ASSERT_FALSE(progress.terminal) << "a state was seen as terminal before its completion was claimed";
            ASSERT_EQ(progress.stage, ui::UploadStage::uploading);
            std::this_thread::yield();
        }
        const auto later = ui::lookAt(*state);
        EXPECT_TRUE(!later.completed && later.terminal && later.stage == ui::UploadStage::uploaded);
    }
}

TEST(UploadWork, IsClaimedByOneOfMany) {
    const auto state = std::make_shared<ui::ProgressState>();
    ui::startUpload(requestOf(success), state);
    std::atomic<int> claims{0};
    std::vector<std::thread> watchers;
    for (int i = 0; i < 4; ++i) {
        watchers.emplace_back([&] {
            for (;;) {
                const auto progress = ui::lookAt(*state);
                claims += progress.completed;
                if (progress.terminal) return;
                std::this_thread::yield();
            }
        });
    }
    for (auto& watcher : watchers) watcher.join();
    EXPECT_EQ(claims, 1);
}

TEST(UploadWork, KeepsItsRequestAliveWithoutTheDialog) {
    const auto go = std::make_shared<Step>();
    const auto done = std::make_shared<Step>();
    {
        const auto request = requestOf([go, done, text = std::string(100, 'x')] {
            go->wait();
            EXPECT_EQ(text.size(), 100U);
            done->reach();
            return success();
        });
        ui::startUpload(request, std::make_shared<ui::ProgressState>());
    }
    go->reach();
    done->wait();
}

}  // namespace
