// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/unicode/Kernels.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

namespace qk::unicode::fuzz {

/// Memory of exactly so many units, so that the address sanitizer sees one step beyond.
template <typename Char>
class Exact {
public:
    explicit Exact(std::size_t count) : units_{new Char[count]}, count_{count} {}

    /// The input as units; odd bytes at its end are left out.
    Exact(const std::uint8_t* data, std::size_t size) : Exact{size / sizeof(Char)} {
        if (count_ != 0) {
            std::memcpy(units_.get(), data, count_ * sizeof(Char));
        }
    }

    Char* data() { return units_.get(); }
    [[nodiscard]] std::size_t size() const { return count_; }
    std::basic_string_view<Char> first(std::size_t count) { return {units_.get(), count}; }

private:
    std::unique_ptr<Char[]> units_;
    std::size_t count_;
};

inline void require(bool condition) {
    if (!condition) {
        std::abort();
    }
}

/// That `kernel`'s conversion and its count are those of the scalar kernels, in `capacity` units of memory. Returns
/// whether the input was well-formed.
template <typename In, typename Out>
bool compare(Exact<In>& in, std::size_t capacity, Progress (*Kernels::*convert)(const In*, std::size_t, Out*),
             Progress (*Kernels::*count)(const In*, std::size_t)) {
    Exact<Out> want{capacity};
    const Progress wanted = (kScalarKernels.*convert)(in.data(), in.size(), want.data());
    for (const Kernels* const kernel : supportedKernels()) {
        Exact<Out> have{capacity};
        const Progress got = (kernel->*convert)(in.data(), in.size(), have.data());
        const Progress counted = (kernel->*count)(in.data(), in.size());
        require(got.read == wanted.read && counted.read == wanted.read && counted.written == wanted.written);
        require(have.first(got.written) == want.first(wanted.written));
    }
    return wanted.read == in.size();
}

} // namespace qk::unicode::fuzz
