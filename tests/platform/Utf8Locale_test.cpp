#include "platform/platform.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <langinfo.h>
#include <string>
#include <thread>

namespace {

using corma::platform::Utf8Locale;

std::string encoding()
{
    return ::nl_langinfo(CODESET);
}

TEST(Utf8Locale, LastsAsLongAsItsObjectAndInItsThreadOnly)
{
    const std::string former = encoding();
    ASSERT_NE(former, "UTF-8") << "a program begins in the locale of C";
    {
        const Utf8Locale locale;
        EXPECT_EQ(encoding(), "UTF-8");
        {
            const Utf8Locale inner;
            EXPECT_EQ(encoding(), "UTF-8");
        }
        EXPECT_EQ(encoding(), "UTF-8");
        std::string elsewhere;
        std::thread([&] { elsewhere = encoding(); }).join();
        EXPECT_EQ(elsewhere, former);
    }
    EXPECT_EQ(encoding(), former);
}

TEST(Utf8Locale, LeavesNumbersAsTheyAre)
{
    const Utf8Locale locale;
    EXPECT_EQ(std::strtod("2.5", nullptr), 2.5);
}

} // namespace
