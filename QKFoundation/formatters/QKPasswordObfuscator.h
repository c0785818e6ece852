// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/Export.h"
#include "QKFoundation/platform/objects/NSCopying.h"
#include "QKFoundation/platform/objects/NSObject.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

namespace qk {

/// What an application shows for a stored password whose length is not to be seen.
inline constexpr char QKPasswordObfuscatorObfuscationString[] = "********";

/// `QKPasswordObfuscator`: a password, and beside it a text of as many asterisks for the field that shows it. A field
/// is bound to the display text; the application reads the private one. Nothing is enciphered.
///
/// Both properties can be observed; the object keeps them in step by observing them itself. Lengths count UTF-16 units.
/// Subclasses are made by `QKPasswordObfuscator::init<Subclass>()`. Threads: one at a time.
class QK_EXPORT QKPasswordObfuscator : public NSObject, public NSCopying {
public:
    [[nodiscard]] static const ClassDescription& describedClass();
    [[nodiscard]] const ClassDescription& classDescription() const override;

    /// `passwordObfuscator`. One whose password is "".
    [[nodiscard]] static std::shared_ptr<QKPasswordObfuscator> passwordObfuscator();

    /// `passwordObfuscatorWithPrivatePassword:`. One with that password, which may be nothing.
    [[nodiscard]] static std::shared_ptr<QKPasswordObfuscator>
    passwordObfuscatorWithPrivatePassword(const std::optional<NSString>& password);

    /// `init`. One of the class `T`, whose password is "".
    template <std::derived_from<QKPasswordObfuscator> T = QKPasswordObfuscator>
    [[nodiscard]] static std::shared_ptr<T> init() {
        struct Made final : T {};
        std::shared_ptr<T> obfuscator = std::make_shared<Made>();
        static_cast<QKPasswordObfuscator&>(*obfuscator).setUp();
        return obfuscator;
    }

    ~QKPasswordObfuscator() override;

    /// `displayPassword`. One "*" for each character of the password; "" when that is nothing.
    [[nodiscard]] const std::optional<NSString>& displayPassword() const noexcept { return displayPassword_; }

    /// `setDisplayPassword:`. Makes `password` the private password, whole, after which the display text is its
    /// asterisks. An observer that sets it while the asterisks are being shown to it is not heard.
    ///
    /// Deliberate: also when it is the display text itself. A field that edits its asterisks makes a password of them;
    /// it is to be cleared and typed anew.
    void setDisplayPassword(std::optional<NSString> password);

    /// `privatePassword`. The password; it may be nothing.
    [[nodiscard]] const std::optional<NSString>& privatePassword() const noexcept { return privatePassword_; }
    void setPrivatePassword(std::optional<NSString> password);

    /// `obfuscatedPasswordWithLength:`. As many asterisks.
    [[nodiscard]] NSString obfuscatedPasswordWithLength(std::uint64_t length) const;

    /// `copyWithZone:`. A new obfuscator with the same private password.
    [[nodiscard]] std::shared_ptr<NSObject> copyWithZone() const override { return copy(); }
    /// `copy`. The same.
    [[nodiscard]] std::shared_ptr<QKPasswordObfuscator> copy() const;

    /// `isEqual:`. Whether `other` is an obfuscator whose private password is the same text, or nothing as this one.
    [[nodiscard]] bool isEqual(const Value& other) const override;

    /// `hash`. That of the private password; 0 for nothing.
    [[nodiscard]] std::size_t hash() const override;

    /// `observeValueForKeyPath:ofObject:change:context:`. Keeps the two properties in step. Subclasses that observe
    /// more call it for the keys that are not theirs.
    void observeValueForKeyPath(const NSString& keyPath, NSObject& ofObject, const NSDictionary& change,
                                void* context) override;

protected:
    QKPasswordObfuscator() = default;

private:
    void setUp();
    void showAsterisks();

    std::optional<NSString> displayPassword_;
    std::optional<NSString> privatePassword_;
};

} // namespace qk
