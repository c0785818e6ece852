// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/network/QKNetworkInterfaceAirPortConfiguration.h"
#include "QKFoundation/platform/objects/internal/ObjectMaker.h"
#include "QKFoundation/platform/values/NSDictionary.h"

#include <memory>
#include <optional>

namespace qk {

/// `QKNetworkInterfaceAirPortConfigurationImpl`: the radio of an interface, out of the dynamic store.
class QKNetworkInterfaceAirPortConfigurationImpl final : public QKNetworkInterfaceAirPortConfiguration {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `initWithInterfaceAirPortState:`. Null without a state.
    [[nodiscard]] static std::shared_ptr<QKNetworkInterfaceAirPortConfigurationImpl>
    initWithInterfaceAirPortState(const std::optional<NSDictionary>& interfaceAirPortState);

    /// `description`. The root class's, and a dictionary of the properties.
    [[nodiscard]] NSString description() const override;

    [[nodiscard]] bool powerStatus() const override { return powerStatus_; }
    void setPowerStatus(bool status) { powerStatus_ = status; }
    [[nodiscard]] bool airPlay() const override { return airPlay_; }
    void setAirPlay(bool airPlay) { airPlay_ = airPlay; }
    [[nodiscard]] const NSString& ssid() const override { return ssid_; }
    void setSsid(const NSString& ssid) { ssid_ = ssid; }

private:
    friend class internal::ObjectMaker;

    explicit QKNetworkInterfaceAirPortConfigurationImpl(const NSDictionary& interfaceAirPortState);

    bool powerStatus_;
    bool airPlay_;
    NSString ssid_;
};

} // namespace qk
