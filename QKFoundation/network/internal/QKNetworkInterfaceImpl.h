// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInterface.h"
#include "QKFoundation/network/internal/QKNetworkInterfaceConfigurationFactory.h"
#include "QKFoundation/network/internal/QKSCNetworkService.h"
#include "QKFoundation/platform/objects/internal/ObjectMaker.h"
#include "QKFoundation/platform/services/Services.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>

namespace qk {

/// `QKNetworkInterfaceImpl`: the interface of a service, with what the preferences, the registry of devices and the
/// dynamic store tell of it, written down once.
class QKNetworkInterfaceImpl final : public QKNetworkInterface {
public:
    using Configuration = std::shared_ptr<QKNetworkInterfaceConfiguration>;

    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithSCNetworkService:`. Null for null and for a service without an interface.
    [[nodiscard]] static std::shared_ptr<QKNetworkInterfaceImpl>
    initWithSCNetworkService(const std::shared_ptr<QKSCNetworkService>& service, const platform::Services& services);

    /// As above, with a factory that the caller keeps: for many of them.
    [[nodiscard]] static std::shared_ptr<QKNetworkInterfaceImpl>
    initWithSCNetworkService(const std::shared_ptr<QKSCNetworkService>& service, const platform::Services& services,
                             const QKNetworkInterfaceConfigurationFactory& factory);

    /// `interfaceTypeForkSCNetworkInterfaceType:`. Unknown for nothing and for any other text.
    [[nodiscard]] QKNetworkInterfaceType
    interfaceTypeForkSCNetworkInterfaceType(const std::optional<NSString>& type) const;

    /// `description`. The root class's, and a line for each property.
    [[nodiscard]] NSString description() const override;

    [[nodiscard]] QKNetworkInterfaceType type() const override { return type_; }
    void setType(QKNetworkInterfaceType type) { type_ = type; }
    [[nodiscard]] const NSString& name() const override { return name_; }
    void setName(const NSString& name) { name_ = name; }
    [[nodiscard]] const NSString& displayName() const override { return displayName_; }
    void setDisplayName(const NSString& name) { displayName_ = name; }
    [[nodiscard]] bool builtin() const override { return builtin_; }
    void setBuiltin(bool builtin) { builtin_ = builtin; }
    [[nodiscard]] bool linkActive() const override { return linkActive_; }
    void setLinkActive(bool active) { linkActive_ = active; }
    [[nodiscard]] std::int64_t linkSpeed() const override { return linkSpeed_; }
    void setLinkSpeed(std::int64_t speed) { linkSpeed_ = speed; }
    [[nodiscard]] const NSString& hardwareAddress() const override { return hardwareAddress_; }
    void setHardwareAddress(const NSString& address) { hardwareAddress_ = address; }
    [[nodiscard]] const std::optional<NSString>& hardwareModel() const override { return hardwareModel_; }
    void setHardwareModel(const std::optional<NSString>& model) { hardwareModel_ = model; }
    [[nodiscard]] const Configuration& configuration() const override { return configuration_; }
    void setConfiguration(Configuration configuration) override { configuration_ = std::move(configuration); }

    /// `typeString`. The text that `type` was found by.
    [[nodiscard]] const NSString& typeString() const noexcept { return typeString_; }
    void setTypeString(const NSString& type) { typeString_ = type; }

private:
    friend class internal::ObjectMaker;

    QKNetworkInterfaceImpl(const QKSCNetworkInterface& interface, const NSString& serviceId,
                           const platform::Services& services, const QKNetworkInterfaceConfigurationFactory& factory);

    [[nodiscard]] std::uint64_t typeNumber() const { return type_; }
    void setTypeNumber(std::uint64_t number) { type_ = static_cast<QKNetworkInterfaceType>(number); }

    QKNetworkInterfaceType type_ = QKNetworkInterfaceTypeUnknown;
    NSString name_;
    NSString displayName_;
    bool builtin_ = false;
    bool linkActive_ = false;
    std::int64_t linkSpeed_ = 0;
    NSString hardwareAddress_;
    std::optional<NSString> hardwareModel_;
    Configuration configuration_;
    NSString typeString_;
};

} // namespace qk
