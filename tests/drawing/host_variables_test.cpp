// System variables of the host, and the end of commands that wait for input.

#include "AttributeTest.h"
#include "drawing/host_variables.h"
#include "host/host.h"
#include "host/variables.h"
#include "platform/text.h"
#include "support/CommandRecorder.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>

namespace corma::testing {

namespace {

class HostVariables : public AttributeTest
{
protected:
    HostVariables()
    {
        BlockDrawing drawing;
        open(drawing);
    }

    static std::string text(const wchar_t* name)
    {
        std::array<wchar_t, 40> buffer {};
        EXPECT_EQ(xx_get_variable(name, {RTSTR, buffer.data(), buffer.size()}, 1), RTNORM);
        return toUtf8(buffer.data());
    }

    static int number(const wchar_t* name)
    {
        std::int32_t value = 0;
        EXPECT_EQ(xx_get_variable(name, {RTSHORT, &value}, 1), RTNORM);
        return value;
    }
};

// --- setting and getting -------------------------------------------------------------------------

TEST_F(HostVariables, KeepANumber)
{
    const double scale = 2.5;
    EXPECT_EQ(xx_set_variable(L"LTSCALE", RTREAL, &scale), RTNORM);
    double read = 0;
    EXPECT_EQ(xx_get_variable(L"ltscale", {RTREAL, &read}, 1), RTNORM);
    EXPECT_EQ(read, 2.5);
}

TEST_F(HostVariables, KeepAShortNumberThatIsPassedAsALongOne)
{
    const std::int32_t echo = -3;
    EXPECT_EQ(xx_set_variable(L"CMDECHO", RTSHORT, &echo), RTNORM);
    EXPECT_EQ(number(L"CMDECHO"), -3);
}

TEST_F(HostVariables, KeepAText)
{
    EXPECT_EQ(xx_set_variable(L"CLAYER", RTSTR, L"Gevel"), RTNORM);
    EXPECT_EQ(text(L"CLAYER"), "Gevel");
}

TEST_F(HostVariables, CutATextThatIsTooLong)
{
    EXPECT_EQ(xx_set_variable(L"CLAYER", RTSTR, L"Gevel"), RTNORM);
    std::array<wchar_t, 4> buffer {};
    EXPECT_EQ(xx_get_variable(L"CLAYER", {RTSTR, buffer.data(), buffer.size()}, 1), RTNORM);
    EXPECT_STREQ(buffer.data(), L"Gev");
}

TEST_F(HostVariables, KeepAPoint)
{
    const std::array<double, 3> base = {1, -2, 3};
    EXPECT_EQ(xx_set_variable(L"INSBASE", RT3DPOINT, base.data()), RTNORM);
    std::array<double, 3> read {};
    EXPECT_EQ(xx_get_variable(L"INSBASE", {RT3DPOINT, read.data()}, 1), RTNORM);
    EXPECT_EQ(read, base);
}

TEST_F(HostVariables, RefuseATypeThatNoVariableHas)
{
    const std::int32_t value = 0;
    for (const short type :
         std::initializer_list<short> {0, 5004, 5006, 5007, 5016, 5017, 5019, 8}) {
        EXPECT_EQ(xx_set_variable(L"CMDECHO", type, &value), RTCAN) << type;
    }
    EXPECT_EQ(number(L"CMDECHO"), 1);
    EXPECT_EQ(printed(), "");
}

TEST_F(HostVariables, RefuseTheTypeOfAnother)
{
    const std::array<double, 3> point {};
    const std::int32_t whole = 0;
    EXPECT_EQ(xx_set_variable(L"CMDECHO", RTREAL, point.data()), RTERROR);
    EXPECT_EQ(xx_set_variable(L"CMDECHO", RTLONG, &whole), RTERROR);
    EXPECT_EQ(xx_set_variable(L"INSBASE", RTPOINT, point.data()), RTERROR);
    EXPECT_EQ(xx_set_variable(L"CMDNAMES", RTSTR, L"x"), RTERROR);
    EXPECT_EQ(xx_set_variable(L"NOSUCH", RTSHORT, &whole), RTERROR);
    EXPECT_EQ(number(L"CMDECHO"), 1);
    EXPECT_FALSE(isDocumentModified());
}

TEST_F(HostVariables, TellAWrongTypeWhenThatIsWanted)
{
    double real = 7;
    EXPECT_EQ(xx_get_variable(L"CMDECHO", {RTREAL, &real}, 0), RTCAN);
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(xx_get_variable(L"CMDECHO", {RTREAL, &real}, 1), RTCAN);
    EXPECT_EQ(xx_get_variable(L"CLAYER", {RTREAL, &real}, 1), RTCAN);
    EXPECT_EQ(printed(),
              failure("xx_assign_value2", 41, "ASSIGN bad type", "5003")
                  + failure("xx_assign_value2", 41, "ASSIGN bad type", "5005"));
    EXPECT_EQ(real, 7);
}

TEST_F(HostVariables, TellNothingOfAnUnknownName)
{
    double real = 7;
    EXPECT_EQ(xx_get_variable(L"NOSUCH", {RTREAL, &real}, 1), RTERROR);
    EXPECT_EQ(real, 7);
    EXPECT_EQ(printed(), "");
}

// --- quiet commands ------------------------------------------------------------------------------

TEST_F(HostVariables, AreQuietWhileTheGuardLives)
{
    const std::int32_t former = 4;
    ASSERT_EQ(xx_set_variable(L"CMDECHO", RTSHORT, &former), RTNORM);
    {
        const QuietCommands quiet;
        EXPECT_EQ(number(L"CMDECHO"), 0);
        {
            const QuietCommands within;
            EXPECT_EQ(number(L"CMDECHO"), 0);
        }
        EXPECT_EQ(number(L"CMDECHO"), 0);
    }
    EXPECT_EQ(number(L"CMDECHO"), 4);
}

// --- the end of commands -------------------------------------------------------------------------

class FinishCommand : public HostVariables
{
protected:
    // A command that takes some Enters to its end.
    void start(const wchar_t* name, int enters)
    {
        host::setVariable(L"CMDNAMES", name);
        commands.instead = [left = enters](const host::CommandArguments&) mutable {
            if (--left <= 0) {
                host::setVariable(L"CMDNAMES", L"");
            }
            return RTNORM;
        };
    }

