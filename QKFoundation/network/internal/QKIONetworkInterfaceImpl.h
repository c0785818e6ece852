// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/internal/QKIONetworkInterface.h"
#include "QKFoundation/platform/objects/internal/ObjectMaker.h"
#include "QKFoundation/platform/services/IORegistry.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace qk {

/// `QKIONetworkInterfaceImpl`: an entry of the registry, written down once.
class QKIONetworkInterfaceImpl final : public QKIONetworkInterface {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithIONetworkInterface:`. Of the interface's entry, which stays the caller's.
    [[nodiscard]] static std::shared_ptr<QKIONetworkInterfaceImpl>
    initWithIONetworkInterface(platform::io_registry_entry_t interface, const platform::IORegistry& registry);

    /// `interfaceModelForIOInterfaceController:`. Vendor, a blank, model.
    [[nodiscard]] NSString interfaceModelForIOInterfaceController(platform::io_registry_entry_t controller,
                                                                  const platform::IORegistry& registry) const;

    /// `description`. The root class's, and a dictionary of the properties without `builtin`.
    [[nodiscard]] NSString description() const override;

    [[nodiscard]] const NSString& name() const override { return name_; }
    void setName(const NSString& name) { name_ = name; }
    [[nodiscard]] bool builtin() const override { return builtin_; }
    void setBuiltin(bool builtin) { builtin_ = builtin; }
    [[nodiscard]] bool linkActive() const override { return linkActive_; }
    void setLinkActive(bool active) { linkActive_ = active; }
    [[nodiscard]] std::int64_t linkSpeed() const override { return linkSpeed_; }
    void setLinkSpeed(std::int64_t speed) { linkSpeed_ = speed; }
    [[nodiscard]] const std::optional<NSString>& hardwareModel() const override { return hardwareModel_; }
    void setHardwareModel(const std::optional<NSString>& model) { hardwareModel_ = model; }

private:
    friend class internal::ObjectMaker;

    QKIONetworkInterfaceImpl(platform::io_registry_entry_t interface, const platform::IORegistry& registry);

    NSString name_;
    bool builtin_ = false;
    bool linkActive_ = false;
    std::int64_t linkSpeed_ = 0;
    std::optional<NSString> hardwareModel_;
};

} // namespace qk
