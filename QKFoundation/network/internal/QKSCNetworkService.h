// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/internal/QKSCNetworkInterface.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/internal/ObjectMaker.h"
#include "QKFoundation/platform/services/SystemConfiguration.h"

#include <memory>
#include <utility>

namespace qk {

/// `QKSCNetworkService`: what the network preferences say of a service, written down once. Threads: may be read
/// anywhere while nobody sets it.
class QKSCNetworkService final : public NSObject {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithSCNetworkService:`. Null for null.
    [[nodiscard]] static std::shared_ptr<QKSCNetworkService>
    initWithSCNetworkService(const platform::SCNetworkServiceRef& service);

    /// `serviceNameForSCNetworkService:`. "" when it has none.
    [[nodiscard]] NSString serviceNameForSCNetworkService(const platform::SCNetworkService& service) const;

    /// `serviceIdForSCNetworkService:`. "" when it has none.
    [[nodiscard]] NSString serviceIdForSCNetworkService(const platform::SCNetworkService& service) const;

    /// `description`. Deliberate: raises `NSUndefinedKeyException` for "stateConfigurations", which is among its keys
    /// though a service has no such property.
    [[nodiscard]] NSString description() const override;

    /// `enabled`.
    [[nodiscard]] bool enabled() const noexcept { return enabled_; }
    void setEnabled(bool enabled) { enabled_ = enabled; }

    /// `name`. What people call the service.
    [[nodiscard]] const NSString& name() const noexcept { return name_; }
    void setName(const NSString& name) { name_ = name; }

    /// `serviceId`.
    [[nodiscard]] const NSString& serviceId() const noexcept { return serviceId_; }
    void setServiceId(const NSString& serviceId) { serviceId_ = serviceId; }

    /// `interface`. Null for a service without one.
    [[nodiscard]] const std::shared_ptr<QKSCNetworkInterface>& interface() const noexcept { return interface_; }
    void setInterface(std::shared_ptr<QKSCNetworkInterface> interface) { interface_ = std::move(interface); }

private:
    friend class internal::ObjectMaker;

    explicit QKSCNetworkService(const platform::SCNetworkService& service);

    bool enabled_ = false;
    NSString name_;
    NSString serviceId_;
    std::shared_ptr<QKSCNetworkInterface> interface_;
};

} // namespace qk
