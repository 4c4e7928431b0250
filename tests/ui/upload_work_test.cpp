#include "dialog_fixture.h"

#include <support/memory.h>

#include "nx/session.h"
#include "ui/message_box.h"
#include "ui/upload_work.h"

#include <future>

namespace {

using namespace ui_test;
using test_support::withoutMemory;

TEST_F(ProgressDialog, EndsWithItsFixedSentenceWhenThereIsNoMemory) {
    const auto state = std::make_shared<ui::ProgressState>();
    request->prepare = [] {
        throw std::runtime_error("The disk is full, which is a sentence that takes memory to tell.");
    };
    withoutMemory([&] { ui::startUpload(request, state); });
    EXPECT_TRUE(ui::pollProgress(*state).completed);
    EXPECT_TRUE(!state->result.succeeded && state->result.message.empty());
}

TEST_F(ProgressDialog, PollsWithoutMemoryOrTheHostWhileNothingChanges) {
    std::promise<void> end;
    request->executeUpload = [uploaded = end.get_future().share()] { return uploaded.wait(), success(); };
    host.user = [&](OpenDialog&) {
        turnMessageLoop(std::chrono::seconds(1));
        const auto allocations = test_support::allocations;
        const auto calls = interceptor.calls().size();
        turnMessageLoop(std::chrono::seconds(2));
        EXPECT_EQ(test_support::allocations, allocations);
        EXPECT_EQ(interceptor.calls().size(), calls);
        end.set_value();
    };
    show();
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
