// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/LinuxRunLoop.h"

#include "benchmarks/runloop/Loop.h"

#include <poll.h>

namespace qk::benchmarks {
namespace {

class Ours final : public Loop {
public:
    // Through the interface, as hosts see it.
    void post(Task task, void* context) override {
        loop_->perform([task, context] { task(context); });
    }
    void run() override { loop_->run(); }
    void stop() override { loop_->stop(); }

private:
    const std::shared_ptr<platform::RunLoop> loop_ = platform::LinuxRunLoop::make();
};

// As a host with a loop of its own does: it polls the descriptor and drains.
class Polled final : public Loop {
public:
    void post(Task task, void* context) override {
        loop_->perform([task, context] { task(context); });
    }
    void run() override {
        for (isRunning_ = true; isRunning_;) {
            pollfd polled{loop_->fileDescriptor(), POLLIN, 0};
            ::poll(&polled, 1, -1);
            loop_->drain();
        }
    }
    void stop() override { isRunning_ = false; }

private:
    const std::shared_ptr<platform::RunLoop> loop_ = platform::LinuxRunLoop::make();
    bool isRunning_ = false;
};

[[maybe_unused]] const bool kAdded = addPeer({"ours", [] { return std::make_unique<Ours>(); }}) &&
                                     addPeer({"ours_polled_by_host", [] { return std::make_unique<Polled>(); }});

} // namespace
} // namespace qk::benchmarks
