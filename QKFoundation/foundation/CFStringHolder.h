// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

namespace qk {

/// Owns one reference to a string, or holds null. Threads: one handle is used by one thread at a time; handles of the
/// same string need no care.
class QK_EXPORT CFStringHolder {
public:
    /// Holds null.
    CFStringHolder() noexcept = default;

    /// Takes over the one reference that the caller holds on `string`, as after a call that creates one; it is not
    /// retained. `string` may be null.
    explicit CFStringHolder(CFStringRef string) noexcept : string_(string) {}

    /// Retains the string of `other`.
    CFStringHolder(const CFStringHolder& other) noexcept;

    /// Retains the string of `other` before the one held so far is released: a handle may be assigned to itself.
    CFStringHolder& operator=(const CFStringHolder& other) noexcept;

    /// Releases the string.
    ~CFStringHolder() noexcept;

    /// What is held, without a reference of its own; null when nothing is.
    operator CFStringRef() const noexcept { return string_; } // NOLINT(google-explicit-constructor): stands in for it

private:
    CFStringRef string_ = nullptr;
};

} // namespace qk
