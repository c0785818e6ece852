// SPDX-License-Identifier: Apache-2.0
// A GTK window with the user's recent files, which follows what happens to them.
//
//     gtk-recent [COUNT [HOME]]    ends when so many files have been shown; HOME is another folder than the user's
#include "QKFoundation/platform/linux/GLibBridge.h"
#include "QKFoundation/recent_items/RecentItemsObserver.h"

#include <gtk/gtk.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

namespace {

class RecentFilesWindow {
public:
    explicit RecentFilesWindow(std::size_t enough)
        : window_(gtk_window_new(GTK_WINDOW_TOPLEVEL)), list_(gtk_list_box_new()), enough_(enough) {
        gtk_window_set_title(GTK_WINDOW(window_), "Recent files");
        gtk_window_set_default_size(GTK_WINDOW(window_), 360, 480);
        gtk_container_add(GTK_CONTAINER(window_), list_);
        g_signal_connect(window_, "destroy", G_CALLBACK(gtk_main_quit), nullptr);
        gtk_widget_show_all(window_);
    }

    void show(const qk::RecentItemsObserver::Items& items) {
        gtk_container_foreach(
            GTK_CONTAINER(list_), [](GtkWidget* row, gpointer) { gtk_widget_destroy(row); }, nullptr);
        for (const auto& item : items) {
            const std::string name = item->displayName()->utf8Lossy();
            std::printf("%s\n", name.c_str());
            gtk_list_box_insert(GTK_LIST_BOX(list_), gtk_label_new(name.c_str()), -1);
        }
        std::puts("");
        std::fflush(stdout);
        gtk_widget_show_all(list_);
        if (enough_ > 0 && items.size() >= enough_) {
            gtk_widget_destroy(window_);
        }
    }

private:
    GtkWidget* window_;
    GtkWidget* list_;
    std::size_t enough_;
};

std::shared_ptr<qk::RecentItemsObserver> makeObserver(const char* home) {
    auto observer = qk::RecentItemsObserver::recentItemsObserver();
    if (home != nullptr) {
        observer->shutdown(); // no longer watches the user's
        observer->setUserHomePath(qk::NSString::fromUTF8Lossy(home));
        observer->createQuery();
        observer->createFileSystemObserver();
    }
    return observer;
}

} // namespace

int main(int count, char** arguments) {
    if (gtk_init_check(&count, &arguments) == FALSE) {
        std::fputs("there is no display\n", stderr);
        return 1;
    }
    const qk::platform::GLibBridge bridge; // GTK's loop runs ours
    RecentFilesWindow window(count > 1 ? std::strtoul(arguments[1], nullptr, 10) : 0);
    const auto observer = makeObserver(count > 2 ? arguments[2] : nullptr);
    observer->setCallback([&window](const auto& items) { window.show(items); });
    observer->startObserving();
    gtk_main();
    observer->setCallback(nullptr); // the window is gone
    observer->stopObserving();
    observer->shutdown();
    return 0;
}
