// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/values/NSString.h"

#include <cstddef>
#include <optional>
#include <utility>

namespace qk {

/// A uniform resource locator, kept as its escaped text. Equal when the texts are equal.
/// Threads: may be read, copied and destroyed anywhere at the same time.
class QK_EXPORT NSURL {
public:
    /// `URLWithString:`. Nothing when `text` is empty or holds what a URL cannot: characters outside A-Z a-z 0-9 and
    /// ! $ & ' ( ) * + , - . / : ; = ? @ _ ~ [ ], a second "#", or a "%" without two hexadecimal digits.
    [[nodiscard]] static std::optional<NSURL> URLWithString(const NSString& text);

    /// `fileURLWithPath:isDirectory:`. The file URL of the absolute `path`, escaped as needed; ends with "/" when
    /// `isDirectory` or for the root, and only then. Nothing for a path that does not begin with "/" (there is no
    /// current folder here to complete it) and for one that holds a lone surrogate.
    [[nodiscard]] static std::optional<NSURL> fileURLWithPath(const NSString& path, bool isDirectory = false);

    [[nodiscard]] const NSString& absoluteString() const noexcept { return text_; }

    /// Without its ":"; nothing when there is none.
    [[nodiscard]] std::optional<NSString> scheme() const;

    /// Unescaped, without user, port and the brackets of an IPv6 address. Nothing when there is no authority or no host
    /// in it
    /// ("file:///x"), and when the escapes are not UTF-8.
    [[nodiscard]] std::optional<NSString> host() const;

    /// Unescaped, without the "/" that end it (but for "/" itself); "" when it is empty. Nothing when the escapes are
    /// not UTF-8, and for a URL without a hierarchy such as "mailto:x".
    [[nodiscard]] std::optional<NSString> path() const;

    /// The text between the first "?" and the "#", still escaped; nothing without "?".
    [[nodiscard]] std::optional<NSString> query() const;

    /// The text behind the "#", still escaped; nothing without "#".
    [[nodiscard]] std::optional<NSString> fragment() const;

    /// Whether the scheme is "file", in any letter case.
    [[nodiscard]] bool isFileURL() const;

    /// Whether the path's text ends with "/".
    [[nodiscard]] bool hasDirectoryPath() const;

    [[nodiscard]] std::size_t hash() const { return text_.hash(); }
    [[nodiscard]] friend bool operator==(const NSURL& left, const NSURL& right) = default;

private:
    explicit NSURL(NSString text) : text_(std::move(text)) {}

    NSString text_;
};

/// `CFURLCreateStringByReplacingPercentEscapesUsingEncoding` with UTF-8 and every escape to be replaced. The text
/// itself when it has none; "+" stays "+". Nothing for a "%" without two hexadecimal digits and for escapes that are
/// not UTF-8.
[[nodiscard]] QK_EXPORT std::optional<NSString> CFURLCreateStringByReplacingPercentEscapes(const NSString& text);

/// `CFURLCreateStringByAddingPercentEscapes` with UTF-8 and "#" left as it is. Escapes, in capital hexadecimal digits,
/// "%", blank, " < > \ ^ ` { | } [ ], control characters and everything above ASCII. Nothing for a lone surrogate.
[[nodiscard]] QK_EXPORT std::optional<NSString> CFURLCreateStringByAddingPercentEscapes(const NSString& text);

} // namespace qk
