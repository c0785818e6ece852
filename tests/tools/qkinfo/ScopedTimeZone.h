// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstdlib>
#include <ctime>
#include <optional>
#include <string>

namespace qk::info {

/// A time zone for a scope, in the form that needs no files.
class ScopedTimeZone {
public:
    explicit ScopedTimeZone(const char* zone) {
        if (const char* before = std::getenv("TZ")) {
            previous_ = before;
        }
        setenv("TZ", zone, 1);
        tzset();
    }
    ScopedTimeZone(const ScopedTimeZone&) = delete;
    ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;
    ~ScopedTimeZone() {
        previous_.has_value() ? setenv("TZ", previous_->c_str(), 1) : unsetenv("TZ");
        tzset();
    }

private:
    std::optional<std::string> previous_;
};

} // namespace qk::info
