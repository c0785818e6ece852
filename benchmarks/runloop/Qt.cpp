// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/runloop/Loop.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QObject>

namespace qk::benchmarks {
namespace {

class QtLoop final : public Loop {
public:
    void post(Task task, void* context) override {
        QMetaObject::invokeMethod(
            &receiver_, [task, context] { task(context); }, Qt::QueuedConnection);
    }
    void run() override { loop_.exec(); }
    void stop() override { loop_.quit(); }

private:
    QObject receiver_;
    QEventLoop loop_;
};

std::unique_ptr<Loop> makeLoop() {
    static int count = 0;
    static QCoreApplication application(count, nullptr);
    return std::make_unique<QtLoop>();
}

[[maybe_unused]] const bool kAdded = addPeer({"QMetaObject_invokeMethod", makeLoop});

} // namespace
} // namespace qk::benchmarks
