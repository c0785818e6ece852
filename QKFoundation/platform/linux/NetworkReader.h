// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/linux/LinuxRoot.h"
#include "QKFoundation/platform/linux/NetworkServices.h"
#include "QKFoundation/platform/linux/NetworkSnapshot.h"
#include "QKFoundation/platform/linux/Variables.h"
#include "QKFoundation/platform/services/SystemConfiguration.h"

#include <memory>
#include <utility>

namespace qk::platform {

/// Looks at the network of the machine, once per reading (`SystemConfiguration::beginReading`) or else each time.
/// Threads: any, at the same time; a reading belongs to the thread that began it.
class NetworkReader {
public:
    explicit NetworkReader(LinuxRoot root = {}) : root_(std::move(root)) {}

    /// Always answers with that look: of captured facts.
    explicit NetworkReader(std::shared_ptr<const NetworkSnapshot> captured) : captured_(std::move(captured)) {}

    /// What the machine looks like: that of the reading which is under way on this thread, else a new look.
    [[nodiscard]] std::shared_ptr<const NetworkSnapshot> snapshot() const;

    /// The services of that look. Inside a reading all callers get the same list, which is read once.
    [[nodiscard]] std::shared_ptr<const NetworkServices> services() const;

    /// A connection to the store of those services, with proxies as `variables` name them. Inside a reading all callers
    /// get the same one: there are a few for each interface.
    [[nodiscard]] std::shared_ptr<const DynamicStore> store(const Variables& variables) const;

    /// Begins a reading on this thread; nested ones share what the outermost sees.
    [[nodiscard]] std::unique_ptr<ConfigurationReading> beginReading() const;

private:
    LinuxRoot root_;
    std::shared_ptr<const NetworkSnapshot> captured_;
};

} // namespace qk::platform
