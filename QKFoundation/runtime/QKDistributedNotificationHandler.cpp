// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/runtime/QKDistributedNotificationHandler.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/services/Services.h"

#include <utility>

namespace qk {

const ClassDescription& QKDistributedNotificationHandler::describedClass() {
    using Self = QKDistributedNotificationHandler;
    static const ClassDescription& description =
        ClassBuilder<Self>("QKDistributedNotificationHandler", NSObject::describedClass())
            .property("name", &Self::name)
            .method("handleNotification:", &Self::handleNotification)
            .build();
    return description;
}

const ClassDescription& QKDistributedNotificationHandler::classDescription() const {
    return describedClass();
}

QKDistributedNotificationHandler::QKDistributedNotificationHandler(NSString name, std::function<void()> callback)
    : name_(std::move(name)), callback_(std::move(callback)) {}

std::shared_ptr<QKDistributedNotificationHandler>
QKDistributedNotificationHandler::initWithNotificationName(const NSString& name, std::function<void()> callback,
                                                           NSNotificationSuspensionBehavior suspensionBehavior) {
    std::shared_ptr<QKDistributedNotificationHandler> handler(
        new QKDistributedNotificationHandler(name, std::move(callback)));
    // Not retained by its registration, or it would never end.
    handler->registration_ = platform::services()->distributedNotifications->addObserver(
        name, suspensionBehavior, [unretained = std::weak_ptr<QKDistributedNotificationHandler>(handler)] {
            if (const auto alive = unretained.lock()) {
                alive->handleNotification(std::nullopt);
            }
        });
    return handler;
}

QKDistributedNotificationHandler::~QKDistributedNotificationHandler() = default;

void QKDistributedNotificationHandler::handleNotification(const std::optional<Value>& /*notification*/) {
    if (callback_) {
        const std::function<void()> called = callback_; // it may replace itself
        called();
    }
}

} // namespace qk
