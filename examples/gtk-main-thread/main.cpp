// SPDX-License-Identifier: Apache-2.0
// A worker thread tells a GTK window how far it is, through the main thread.
//
//     gtk-main-thread [SECONDS]    keeps the window for that long after the work (0)
#include "QKFoundation/platform/linux/GLibBridge.h"
#include "QKFoundation/runtime/MainThreadDispatch.h"

#include <gtk/gtk.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <thread>

namespace {

using qk::platform::RunLoopSource;

constexpr int kSteps = 4;

// All of it belongs to the main thread.
class ProgressWindow {
public:
    explicit ProgressWindow(double secondsToStay)
        : window_(gtk_window_new(GTK_WINDOW_TOPLEVEL)),
          label_(gtk_label_new("waiting for the worker")),
          bar_(gtk_progress_bar_new()),
          secondsToStay_(secondsToStay) {
        gtk_window_set_title(GTK_WINDOW(window_), "QKFoundation in GTK");
        gtk_window_set_default_size(GTK_WINDOW(window_), 360, 120);
        GtkWidget* box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 12);
        gtk_container_set_border_width(GTK_CONTAINER(window_), 24);
        gtk_container_add(GTK_CONTAINER(window_), box);
        gtk_container_add(GTK_CONTAINER(box), label_);
        gtk_container_add(GTK_CONTAINER(box), bar_);
        g_signal_connect(window_, "destroy", G_CALLBACK(gtk_main_quit), nullptr);
        gtk_widget_show_all(window_);
    }

    void show(int step) {
        const bool isMain = qk::platform::services()->dispatch->isMainThread();
        const std::string text = "step " + std::to_string(step) + " of " + std::to_string(kSteps) +
                                 (isMain ? " on the main thread" : " ELSEWHERE");
        std::printf("%s\n", text.c_str());
        gtk_label_set_text(GTK_LABEL(label_), text.c_str());
        gtk_progress_bar_set_fraction(GTK_PROGRESS_BAR(bar_), static_cast<double>(step) / kSteps);
    }

    void close() {
        timer_ = qk::platform::services()->dispatch->mainRunLoop()->scheduleTimer(
            secondsToStay_, false, [this] { gtk_widget_destroy(window_); });
    }

private:
    GtkWidget* window_;
    GtkWidget* label_;
    GtkWidget* bar_;
    double secondsToStay_;
    std::unique_ptr<RunLoopSource> timer_;
};

} // namespace

int main(int count, char** arguments) {
    if (gtk_init_check(&count, &arguments) == FALSE) {
        std::fputs("there is no display\n", stderr);
        return 1;
    }
    const qk::platform::GLibBridge bridge;
    ProgressWindow window(count > 1 ? std::strtod(arguments[1], nullptr) : 0);
    std::thread worker([&window] {
        for (int step = 1; step < kSteps; ++step) {
            qk::dispatch_async_mainthread([&window, step] { window.show(step); });
        }
        qk::dispatch_sync_mainthread([&window] { window.show(kSteps); });
        std::printf("the worker goes on when the main thread has shown step %d\n", kSteps);
        qk::dispatch_async_mainthread([&window] { window.close(); });
    });
    gtk_main();
    worker.join();
    return 0;
}
