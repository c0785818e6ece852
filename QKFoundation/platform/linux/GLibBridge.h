// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"

#include <glib-unix.h>
#include <glib.h>

#include <memory>
#include <utility>

namespace qk::platform {

/// Has a GLib main context (GTK's, unless told otherwise) call what is due on a run loop, for as long as this object
/// lives:
///
///     const qk::platform::GLibBridge bridge; // on the main thread
///     g_main_loop_run(loop);                 // or gtk_main(), g_application_run(), ...
///
/// Tasks, timers and events come at `G_PRIORITY_DEFAULT`, also while a dialog that one of them opened runs the context
/// itself. The library does not link GLib: the host does. Threads: the one that runs the context.
class GLibBridge {
public:
    /// Attaches the run loop of the main thread to GLib's default main context.
    GLibBridge() : GLibBridge(services()->dispatch->mainRunLoop(), nullptr) {}

    /// Attaches `loop`, of the thread that runs `context`, to `context`; null stands for the default one.
    GLibBridge(std::shared_ptr<RunLoop> loop, GMainContext* context)
        : source_(g_unix_fd_source_new(loop->fileDescriptor(), G_IO_IN)) {
        auto held = std::make_unique<std::shared_ptr<RunLoop>>(std::move(loop));
        g_source_set_callback(source_, G_SOURCE_FUNC(onReadable), held.release(), release);
        g_source_set_can_recurse(source_, TRUE);
        g_source_set_name(source_, "QKFoundation run loop");
        g_source_attach(source_, context);
    }
    GLibBridge(const GLibBridge&) = delete;
    GLibBridge& operator=(const GLibBridge&) = delete;

    /// Detaches it.
    ~GLibBridge() {
        g_source_destroy(source_);
        g_source_unref(source_);
    }

private:
    static gboolean onReadable(gint /*descriptor*/, GIOCondition /*condition*/, gpointer data) {
        const std::shared_ptr<RunLoop> loop = *static_cast<std::shared_ptr<RunLoop>*>(data);
        loop->drain();
        return G_SOURCE_CONTINUE;
    }
    static void release(gpointer data) { delete static_cast<std::shared_ptr<RunLoop>*>(data); }

    GSource* source_;
};

} // namespace qk::platform
