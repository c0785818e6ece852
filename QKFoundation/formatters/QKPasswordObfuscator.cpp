// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/formatters/QKPasswordObfuscator.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"

#include <string>
#include <utility>

namespace qk {
namespace {

constexpr char kDisplayPassword[] = "displayPassword";
constexpr char kPrivatePassword[] = "privatePassword";
constexpr auto kOldAndNew = NSKeyValueObservingOptions::New | NSKeyValueObservingOptions::Old;

// The keys as strings, made once: they are asked for with every character that is typed.
const NSString& displayPasswordKey() {
    static const NSString& key = *new NSString(kDisplayPassword);
    return key;
}
const NSString& privatePasswordKey() {
    static const NSString& key = *new NSString(kPrivatePassword);
    return key;
}

// In a destructor: a host may have taken the observation away already.
void stopObservingOneself(NSObject& object, const NSString& key) noexcept {
    try {
        object.removeObserver(object, key);
    } catch (const NSRangeException&) { // NOLINT(bugprone-empty-catch): there is nothing left to take away
    }
}

} // namespace

const ClassDescription& QKPasswordObfuscator::describedClass() {
    using Self = QKPasswordObfuscator;
    static const ClassDescription& description =
        ClassBuilder<Self>("QKPasswordObfuscator", NSObject::describedClass())
            .property(kDisplayPassword, &Self::displayPassword, &Self::setDisplayPassword)
            .property(kPrivatePassword, &Self::privatePassword, &Self::setPrivatePassword)
            .method(kDisplayPassword, &Self::displayPassword)
            .method(kPrivatePassword, &Self::privatePassword)
            .method("setDisplayPassword:", &Self::setDisplayPassword)
            .method("setPrivatePassword:", &Self::setPrivatePassword)
            .method("obfuscatedPasswordWithLength:", &Self::obfuscatedPasswordWithLength)
            .method("copy", &Self::copy)
            .protocol("NSCopying")
            .build();
    return description;
}

const ClassDescription& QKPasswordObfuscator::classDescription() const {
    return describedClass();
}

std::shared_ptr<QKPasswordObfuscator> QKPasswordObfuscator::passwordObfuscator() {
    return init();
}

std::shared_ptr<QKPasswordObfuscator>
QKPasswordObfuscator::passwordObfuscatorWithPrivatePassword(const std::optional<NSString>& password) {
    auto obfuscator = passwordObfuscator();
    obfuscator->setPrivatePassword(password);
    return obfuscator;
}

void QKPasswordObfuscator::setUp() {
    addObserver(*this, displayPasswordKey(), kOldAndNew);
    addObserver(*this, privatePasswordKey(), kOldAndNew);
    setPrivatePassword("");
}

QKPasswordObfuscator::~QKPasswordObfuscator() {
    stopObservingOneself(*this, displayPasswordKey());
    stopObservingOneself(*this, privatePasswordKey());
}

void QKPasswordObfuscator::setDisplayPassword(std::optional<NSString> password) {
    changeValueForKey(kDisplayPassword, [&] { displayPassword_ = std::move(password); });
}

void QKPasswordObfuscator::setPrivatePassword(std::optional<NSString> password) {
    changeValueForKey(kPrivatePassword, [&] { privatePassword_ = std::move(password); });
}

NSString QKPasswordObfuscator::obfuscatedPasswordWithLength(std::uint64_t length) const {
    return NSString(std::u16string(length, u'*'));
}

std::shared_ptr<QKPasswordObfuscator> QKPasswordObfuscator::copy() const {
    return passwordObfuscatorWithPrivatePassword(privatePassword_);
}

bool QKPasswordObfuscator::isEqual(const Value& other) const {
    const auto obfuscator = other.asObject<QKPasswordObfuscator>();
    return obfuscator != nullptr && obfuscator->privatePassword_ == privatePassword_;
}

std::size_t QKPasswordObfuscator::hash() const {
    return privatePassword_.has_value() ? privatePassword_->hash() : 0;
}

void QKPasswordObfuscator::observeValueForKeyPath(const NSString& keyPath, NSObject& /*ofObject*/,
                                                  const NSDictionary& /*change*/, void* /*context*/) {
    if (keyPath == displayPasswordKey()) {
        setPrivatePassword(displayPassword_);
    } else if (keyPath == privatePasswordKey()) {
        showAsterisks();
    }
}

void QKPasswordObfuscator::showAsterisks() {
    // The asterisks are shown without becoming the password themselves.
    removeObserver(*this, displayPasswordKey());
    try {
        setDisplayPassword(obfuscatedPasswordWithLength(privatePassword_.has_value() ? privatePassword_->length() : 0));
    } catch (...) { // another observer's; this object goes on observing itself all the same
        addObserver(*this, displayPasswordKey(), kOldAndNew);
        throw;
    }
    addObserver(*this, displayPasswordKey(), kOldAndNew);
}

} // namespace qk
