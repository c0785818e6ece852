// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/GLibBridge.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace qk::platform {
namespace {

using testing::ElementsAre;

class GLibBridgeTest : public testing::Test {
protected:
    GLibBridgeTest() = default;
    ~GLibBridgeTest() override { g_main_loop_unref(loop_); }

    Dispatch& dispatch_ = *services()->dispatch;
    GMainLoop* loop_ = g_main_loop_new(nullptr, FALSE);
    std::vector<std::string> calls_;

    std::function<void()> note(const std::string& name) {
        return [this, name] { calls_.push_back(name); };
    }
    std::function<void()> quit(GMainLoop* loop) {
        return [loop] { g_main_loop_quit(loop); };
    }
};

TEST_F(GLibBridgeTest, WithoutTheBridgeTheContextCallsNothing) {
    dispatch_.asyncOnMainQueue(note("task"));
    EXPECT_FALSE(g_main_context_iteration(nullptr, FALSE));
    EXPECT_THAT(calls_, ElementsAre());
    EXPECT_TRUE(dispatch_.mainRunLoop()->drain());
}

TEST_F(GLibBridgeTest, TheContextCallsTasksAndTimers) {
    const GLibBridge bridge;
    const auto timer = dispatch_.mainRunLoop()->scheduleTimer(0.001, false, [this] {
        calls_.emplace_back("timer");
        std::thread([this] { dispatch_.asyncOnMainQueue(quit(loop_)); }).join();
    });
    std::thread([this] { dispatch_.asyncOnMainQueue(note("task")); }).join();
    g_main_loop_run(loop_);
    EXPECT_THAT(calls_, ElementsAre("task", "timer"));
}

TEST_F(GLibBridgeTest, ADialogsLoopInsideATaskCallsThemToo) {
    const GLibBridge bridge;
    GMainLoop* const dialog = g_main_loop_new(nullptr, FALSE);
    dispatch_.asyncOnMainQueue([&] {
        dispatch_.asyncOnMainQueue(note("while the dialog is open"));
        dispatch_.asyncOnMainQueue(quit(dialog));
        g_main_loop_run(dialog);
        calls_.emplace_back("closed");
        g_main_loop_quit(loop_);
    });
    g_main_loop_run(loop_);
    g_main_loop_unref(dialog);
    EXPECT_THAT(calls_, ElementsAre("while the dialog is open", "closed"));
}

TEST_F(GLibBridgeTest, ABridgeThatIsGoneCallsNothing) {
    std::optional<GLibBridge> bridge(std::in_place);
    dispatch_.asyncOnMainQueue([&] {
        bridge.reset(); // also from inside
        calls_.emplace_back("last");
        dispatch_.asyncOnMainQueue(note("never"));
    });
    EXPECT_TRUE(g_main_context_iteration(nullptr, FALSE));
    EXPECT_FALSE(g_main_context_iteration(nullptr, FALSE));
    EXPECT_THAT(calls_, ElementsAre("last"));
    dispatch_.mainRunLoop()->drain();
}

} // namespace
} // namespace qk::platform
