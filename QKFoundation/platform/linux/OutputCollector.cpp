// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/OutputCollector.h"

#include <unistd.h>

#include <new>
#include <utility>

namespace qk::platform {
namespace {

constexpr std::size_t kFirstCapacity = std::size_t{16} << 10U;

// False when there is no such block; `bytes` then stays as it is.
bool resize(std::unique_ptr<char, MallocBytes::Free>& bytes, std::size_t capacity) {
    auto* const resized = static_cast<char*>(std::realloc(bytes.get(), capacity));
    if (resized == nullptr) {
        return false;
    }
    static_cast<void>(bytes.release()); // realloc has taken it
    bytes.reset(resized);
    return true;
}

} // namespace

void OutputCollector::grow() {
    const std::size_t capacity = capacity_ == 0 ? kFirstCapacity : 2 * capacity_;
    if (!resize(bytes_, capacity)) {
        throw std::bad_alloc();
    }
    capacity_ = capacity;
}

ssize_t OutputCollector::readFrom(int descriptor) {
    if (length_ == capacity_) {
        grow();
    }
    const ssize_t count = ::read(descriptor, bytes_.get() + length_, capacity_ - length_);
    if (count > 0) {
        length_ += static_cast<std::size_t>(count);
    }
    return count;
}

MallocBytes OutputCollector::take() {
    if (length_ == 0) {
        bytes_.reset();
    } else {
        static_cast<void>(resize(bytes_, length_)); // shrinking at worst leaves it as large as it is
    }
    capacity_ = 0;
    return {std::move(bytes_), std::exchange(length_, 0)};
}

} // namespace qk::platform
