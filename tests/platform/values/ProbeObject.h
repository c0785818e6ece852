// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "QKFoundation/platform/values/Value.h"

#include <memory>
#include <utility>

namespace qk {

/// An object with identity whose equality goes by an identifier and whose text is given.
class ProbeObject : public NSObjectProtocol {
public:
    explicit ProbeObject(std::size_t identifier, NSString text = "probe")
        : identifier_(identifier), text_(std::move(text)) {}

    [[nodiscard]] bool isEqual(const Value& other) const override {
        const auto probe = other.asObject<ProbeObject>();
        return probe != nullptr && probe->identifier_ == identifier_;
    }
    [[nodiscard]] std::size_t hash() const override { return identifier_; }
    [[nodiscard]] NSString description() const override { return text_; }

private:
    std::size_t identifier_;
    NSString text_;
};

} // namespace qk
