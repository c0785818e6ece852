// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/tasks/Peers.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace qk::benchmarks {
namespace {

constexpr std::size_t kFirstCapacity = std::size_t{64} << 10U;
constexpr int kPipeSize = 1 << 20;

std::vector<char*> argumentsOf(const Command& command) {
    std::vector<char*> result{const_cast<char*>(command.path.c_str())};
    for (const std::string& argument : command.arguments) {
        result.push_back(const_cast<char*>(argument.c_str()));
    }
    result.push_back(nullptr);
    return result;
}

std::size_t readAll(int descriptor) {
    std::size_t capacity = kFirstCapacity;
    std::size_t length = 0;
    char* bytes = static_cast<char*>(std::malloc(capacity));
    for (;;) {
        if (length == capacity) {
            capacity *= 2;
            bytes = static_cast<char*>(std::realloc(bytes, capacity));
        }
        const ssize_t count = ::read(descriptor, bytes + length, capacity - length);
        if (count <= 0) {
            break;
        }
        length += static_cast<std::size_t>(count);
    }
    std::free(bytes);
    return length;
}

std::size_t collect(pid_t child, const std::array<int, 2>& pipe) {
    ::close(pipe[1]);
    const std::size_t length = readAll(pipe[0]);
    ::close(pipe[0]);
    ::waitpid(child, nullptr, 0);
    return length;
}

} // namespace

std::size_t runBareSpawn(const Command& command) {
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        return 0;
    }
    ::fcntl(pipe[1], F_SETPIPE_SZ, kPipeSize);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
    pid_t child = -1;
    const int error =
        ::posix_spawn(&child, command.path.c_str(), &actions, nullptr, argumentsOf(command).data(), environ);
    ::posix_spawn_file_actions_destroy(&actions);
    return error == 0 ? collect(child, pipe) : 0;
}

std::size_t runFork(const Command& command) {
    std::array<int, 2> pipe{};
    if (::pipe2(pipe.data(), O_CLOEXEC) != 0) {
        return 0;
    }
    ::fcntl(pipe[1], F_SETPIPE_SZ, kPipeSize);
    const std::vector<char*> arguments = argumentsOf(command);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(pipe[1], STDOUT_FILENO);
        ::execv(arguments[0], arguments.data());
        ::_exit(127);
    }
    return collect(child, pipe);
}

std::size_t runPopen(const Command& command) {
    std::string line = command.path;
    for (const std::string& argument : command.arguments) {
        line += " " + argument;
    }
    std::FILE* stream = ::popen(line.c_str(), "re");
    if (stream == nullptr) {
        return 0;
    }
    const std::size_t length = readAll(::fileno(stream));
    ::pclose(stream);
    return length;
}

} // namespace qk::benchmarks
