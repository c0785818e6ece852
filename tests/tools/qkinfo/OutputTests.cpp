// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/Output.h"
#include "tools/qkinfo/Terminal.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <string>
#include <thread>

namespace qk::info {

namespace {

struct Pipe {
    Pipe() { EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0); }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        closeReader();
        close(ends[1]);
    }
    void closeReader() { close(std::exchange(ends[0], -1)); }

    std::array<int, 2> ends{};
};

} // namespace

TEST(Output, NothingIsWrittenAnywhere) {
    EXPECT_EQ(writeAll(-1, ""), 0);
}

TEST(Output, AClosedDescriptorIsAnError) {
    EXPECT_EQ(writeAll(-1, "text"), EBADF);
}

TEST(Output, AFullDeviceIsAnError) {
    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    EXPECT_EQ(writeAll(full, "text"), ENOSPC);
    close(full);
}

TEST(Output, AReaderThatWentAwayIsAnError) {
    Pipe pipe;
    pipe.closeReader();
    auto* const before = std::signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(writeAll(pipe.ends[1], "text"), EPIPE);
    std::signal(SIGPIPE, before);
}

TEST(Output, WaitsForADescriptorThatIsNotReady) {
    Pipe pipe;
    fcntl(pipe.ends[1], F_SETFL, O_NONBLOCK);
    const std::string text(1'000'000, 'x'); // more than any pipe holds by default
    std::string read;
    std::thread reader([&] {
        std::array<char, 4096> buffer{};
        while (read.size() < text.size()) {
            const ssize_t count = ::read(pipe.ends[0], buffer.data(), buffer.size());
            ASSERT_GT(count, 0);
            read.append(buffer.data(), static_cast<std::size_t>(count));
        }
    });
    EXPECT_EQ(writeAll(pipe.ends[1], text), 0);
    reader.join();
    EXPECT_EQ(read, text);
}

TEST(Terminal, APipeIsNone) {
    const Pipe pipe;
    const Terminal terminal = terminalAt(pipe.ends[1]);
    EXPECT_FALSE(terminal.isTerminal);
    EXPECT_FALSE(terminal.takesSequences);
    EXPECT_EQ(terminal.width, 80U);
}

TEST(Terminal, ColorFollowsTheChoiceThenTheTerminalThenTheEnvironment) {
    const Terminal pipe;
    const Terminal screen{true, 100, true};
    const Terminal dumb{true, 100, false};
    EXPECT_FALSE(usesColor(ColorChoice::Auto, pipe, nullptr));
    EXPECT_TRUE(usesColor(ColorChoice::Auto, screen, nullptr));
    EXPECT_TRUE(usesColor(ColorChoice::Auto, screen, ""));
    EXPECT_FALSE(usesColor(ColorChoice::Auto, screen, "1"));
    EXPECT_FALSE(usesColor(ColorChoice::Auto, dumb, nullptr));
    EXPECT_TRUE(usesColor(ColorChoice::Always, pipe, "1"));
    EXPECT_FALSE(usesColor(ColorChoice::Never, screen, nullptr));
}

} // namespace qk::info
