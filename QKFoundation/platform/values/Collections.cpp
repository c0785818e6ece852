// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/Collections.h"

#include <algorithm>
#include <new>
#include <utility>

namespace qk::internal {

namespace {

using Values = std::vector<Value>;
using Entries = std::vector<NSDictionary::Entry>;

/// The contents of collections that died, waiting for their turn.
struct Remains {
    std::vector<Values> values;
    std::vector<Entries> entries;

    void add(Values&& contents) { values.push_back(std::move(contents)); }
    void add(Entries&& contents) { entries.push_back(std::move(contents)); }
};

/// How deep in each other the collections are that this thread is destroying, and where those go that are too deep.
/// Plain data: collections may still die while the thread's other variables are being destroyed.
struct Destruction {
    unsigned depth = 0;
    Remains* remains = nullptr;
};
thread_local constinit Destruction destruction;

constexpr unsigned kDeepest = 32;

void destroyRemains(Remains& remains) {
    while (!remains.values.empty() || !remains.entries.empty()) {
        if (!remains.values.empty()) {
            const Values next = std::move(remains.values.back());
            remains.values.pop_back();
        } else {
            const Entries next = std::move(remains.entries.back());
            remains.entries.pop_back();
        }
    }
}

/// Destroys `contents` here, or leaves them to the outermost call when this one is deep below it.
template <typename Contents>
void destroyContents(Contents& contents) noexcept {
    if (destruction.depth == kDeepest) {
        try {
            destruction.remains->add(std::move(contents));
            return;
        } catch (const std::bad_alloc&) { // then one level more it is
            contents.clear();
            return;
        }
    }
    if (destruction.depth > 0) {
        ++destruction.depth;
        contents.clear();
        --destruction.depth;
        return;
    }
    Remains remains;
    destruction = {1, &remains};
    contents.clear();
    destroyRemains(remains);
    destruction = {};
}

/// A vector whose end goes through `destroyContents`.
template <typename Contents>
struct Shared {
    explicit Shared(Contents&& given) noexcept : contents(std::move(given)) {}
    Shared(const Shared&) = delete;
    Shared& operator=(const Shared&) = delete;
    ~Shared() { destroyContents(contents); }

    Contents contents;
};

template <typename Contents>
std::shared_ptr<const Contents> share(Contents contents) {
    if (contents.empty()) {
        return nullptr;
    }
    auto shared = std::make_shared<Shared<Contents>>(std::move(contents));
    return {shared, &shared->contents};
}

/// Pairs of values that are still to be compared.
class Comparison {
public:
    bool run(const Value& left, const Value& right) {
        if (!compare(left, right)) {
            return false;
        }
        while (!pairs_.empty()) {
            const auto [first, second] = pairs_.back();
            pairs_.pop_back();
            if (!compare(*first, *second)) {
                return false;
            }
        }
        return true;
    }

private:
    /// Whether the two are equal as far as can be seen here; what they hold is added to the pairs.
    bool compare(const Value& left, const Value& right) {
        return left.visit([&]<typename T>(const T& held) {
            if constexpr (std::same_as<T, Value::Object>) {
                return held->isEqual(right);
            } else {
                const T* other = right.as<T>();
                return other != nullptr && compareHeld(held, *other);
            }
        });
    }

    template <typename T>
    bool compareHeld(const T& left, const T& right) {
        return left == right;
    }
    bool compareHeld(const NSArray& left, const NSArray& right) {
        if (left.count() != right.count()) {
            return false;
        }
        for (std::size_t index = left.count(); left.begin() != right.begin() && index > 0; --index) {
            pairs_.emplace_back(&left[index - 1], &right[index - 1]);
        }
        return true;
    }
    bool compareHeld(const NSDictionary& left, const NSDictionary& right) {
        if (left.count() != right.count()) {
            return false;
        }
        if (left.begin() == right.begin()) {
            return true;
        }
        const auto sameKey = [](const auto& first, const auto& second) { return first.first == second.first; };
        if (!std::equal(left.begin(), left.end(), right.begin(), sameKey)) {
            return false;
        }
        for (std::size_t index = left.count(); index > 0; --index) {
            pairs_.emplace_back(&left.entries()[index - 1].second, &right.entries()[index - 1].second);
        }
        return true;
    }

    std::vector<std::pair<const Value*, const Value*>> pairs_;
};

} // namespace

std::shared_ptr<const Values> shareValues(Values values) {
    return share(std::move(values));
}

std::shared_ptr<const Entries> shareEntries(Entries entries) {
    return share(std::move(entries));
}

bool areEqual(const Value& left, const Value& right) {
    return Comparison().run(left, right);
}

} // namespace qk::internal
