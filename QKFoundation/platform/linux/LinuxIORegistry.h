// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/NetworkReader.h"
#include "QKFoundation/platform/services/IORegistry.h"

#include <memory>
#include <utility>

namespace qk::platform {

/// The registry's view of the network: each link is an entry, and above one with a device stands the entry of its
/// controller. Nothing else is registered; the name of a disk matches nothing.
///
/// A handle names what it stands for, so it costs nothing, need not be released, and is an entry without properties
/// once its link is gone.
class LinuxIORegistry final : public IORegistry {
public:
    explicit LinuxIORegistry(std::shared_ptr<NetworkReader> network) : network_(std::move(network)) {}

    [[nodiscard]] std::optional<IOMatching> bsdNameMatching(const NSString& name) const override;
    [[nodiscard]] std::optional<IOMatching> serviceMatching(const NSString& className) const override;
    [[nodiscard]] kern_return_t getMatchingServices(const IOMatching& matching,
                                                    std::unique_ptr<IOIterator>& iterator) const override;
    [[nodiscard]] std::optional<Value> entryProperty(io_registry_entry_t entry, const NSString& key) const override;
    [[nodiscard]] kern_return_t entryParent(io_registry_entry_t entry, const NSString& plane,
                                            io_registry_entry_t& parent) const override;
    void objectRelease(io_object_t object) const override;

private:
    std::shared_ptr<NetworkReader> network_;
};

} // namespace qk::platform
