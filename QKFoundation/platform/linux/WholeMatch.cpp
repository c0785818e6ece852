// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/linux/WholeMatch.h"

#include <regex.h>

#include <cstddef>
#include <string>

namespace qk::platform {
namespace {

std::optional<std::string> bytesOf(const NSString& text) {
    std::optional<std::string> bytes = text.utf8();
    return bytes.has_value() && bytes->find('\0') == std::string::npos ? bytes : std::nullopt;
}

} // namespace

struct WholeMatch::Expression {
    regex_t compiled{};
    bool isValid;

    explicit Expression(const std::string& pattern)
        : isValid(::regcomp(&compiled, pattern.c_str(), REG_EXTENDED) == 0) {}
    Expression(const Expression&) = delete;
    Expression& operator=(const Expression&) = delete;
    ~Expression() {
        if (isValid) {
            ::regfree(&compiled);
        }
    }
};

std::optional<WholeMatch> WholeMatch::compile(const NSString& pattern) {
    const std::optional<std::string> bytes = bytesOf(pattern);
    if (!bytes.has_value()) {
        return std::nullopt;
    }
    auto expression = std::make_shared<const Expression>(*bytes);
    return expression->isValid ? std::optional(WholeMatch(std::move(expression))) : std::nullopt;
}

bool WholeMatch::matches(const NSString& text) const {
    const std::optional<std::string> bytes = bytesOf(text);
    // The match that is found begins as early and is as long as any can be, so where the whole text can match it does.
    regmatch_t match{};
    return bytes.has_value() && ::regexec(&expression_->compiled, bytes->c_str(), 1, &match, 0) == 0 &&
           match.rm_so == 0 && static_cast<std::size_t>(match.rm_eo) == bytes->size();
}

} // namespace qk::platform
