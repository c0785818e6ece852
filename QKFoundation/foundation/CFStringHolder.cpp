// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/foundation/CFStringHolder.h"

namespace qk {

CFStringHolder::CFStringHolder(const CFStringHolder& other) noexcept : string_(other.string_) {
    if (string_ != nullptr) {
        CFRetain(string_);
    }
}

CFStringHolder& CFStringHolder::operator=(const CFStringHolder& other) noexcept {
    if (other.string_ != nullptr) {
        CFRetain(other.string_);
    }
    if (string_ != nullptr) {
        CFRelease(string_);
    }
    string_ = other.string_;
    return *this;
}

CFStringHolder::~CFStringHolder() noexcept {
    if (string_ != nullptr) {
        CFRelease(string_);
    }
}

} // namespace qk
