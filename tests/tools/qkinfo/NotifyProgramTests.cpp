// SPDX-License-Identifier: Apache-2.0
// The program as it calls to itself over a session bus, and without one.
#include "tests/platform/linux/PrivateBus.h"
#include "tests/tools/qkinfo/Child.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>

#include <array>
#include <csignal>

namespace qk::info {

namespace {

constexpr int kTimeIsOver = 1;
constexpr int kFailure = 2;

/// A program that waits, from the moment on that it says so.
class Waiting {
public:
    Waiting(const Workshop& workshop, const std::vector<std::string>& arguments) {
        EXPECT_EQ(pipe2(output_.data(), O_CLOEXEC), 0);
        EXPECT_EQ(pipe2(error_.data(), O_CLOEXEC), 0);
        child_ = fork();
        if (child_ == 0) {
            dup2(output_[1], STDOUT_FILENO);
            dup2(error_[1], STDERR_FILENO);
            workshop.become(arguments);
        }
        close(output_[1]);
        close(error_[1]);
        for (char byte = 0; byte != '\n' && read(error_[0], &byte, 1) == 1;) {
            announcement_ += byte;
        }
    }
    Waiting(const Waiting&) = delete;
    Waiting& operator=(const Waiting&) = delete;
    ~Waiting() {
        close(output_[0]);
        close(error_[0]);
    }

    [[nodiscard]] const std::string& announcement() const { return announcement_; }
    void interrupt() const { kill(child_, SIGINT); }

    /// To be called once.
    [[nodiscard]] Finished finished() const {
        Finished result;
        result.output = restOf(output_[0]);
        result.error = restOf(error_[0]);
        waitForChild(child_, result);
        return result;
    }

private:
    static std::string restOf(int end) {
        std::string text;
        for (char byte = 0; read(end, &byte, 1) == 1;) {
            text += byte;
        }
        return text;
    }

    std::array<int, 2> output_{};
    std::array<int, 2> error_{};
    pid_t child_ = -1;
    std::string announcement_;
};

class NotifyProgram : public testing::Test {
protected:
    void SetUp() override {
        if (!tests::PrivateBus::isInstalled()) {
            GTEST_SKIP() << "there is no " << tests::PrivateBus::kDaemon;
        }
        ASSERT_TRUE(bus.start());
        workshop.setVariable("DBUS_SESSION_BUS_ADDRESS=" + bus.address());
    }

    tests::PrivateBus bus;
    Workshop workshop;
};

} // namespace

TEST(NotifyProgramAlone, WithoutABusIsOneLineOfError) {
    Workshop workshop;
    workshop.setVariable("DBUS_SESSION_BUS_ADDRESS=unix:path=/nonexistent/bus");
    const Finished posting = workshop.run({"notify", "a"});
    EXPECT_EQ(posting.status, kFailure);
    EXPECT_EQ(posting.error, "qkinfo: there is no session bus to reach other programs\n");
    const Finished waiting = workshop.run({"notify", "--wait", "a"});
    EXPECT_EQ(waiting.status, kFailure);
    EXPECT_EQ(waiting.error, "qkinfo: there is no session bus to hear other programs\n");
    EXPECT_EQ(waiting.output, "");
}

TEST_F(NotifyProgram, OneCallsAndTheOtherHears) {
    for (const std::string name : {"org.example.done", "it's", "\\", "Größe"}) {
        const Waiting waiting(workshop, {"notify", "--wait", name});
        EXPECT_THAT(waiting.announcement(), testing::StartsWith("qkinfo: waiting for "));
        const Finished posting = workshop.run({"notify", name});
        EXPECT_EQ(posting.status, 0);
        EXPECT_EQ(posting.output + posting.error, "");
        const Finished heard = waiting.finished();
        EXPECT_EQ(heard.status, 0);
        EXPECT_EQ(heard.output, name + "\n");
        EXPECT_EQ(heard.error, "");
    }
}

TEST_F(NotifyProgram, TheTimeIsOver) {
    const Finished finished = workshop.run({"notify", "--wait", "--timeout", "0.1", "a"});
    EXPECT_EQ(finished.status, kTimeIsOver);
    EXPECT_EQ(finished.output, "");
    EXPECT_EQ(finished.error, "qkinfo: waiting for \"a\"\nqkinfo: \"a\" was not posted in time\n");
}

TEST_F(NotifyProgram, AnInterruptEndsTheWaiting) {
    const Waiting waiting(workshop, {"notify", "--wait", "a"});
    waiting.interrupt();
    const Finished finished = waiting.finished();
    EXPECT_EQ(finished.signal, SIGINT);
    EXPECT_EQ(finished.output + finished.error, "");
}

TEST_F(NotifyProgram, ABusThatGoesAwayEndsTheWaiting) {
    const Waiting waiting(workshop, {"notify", "--wait", "a"});
    bus.stop();
    const Finished finished = waiting.finished();
    EXPECT_EQ(finished.status, kFailure);
    EXPECT_EQ(finished.error, "qkinfo: the session bus is gone\n");
}

} // namespace qk::info
