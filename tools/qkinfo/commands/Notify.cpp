// SPDX-License-Identifier: Apache-2.0
#include "tools/qkinfo/commands/Notify.h"

#include "QKFoundation/platform/services/Services.h"
#include "QKFoundation/runtime/QKDistributedNotificationHandler.h"

#include <memory>
#include <stdexcept>

namespace qk::info {

namespace {

constexpr double kSecondsBetweenLooks = 1;

NSString nameOf(const NotifyOptions& options) {
    return NSString::fromUTF8(options.name).value_or(NSString());
}

} // namespace

void postNotification(const NotifyOptions& options) {
    platform::DistributedNotificationCenter& center = *platform::services()->distributedNotifications;
    if (!center.isConnected()) {
        throw std::runtime_error("there is no session bus to reach other programs");
    }
    if (!center.postNotificationName(nameOf(options))) {
        throw std::runtime_error("the session bus does not answer");
    }
}

bool waitForNotification(const NotifyOptions& options, const std::function<void()>& isRegistered) {
    const std::shared_ptr<const platform::Services> services = platform::services();
    const std::shared_ptr<platform::RunLoop> loop = services->dispatch->mainRunLoop();
    bool hasArrived = false;
    const auto handler = QKDistributedNotificationHandler::initWithNotificationName(
        nameOf(options),
        [&] {
            hasArrived = true;
            loop->stop();
        },
        NSNotificationSuspensionBehavior::DeliverImmediately);
    if (!services->distributedNotifications->isConnected()) {
        throw std::runtime_error("there is no session bus to hear other programs");
    }
    bool isDeaf = false;
    const auto look = loop->scheduleTimer(kSecondsBetweenLooks, true, [&] {
        isDeaf = !services->distributedNotifications->isConnected();
        if (isDeaf) {
            loop->stop();
        }
    });
    std::unique_ptr<platform::RunLoopSource> limit;
    if (options.timeout.has_value()) {
        const std::chrono::duration<double> seconds = *options.timeout;
        limit = loop->scheduleTimer(seconds.count(), false, [&] { loop->stop(); });
    }
    isRegistered();
    loop->run();
    if (isDeaf && !hasArrived) {
        throw std::runtime_error("the session bus is gone");
    }
    return hasArrived;
}

} // namespace qk::info
