// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/NSGeometry.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <ostream>

inline std::ostream& operator<<(std::ostream& stream, CGSize size) {
    return stream << size.width << " x " << size.height;
}

inline std::ostream& operator<<(std::ostream& stream, CGRect rect) {
    return stream << rect.size << " at " << rect.origin.x << ", " << rect.origin.y;
}

namespace qk::tests {

constexpr CGRect rect(double x, double y, double width, double height) {
    return {{x, y}, {width, height}};
}

/// Whether the bits are the same; one NaN is as good as another.
struct Same {
    bool operator()(double a, double b) const {
        return (std::isnan(a) && std::isnan(b)) || std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
    }
    bool operator()(CGSize a, CGSize b) const { return (*this)(a.width, b.width) && (*this)(a.height, b.height); }
    bool operator()(CGRect a, CGRect b) const {
        return (*this)(a.origin.x, b.origin.x) && (*this)(a.origin.y, b.origin.y) && (*this)(a.size, b.size);
    }
};
inline constexpr Same same;

} // namespace qk::tests
