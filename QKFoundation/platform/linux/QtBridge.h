// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Services.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>
#include <utility>

namespace qk::platform {

/// Has Qt's event loop call what is due on a run loop, for as long as this object lives:
///
///     QApplication application(count, arguments);
///     const qk::platform::QtBridge bridge; // on the main thread, behind the application
///     return application.exec();
///
/// Tasks, timers and events come also while a dialog that one of them opened runs an event loop of its own. The library
/// does not link Qt: the host does. What it calls must not destroy it. Threads: the one that runs the event loop.
class QtBridge {
public:
    /// Attaches the run loop of the main thread.
    QtBridge() : QtBridge(services()->dispatch->mainRunLoop()) {}

    /// Attaches `loop`, which is the calling thread's.
    explicit QtBridge(std::shared_ptr<RunLoop> loop) : notifier_(loop->fileDescriptor(), QSocketNotifier::Read) {
        QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_,
                         [held = std::move(loop)] { std::shared_ptr<RunLoop>(held)->drain(); });
    }
    QtBridge(const QtBridge&) = delete;
    QtBridge& operator=(const QtBridge&) = delete;

    /// Detaches it.
    ~QtBridge() = default;

private:
    QSocketNotifier notifier_;
};

} // namespace qk::platform
