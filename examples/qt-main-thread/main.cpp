// SPDX-License-Identifier: Apache-2.0
// A worker thread tells a Qt window how far it is, through the main thread.
//
//     qt-main-thread [SECONDS]    keeps the window for that long after the work (0)
#include "QKFoundation/platform/linux/QtBridge.h"
#include "QKFoundation/runtime/MainThreadDispatch.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>
#include <QWidget>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <thread>

namespace {

using qk::platform::RunLoopSource;

constexpr int kSteps = 4;

// All of it belongs to the main thread.
class ProgressWindow {
public:
    explicit ProgressWindow(double secondsToStay) : secondsToStay_(secondsToStay) {
        window_.setWindowTitle("QKFoundation in Qt");
        window_.resize(360, 120);
        layout_.addWidget(&label_);
        layout_.addWidget(&bar_);
        bar_.setRange(0, kSteps);
        window_.show();
    }

    void show(int step) {
        const bool isMain = qk::platform::services()->dispatch->isMainThread();
        const QString text =
            QString("step %1 of %2 %3").arg(step).arg(kSteps).arg(isMain ? "on the main thread" : "ELSEWHERE");
        std::printf("%s\n", qPrintable(text));
        label_.setText(text);
        bar_.setValue(step);
    }

    void close() {
        timer_ = qk::platform::services()->dispatch->mainRunLoop()->scheduleTimer(secondsToStay_, false,
                                                                                  [this] { window_.close(); });
    }

private:
    QWidget window_;
    QLabel label_{"waiting for the worker", &window_};
    QProgressBar bar_{&window_};
    QVBoxLayout layout_{&window_};
    double secondsToStay_;
    std::unique_ptr<RunLoopSource> timer_;
};

} // namespace

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    const qk::platform::QtBridge bridge;
    ProgressWindow window(count > 1 ? std::strtod(arguments[1], nullptr) : 0);
    std::thread worker([&window] {
        for (int step = 1; step < kSteps; ++step) {
            qk::dispatch_async_mainthread([&window, step] { window.show(step); });
        }
        qk::dispatch_sync_mainthread([&window] { window.show(kSteps); });
        std::printf("the worker goes on when the main thread has shown step %d\n", kSteps);
        qk::dispatch_async_mainthread([&window] { window.close(); });
    });
    const int status = QApplication::exec(); // until the last window is closed
    worker.join();
    return status;
}
