// SPDX-License-Identifier: Apache-2.0
// Having another thread's loop call a task, beside the same with the kernel's means alone and the toolkits' loops.
#include "benchmarks/runloop/Loop.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <latch>
#include <semaphore>
#include <thread>

namespace qk::benchmarks {

std::vector<Peer>& peers() {
    static std::vector<Peer> all;
    return all;
}

namespace {

constexpr int kRoundTrips = 1000;
constexpr int kTasks = 100'000;

// A loop on a thread of its own.
class OtherThread {
public:
    explicit OtherThread(const Peer& peer)
        : thread_([this, &peer] {
              loop_ = peer.makeLoop();
              made_.count_down();
              loop_->run();
              loop_.reset();
          }) {
        made_.wait();
    }
    OtherThread(const OtherThread&) = delete;
    OtherThread& operator=(const OtherThread&) = delete;
    ~OtherThread() {
        loop_->post([](void* loop) { static_cast<Loop*>(loop)->stop(); }, loop_.get());
        thread_.join();
    }

    [[nodiscard]] Loop& loop() { return *loop_; }

private:
    std::latch made_{1};
    std::unique_ptr<Loop> loop_;
    std::thread thread_;
};

struct PingPong {
    Loop& here;
    Loop& there;
    int left = 0;

    void start() {
        left = kRoundTrips;
        there.post(ping, this);
        here.run();
    }
    static void ping(void* self) { static_cast<PingPong*>(self)->here.post(pong, self); }
    static void pong(void* context) {
        auto& self = *static_cast<PingPong*>(context);
        if (--self.left > 0) {
            self.there.post(ping, context);
        } else {
            self.here.stop();
        }
    }
};

// One post to another thread, and its answer: two wake-ups.
void roundTrip(benchmark::State& state, const Peer& peer) {
    const auto here = peer.makeLoop();
    OtherThread there(peer);
    PingPong game{*here, there.loop()};
    for (auto _ : state) {
        game.start();
    }
    state.SetItemsProcessed(state.iterations() * kRoundTrips);
}

struct Crowd {
    Loop& loop;
    int left = 0;

    static void arrive(void* context) {
        auto& self = *static_cast<Crowd*>(context);
        if (--self.left == 0) {
            self.loop.stop();
        }
    }
};

// Many posts by one thread while the loop calls them on another.
void manyPosts(benchmark::State& state, const Peer& peer) {
    const auto loop = peer.makeLoop();
    Crowd crowd{*loop};
    std::binary_semaphore start(0);
    std::atomic<bool> isOver = false;
    std::thread poster([&] {
        for (start.acquire(); !isOver; start.acquire()) {
            for (int task = 0; task < kTasks; ++task) {
                loop->post(Crowd::arrive, &crowd);
            }
        }
    });
    for (auto _ : state) {
        crowd.left = kTasks;
        start.release();
        loop->run();
    }
    isOver = true;
    start.release();
    poster.join();
    state.SetItemsProcessed(state.iterations() * kTasks);
}

void registerAll() {
    for (const Peer& peer : peers()) {
        benchmark::RegisterBenchmark(("round_trip/" + peer.name).c_str(),
                                     [&peer](benchmark::State& state) { roundTrip(state, peer); })
            ->UseRealTime()
            ->MeasureProcessCPUTime();
    }
    for (const Peer& peer : peers()) {
        if (!peer.isOneSlot) {
            benchmark::RegisterBenchmark(("many_posts/" + peer.name).c_str(),
                                         [&peer](benchmark::State& state) { manyPosts(state, peer); })
                ->UseRealTime()
                ->MeasureProcessCPUTime();
        }
    }
}

} // namespace
} // namespace qk::benchmarks

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) {
        return 1;
    }
    std::ranges::sort(qk::benchmarks::peers(), {}, &qk::benchmarks::Peer::name);
    qk::benchmarks::registerAll();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
