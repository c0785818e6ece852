// SPDX-License-Identifier: Apache-2.0
// Each condition, and whether one object meets it.
#include "QKFoundation/platform/objects/NSPredicate.h"

#include "tests/platform/objects/InterfaceObject.h"
#include "tests/platform/values/Printing.h"

#include <gtest/gtest.h>

namespace qk {
namespace {

struct Case {
    const char* format;
    bool isMet;
};

// A value of each kind: name "en0", speed 2.5, enabled YES, since one second after 1970, no parent.
class ConditionOfAnInterface : public testing::TestWithParam<Case> {
protected:
    ConditionOfAnInterface() {
        object.name = "en0";
        object.speed = 2.5;
        object.enabled = NSNumber(true);
        object.linkActive = true;
        object.since = NSDate::dateWithTimeIntervalSince1970(1);
        object.settings = NSDictionary{{"mtu", 1500}, {"in", "x"}, {"null", NSNull{}}};
        object.addresses = {"10.0.0.1", "fe80::1"};
    }

    InterfaceObject object;
};

TEST_P(ConditionOfAnInterface, IsMetOrNot) {
    const auto predicate = NSPredicate::predicateWithFormat(text(GetParam().format));
    EXPECT_EQ(predicate->evaluateWithObject(object), GetParam().isMet) << GetParam().format;
}

constexpr Case kComparisons[] = {
    {"speed = 2.5", true},
    {"speed == 2.5e0", true},
    {"speed == +25e-1", true},
    {"2.5 = speed", true},
    {"speed != 2.5", false},
    {"speed <> 3", true},
    {"speed < 2.5", false},
    {"speed <= 2.5", true},
    {"speed =< 2", false},
    {"speed > -3", true},
    {"speed >= 3", false},
    {"speed => 2.5", true},
    {"speed > .5", true},
    {"speed BETWEEN {2, 3}", true},
    {"speed between {2.5, 2.5}", true},
    {"speed BETWEEN {3, 4}", false},
    {"speed BETWEEN {settings.mtu, 4}", false},
    {"speed BETWEEN {0, settings.mtu}", true},
    {"speed BETWEEN addresses", false},
    {"speed IN {1, 2.5}", true},
    {"speed IN {}", false},
    {"speed IN 2.5", false},
    {"speed < 18446744073709551615", true},
    {"speed < 99999999999999999999", true},
    {"since = CAST(-978307199, 'NSDate')", true},
    {"since < CAST(0, 'NSDate')", true},
    {"since < 5", false},
};
INSTANTIATE_TEST_SUITE_P(Comparisons, ConditionOfAnInterface, testing::ValuesIn(kComparisons));

constexpr Case kTexts[] = {
    {"name = 'en0'", true},
    {"name = \"en0\"", true},
    {"name = 'EN0'", false},
    {"name =[c] 'EN0'", true},
    {"name ==[c]'EN0'", true},
    {"name !=[C] 'EN0'", false},
    {"name < 'en1'", true},
    {"name <[c] 'EN1'", true},
    {"name < 'EN1'", false},
    {"name BEGINSWITH 'en'", true},
    {"name BEGINSWITH 'EN'", false},
    {"name BEGINSWITH[c] 'EN'", true},
    {"name BEGINSWITH ''", true},
    {"name ENDSWITH '0'", true},
    {"name ENDSWITH 'n'", false},
    {"name CONTAINS 'n'", true},
    {"name CONTAINS ''", false},
    {"name CONTAINS[c] 'N0'", true},
    {"'n' IN name", true},
    {"name LIKE 'e?0'", true},
    {"name LIKE 'e?'", false},
    {"name LIKE '*'", true},
    {"name LIKE '*n*'", true},
    {"name LIKE '*n'", false},
    {"name LIKE '*e*n*0*'", true},
    {"name LIKE[c] 'E*'", true},
    {"name LIKE 'e\\\\?0'", false},
    {"'e?0' LIKE 'e\\\\?0'", true},
    {"'aab' LIKE '*ab'", true},
    {"'' LIKE ''", true},
    {"'' LIKE '**'", true},
    {"'' LIKE '?'", false},
    {"'a\\'b' = \"a'b\"", true},
    {"'\\u0065n0' = name", true},
    {"'a\\tb\\\\' = 'a\tb\\\\'", true},
};
INSTANTIATE_TEST_SUITE_P(Texts, ConditionOfAnInterface, testing::ValuesIn(kTexts));

constexpr Case kAbsence[] = {
    {"parent = nil", true},
    {"parent == NULL", true},
    {"parent != nil", false},
    {"name = nil", false},
    {"nil != name", true},
    {"nil = nil", true},
    {"settings.null = nil", true},
    {"settings.missing = nil", true},
    {"settings.missing.deeper = nil", true},
    {"parent.name = nil", true},
    {"parent = YES", false},
    {"parent = NO", false},
    {"parent != YES", true},
    {"parent < 5", false},
    {"parent >= 5", false},
    {"parent BEGINSWITH 'x'", false},
    {"parent CONTAINS 'x'", false},
    {"parent LIKE '*'", false},
    {"parent IN {'x'}", false},
    {"parent IN {nil}", true},
    {"parent BETWEEN {1, 2}", false},
    {"'x' IN parent", false},
    {"ANY parent = 1", false},
    {"ALL parent = 1", true},
    {"NONE parent = 1", true},
};
INSTANTIATE_TEST_SUITE_P(Absence, ConditionOfAnInterface, testing::ValuesIn(kAbsence));

// Values of different kinds are never equal, and in no order.
constexpr Case kKinds[] = {
    {"speed = '2.5'", false},     {"speed != '2.5'", true},
    {"speed < 'x'", false},       {"speed > 'x'", false},
    {"name = 0", false},          {"name < 5", false},
    {"name BEGINSWITH 1", false}, {"speed CONTAINS 2", false},
    {"speed LIKE '2*'", false},   {"settings = 'x'", false},
    {"settings != 'x'", true},    {"settings < 5", false},
    {"settings IN {1}", false},   {"name IN {1, 2}", false},
    {"since = '1970'", false},    {"speed BETWEEN {'a', 'b'}", false},
};
INSTANTIATE_TEST_SUITE_P(Kinds, ConditionOfAnInterface, testing::ValuesIn(kKinds));

constexpr Case kBooleans[] = {
    {"enabled = YES", true},
    {"enabled = yes", true},
    {"enabled = TRUE", true},
    {"enabled = 1", true},
    {"enabled = 1.0", true},
    {"enabled = NO", false},
    {"enabled = FALSE", false},
    {"enabled != NO", true},
    {"linkActive == YES", true},
    {"builtin == false", true},
    {"enabled > NO", true},
    {"YES = TRUE", true},
    {"linkActive = YES AND builtin = YES", false},
    {"enabled = 'YES'", false},
    {"enabled == 2", false},
};
INSTANTIATE_TEST_SUITE_P(Booleans, ConditionOfAnInterface, testing::ValuesIn(kBooleans));

constexpr Case kJunctions[] = {
    {"TRUEPREDICATE", true},
    {"falsepredicate", false},
    {"NOT FALSEPREDICATE", true},
    {"NOT NOT TRUEPREDICATE", true},
    {"!FALSEPREDICATE", true},
    {"!!FALSEPREDICATE", false},
    {"TRUEPREDICATE AND FALSEPREDICATE", false},
    {"TRUEPREDICATE && TRUEPREDICATE", true},
    {"FALSEPREDICATE || TRUEPREDICATE", true},
    {"FALSEPREDICATE or FALSEPREDICATE", false},
    {"TRUEPREDICATE OR TRUEPREDICATE AND FALSEPREDICATE", true},
    {"FALSEPREDICATE AND TRUEPREDICATE OR TRUEPREDICATE", true},
    {"(TRUEPREDICATE OR TRUEPREDICATE) AND FALSEPREDICATE", false},
    {"NOT TRUEPREDICATE AND FALSEPREDICATE", false},
    {"NOT (TRUEPREDICATE AND FALSEPREDICATE)", true},
    {"NOT FALSEPREDICATE OR TRUEPREDICATE", true},
    {"NOT speed = 1 And name='en0'", true},
    {"((name = 'en0'))", true},
};
INSTANTIATE_TEST_SUITE_P(Junctions, ConditionOfAnInterface, testing::ValuesIn(kJunctions));

constexpr Case kSeveralValues[] = {
    {"addresses CONTAINS 'fe80::1'", true},
    {"'fe80::1' IN addresses", true},
    {"addresses CONTAINS 'fe80'", false},
    {"addresses = 'fe80::1'", true},
    {"'fe80::1' = addresses", true},
    {"addresses =[c] 'FE80::1'", true},
    {"addresses = 'x'", false},
    {"addresses != 'fe80::1'", false},
    {"addresses != 'x'", true},
    {"addresses = nil", false},
    {"addresses = {'10.0.0.1', 'fe80::1'}", true},
    {"addresses = {'10.0.0.1'}", false},
    {"addresses IN {'a', '10.0.0.1'}", true},
    {"addresses IN {'a'}", false},
    {"addresses BEGINSWITH '10'", false},
    {"ANY addresses BEGINSWITH '10'", true},
    {"some addresses BEGINSWITH 'x'", false},
    {"ALL addresses ENDSWITH '1'", true},
    {"ALL addresses BEGINSWITH '10'", false},
    {"NONE addresses BEGINSWITH 'x'", true},
    {"NONE addresses BEGINSWITH 'f'", false},
    {"ANY members.name = 'x'", false},
    {"ALL members.name = 'x'", true},
    {"ANY name = 'en0'", true},
    {"NOT ANY addresses = 'x'", true},
};
INSTANTIATE_TEST_SUITE_P(SeveralValues, ConditionOfAnInterface, testing::ValuesIn(kSeveralValues));

constexpr Case kKeyPaths[] = {
    {"settings.mtu = 1500", true}, {"self.name = 'en0'", true}, {"SELF.settings.mtu = 1500", true},
    {"#name = 'en0'", true},       {"#'name' = 'en0'", true},   {"settings.in = 'x'", true},
    {"#settings.in = 'x'", true},  {"name=name", true},
};
INSTANTIATE_TEST_SUITE_P(KeyPaths, ConditionOfAnInterface, testing::ValuesIn(kKeyPaths));

} // namespace
} // namespace qk
