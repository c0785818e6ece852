// SPDX-License-Identifier: Apache-2.0
#include "tests/tools/qkinfo/Child.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <fstream>

namespace qk::info {

namespace {

constexpr int kCannotStart = 127;

void placeOutput(OutputPlace place, int collected) {
    switch (place) {
    case OutputPlace::Collected: dup2(collected, STDOUT_FILENO); break;
    case OutputPlace::Closed: close(STDOUT_FILENO); break;
    case OutputPlace::Full: dup2(open("/dev/full", O_WRONLY | O_CLOEXEC), STDOUT_FILENO); break;
    case OutputPlace::NoReader: {
        std::array<int, 2> ends{};
        pipe2(ends.data(), O_CLOEXEC) == 0 ? dup2(ends[1], STDOUT_FILENO) : -1;
        break;
    }
    }
}

// Reads both to their ends, whichever is ready.
void drain(const std::array<int, 2>& sources, const std::array<std::string*, 2>& texts) {
    std::array<pollfd, 2> waiting{pollfd{sources[0], POLLIN, 0}, pollfd{sources[1], POLLIN, 0}};
    while (waiting[0].fd != -1 || waiting[1].fd != -1) {
        poll(waiting.data(), waiting.size(), -1);
        for (std::size_t index = 0; index < waiting.size(); ++index) {
            std::array<char, 4096> buffer{};
            if (waiting[index].fd == -1 || waiting[index].revents == 0) {
                continue;
            }
            const ssize_t count = read(waiting[index].fd, buffer.data(), buffer.size());
            if (count > 0) {
                texts[index]->append(buffer.data(), static_cast<std::size_t>(count));
            } else {
                close(waiting[index].fd);
                waiting[index].fd = -1;
            }
        }
    }
}

} // namespace

Workshop::Workshop() {
    std::string name = (std::filesystem::temp_directory_path() / "qkinfo-XXXXXX").string();
    folder_ = mkdtemp(name.data());
    setUpdateTool("echo 'No new software available.'");
}

Workshop::~Workshop() {
    std::filesystem::remove_all(folder_);
}

void Workshop::setUpdateTool(std::string_view script) {
    std::ofstream(path("softwareupdate")) << "#!/bin/sh\n" << script << "\n";
    std::filesystem::permissions(path("softwareupdate"), std::filesystem::perms::owner_all);
}

void Workshop::removeUpdateTool() {
    std::filesystem::remove(path("softwareupdate"));
}

void Workshop::become(const std::vector<std::string>& arguments) const {
    std::vector<std::string> words{"qkinfo"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);
    unsetenv("NO_COLOR");
    unsetenv("TERM");
    setenv("TZ", "UTC0", 1);
    setenv("QK_SOFTWAREUPDATE", path("softwareupdate").c_str(), 1);
    for (const std::string& assignment : variables_) {
        putenv(const_cast<char*>(assignment.c_str()));
    }
    execv(QKINFO_PROGRAM, pointers.data());
    _exit(kCannotStart);
}

Finished Workshop::run(const std::vector<std::string>& arguments, OutputPlace place) const {
    std::array<int, 2> output{};
    std::array<int, 2> error{};
    EXPECT_EQ(pipe2(output.data(), O_CLOEXEC), 0);
    EXPECT_EQ(pipe2(error.data(), O_CLOEXEC), 0);
    const pid_t child = fork();
    if (child == 0) {
        placeOutput(place, output[1]);
        dup2(error[1], STDERR_FILENO);
        become(arguments);
    }
    close(output[1]);
    close(error[1]);
    Finished finished;
    drain({output[0], error[0]}, {&finished.output, &finished.error});
    waitForChild(child, finished);
    return finished;
}

void waitForChild(pid_t child, Finished& finished) {
    int status = 0;
    while (waitpid(child, &status, 0) == -1 && errno == EINTR) {
    }
    finished.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    finished.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

} // namespace qk::info
