// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/SpawnAttributes.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>

namespace qk::platform {

SpawnFileActions::SpawnFileActions() noexcept : error_(::posix_spawn_file_actions_init(&actions_)) {}

SpawnFileActions::~SpawnFileActions() {
    ::posix_spawn_file_actions_destroy(&actions_);
}

void SpawnFileActions::duplicate(int descriptor, int target) noexcept {
    if (error_ == 0) {
        error_ = ::posix_spawn_file_actions_adddup2(&actions_, descriptor, target);
    }
}

void SpawnFileActions::openNull(int target) noexcept {
    if (error_ == 0) {
        const int flags = target == STDIN_FILENO ? O_RDONLY : O_WRONLY;
        error_ = ::posix_spawn_file_actions_addopen(&actions_, target, "/dev/null", flags, 0);
    }
}

void SpawnFileActions::inherit(int target) noexcept {
    if (::fcntl(target, F_GETFD) < 0 && errno == EBADF) {
        openNull(target);
    } else {
        duplicate(target, target);
    }
}

void SpawnFileActions::changeDirectory(const std::string& path) noexcept {
    if (error_ == 0) {
        error_ = ::posix_spawn_file_actions_addchdir_np(&actions_, path.c_str());
    }
}

void SpawnFileActions::closeFrom([[maybe_unused]] int first) noexcept {
#if defined(__GLIBC__) && __GLIBC_PREREQ(2, 34)
    if (error_ == 0) {
        error_ = ::posix_spawn_file_actions_addclosefrom_np(&actions_, first);
    }
#endif
}

SpawnAttributes::SpawnAttributes() noexcept : error_(::posix_spawnattr_init(&attributes_)) {
    sigset_t all;
    sigset_t none;
    sigfillset(&all);
    sigemptyset(&none);
    if (error_ == 0) {
        error_ = ::posix_spawnattr_setsigdefault(&attributes_, &all);
    }
    if (error_ == 0) {
        error_ = ::posix_spawnattr_setsigmask(&attributes_, &none);
    }
    if (error_ == 0) {
        error_ = ::posix_spawnattr_setflags(&attributes_, flags_);
    }
}

SpawnAttributes::~SpawnAttributes() {
    ::posix_spawnattr_destroy(&attributes_);
}

void SpawnAttributes::leadGroup() noexcept {
    flags_ |= POSIX_SPAWN_SETPGROUP;
    if (error_ == 0) {
        error_ = ::posix_spawnattr_setpgroup(&attributes_, 0);
    }
    if (error_ == 0) {
        error_ = ::posix_spawnattr_setflags(&attributes_, flags_);
    }
}

} // namespace qk::platform
