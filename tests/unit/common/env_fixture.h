// A test fixture that owns an environment and makes models in it.
#pragma once

#include <gtest/gtest.h>

#include "zento.h"

namespace zento::test {

struct EnvFixture : ::testing::Test {
  QZenv env = nullptr;
  void SetUp() override {
    int rc = -1;
    env = QZcreateEnv(&rc);
    ASSERT_EQ(rc, 0);
    ASSERT_NE(env, nullptr);
  }
  void TearDown() override {
    if (env) {
      EXPECT_EQ(QZdeleteEnv(&env), 0);
    }
  }
  QZmodel new_model() {
    int rc = -1;
    QZmodel m = QZcreateModel(env, &rc);
    EXPECT_EQ(rc, 0);
    return m;
  }
};

// The same for parameterised tests.
template <class Param>
struct EnvParamFixture : EnvFixture, ::testing::WithParamInterface<Param> {};

}  // namespace zento::test
