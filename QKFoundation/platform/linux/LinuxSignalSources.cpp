// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxSignalSources.h"

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <mutex>

namespace qk::platform {
namespace {

// What the handler of a signal writes to. An eventfd is made once and never closed: a handler on another thread may be
// about to write to it.
struct Slot {
    std::atomic<int> event = -1;
    std::atomic<pid_t> owner = 0;
    std::atomic<bool> isTaken = false;
};
constexpr std::size_t kSlots = 16;
constexpr std::size_t kSignals = 65; // by number, from 1
using Slots = std::array<Slot, kSlots>;

std::array<Slots, kSignals> slotsBySignal;

std::mutex& dispositions() {
    static std::mutex* const mutex = new std::mutex; // sources may end while the process does
    return *mutex;
}

// Whether an instruction of this thread caused it: returning from the handler would run into it again.
bool isFault(int signal, const siginfo_t& info) {
    static constexpr std::array kFaults{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP, SIGSYS};
    return info.si_code > 0 && std::ranges::find(kFaults, signal) != kFaults.end();
}

extern "C" void tellSources(int signal, siginfo_t* info, void* /*context*/) {
    const int error = errno;
    if (isFault(signal, *info)) {
        ::signal(signal, SIG_DFL); // as it happens to one that is ignored
        ::raise(signal);
        return;
    }
    const pid_t process = ::getpid();
    for (const Slot& slot : slotsBySignal[static_cast<std::size_t>(signal)]) {
        // A child made by fork has our eventfds, too, and its signals are not ours.
        if (slot.isTaken.load(std::memory_order_acquire) && slot.owner.load(std::memory_order_relaxed) == process) {
            const std::uint64_t one = 1;
            static_cast<void>(!::write(slot.event.load(std::memory_order_relaxed), &one, sizeof one));
        }
    }
    errno = error;
}

bool handle(int signal) {
    struct sigaction action {};
    action.sa_sigaction = tellSources;
    action.sa_flags = SA_SIGINFO | SA_RESTART | SA_ONSTACK; // a host's threads may have little stack
    ::sigemptyset(&action.sa_mask);
    return ::sigaction(signal, &action, nullptr) == 0;
}

void ignore(int signal) {
    struct sigaction action {};
    action.sa_handler = SIG_IGN;
    ::sigemptyset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
}

// Whether nobody else has taken the signal over since.
bool isOurs(int signal) {
    struct sigaction action {};
    return ::sigaction(signal, nullptr, &action) == 0 && (action.sa_flags & SA_SIGINFO) != 0 &&
           action.sa_sigaction == tellSources;
}

bool isSignal(std::int32_t signal) {
    return signal > 0 && signal < static_cast<std::int32_t>(kSignals);
}

bool anyIsTaken(const Slots& slots) {
    for (const Slot& slot : slots) {
        if (slot.isTaken.load(std::memory_order_relaxed)) {
            return true;
        }
    }
    return false;
}

void empty(int event) {
    std::uint64_t count = 0;
    static_cast<void>(!::read(event, &count, sizeof count));
}

// A free slot with its eventfd, empty; null when there is none.
Slot* take(Slots& slots) {
    for (Slot& slot : slots) {
        if (slot.isTaken.load(std::memory_order_relaxed)) {
            continue;
        }
        if (slot.event.load(std::memory_order_relaxed) < 0) {
            slot.event.store(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), std::memory_order_relaxed);
        }
        const int event = slot.event.load(std::memory_order_relaxed);
        if (event < 0) {
            return nullptr;
        }
        empty(event);
        slot.owner.store(::getpid(), std::memory_order_relaxed);
        slot.isTaken.store(true, std::memory_order_release);
        return &slot;
    }
    return nullptr;
}

class LinuxSignalSource final : public SignalSource {
public:
    LinuxSignalSource(int signal, Slot& slot) : signal_(signal), slot_(slot) {}
    LinuxSignalSource(const LinuxSignalSource&) = delete;
    LinuxSignalSource& operator=(const LinuxSignalSource&) = delete;

    ~LinuxSignalSource() override {
        watch_.reset();
        const std::scoped_lock lock(dispositions());
        slot_.isTaken.store(false, std::memory_order_release);
        if (!anyIsTaken(slotsBySignal[static_cast<std::size_t>(signal_)]) && isOurs(signal_)) {
            ignore(signal_);
        }
    }

    bool watch(LinuxRunLoop& loop, std::function<void()> handler) {
        const int event = slot_.event.load(std::memory_order_relaxed);
        watch_ = loop.addFileDescriptor(event, [event, called = std::move(handler)] {
            empty(event);
            called();
        });
        return watch_ != nullptr;
    }

private:
    int signal_;
    Slot& slot_;
    std::unique_ptr<RunLoopSource> watch_;
};

} // namespace

void LinuxSignalSources::ignoreSignal(std::int32_t signal) {
    const std::scoped_lock lock(dispositions());
    if (!isSignal(signal)) {
        return;
    }
    if (anyIsTaken(slotsBySignal[static_cast<std::size_t>(signal)])) {
        handle(signal);
    } else {
        ignore(signal);
    }
}

std::unique_ptr<SignalSource> LinuxSignalSources::makeSignalSource(std::int32_t signal, std::function<void()> handler) {
    if (!isSignal(signal)) {
        return nullptr;
    }
    std::unique_ptr<LinuxSignalSource> source;
    {
        const std::scoped_lock lock(dispositions());
        Slots& slots = slotsBySignal[static_cast<std::size_t>(signal)];
        Slot* slot = take(slots);
        if (slot == nullptr) {
            return nullptr;
        }
        if (!handle(signal)) {
            slot->isTaken.store(false, std::memory_order_release);
            return nullptr;
        }
        source = std::make_unique<LinuxSignalSource>(signal, *slot);
    }
    return source->watch(*dispatch_->mainLoop(), std::move(handler)) ? std::move(source) : nullptr;
}

} // namespace qk::platform
