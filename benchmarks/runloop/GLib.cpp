// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/runloop/Loop.h"

#include <glib.h>

namespace qk::benchmarks {
namespace {

struct Call {
    Task task;
    void* context;
};

class GLibLoop final : public Loop {
public:
    GLibLoop() : context_(g_main_context_new()), loop_(g_main_loop_new(context_, FALSE)) {
        g_main_context_acquire(context_); // or another thread would call its task itself while the loop does not run
    }
    GLibLoop(const GLibLoop&) = delete;
    GLibLoop& operator=(const GLibLoop&) = delete;
    ~GLibLoop() override {
        g_main_context_release(context_);
        g_main_loop_unref(loop_);
        g_main_context_unref(context_);
    }

    void post(Task task, void* context) override {
        const auto call = [](gpointer data) -> gboolean {
            const Call posted = *static_cast<Call*>(data);
            posted.task(posted.context);
            return G_SOURCE_REMOVE;
        };
        g_main_context_invoke_full(context_, G_PRIORITY_DEFAULT, call, new Call{task, context},
                                   [](gpointer data) { delete static_cast<Call*>(data); });
    }
    void run() override { g_main_loop_run(loop_); }
    void stop() override { g_main_loop_quit(loop_); }

private:
    GMainContext* context_;
    GMainLoop* loop_;
};

[[maybe_unused]] const bool kAdded = addPeer({"g_main_context_invoke", [] { return std::make_unique<GLibLoop>(); }});

} // namespace
} // namespace qk::benchmarks
