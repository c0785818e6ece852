// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/watch/Ticker.h"

#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <system_error>

namespace qk::info {

namespace {

timespec timeOf(std::chrono::milliseconds duration) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(duration);
    timespec time{};
    time.tv_sec = seconds.count();
    time.tv_nsec = std::chrono::nanoseconds(duration - seconds).count();
    return time;
}

} // namespace

Ticker::Ticker(std::chrono::milliseconds first, std::chrono::milliseconds interval)
    : fd_(timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC)) {
    const itimerspec times{timeOf(interval), timeOf(first)};
    if (fd_ == -1 || timerfd_settime(fd_, 0, &times, nullptr) == -1) {
        throw std::system_error(errno, std::generic_category(), "timer");
    }
}

Ticker::~Ticker() {
    close(fd_);
}

void Ticker::take() const {
    std::uint64_t ticks = 0;
    while (read(fd_, &ticks, sizeof ticks) == -1 && errno == EINTR) {
    }
}

} // namespace qk::info
