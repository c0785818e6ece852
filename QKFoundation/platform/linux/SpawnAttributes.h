// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <spawn.h>

#include <string>

/// The two records of posix_spawn(3). Each call answers 0 or an error number and does nothing once one has failed.
namespace qk::platform {

/// What happens to the child's descriptors and folder, in the order of the calls.
class SpawnFileActions {
public:
    SpawnFileActions() noexcept;
    SpawnFileActions(const SpawnFileActions&) = delete;
    SpawnFileActions& operator=(const SpawnFileActions&) = delete;
    ~SpawnFileActions();

    /// `target` becomes `descriptor`, open beyond the start of the program; the two may be the same.
    void duplicate(int descriptor, int target) noexcept;
    /// `target` becomes /dev/null.
    void openNull(int target) noexcept;
    /// `target` becomes this process's own, or /dev/null where that is closed: a child with a closed standard stream
    /// would write its messages into the first file that it opens.
    void inherit(int target) noexcept;
    void changeDirectory(const std::string& path) noexcept;
    /// No descriptor from `first` on, also none that this process's other parts forgot to mark.
    void closeFrom(int first) noexcept;

    [[nodiscard]] int error() const noexcept { return error_; }
    [[nodiscard]] const posix_spawn_file_actions_t* get() const noexcept { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
    int error_ = 0;
};

/// The child's signals: default dispositions, nothing blocked.
class SpawnAttributes {
public:
    SpawnAttributes() noexcept;
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;
    ~SpawnAttributes();

    /// Makes the child the first of a process group of its own, so that one signal reaches all that it starts.
    void leadGroup() noexcept;

    [[nodiscard]] int error() const noexcept { return error_; }
    [[nodiscard]] const posix_spawnattr_t* get() const noexcept { return &attributes_; }

private:
    posix_spawnattr_t attributes_{};
    short flags_ = POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF;
    int error_ = 0;
};

} // namespace qk::platform
