// SPDX-License-Identifier: Apache-2.0
#include "QKFoundation/platform/objects/internal/PredicateParser.h"

#include "QKFoundation/platform/objects/internal/ComparisonPredicate.h"
#include "QKFoundation/platform/objects/internal/PredicateExpressionReader.h"
#include "QKFoundation/platform/objects/internal/PredicateTokens.h"

#include <cstddef>
#include <string_view>
#include <utility>

namespace qk::internal {
namespace {

using Predicate = std::shared_ptr<const NSPredicate>;

/// The text between two parentheses as far as it has been read: alternatives, the last of which is not complete.
struct Group {
    NSCompoundPredicate::Subpredicates alternatives;
    NSCompoundPredicate::Subpredicates conjunction;
    std::size_t negations = 0; // in front of what comes next

    void add(Predicate predicate) {
        for (; negations > 0; --negations) {
            predicate = NSCompoundPredicate::notPredicateWithSubpredicate(std::move(predicate));
        }
        conjunction.push_back(std::move(predicate));
    }

    void beginAlternative() {
        Predicate whole = conjunction.size() == 1
                              ? std::move(conjunction.front())
                              : NSCompoundPredicate::andPredicateWithSubpredicates(std::move(conjunction));
        conjunction = {};
        alternatives.push_back(std::move(whole));
    }

    [[nodiscard]] Predicate finish() {
        beginAlternative();
        return alternatives.size() == 1 ? std::move(alternatives.front())
                                        : NSCompoundPredicate::orPredicateWithSubpredicates(std::move(alternatives));
    }
};

struct NamedOperator {
    std::u16string_view name;
    PredicateOperator type;
};

constexpr NamedOperator kMarks[] = {
    {u"=", PredicateOperator::EqualTo},
    {u"==", PredicateOperator::EqualTo},
    {u"!=", PredicateOperator::NotEqualTo},
    {u"<>", PredicateOperator::NotEqualTo},
    {u"<", PredicateOperator::LessThan},
    {u"<=", PredicateOperator::LessThanOrEqualTo},
    {u"=<", PredicateOperator::LessThanOrEqualTo},
    {u">", PredicateOperator::GreaterThan},
    {u">=", PredicateOperator::GreaterThanOrEqualTo},
    {u"=>", PredicateOperator::GreaterThanOrEqualTo},
};

constexpr NamedOperator kWords[] = {
    {u"BETWEEN", PredicateOperator::Between},       {u"IN", PredicateOperator::In},
    {u"BEGINSWITH", PredicateOperator::BeginsWith}, {u"ENDSWITH", PredicateOperator::EndsWith},
    {u"CONTAINS", PredicateOperator::Contains},     {u"LIKE", PredicateOperator::Like},
};

/// One text. The groups are kept in a list, so that no text nests too deep to be read.
class Parser : private PredicateExpressionReader {
public:
    using PredicateExpressionReader::PredicateExpressionReader;

    [[nodiscard]] Predicate parse() {
        std::vector<Group> groups(1);
        while (true) {
            while (readPrefix(groups)) {
            }
            groups.back().add(readSimplePredicate());
            while (groups.size() > 1 && takeMark(u")")) {
                Predicate inner = groups.back().finish();
                groups.pop_back();
                groups.back().add(std::move(inner));
            }
            if (takeWord(u"OR") || takeMark(u"||")) {
                groups.back().beginAlternative();
            } else if (!takeWord(u"AND") && !takeMark(u"&&")) {
                break;
            }
        }
        if (groups.size() > 1 || token().kind != PredicateToken::Kind::End) {
            raiseInvalidPredicate(groups.size() > 1 ? NSString("a parenthesis is open")
                                                    : NSString("something follows its end"));
        }
        return groups.front().finish();
    }

private:
    bool readPrefix(std::vector<Group>& groups) {
        if (takeWord(u"NOT") || takeMark(u"!")) {
            ++groups.back().negations;
            return true;
        }
        if (takeMark(u"(")) {
            groups.emplace_back();
            return true;
        }
        return false;
    }

    Predicate readSimplePredicate() {
        if (takeWord(u"TRUEPREDICATE")) {
            return NSCompoundPredicate::andPredicateWithSubpredicates({});
        }
        if (takeWord(u"FALSEPREDICATE")) {
            return NSCompoundPredicate::orPredicateWithSubpredicates({});
        }
        const PredicateModifier modifier = readModifier();
        PredicateExpression left = readExpression();
        const PredicateOperator type = readOperator();
        const bool ignoresCase = readOptions();
        PredicateExpression right = readExpression();
        requireBounds(type, right);
        return comparisonPredicate({modifier, std::move(left), type, ignoresCase, std::move(right)});
    }

    PredicateModifier readModifier() {
        if (takeWord(u"ANY") || takeWord(u"SOME")) {
            return PredicateModifier::Any;
        }
        if (takeWord(u"ALL")) {
            return PredicateModifier::All;
        }
        return takeWord(u"NONE") ? PredicateModifier::None : PredicateModifier::Direct;
    }

    PredicateOperator readOperator() {
        for (const NamedOperator& mark : kMarks) {
            if (takeMark(mark.name)) {
                return mark.type;
            }
        }
        for (const NamedOperator& word : kWords) {
            if (takeWord(word.name)) {
                return word.type;
            }
        }
        if (token().isWord(u"MATCHES")) {
            raiseInvalidPredicate("MATCHES is not supported; LIKE is");
        }
        raiseInvalidPredicate("a comparison is missing");
    }

    bool readOptions() {
        if (!takeMark(u"[")) {
            return false;
        }
        if (!takeWord(u"C")) {
            raiseInvalidPredicate("of the options of a comparison, only [c] is supported");
        }
        expectMark(u"]");
        return true;
    }

    static void requireBounds(PredicateOperator type, const PredicateExpression& right) {
        const Value* constant = right.constantValue();
        if (type == PredicateOperator::Between && constant != nullptr) {
            const auto* bounds = constant->as<NSArray>();
            if (bounds == nullptr || bounds->count() != 2) {
                raiseInvalidPredicate("BETWEEN takes two bounds");
            }
        }
    }
};

} // namespace

Predicate parsePredicate(const NSString& format, const std::vector<Value>& arguments) {
    return Parser(format, arguments).parse();
}

} // namespace qk::internal
