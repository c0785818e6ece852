// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSException.h"

#include <utility>

namespace qk {

NSException::NSException(NSString name, NSString reason)
    : name_(std::move(name)), reason_(std::move(reason)), what_(name_.utf8Lossy() + ": " + reason_.utf8Lossy()) {}

NSRangeException::NSRangeException(NSString reason) : NSException("NSRangeException", std::move(reason)) {}

NSInvalidArgumentException::NSInvalidArgumentException(NSString reason)
    : NSException("NSInvalidArgumentException", std::move(reason)) {}

NSUndefinedKeyException::NSUndefinedKeyException(NSString key, NSString reason)
    : NSException("NSUnknownKeyException", std::move(reason)), key_(std::move(key)) {}

} // namespace qk
