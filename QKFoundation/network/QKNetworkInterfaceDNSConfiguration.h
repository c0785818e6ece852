// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSObject.h"
#include "QKFoundation/platform/objects/ProtocolDescription.h"
#include "QKFoundation/platform/values/NSArray.h"

namespace qk {

/// The protocol `QKNetworkInterfaceDNSConfiguration`: whom a service asks for names. Deliberate: the spelling of
/// `serverAdresses` is the property's name. Threads: may be read anywhere.
class QK_EXPORT QKNetworkInterfaceDNSConfiguration : public NSObject {
public:
    ~QKNetworkInterfaceDNSConfiguration() override;

    /// What the protocol declares, by name.
    [[nodiscard]] static const ProtocolDescription& describedProtocol();

    /// `serverAdresses`. Texts in the order in which the servers are asked; empty when there are none.
    [[nodiscard]] virtual const NSArray& serverAdresses() const = 0;

    /// `domainName`. The domain of names without one; "" when there is none.
    [[nodiscard]] virtual const NSString& domainName() const = 0;
};

} // namespace qk
