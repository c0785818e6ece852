// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "tests/contracts/Subject.h"

#include <gtest/gtest.h>

/// A suite of assertions that holds for every adapter of this build.
namespace qk::tests {

class Contract : public testing::TestWithParam<Adapter> {
protected:
    Subject& subject() { return *subject_; }

private:
    std::unique_ptr<Subject> subject_ = GetParam().makeSubject();
};

inline std::string adapterName(const testing::TestParamInfo<Adapter>& tested) {
    return tested.param.name;
}

} // namespace qk::tests
