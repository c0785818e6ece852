// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/BackgroundWork.h"

#include "QKFoundation/platform/services/Services.h"

#include "tools/qkinfo/InterruptSignals.h"
#include "tools/qkinfo/Output.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <exception>
#include <memory>
#include <system_error>
#include <thread>

namespace qk::info {

namespace {

constexpr int kFrameMilliseconds = 120;

/// A descriptor that becomes readable once.
class Event {
public:
    Event() : fd_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
        if (fd_ == -1) {
            throw std::system_error(errno, std::generic_category(), "eventfd");
        }
    }
    Event(const Event&) = delete;
    Event& operator=(const Event&) = delete;
    ~Event() { close(fd_); }

    [[nodiscard]] int fd() const { return fd_; }
    void set() const { eventfd_write(fd_, 1); }

private:
    int fd_;
};

class BusyLineDrawing {
public:
    explicit BusyLineDrawing(const BusyLine& line) : line_(line) {}

    [[nodiscard]] bool isVisible() const { return line_.fd != -1; }

    void drawNextFrame() {
        constexpr std::array<char, 4> kFrames{'|', '/', '-', '\\'};
        write("\r" + line_.text + " " + kFrames[frame_++ % kFrames.size()]);
    }

    void clear() { write("\r\x1b[K"); }

private:
    void write(const std::string& text) const {
        if (isVisible()) {
            // Nothing depends on it: a terminal that went away shows nothing.
            static_cast<void>(writeAll(line_.fd, text));
        }
    }

    const BusyLine& line_;
    std::size_t frame_ = 0;
};

// Returns when `done` is set; does not return after a signal.
void waitFor(const Event& done, const InterruptSignals& signals, BusyLineDrawing& drawing) {
    for (;;) {
        drawing.drawNextFrame();
        std::array<pollfd, 2> waiting{pollfd{done.fd(), POLLIN, 0}, pollfd{signals.fd(), POLLIN, 0}};
        poll(waiting.data(), waiting.size(), drawing.isVisible() ? kFrameMilliseconds : -1);
        const bool isDone = (waiting[0].revents & POLLIN) != 0;
        // A signal that ends a child makes the work end too, and may be reported here only after that: look once more.
        poll(&waiting[1], 1, 0);
        if (isDone || (waiting[1].revents & POLLIN) != 0) {
            drawing.clear();
        }
        if ((waiting[1].revents & POLLIN) != 0) {
            signals.dieOfReceived();
        }
        if (isDone) {
            return;
        }
    }
}

/// A loop without a descriptor can only be run, and looked after from within.
void runByHand(platform::RunLoop& loop, const std::function<bool()>& isDone) {
    constexpr double kSecondsBetweenLooks = 0.1;
    const auto look = loop.scheduleTimer(kSecondsBetweenLooks, true, [&] {
        if (isDone()) {
            loop.stop();
        }
    });
    loop.run();
}

} // namespace

void runInBackground(const std::function<void()>& work, const BusyLine& line) {
    const Event done;
    const InterruptSignals signals;
    BusyLineDrawing drawing(line);
    std::exception_ptr failure;
    std::thread worker([&] {
        try {
            work();
        } catch (...) {
            failure = std::current_exception();
        }
        done.set();
    });
    waitFor(done, signals, drawing);
    worker.join();
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
}

void drawBusyLine(const BusyLine& line) {
    BusyLineDrawing(line).drawNextFrame();
}

void serveMainLoop(const std::function<bool()>& isDone, const BusyLine& line) {
    const std::shared_ptr<platform::RunLoop> loop = platform::services()->dispatch->mainRunLoop();
    if (loop->fileDescriptor() == -1) {
        runByHand(*loop, isDone);
        return;
    }
    const InterruptSignals signals;
    BusyLineDrawing drawing(line);
    // The loop may have so much to do that nothing ever has to be waited for.
    auto nextFrame = std::chrono::steady_clock::now();
    while (!isDone()) {
        if (const auto now = std::chrono::steady_clock::now(); now >= nextFrame) {
            drawing.drawNextFrame();
            nextFrame = now + std::chrono::milliseconds(kFrameMilliseconds);
        }
        std::array<pollfd, 2> waiting{pollfd{loop->fileDescriptor(), POLLIN, 0}, pollfd{signals.fd(), POLLIN, 0}};
        const int ready = poll(waiting.data(), waiting.size(), drawing.isVisible() ? kFrameMilliseconds : -1);
        if (ready > 0 && waiting[1].revents != 0) {
            drawing.clear();
            signals.dieOfReceived();
        }
        loop->drain();
    }
    drawing.clear();
}

} // namespace qk::info
