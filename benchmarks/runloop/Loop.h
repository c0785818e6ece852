// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace qk::benchmarks {

using Task = void (*)(void* context);

/// A loop of the thread that makes it.
class Loop {
public:
    Loop() = default;
    Loop(const Loop&) = delete;
    Loop& operator=(const Loop&) = delete;
    virtual ~Loop() = default;

    /// Has the loop call `task(context)`. Any thread.
    virtual void post(Task task, void* context) = 0;
    /// Calls what is posted until `stop`.
    virtual void run() = 0;
    /// Called by a task of the loop.
    virtual void stop() = 0;
};

struct Peer {
    std::string name;
    std::function<std::unique_ptr<Loop>()> makeLoop;
    /// Holds no more than one task at a time.
    bool isOneSlot = false;
};

/// What takes part. Each source file adds its own before main runs.
[[nodiscard]] std::vector<Peer>& peers();

/// Adds a peer; for the initialisation of a constant.
inline bool addPeer(Peer peer) {
    peers().push_back(std::move(peer));
    return true;
}

} // namespace qk::benchmarks
