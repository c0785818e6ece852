// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/tools/qkinfo/Child.h"

#include <sys/types.h>

#include <array>
#include <string>
#include <vector>

namespace qk::info {

/// The program while it runs, with its standard output and standard error in pipes.
class Running {
public:
    Running(const Workshop& workshop, const std::vector<std::string>& arguments);
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    /// Ends the program unless `finish` has seen its end.
    ~Running();

    /// The next line of standard output, or of standard error, without its end; waits for it. What there is of one that
    /// does not come in a minute, which fails the test.
    [[nodiscard]] std::string nextLine() const { return lineFrom(output_); }
    [[nodiscard]] std::string nextErrorLine() const { return lineFrom(error_); }

    void send(int signal) const;

    /// Nobody reads the program's standard output any more.
    void closeOutput();

    /// Waits for the end; with what has not been read before.
    [[nodiscard]] Finished finish();

private:
    static std::string lineFrom(int end);

    int output_ = -1;
    int error_ = -1;
    pid_t child_ = -1;
};

} // namespace qk::info
