#include "dialog_fixture.h"

#include "nx/session.h"
#include "ui/message_box.h"
#include "ui/upload_work.h"

#include <cstdlib>
#include <new>

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
