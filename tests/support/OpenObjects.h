#pragma once

#include "host/acdb_object.h"

#include <gtest/gtest.h>

namespace corma::testing {

/// A test in which every object that is opened must be closed by its end.
class OpenObjects : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_EQ(host::openObjectCount(), 0); }

    void TearDown() override { EXPECT_EQ(host::openObjectCount(), 0); }
};

} // namespace corma::testing
