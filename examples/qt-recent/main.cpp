// SPDX-License-Identifier: Apache-2.0
// A Qt window with the user's recent files, which follows what happens to them.
//
//     qt-recent [COUNT [HOME]]    ends when so many files have been shown; HOME is another folder than the user's
#include "QKFoundation/platform/linux/QtBridge.h"
#include "QKFoundation/recent_items/RecentItemsObserver.h"

#include <QApplication>
#include <QListWidget>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace {

class RecentFilesWindow {
public:
    explicit RecentFilesWindow(std::size_t enough) : enough_(enough) {
        list_.setWindowTitle("Recent files");
        list_.resize(360, 480);
        list_.show();
    }

    void show(const qk::RecentItemsObserver::Items& items) {
        list_.clear();
        for (const auto& item : items) {
            const QString name = QString::fromStdString(item->displayName()->utf8Lossy());
            std::printf("%s\n", qPrintable(name));
            list_.addItem(name);
        }
        std::puts("");
        std::fflush(stdout);
        if (enough_ > 0 && items.size() >= enough_) {
            list_.close();
        }
    }

private:
    QListWidget list_;
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
    const QApplication application(count, arguments);
    const qk::platform::QtBridge bridge; // Qt's loop runs ours
    RecentFilesWindow window(count > 1 ? std::strtoul(arguments[1], nullptr, 10) : 0);
    const auto observer = makeObserver(count > 2 ? arguments[2] : nullptr);
    observer->setCallback([&window](const auto& items) { window.show(items); });
    observer->startObserving();
    const int status = QApplication::exec(); // until the last window is closed
    observer->setCallback(nullptr);
    observer->stopObserving();
    observer->shutdown();
    return status;
}
