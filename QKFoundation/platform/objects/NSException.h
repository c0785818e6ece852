// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <exception>
#include <string>

namespace qk {

/// A failure that the platform raises at its caller. The library raises none of its own: an operation that can let one
/// through says so.
class QK_EXPORT NSException : public std::exception {
public:
    NSException(NSString name, NSString reason);

    /// `name`. The kind of failure, such as "NSRangeException".
    [[nodiscard]] const NSString& name() const noexcept { return name_; }

    /// `reason`. What went wrong, for people.
    [[nodiscard]] const NSString& reason() const noexcept { return reason_; }

    /// Name and reason in UTF-8.
    [[nodiscard]] const char* what() const noexcept override { return what_.c_str(); }

private:
    NSString name_;
    NSString reason_;
    std::string what_;
};

/// `NSRangeException`. An index lies outside of its collection or text.
class QK_EXPORT NSRangeException : public NSException {
public:
    explicit NSRangeException(NSString reason);
};

/// `NSInvalidArgumentException`. An argument that the operation cannot take: a nil where a value must be, an unknown
/// selector, a program that cannot be launched.
class QK_EXPORT NSInvalidArgumentException : public NSException {
public:
    explicit NSInvalidArgumentException(NSString reason);
};

/// `NSUndefinedKeyException`. A key-value look-up of a key that the object does not have. Its name is
/// "NSUnknownKeyException".
class QK_EXPORT NSUndefinedKeyException : public NSException {
public:
    NSUndefinedKeyException(NSString key, NSString reason);

    [[nodiscard]] const NSString& key() const noexcept { return key_; }

private:
    NSString key_;
};

} // namespace qk
