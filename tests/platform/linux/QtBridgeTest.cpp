// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/QtBridge.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace qk::platform {
namespace {

using testing::ElementsAre;

class QtBridgeTest : public testing::Test {
protected:
    static QCoreApplication& application() {
        static int count = 1;
        static std::string name = "test";
        static char* arguments = name.data();
        static QCoreApplication theApplication(count, &arguments);
        return theApplication;
    }

    QCoreApplication& application_ = application();
    Dispatch& dispatch_ = *services()->dispatch;
    QEventLoop loop_;
    std::vector<std::string> calls_;

    std::function<void()> note(const std::string& name) {
        return [this, name] { calls_.push_back(name); };
    }
};

TEST_F(QtBridgeTest, WithoutTheBridgeTheEventLoopCallsNothing) {
    dispatch_.asyncOnMainQueue(note("task"));
    QCoreApplication::processEvents();
    EXPECT_THAT(calls_, ElementsAre());
    EXPECT_TRUE(dispatch_.mainRunLoop()->drain());
}

TEST_F(QtBridgeTest, TheEventLoopCallsTasksAndTimers) {
    const QtBridge bridge;
    const auto timer = dispatch_.mainRunLoop()->scheduleTimer(0.001, false, [this] {
        calls_.emplace_back("timer");
        std::thread([this] { dispatch_.asyncOnMainQueue([this] { loop_.quit(); }); }).join();
    });
    std::thread([this] { dispatch_.asyncOnMainQueue(note("task")); }).join();
    loop_.exec();
    EXPECT_THAT(calls_, ElementsAre("task", "timer"));
}

TEST_F(QtBridgeTest, ADialogsLoopInsideATaskCallsThemToo) {
    const QtBridge bridge;
    dispatch_.asyncOnMainQueue([this] {
        QEventLoop dialog;
        dispatch_.asyncOnMainQueue(note("while the dialog is open"));
        dispatch_.asyncOnMainQueue([&dialog] { dialog.quit(); });
        dialog.exec();
        calls_.emplace_back("closed");
        loop_.quit();
    });
    loop_.exec();
    EXPECT_THAT(calls_, ElementsAre("while the dialog is open", "closed"));
}

TEST_F(QtBridgeTest, ABridgeThatIsGoneCallsNothing) {
    std::optional<QtBridge> bridge(std::in_place);
    dispatch_.asyncOnMainQueue([&] {
        calls_.emplace_back("last");
        dispatch_.asyncOnMainQueue(note("never"));
    });
    while (calls_.empty()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    bridge.reset();
    QCoreApplication::processEvents();
    EXPECT_THAT(calls_, ElementsAre("last"));
    dispatch_.mainRunLoop()->drain();
}

} // namespace
} // namespace qk::platform
