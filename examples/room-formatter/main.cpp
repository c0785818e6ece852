// SPDX-License-Identifier: Apache-2.0
// A host application's own identifier: the number of a room, "R-" and up to six digits, building/floor/door
// ("R-1/23/456").
#include "QKFoundation/QKFoundation.h"

#include <cstdint>
#include <exception>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace {

/// The base does the work: it asks for the constants, and for the characters in `selfSetup`.
class RoomFormatter : public qk::QKIDFormatterBase {
public:
    static std::shared_ptr<RoomFormatter> init() { return qk::QKIDFormatterBase::init<RoomFormatter>(); }

    void selfSetup() override {
        setNonIDCharacterSet(qk::NSCharacterSet::characterSetWithCharactersInString("0123456789").invertedSet());
    }
    qk::NSString separator() const override { return "/"; }
    std::uint64_t firstSeparatorIndex() const override { return 3; }  // the door
    std::uint64_t secondSeparatorIndex() const override { return 5; } // floor and door
    std::uint64_t thirdSeparatorIndex() const override { return qk::QKIDFormatter_NoSeparatorIndex; }
    std::uint64_t maximumIDLength() const override { return 8; } // "R-" and six digits
    qk::NSString baseIDString() const override { return "R-"; }
};

/// A text field as a toolkit has it: after each edit it asks the formatter and shows what it is told.
class Field {
public:
    explicit Field(std::shared_ptr<qk::NSFormatter> formatter) : formatter_(std::move(formatter)) {}

    void select(std::uint64_t location, std::uint64_t length) { selection_ = {location, length}; }

    void type(const qk::NSString& typed) {
        qk::NSString proposed = text_.substringToIndex(selection_.location) + typed +
                                text_.substringFromIndex(selection_.location + selection_.length);
        const qk::NSString before = proposed;
        qk::NSRange caret{selection_.location + typed.length(), 0};
        std::optional<qk::NSString> error;
        if (formatter_->isPartialStringValid(proposed, caret, text_, selection_, error) ||
            proposed.storage() != before.storage()) { // refused, but replaced: show the correction
            text_ = proposed;
            selection_ = caret;
        }
    }

    void show(const char* after) const {
        const std::string caret(static_cast<std::size_t>(selection_.location), ' ');
        std::cout << after << "\n    " << text_.utf8Lossy() << "\n    " << caret << "^\n";
    }

private:
    std::shared_ptr<qk::NSFormatter> formatter_;
    qk::NSString text_;
    qk::NSRange selection_;
};

void run() {
    Field field(RoomFormatter::init());
    field.type("4");
    field.show("typed 4");
    field.type("0");
    field.type("7");
    field.type("1");
    field.show("typed 0, 7, 1");
    field.type("room 25 and more: 99");
    field.show("pasted a sentence");
    field.select(3, 1);
    field.type("");
    field.show("deleted a slash, which comes back");
    field.select(2, 1);
    field.type("13");
    field.show("replaced a digit by two");
    field.select(5, 1);
    field.type("");
    field.show("deleted a digit");
}

} // namespace

int main() {
    try {
        run();
        return 0;
    } catch (const std::exception& exception) {
        std::cerr << exception.what() << '\n';
        return 1;
    }
}
