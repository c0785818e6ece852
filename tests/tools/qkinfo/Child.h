// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// The program as a child process.
namespace qk::info {

/// How a child ended and what it wrote.
struct Finished {
    int status = -1; ///< its exit status; -1 when a signal ended it
    int signal = 0;  ///< the signal that ended it, or 0
    std::string output;
    std::string error;
};

/// Where the child's standard output goes.
enum class OutputPlace {
    Collected,
    Closed,   ///< nowhere: the child starts without it
    Full,     ///< a device that has no room
    NoReader, ///< a pipe that nobody reads
};

/// A folder of this test's own with an update tool in it, and the environment that makes the program use that.
class Workshop {
public:
    Workshop();
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;
    ~Workshop();

    [[nodiscard]] std::filesystem::path path(const std::string& name) const { return folder_ / name; }

    /// The update tool becomes this shell script.
    void setUpdateTool(std::string_view script);

    /// There is no update tool.
    void removeUpdateTool();

    /// Sets a variable of the child's environment, "NAME=value".
    void setVariable(std::string assignment) { variables_.push_back(std::move(assignment)); }

    [[nodiscard]] Finished run(const std::vector<std::string>& arguments,
                               OutputPlace place = OutputPlace::Collected) const;

    /// Replaces this process by the program. For the child's side of a fork.
    [[noreturn]] void become(const std::vector<std::string>& arguments) const;

private:
    std::filesystem::path folder_;
    std::vector<std::string> variables_;
};

/// Waits for a child and fills in how it ended.
void waitForChild(pid_t child, Finished& finished);

} // namespace qk::info
