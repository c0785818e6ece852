// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/services/FSEvents.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace qk::tests {

/// One adapter's files, which change when they are told to. Names are paths below a folder that begins empty, or with
/// "../" beside it.
class ChangingFiles {
public:
    ChangingFiles() = default;
    ChangingFiles(const ChangingFiles&) = delete;
    ChangingFiles& operator=(const ChangingFiles&) = delete;
    virtual ~ChangingFiles() = default;

    [[nodiscard]] virtual platform::FSEvents& events() = 0;
    [[nodiscard]] virtual std::shared_ptr<platform::RunLoop> runLoop() = 0;

    /// The path of `name`, or of the folder itself.
    [[nodiscard]] virtual std::string path(const std::string& name = "") = 0;

    virtual void makeFolder(const std::string& name) = 0;
    /// A file with some content.
    virtual void makeFile(const std::string& name) = 0;
    virtual void write(const std::string& name) = 0;
    virtual void removeFile(const std::string& name) = 0;
    virtual void removeFolder(const std::string& name) = 0;
    /// `rename(2)`; `isFolder` says what it is.
    virtual void move(const std::string& from, const std::string& to, bool isFolder) = 0;

    /// Lets the run loop run until `isDone`; false when that takes too long.
    virtual bool runUntil(const std::function<bool()>& isDone) = 0;
};

struct ChangingFilesAdapter {
    const char* name;
    /// Null where the machine does not allow it.
    std::unique_ptr<ChangingFiles> (*make)();
};

inline std::ostream& operator<<(std::ostream& stream, const ChangingFilesAdapter& adapter) {
    return stream << adapter.name;
}

/// Of this build.
[[nodiscard]] std::vector<ChangingFilesAdapter> changingFilesAdapters();

[[nodiscard]] std::unique_ptr<ChangingFiles> makeFilesInMemory();

} // namespace qk::tests
