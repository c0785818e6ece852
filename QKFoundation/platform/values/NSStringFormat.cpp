// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/values/NSStringFormat.h"

#include "QKFoundation/platform/values/UnitClasses.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace qk {
namespace {

// The texts of the arguments, each made when it is first asked for.
class ArgumentTexts {
public:
    explicit ArgumentTexts(std::span<const std::optional<Value>> arguments)
        : arguments_(arguments), texts_(arguments.size()) {}

    // The text of the argument at `index`, counted from 0; null when there is none.
    const NSString* at(std::size_t index) {
        if (index >= arguments_.size()) {
            return nullptr;
        }
        std::optional<NSString>& text = texts_[index];
        if (!text.has_value()) {
            text = arguments_[index].has_value() ? arguments_[index]->description() : NSString("(null)");
        }
        return &*text;
    }

private:
    std::span<const std::optional<Value>> arguments_;
    std::vector<std::optional<NSString>> texts_;
};

// What stands at a percent sign: how many units, and what takes their place. Nothing takes it: they are kept.
struct Directive {
    std::size_t length = 1;
    std::optional<std::u16string_view> text;
};

class Formatter {
public:
    Formatter(std::u16string_view format, std::span<const std::optional<Value>> arguments)
        : format_(format), arguments_(arguments) {}

    NSString result() {
        std::size_t position = 0;
        while (position < format_.size()) {
            const std::size_t percent = std::min(format_.find(u'%', position), format_.size());
            result_.append(format_.substr(position, percent - position));
            position = percent;
            if (percent < format_.size()) {
                const Directive directive = directiveAt(percent);
                result_.append(directive.text.value_or(format_.substr(percent, directive.length)));
                position += directive.length;
            }
        }
        return result_.copy();
    }

private:
    [[nodiscard]] bool isAt(std::size_t position, char16_t unit) const {
        return position < format_.size() && format_[position] == unit;
    }

    // The whole directive of `length` units with the text of an argument; kept when there is no such argument.
    Directive inserting(std::size_t length, std::size_t index) {
        const NSString* text = arguments_.at(index);
        return {length, text != nullptr ? std::optional(text->units()) : std::nullopt};
    }

    Directive directiveAt(std::size_t percent) {
        const std::size_t begin = percent + 1;
        if (isAt(begin, u'%')) {
            return {2, u"%"};
        }
        if (isAt(begin, u'@')) {
            return inserting(2, next_++);
        }
        std::size_t end = begin;
        std::size_t number = 0;
        // A number that is too large for any list of arguments stays so.
        for (; end < format_.size() && internal::isASCIIDigit(format_[end]); ++end) {
            if (number < kTooLarge) {
                number = number * 10 + static_cast<std::size_t>(format_[end] - u'0');
            }
        }
        if (end == begin || isAt(begin, u'0')) {
            return {};
        }
        if (isAt(end, u'$') && isAt(end + 1, u'@')) {
            return inserting(end + 2 - percent, number - 1);
        }
        // "%3%" is a placeholder that nothing was put in for: its second sign begins no directive.
        return {isAt(end, u'%') ? end + 1 - percent : 1, std::nullopt};
    }

    static constexpr std::size_t kTooLarge = 1'000'000'000;

    std::u16string_view format_;
    ArgumentTexts arguments_;
    std::size_t next_ = 0;
    NSMutableString result_;
};

} // namespace

NSString stringWithFormat(const NSString& format, std::span<const std::optional<Value>> arguments) {
    return Formatter(format.units(), arguments).result();
}

} // namespace qk
