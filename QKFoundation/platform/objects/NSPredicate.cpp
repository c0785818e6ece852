// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/NSPredicate.h"

#include "QKFoundation/platform/objects/ClassDescription.h"
#include "QKFoundation/platform/objects/NSException.h"
#include "QKFoundation/platform/objects/internal/KeyPaths.h"
#include "QKFoundation/platform/objects/internal/PredicateExpression.h"
#include "QKFoundation/platform/objects/internal/PredicateParser.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace qk {
namespace internal {
namespace {

enum class Junction { And, Or, Not };

class CompoundPredicate final : public NSCompoundPredicate {
public:
    CompoundPredicate(Junction junction, Subpredicates subpredicates)
        : junction_(junction), subpredicates_(std::move(subpredicates)) {
        for (const auto& subpredicate : subpredicates_) {
            if (subpredicate == nullptr) {
                throw NSInvalidArgumentException("a compound predicate of nil");
            }
            const auto* compound = dynamic_cast<const CompoundPredicate*>(subpredicate.get());
            depth_ = std::max(depth_, compound != nullptr ? compound->depth_ + 1 : 1);
        }
        if (depth_ > kMaximumPredicateDepth) {
            throw NSInvalidArgumentException("predicates nested too deep");
        }
    }

    [[nodiscard]] const Subpredicates& subpredicates() const override { return subpredicates_; }

    [[nodiscard]] bool evaluateWithLookup(const Lookup& lookup) const override {
        const auto isMet = [&](const std::shared_ptr<const NSPredicate>& one) {
            return one->evaluateWithLookup(lookup);
        };
        switch (junction_) {
        case Junction::And: return std::ranges::all_of(subpredicates_, isMet);
        case Junction::Or: return std::ranges::any_of(subpredicates_, isMet);
        case Junction::Not: break;
        }
        return !isMet(subpredicates_.front());
    }

    [[nodiscard]] NSString predicateFormat() const override {
        if (junction_ == Junction::Not) {
            return "NOT " + formatOfPart(*subpredicates_.front());
        }
        if (subpredicates_.empty()) {
            return junction_ == Junction::And ? NSString("TRUEPREDICATE") : NSString("FALSEPREDICATE");
        }
        NSMutableString text;
        for (const auto& subpredicate : subpredicates_) {
            if (text.length() > 0) {
                text.append(junction_ == Junction::And ? u" AND " : u" OR ");
            }
            text.append(formatOfPart(*subpredicate));
        }
        return text.copy();
    }

    [[nodiscard]] std::vector<NSString> keyPaths() const override {
        std::vector<NSString> all;
        for (const auto& subpredicate : subpredicates_) {
            std::ranges::move(subpredicate->keyPaths(), std::back_inserter(all));
        }
        return withoutRepetition(all);
    }

private:
    static NSString formatOfPart(const NSPredicate& part) {
        const auto* compound = dynamic_cast<const NSCompoundPredicate*>(&part);
        return compound != nullptr && !compound->subpredicates().empty() ? "(" + part.predicateFormat() + ")"
                                                                         : part.predicateFormat();
    }

    Junction junction_;
    Subpredicates subpredicates_;
    int depth_ = 0;
};

} // namespace
} // namespace internal

std::shared_ptr<const NSPredicate> NSPredicate::predicateWithFormat(const NSString& format,
                                                                    const std::vector<Value>& arguments) {
    return internal::parsePredicate(format, arguments);
}

bool NSPredicate::evaluateWithObject(const NSObject& object) const {
    return evaluateWithLookup([&](const NSString& keyPath) { return internal::valueForKeyPath(object, keyPath); });
}

NSString NSPredicate::description() const {
    return predicateFormat();
}

const ClassDescription& NSPredicate::describedClass() {
    static const ClassDescription& description = ClassBuilder<NSPredicate>("NSPredicate", NSObject::describedClass())
                                                     .property("predicateFormat", &NSPredicate::predicateFormat)
                                                     .build();
    return description;
}

const ClassDescription& NSPredicate::classDescription() const {
    return describedClass();
}

std::shared_ptr<const NSCompoundPredicate>
NSCompoundPredicate::andPredicateWithSubpredicates(Subpredicates subpredicates) {
    return std::make_shared<internal::CompoundPredicate>(internal::Junction::And, std::move(subpredicates));
}

std::shared_ptr<const NSCompoundPredicate>
NSCompoundPredicate::orPredicateWithSubpredicates(Subpredicates subpredicates) {
    return std::make_shared<internal::CompoundPredicate>(internal::Junction::Or, std::move(subpredicates));
}

std::shared_ptr<const NSCompoundPredicate>
NSCompoundPredicate::notPredicateWithSubpredicate(std::shared_ptr<const NSPredicate> predicate) {
    return std::make_shared<internal::CompoundPredicate>(internal::Junction::Not, Subpredicates{std::move(predicate)});
}

const ClassDescription& NSCompoundPredicate::describedClass() {
    static const ClassDescription& description =
        ClassBuilder<NSCompoundPredicate>("NSCompoundPredicate", NSPredicate::describedClass()).build();
    return description;
}

const ClassDescription& NSCompoundPredicate::classDescription() const {
    return describedClass();
}

} // namespace qk
