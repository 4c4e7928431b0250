// Without memory nothing that must not throw ends the program.
#include "progress_fixture.h"

#include <export/nx_status.h>
#include <ui/callback_guard.h>
#include <ui/upload_work.h>

#include <cstdlib>
#include <new>

namespace {

thread_local bool exhausted = false;

/// This thread gets no memory.
struct ExhaustedMemory {
    ExhaustedMemory() { exhausted = true; }
    ~ExhaustedMemory() { exhausted = false; }
    ExhaustedMemory(const ExhaustedMemory&) = delete;
    ExhaustedMemory& operator=(const ExhaustedMemory&) = delete;
};

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

TEST_F(ProgressDialog, EndsWithItsFixedSentenceWhenThereIsNoMemory) {
    const auto state = std::make_shared<ui::ProgressState>();
    request->prepare = [] {
        throw std::runtime_error("The disk is full, which is a sentence that takes memory to tell.");
    };
    {
        const ExhaustedMemory none;
        ui::startUpload(request, state);
    }
    EXPECT_TRUE(ui::lookAt(*state).completed);
    EXPECT_TRUE(!state->result.succeeded && state->result.message.empty());
}

TEST(ExhaustedMemory, CostsALogLineAndABox) {
    const test_support::PluginFolder folder;
    test_support::ScriptedHost host;
    folder.startLogging();
    const auto fail = std::function<void()>([] { throw std::bad_alloc(); });
    {
        const ExhaustedMemory none;
        EXPECT_FALSE(pivra::checkNxStatus("UF_CLONE_terminate", 1100002));
        ui::guardCallback(fail);
        ui::guardRun(fail);
    }
    EXPECT_TRUE(host.boxes.empty());
}

}  // namespace
