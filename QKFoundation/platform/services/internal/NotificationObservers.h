// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/Dispatch.h"
#include "QKFoundation/platform/values/NSString.h"

#include <functional>
#include <memory>
#include <mutex>
#include <utility>
#include <vector>

namespace qk::platform::internal {

/// Who in this process waits for which notification. Handlers are called by the main queue; one whose registration has
/// ended by then is not called. Threads: any.
class NotificationObservers {
public:
    struct Observer {
        NSString name;
        std::function<void()> handler;
    };

    explicit NotificationObservers(std::shared_ptr<Dispatch> dispatch) : dispatch_(std::move(dispatch)) {}

    /// Waits for `name` as long as the result lives.
    [[nodiscard]] std::shared_ptr<const Observer> add(const NSString& name, std::function<void()> handler) {
        auto observer = std::make_shared<const Observer>(Observer{name, std::move(handler)});
        const std::scoped_lock lock(mutex_);
        std::erase_if(observers_, [](const std::weak_ptr<const Observer>& each) { return each.expired(); });
        observers_.push_back(observer);
        return observer;
    }

    /// Has everybody who waits for `name` told.
    void tell(const NSString& name) const {
        for (const std::shared_ptr<const Observer>& waiting : waitingFor(name)) {
            dispatch_->asyncOnMainQueue([observer = std::weak_ptr(waiting)] {
                if (const auto alive = observer.lock()) {
                    alive->handler();
                }
            });
        }
    }

private:
    [[nodiscard]] std::vector<std::shared_ptr<const Observer>> waitingFor(const NSString& name) const {
        std::vector<std::shared_ptr<const Observer>> waiting; // one may end here: given back without the lock
        {
            const std::scoped_lock lock(mutex_);
            for (const std::weak_ptr<const Observer>& each : observers_) {
                waiting.push_back(each.lock());
            }
        }
        std::erase_if(waiting, [&](const auto& each) { return each == nullptr || each->name != name; });
        return waiting;
    }

    std::shared_ptr<Dispatch> dispatch_;
    mutable std::mutex mutex_;
    std::vector<std::weak_ptr<const Observer>> observers_;
};

} // namespace qk::platform::internal
