// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/files/WatchPeers.h"

#include <QCoreApplication>
#include <QDirIterator>
#include <QFileSystemWatcher>
#include <QStringList>

namespace qk::benchmarks {
namespace {

class Qt final : public Watcher {
public:
    explicit Qt(const std::string& top) {
        QStringList paths(QString::fromStdString(top));
        QDirIterator folders(paths.front(), QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (folders.hasNext()) {
            paths.append(folders.next());
        }
        watcher_.addPaths(paths);
    }

private:
    QFileSystemWatcher watcher_;
};

} // namespace

std::unique_ptr<Watcher> watchWithQt(const std::string& top) {
    static int count = 0;
    static QCoreApplication application(count, nullptr);
    return std::make_unique<Qt>(top);
}

} // namespace qk::benchmarks
