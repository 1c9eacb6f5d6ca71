#include "foundation/messages.h"
#include "host/variables.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>

using corma::testing::RecordingServices;

namespace {

std::wstring reportOf(const wchar_t* text, int status)
{
    RecordingServices services;
    xx_reportError(L"xx_findf.cpp", 12, text, status);
    return services.allPrinted();
}

struct StatusRow
{
    const char* sentence;
    int status;
    const wchar_t* word;
};

class ReportStatus : public testing::TestWithParam<StatusRow>
{
};

TEST_P(ReportStatus, IsTold)
{
    EXPECT_EQ(reportOf(L"what", GetParam().status),
              std::wstring(L"\nError in file xx_findf.cpp on line 12\n(what, ec = ")
                  + GetParam().word + L")");
}

INSTANTIATE_TEST_SUITE_P(Report, ReportStatus,
                         testing::Values(StatusRow {"RefusedByName", -5002, L"RTCAN"},
                                         StatusRow {"FailureByName", -5001, L"RTERROR"},
                                         StatusRow {"SuccessByName", 5100, L"RTNORM"},
                                         StatusRow {"KeywordByName", -5005, L"RTKWORD"},
                                         StatusRow {"NoStatusAsZero", 0, L"0"},
                                         StatusRow {"AnyOtherAsItsNumber", 123, L"123"},
                                         StatusRow {"ANegativeOneToo", -77, L"-77"}),
                         [](const auto& row) { return row.param.sentence; });

TEST(Report, ANullTextLeavesItsPlaceEmpty)
{
    EXPECT_EQ(reportOf(nullptr, 0), L"\nError in file xx_findf.cpp on line 12\n(, ec = 0)");
}

TEST(Report, ANumberTakesThePlaceOfTheText)
{
    RecordingServices services;
    xx_reportErrorCode(L"xx_Inifile.cpp", 3, 123, -4);
    EXPECT_EQ(services.allPrinted(), L"\nError in file xx_Inifile.cpp on line 3\n(123, ec = -4)");
}

TEST(Report, IsCutAt255Characters)
{
    const std::wstring around = reportOf(L"", 0);
    const std::size_t room = 255 - (around.size() - 1);
    EXPECT_EQ(reportOf(std::wstring(room - 1, L'x').c_str(), 0).size(), 1 + 254U);
    EXPECT_TRUE(reportOf(std::wstring(room, L'x').c_str(), 0).ends_with(L", ec = 0)"));
    const std::wstring cut = reportOf(std::wstring(room + 1, L'x').c_str(), 0);
    EXPECT_EQ(cut.size(), 1 + 255U);
    EXPECT_TRUE(cut.ends_with(L", ec = 0"));
}

TEST(UserMessage, APercentSignComesOutAsADollarSignInTheCallersBufferToo)
{
    RecordingServices services;
    wchar_t text[] = L"100% of %s";
    xx_showUserMessage(text);
    EXPECT_EQ(services.printed, (std::vector<std::wstring> {L"\n", L"100$ of $s"}));
    EXPECT_STREQ(text, L"100$ of $s");
    EXPECT_TRUE(services.alerts.empty());
}

TEST(UserMessage, DuringACommandThatHidesTheCommandLineOnlyTheFirstIsShown)
{
    RecordingServices services;
    corma::host::setVariable(L"CMDNAMES", L"PLOT");
    xx_reportError(L"a.cpp", 1, L"100%", 0);
    xx_reportError(L"a.cpp", 2, L"second", 0);
    EXPECT_EQ(services.alerts,
              std::vector<std::wstring> {L"Error in file a.cpp on line 1\n(100%, ec = 0)"});
    EXPECT_TRUE(services.printed.empty());
}

TEST(UserMessage, APrintedOneArmsTheAlertAgain)
{
    RecordingServices services;
    wchar_t text[] = L"text";
    corma::host::setVariable(L"CMDNAMES", L"3DORBIT");
    xx_showUserMessage(text);
    corma::host::setVariable(L"CMDNAMES", L"LINE");
    xx_showUserMessage(text);
    corma::host::setVariable(L"CMDNAMES", L"preview");
    xx_showUserMessage(text);
    EXPECT_EQ(services.alerts.size(), 2U);
    EXPECT_EQ(services.allPrinted(), L"\ntext");
}

TEST(UserMessage, OtherCommandsHideNothing)
{
    RecordingServices services;
    wchar_t text[] = L"text";
    for (const wchar_t* command : {L"", L"PLOTSTYLE", L"'PAN"}) {
        corma::host::setVariable(L"CMDNAMES", command);
        xx_showUserMessage(text);
    }
    EXPECT_EQ(services.printed.size(), 6U);
    EXPECT_TRUE(services.alerts.empty());
}

TEST(PrintMessage, GoesToTheCommandLineWithItsPercentSigns)
{
    RecordingServices services;
    xx_printMessage(L"%s not found", L"50%s", 0);
    EXPECT_EQ(services.printed, (std::vector<std::wstring> {L"\n", L"50%s not found"}));
}

TEST(PrintMessage, AnyOtherModeIsAnAlert)
{
    RecordingServices services;
    xx_printMessage(L"<%s>", L"a", 1);
    xx_printMessage(L"<%s>", L"b", -1);
    EXPECT_EQ(services.alerts, (std::vector<std::wstring> {L"<a>", L"<b>"}));
    EXPECT_TRUE(services.printed.empty());
}

TEST(PrintOrAlert, HasTwoModes)
{
    RecordingServices services;
    xx_printOrAlert(L"5% off", 0);
    xx_printOrAlert(L"stop", 1);
    xx_printOrAlert(L"nothing", 2);
    EXPECT_EQ(services.printed, (std::vector<std::wstring> {L"\n", L"5% off", L" "}));
    EXPECT_EQ(services.alerts, std::vector<std::wstring> {L"stop"});
}

TEST(Format, WritesIntoTheBuffer)
{
    wchar_t buffer[20];
    EXPECT_EQ(xx_format(buffer, L"%s%d%s", L"tool", 7, L".ini"), 9);
    EXPECT_STREQ(buffer, L"tool7.ini");
}

TEST(Format, HeedsItsBound)
{
    wchar_t buffer[] = L"#######";
    EXPECT_EQ(xx_formatN(buffer, 4, L"%s", L"abc"), 3);
    EXPECT_STREQ(buffer, L"abc");
    EXPECT_EQ(xx_formatN(buffer, 4, L"%s", L"wxyz"), 3);
    EXPECT_STREQ(buffer, L"wxy");
    EXPECT_EQ(buffer[4], L'#');
    EXPECT_EQ(xx_formatN(buffer, 0, L"%s", L"abc"), 0);
    EXPECT_STREQ(buffer, L"wxy");
}

} // namespace
