#include "foundation/at_boundary.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

using corma::testing::RecordingServices;

namespace {

TEST(Boundary, GivesTheResultOfTheBody)
{
    RecordingServices services;
    EXPECT_EQ(corma::atBoundary(L"a.cpp", 9, RTERROR, [] { return RTNORM; }), RTNORM);
    EXPECT_TRUE(services.printed.empty());
}

TEST(Boundary, TurnsWhatIsThrownIntoAReport)
{
    RecordingServices services;
    const int status = corma::atBoundary(L"a.cpp", 9, RTERROR,
                                         []() -> int { throw std::runtime_error("what"); });
    EXPECT_EQ(status, RTERROR);
    EXPECT_EQ(services.allPrinted(), L"\nError in file a.cpp on line 9\n(what, ec = 0)");
}

TEST(Boundary, StopsWhatIsNoExceptionOfTheLanguageToo)
{
    RecordingServices services;
    EXPECT_EQ(corma::atBoundary(L"a.cpp", 9, RTERROR, []() -> int { throw 7; }), RTERROR);
    EXPECT_EQ(services.allPrinted(),
              L"\nError in file a.cpp on line 9\n(unexpected failure, ec = 0)");
}

TEST(Boundary, HoldsWhenTheReportFailsAsWell)
{
    struct Throwing : corma::Services
    {
        void print(const wchar_t* /*text*/) override { throw std::runtime_error("no console"); }
    } throwing;

    corma::Services* const former = corma::setServices(&throwing);
    EXPECT_EQ(corma::atBoundary(L"a.cpp", 9, RTERROR, []() -> int { throw 7; }), RTERROR);
    corma::setServices(former);
}

TEST(Boundary, SaysInWordsThatMemoryIsShort)
{
    RecordingServices services;
    EXPECT_EQ(corma::atBoundary(L"a.cpp", 9, RTERROR, []() -> int { throw std::bad_alloc(); }),
              RTERROR);
    EXPECT_EQ(services.allPrinted(),
              L"\nError in file a.cpp on line 9\n(not enough memory, ec = 0)");
}

} // namespace
