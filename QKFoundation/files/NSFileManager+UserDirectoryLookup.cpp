// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/files/NSFileManager+UserDirectoryLookup.h"
#include "QKFoundation/files/internal/StandardPaths.h"
#include "QKFoundation/platform/values/NSStringFormat.h"
#include "QKFoundation/runtime/NSObject+AssociatedObject.h"
#include "QKFoundation/system_info/internal/ProcessOwner.h"

#include <array>
#include <cstdint>
#include <mutex>
#include <optional>

namespace qk {
namespace {

constexpr char kUseTemporaryDirectoryKey = 0; // its address is the key

// The effective user is one for the whole process, so a look-up must not begin while another one has switched it.
// Never destroyed: other threads may still ask while the process ends.
std::mutex& switchLock() {
    static auto* const theLock = new std::mutex;
    return *theLock;
}

// The rights of another user for a scope, and those of `owner` again on every way out of it.
class Impersonation {
public:
    Impersonation(platform::Users& users, std::uint32_t user, std::uint32_t owner)
        : users_(users), owner_(owner), isDone_(users.seteuid(user)) {}
    Impersonation(const Impersonation&) = delete;
    Impersonation& operator=(const Impersonation&) = delete;
    ~Impersonation() {
        if (isDone_) {
            users_.seteuid(owner_);
        }
    }

    [[nodiscard]] bool isDone() const noexcept { return isDone_; }

private:
    platform::Users& users_;
    std::uint32_t owner_;
    bool isDone_;
};

NSString pathOfEffectiveUser(const platform::Services& services, NSSearchPathDirectory directory,
                             const NSString& defaultName) {
    const auto paths = services.fileManager->searchPaths(directory, NSSearchPathDomainMask::NSUserDomainMask);
    return !paths.empty() ? paths.front()
                          : services.fileManager->homeDirectory().stringByAppendingPathComponent(defaultName);
}

NSString pathForRoot(const platform::Services& services, NSSearchPathDirectory directory, const NSString& defaultName) {
    const std::uint32_t owner = internal::processOwnerUID(services);
    const std::scoped_lock lock(switchLock());
    const std::optional<platform::ConsoleUser> user = services.users->copyConsoleUser();
    if (!user.has_value()) {
        return pathOfEffectiveUser(services, directory, defaultName);
    }
    const Impersonation impersonation(*services.users, user->uid, owner);
    if (!impersonation.isDone()) {
        return stringWithFormat("/Users/%@/%@", std::array<std::optional<Value>, 2>{user->name, defaultName});
    }
    return pathOfEffectiveUser(services, directory, defaultName);
}

} // namespace

NSString internal::userPathForDirectory(const platform::Services& services, const NSFileManager& self,
                                        NSSearchPathDirectory directory, const NSString& defaultName) {
    if (!isProcessOwnerRootUser(services)) {
        return pathOfEffectiveUser(services, directory, defaultName);
    }
    return NSFileManager_UserDirectoryLookup::useTemporaryDirectoryAsUserPath(self)
               ? services.fileManager->temporaryDirectory()
               : pathForRoot(services, directory, defaultName);
}

NSString NSFileManager_UserDirectoryLookup::userPathForDirectory(const NSFileManager& self,
                                                                 NSSearchPathDirectory directory,
                                                                 const NSString& defaultName) {
    return internal::userPathForDirectory(*platform::services(), self, directory, defaultName);
}

bool NSFileManager_UserDirectoryLookup::useTemporaryDirectoryAsUserPath(const NSFileManager& self) {
    const std::optional<Value> flag =
        NSObject_AssociatedObject::getAssociatedValueForKey(self, &kUseTemporaryDirectoryKey);
    const auto* number = flag.has_value() ? flag->as<NSNumber>() : nullptr;
    return number != nullptr && number->boolValue();
}

void NSFileManager_UserDirectoryLookup::setUseTemporaryDirectoryAsUserPath(NSFileManager& self, bool use) {
    NSObject_AssociatedObject::setAssociatedNonatomicRetainedValue(self, NSNumber(use), &kUseTemporaryDirectoryKey);
}

} // namespace qk
