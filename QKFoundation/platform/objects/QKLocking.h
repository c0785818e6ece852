// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/ProtocolDescription.h"

namespace qk {

/// The protocol `QKLocking`: what can be locked without waiting, so that code takes any object that offers it.
class QK_EXPORT QKLocking {
public:
    QKLocking() = default;
    QKLocking(const QKLocking&) = delete;
    QKLocking& operator=(const QKLocking&) = delete;
    virtual ~QKLocking();

    /// What the protocol declares, by name.
    [[nodiscard]] static const ProtocolDescription& describedProtocol();

    /// `tryLock`. Locks when that is possible at once; whether it did.
    [[nodiscard]] virtual bool tryLock() = 0;

    /// `unlock`. Takes one locking back.
    virtual void unlock() = 0;
};

} // namespace qk