    CommandRecorder commands;
};

TEST_F(FinishCommand, SendsNothingWhileNothingRuns)
{
    EXPECT_EQ(xx_finish_command(L"ATTSYNC"), RTNORM);
    EXPECT_EQ(xx_finish_command(nullptr), RTNORM);
    EXPECT_EQ(commands.sent(), "");
}

TEST_F(FinishCommand, SendsEntersUntilTheCommandIsOver)
{
    start(L"ATTSYNC", 3);
    EXPECT_EQ(xx_finish_command(L"ATTSYNC"), RTNORM);
    EXPECT_EQ(commands.sent(), "1:\n1:\n1:\n");
    EXPECT_EQ(text(L"CMDNAMES"), "");
}

struct RunningRow
{
    const char* sentence;
    const wchar_t* running;
    const wchar_t* command;
    bool isFinished;
};

class RunningCommands : public FinishCommand, public ::testing::WithParamInterface<RunningRow>
{
};

TEST_P(RunningCommands, AreFinishedWhenTheirNameFits)
{
    start(GetParam().running, 1);
    EXPECT_EQ(xx_finish_command(GetParam().command), RTNORM);
    EXPECT_EQ(commands.sent(), GetParam().isFinished ? "1:\n" : "");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(FinishCommand, RunningCommands, ::testing::Values(
    RunningRow {"TheUsualOneIsForNull", L"INSERT", nullptr, true},
    RunningRow {"AnotherOneIsNotForNull", L"ATTSYNC", nullptr, false},
    RunningRow {"OtherCaseFits", L"insert", L"Insert", true},
    RunningRow {"APatternFits", L"-INSERT", L"*INSERT", true},
    RunningRow {"AlternativesFit", L"ATTSYNC", L"INSERT,ATTSYNC", true},
    RunningRow {"APartDoesNotFit", L"-INSERT", L"INSERT", false}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(FinishCommand, GivesUpWhenTheEnterIsRefused)
{
    start(L"INSERT", 1);
    commands.instead = [](const host::CommandArguments&) { return RTERROR; };
    EXPECT_EQ(xx_finish_command(nullptr), RTERROR);
    EXPECT_EQ(commands.sent(), "1:\n");
}

TEST_F(FinishCommand, EndsWhatTheHostShowsAsRunning)
{
    host::setVariable(L"CMDNAMES", L"INSERT");
    EXPECT_EQ(xx_finish_command(nullptr), RTNORM);
    EXPECT_EQ(commands.sent(), "1:\n");
    EXPECT_EQ(text(L"CMDNAMES"), "");
}

} // namespace

} // namespace corma::testing
