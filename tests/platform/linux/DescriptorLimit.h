// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace qk::tests {

/// As long as it lives the process gets no further descriptor.
class DescriptorLimit {
public:
    DescriptorLimit() {
        EXPECT_EQ(::getrlimit(RLIMIT_NOFILE, &before_), 0);
        const int next = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        EXPECT_GE(next, 0);
        ::close(next);
        rlimit limit = before_;
        limit.rlim_cur = static_cast<rlim_t>(next);
        EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    }
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;
    ~DescriptorLimit() { EXPECT_EQ(::setrlimit(RLIMIT_NOFILE, &before_), 0); }

private:
    rlimit before_{};
};

} // namespace qk::tests
