#include "dialog_fixture.h"

#include "nx/session.h"
#include "ui/message_box.h"
#include "ui/upload_work.h"

#include <atomic>
#include <cstdlib>
#include <new>
#include <vector>

namespace {

thread_local bool exhausted = false;

/// Runs `action` on this thread, which gets no memory meanwhile.
template <typename Action>
void withoutMemory(Action action) {
    exhausted = true;
    action();
    exhausted = false;
}

}  // namespace

void* operator new(std::size_t size) {
    void* memory = exhausted ? nullptr : std::malloc(size == 0 ? 1 : size);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace {

using namespace ui_test;

TEST(UploadWork, IsCompleteOnceAndIsNotTerminalBefore) {
    for (int round = 0; round < 200; ++round) {
        const auto state = std::make_shared<ui::ProgressState>();
        ui::startUpload(requestOf(success), state);
        for (;;) {
            const auto progress = ui::pollProgress(*state);
            if (progress.completed) break;
            ASSERT_FALSE(progress.terminal) << "a state was seen as terminal before its completion was claimed";
            ASSERT_EQ(progress.stage, ui::UploadStage::uploading);
            std::this_thread::yield();
        }
        const auto later = ui::pollProgress(*state);
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
                const auto progress = ui::pollProgress(*state);
                claims += progress.completed;
                if (progress.terminal) return;
                std::this_thread::yield();
            }
        });
    }
    for (auto& watcher : watchers) watcher.join();
    EXPECT_EQ(claims, 1);
}

TEST_F(ProgressDialog, EndsWithItsFixedSentenceWhenThereIsNoMemory) {
    const auto state = std::make_shared<ui::ProgressState>();
    request->prepare = [] {
        throw std::runtime_error("The disk is full, which is a sentence that takes memory to tell.");
    };
    withoutMemory([&] { ui::startUpload(request, state); });
    EXPECT_TRUE(ui::pollProgress(*state).completed);
    EXPECT_TRUE(!state->result.succeeded && state->result.message.empty());
}

TEST_F(DialogTest, CostsALogLineAndABoxWithoutMemory) {
    const auto fail = std::function<void()>([] { throw std::bad_alloc(); });
    withoutMemory([&] {
        EXPECT_FALSE(nx::checkNxStatus("UF_CLONE_terminate", 1100002));
        ui::guardCallback(fail);
        ui::guardRun(fail);
    });
    EXPECT_TRUE(host.boxes.empty());
}

}  // namespace
