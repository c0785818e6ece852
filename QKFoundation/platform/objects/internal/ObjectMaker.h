// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <memory>
#include <utility>

namespace qk::internal {

/// Makes objects of classes that keep their constructors private, each in one block of memory with its counts. Such a
/// class has it as a friend.
class ObjectMaker {
public:
    template <typename Class, typename... Arguments>
    [[nodiscard]] static std::shared_ptr<Class> make(Arguments&&... arguments) {
        return std::allocate_shared<Class>(Allocator<Class>(), std::forward<Arguments>(arguments)...);
    }

private:
    // Calls the constructor in the name of its friend.
    template <typename T>
    struct Allocator : std::allocator<T> {
        template <typename Other>
        struct rebind { // NOLINT(readability-identifier-naming): the standard's name
            using other = Allocator<Other>;
        };

        Allocator() = default;
        template <typename Other>
        Allocator(const Allocator<Other>& /*other*/) noexcept {} // NOLINT(google-explicit-constructor)

        template <typename Class, typename... Arguments>
        void construct(Class* place, Arguments&&... arguments) {
            ObjectMaker::construct(place, std::forward<Arguments>(arguments)...);
        }
    };

    template <typename Class, typename... Arguments>
    static void construct(Class* place, Arguments&&... arguments) {
        ::new (static_cast<void*>(place)) Class(std::forward<Arguments>(arguments)...);
    }
};

} // namespace qk::internal
