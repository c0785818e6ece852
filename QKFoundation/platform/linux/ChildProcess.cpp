// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/ChildProcess.h"

#include "QKFoundation/platform/linux/OutputCollector.h"
#include "QKFoundation/platform/linux/SpawnAttributes.h"
#include "QKFoundation/platform/linux/UniqueHandle.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <limits>

namespace qk::platform {
namespace {

using Clock = std::chrono::steady_clock;
using Deadline = std::optional<Clock::time_point>;

constexpr int kPipeSize = 1 << 20; // the most that an ordinary user may ask for
constexpr int kFirstOwnDescriptor = 3;

struct Pipe {
    UniqueFD reader;
    UniqueFD writer;
};

// A process that runs with a closed standard stream gets the stream's number for the next thing that it opens. A pipe's
// end must not lie there: the child's own streams are put there.
bool moveAboveStandardStreams(UniqueFD& descriptor) {
    if (descriptor.get() < kFirstOwnDescriptor) {
        descriptor = UniqueFD(::fcntl(descriptor.get(), F_DUPFD_CLOEXEC, kFirstOwnDescriptor));
    }
    return static_cast<bool>(descriptor);
}

// 0 or an error number.
int openPipe(Pipe& pipe) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return errno;
    }
    pipe.reader.reset(ends[0]);
    pipe.writer.reset(ends[1]);
    if (!moveAboveStandardStreams(pipe.reader) || !moveAboveStandardStreams(pipe.writer)) {
        return errno;
    }
    // The more one side can do before the other one must run, the fewer switches; without the right to it the pipe
    // keeps its size.
    ::fcntl(pipe.writer.get(), F_SETPIPE_SZ, kPipeSize);
    return 0;
}

std::vector<char*> pointers(const std::vector<std::string>& texts) {
    std::vector<char*> result;
    result.reserve(texts.size() + 1);
    for (const std::string& text : texts) {
        result.push_back(const_cast<char*>(text.c_str())); // NOLINT: execve(2) takes them so and leaves them alone
    }
    result.push_back(nullptr);
    return result;
}

bool holdsZero(const std::string& text) {
    return text.find('\0') != std::string::npos;
}

bool isExpressible(const ChildRequest& request) {
    return !holdsZero(request.path) && std::ranges::none_of(request.arguments, holdsZero) &&
           !holdsZero(request.workingDirectory.value_or(std::string())) &&
           (!request.environment.has_value() || std::ranges::none_of(*request.environment, holdsZero));
}

void setStream(SpawnFileActions& actions, ChildStream stream, const UniqueFD& writer, int target) {
    switch (stream) {
    case ChildStream::Inherit: actions.inherit(target); break;
    case ChildStream::Collect: actions.duplicate(writer.get(), target); break;
    case ChildStream::Discard: actions.openNull(target); break;
    }
}

// The child's number, or an error number in `error`.
pid_t start(const ChildRequest& request, const UniqueFD& writer, int& error) {
    SpawnFileActions actions;
    setStream(actions, request.input, writer, STDIN_FILENO);
    setStream(actions, request.output, writer, STDOUT_FILENO);
    setStream(actions, request.error, writer, STDERR_FILENO);
    if (request.workingDirectory.has_value()) {
        actions.changeDirectory(*request.workingDirectory);
    }
    actions.closeFrom(kFirstOwnDescriptor);
    SpawnAttributes attributes;
    if (request.limit.has_value()) {
        attributes.leadGroup();
    }
    if (error = actions.error() != 0 ? actions.error() : attributes.error(); error != 0) {
        return -1;
    }
    std::vector<std::string> words{request.path};
    words.insert(words.end(), request.arguments.begin(), request.arguments.end());
    const std::vector<char*> arguments = pointers(words);
    const std::vector<char*> environment = pointers(request.environment.value_or(std::vector<std::string>()));
    pid_t child = -1;
    error = ::posix_spawn(&child, request.path.c_str(), actions.get(), attributes.get(), arguments.data(),
                          request.environment.has_value() ? environment.data() : environ);
    return child;
}

int millisecondsUntil(const Deadline& deadline) {
    if (!deadline.has_value()) {
        return -1;
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now()).count();
    return static_cast<int>(std::clamp<std::int64_t>(left, 0, std::numeric_limits<int>::max()));
}

// False once the deadline has passed with nothing to read.
bool waitForInput(int descriptor, const Deadline& deadline) {
    pollfd watched{descriptor, POLLIN, 0};
    for (;;) {
        const int ready = ::poll(&watched, 1, millisecondsUntil(deadline));
        if (ready >= 0 || errno != EINTR) {
            return ready != 0;
        }
    }
}

// False when the deadline has passed before the output's end.
bool drain(int reader, OutputCollector& output, const Deadline& deadline) {
    for (;;) {
        if (deadline.has_value() && !waitForInput(reader, deadline)) {
            return false;
        }
        const ssize_t count = output.readFrom(reader);
        if (count == 0 || (count < 0 && errno != EINTR)) {
            return true;
        }
    }
}

// A descriptor of the child itself: readable once it has ended. None on a kernel before 5.3.
UniqueFD openProcess(pid_t child) {
    return UniqueFD(static_cast<int>(::syscall(SYS_pidfd_open, child, 0U)));
}

void collectStatus(pid_t child, ChildExit& result) {
    int status = 0;
    pid_t waited = -1;
    do {
        waited = ::waitpid(child, &status, 0);
    } while (waited < 0 && errno == EINTR);
    if (waited != child) {
        result.status = kUnknownExitStatus;
    } else if (WIFSIGNALED(status)) {
        result.signaled = true;
        result.status = WTERMSIG(status);
    } else {
        result.status = WEXITSTATUS(status);
    }
}

} // namespace

std::variant<int, ChildExit> runChild(const ChildRequest& request) {
    if (!isExpressible(request)) {
        return EINVAL;
    }
    const Deadline deadline = request.limit.has_value() ? Deadline(Clock::now() + *request.limit) : std::nullopt;
    Pipe pipe;
    if (request.output == ChildStream::Collect) {
        if (const int error = openPipe(pipe); error != 0) {
            return error;
        }
    }
    int error = 0;
    const pid_t child = start(request, pipe.writer, error);
    pipe.writer.reset();
    if (error != 0) {
        return error;
    }
    ChildExit result;
    OutputCollector output;
    if (pipe.reader) {
        try {
            result.limitPassed = !drain(pipe.reader.get(), output, deadline);
        } catch (...) { // out of memory: half of an output is none
            pipe.reader.reset();
            ::kill(child, SIGKILL);
            collectStatus(child, result);
            throw;
        }
    }
    if (deadline.has_value() && !result.limitPassed) {
        const UniqueFD process = openProcess(child);
        result.limitPassed = process && !waitForInput(process.get(), deadline);
    }
    if (result.limitPassed) {
        ::kill(-child, SIGKILL);
    }
    collectStatus(child, result);
    result.output = output.take();
    return result;
}

} // namespace qk::platform
