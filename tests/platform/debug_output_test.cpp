#include "platform/platform.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <optional>
#include <string>

namespace corma::platform {

namespace {

constexpr const char* kVariable = "CORMA_DEBUG";

// What stands on standard error with CORMA_DEBUG as given; null for not set.
class DebugOutput : public ::testing::Test
{
protected:
    DebugOutput()
    {
        if (const char* const value = std::getenv(kVariable)) {
            m_former = value;
        }
    }

    ~DebugOutput() override { set(m_former ? m_former->c_str() : nullptr); }

    static void set(const char* value)
    {
        if (value == nullptr) {
            ::unsetenv(kVariable);
        } else {
            ::setenv(kVariable, value, 1);
        }
    }

    static std::string written(const char* value, std::wstring_view text)
    {
        set(value);
        ::testing::internal::CaptureStderr();
        debugOutput(text);
        return ::testing::internal::GetCapturedStderr();
    }

private:
    std::optional<std::string> m_former;
};

TEST_F(DebugOutput, GoesToStandardErrorWhenItIsWanted)
{
    EXPECT_EQ(written("1", L"3 \u00b5s\n"), "3 \xC2\xB5s\n");
    EXPECT_TRUE(hasDebugOutput());
    EXPECT_EQ(written("0", L"text"), "text") << "set is set";
}

TEST_F(DebugOutput, GoesNowhereWhenItIsNotWanted)
{
    EXPECT_EQ(written(nullptr, L"text"), "");
    EXPECT_FALSE(hasDebugOutput());
    EXPECT_EQ(written("", L"text"), "");
    EXPECT_FALSE(hasDebugOutput());
}

} // namespace

} // namespace corma::platform
