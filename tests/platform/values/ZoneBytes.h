// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace qk::tests {

/// Writes compiled zone files.
struct ZoneBytes {
    struct Time {
        std::int32_t seconds;
        bool isDaylightSaving;
        unsigned char name; ///< where it begins in `names`
    };
    std::vector<std::pair<std::int64_t, unsigned char>> transitions; ///< moment and index of the time from then on
    std::vector<Time> times;
    std::string names;
    std::string footer;
    std::uint32_t indicators = 0; ///< of either kind
    std::uint32_t leapSeconds = 0;

    static std::string number(std::uint64_t value, int size) {
        std::string bytes;
        for (int shift = 8 * (size - 1); shift >= 0; shift -= 8) {
            bytes += static_cast<char>(value >> static_cast<unsigned>(shift) & 0xFFU);
        }
        return bytes;
    }

    [[nodiscard]] std::string block(char version, int momentSize) const {
        std::string bytes = "TZif";
        bytes += version;
        bytes.append(15, '\0');
        for (const std::size_t count : {std::size_t{indicators}, std::size_t{indicators}, std::size_t{leapSeconds},
                                        transitions.size(), times.size(), names.size()}) {
            bytes += number(count, 4);
        }
        for (const auto& [moment, time] : transitions) {
            bytes += number(static_cast<std::uint64_t>(moment), momentSize);
        }
        for (const auto& [moment, time] : transitions) {
            bytes += static_cast<char>(time);
        }
        for (const Time& time : times) {
            bytes += number(static_cast<std::uint32_t>(time.seconds), 4);
            bytes += static_cast<char>(time.isDaylightSaving ? 1 : 0);
            bytes += static_cast<char>(time.name);
        }
        bytes += names;
        bytes.append(leapSeconds * static_cast<std::size_t>(momentSize + 4), '\0');
        bytes.append(std::size_t{2} * indicators, '\0');
        return bytes;
    }

    [[nodiscard]] std::string version1() const { return block('\0', 4); }

    /// With a first block that holds next to nothing, as today's compilers write it.
    [[nodiscard]] std::string version2(char version = '2') const {
        ZoneBytes slim;
        slim.times = {{0, false, 0}};
        slim.names = std::string(1, '\0');
        return slim.block(version, 4) + block(version, 8) + "\n" + footer + "\n";
    }

    /// Berlin: winter time, then summer time from 2016-03-27 01:00 to 2016-10-30 01:00 UTC, then a rule.
    static ZoneBytes berlin() {
        ZoneBytes bytes;
        bytes.transitions = {{-2422054408, 1}, {1459040400, 2}, {1477789200, 1}};
        bytes.times = {{3208, false, 0}, {3600, false, 4}, {7200, true, 8}};
        bytes.names = std::string("LMT\0CET\0CEST\0", 13);
        bytes.footer = "CET-1CEST,M3.5.0,M10.5.0/3";
        return bytes;
    }
};

} // namespace qk::tests
