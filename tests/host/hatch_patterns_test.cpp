#include "host/hatch_patterns.h"
#include "host/host.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>

using corma::host::CustomPatterns;
using corma::host::HatchPattern;
using corma::host::hatchPatternNames;
using corma::host::loadHatchPatterns;
using corma::host::parseHatchPatterns;
using corma::host::patternFile;
using corma::host::PatternFile;
using corma::host::standardPatternFile;
using corma::testing::CurrentFolder;
using corma::testing::RecordingServices;
using corma::testing::TempFolder;

namespace {

std::wstring number(double value)
{
    std::wostringstream text;
    text << value;
    return text.str();
}

std::wstring described(const PatternFile& file)
{
    std::wstring text;
    for (const HatchPattern& pattern : file.patterns) {
        text += pattern.name + L"|" + pattern.description + L"\n";
        for (const auto& family : pattern.families) {
            text += L"  " + number(family.angle) + L" at " + number(family.x) + L" "
                + number(family.y) + L" by " + number(family.along) + L" " + number(family.across);
            for (const double dash : family.dashes) {
                text += L" " + number(dash);
            }
            text += L"\n";
        }
    }
    for (const auto& defect : file.defects) {
        text += std::to_wstring(defect.line) + L": " + defect.expected + L"\n";
    }
    return text;
}

struct PatternRow
{
    const char* sentence;
    std::wstring text;
    std::wstring found;
};

class PatternText : public ::testing::TestWithParam<PatternRow>
{
};

TEST_P(PatternText, IsRead)
{
    EXPECT_EQ(described(parseHatchPatterns(GetParam().text)), GetParam().found);
}

std::wstring repeated(std::size_t count, const std::wstring& piece)
{
    std::wstring text;
    for (std::size_t i = 0; i < count; ++i) {
        text += piece;
    }
    return text;
}

INSTANTIATE_TEST_SUITE_P(
    Host, PatternText,
    ::testing::Values(
        PatternRow {"AFamilyWithoutDashes", L"*A, all a\n45, 1,2, 3,4\n",
                    L"A|all a\n  45 at 1 2 by 3 4\n"},
        PatternRow {"AFamilyWithDashes", L"*A\n0,0,0,0,1,.5,-.25,0,-.25",
                    L"A|\n  0 at 0 0 by 0 1 0.5 -0.25 0 -0.25\n"},
        PatternRow {"FamiliesOfTwoPatterns", L"*A\n0,0,0,0,1\n90,0,0,0,1\n*B,b\n0,0,0,0,2\n",
                    L"A|\n  0 at 0 0 by 0 1\n  90 at 0 0 by 0 1\nB|b\n  0 at 0 0 by 0 2\n"},
        PatternRow {"CommentsAndBlankLines", L";; x\n\n*A,a ; b\n;; between\n0,0,0,0,1 ; c\n \n",
                    L"A|a\n  0 at 0 0 by 0 1\n"},
        PatternRow {"BlanksCarriageReturnsAndAMark",
                    L"\xFEFF * A , a b \r\n 0 , 0,0\t, -1 , +1 \r\n",
                    L"A|a b\n  0 at 0 0 by -1 1\n"},
        PatternRow {"ACommaInTheDescription", L"*A,b,c\n0,0,0,0,1", L"A|b,c\n  0 at 0 0 by 0 1\n"},
        PatternRow {"ALineThatIsNoNumber", L"*A\n0,0,0,0,1\nx,0,0,0,1\n",
                    L"A|\n  0 at 0 0 by 0 1\n3: numbers with \",\" between\n"},
        PatternRow {"ACommaTooMany", L"*A\n0,0,0,0,1,\n", L"2: numbers with \",\" between\n"},
        PatternRow {"InfinityIsNoNumber", L"*A\ninf,0,0,0,1\nnan,0,0,0,1\n",
                    L"2: numbers with \",\" between\n3: numbers with \",\" between\n"},
        PatternRow {"ANumberOfTheLargestSize", L"*A\n0,1e9,-1e9,0,1\n",
                    L"A|\n  0 at 1e+09 -1e+09 by 0 1\n"},
        PatternRow {"ANumberThatIsTooLarge", L"*A\n0,1.01e9,0,0,1\n",
                    L"2: numbers with \",\" between\n"},
        PatternRow {"TooFewNumbers", L"*A\n0,0,0,1\n",
                    L"2: an angle, x, y and the step to the next line\n"},
        PatternRow {"AsManyDashesAsMayBe", L"*A\n0,0,0,0,1" + repeated(12, L",1"),
                    L"A|\n  0 at 0 0 by 0 1" + repeated(12, L" 1") + L"\n"},
        PatternRow {"ADashTooMany", L"*A\n0,0,0,0,1" + repeated(13, L",1"),
                    L"2: at most 12 dashes\n"},
        PatternRow {"LinesOnOneAnother", L"*A\n0,0,0,1,0\n", L"2: a distance between the lines\n"},
        PatternRow {"LinesOfTheLeastDistance", L"*A\n0,0,0,1,-1e-9\n",
                    L"A|\n  0 at 0 0 by 1 -1e-09\n"},
        PatternRow {"LinesTooNear", L"*A\n0,0,0,1,0.9e-9\n", L"2: a distance between the lines\n"},
        PatternRow {"DotsWithoutGaps", L"*A\n0,0,0,0,1,0,0\n", L"2: dashes with a length\n"},
        PatternRow {"ANameWithoutLines", L"*A\n\n*B\n0,0,0,0,1\n*C",
                    L"B|\n  0 at 0 0 by 0 1\n1: lines below the name of a pattern\n"
                    L"5: lines below the name of a pattern\n"},
        PatternRow {"LinesWithoutAName", L"0,0,0,0,1\n*A\n0,0,0,0,1\n",
                    L"A|\n  0 at 0 0 by 0 1\n1: the name of a pattern\n"},
        PatternRow {"AnEmptyNameTakesItsLinesWithIt", L"*A\n0,0,0,0,1\n*,a\n90,0,0,0,1\n",
                    L"A|\n  0 at 0 0 by 0 1\n3: a name of 1 to 255 characters\n"},
        PatternRow {"ANameOfTheLargestSize", L"*" + std::wstring(255, L'a') + L"\n0,0,0,0,1",
                    std::wstring(255, L'a') + L"|\n  0 at 0 0 by 0 1\n"},
        PatternRow {"ANameThatIsTooLong", L"*" + std::wstring(256, L'a') + L"\n0,0,0,0,1",
                    L"1: a name of 1 to 255 characters\n"},
        PatternRow {"ALineOfTheLargestSize", L"*A," + std::wstring(997, L'a') + L"\n0,0,0,0,1",
                    L"A|" + std::wstring(997, L'a') + L"\n  0 at 0 0 by 0 1\n"},
        PatternRow {"ALineThatIsTooLong", L"*A\n0,0,0,0,1\n;" + std::wstring(1000, L'a') + L"\n",
                    L"A|\n  0 at 0 0 by 0 1\n3: a line of at most 1000 characters\n"},
        PatternRow {"NothingAtAll", L"", L""}),
    [](const auto& row) { return std::string(row.param.sentence); });

TEST(PatternFiles, HaveNoMoreThanAThousandLinesInAPattern)
{
    const std::wstring family = L"0,0,0,0,1\n";
    const auto most = parseHatchPatterns(L"*A\n" + repeated(1000, family));
    EXPECT_EQ(most.patterns.at(0).families.size(), 1000U);
    EXPECT_TRUE(most.defects.empty());
    const auto more = parseHatchPatterns(L"*A\n" + repeated(1001, family));
    EXPECT_EQ(more.patterns.at(0).families.size(), 1000U);
    ASSERT_EQ(more.defects.size(), 1U);
    EXPECT_EQ(more.defects[0].line, 1002U);
    EXPECT_EQ(more.defects[0].expected, L"at most 1000 lines in a pattern");
}

TEST(PatternFiles, RememberNoMoreThanAHundredDefects)
{
    EXPECT_EQ(parseHatchPatterns(L"*A\n" + repeated(100, L"x\n")).defects.size(), 100U);
    EXPECT_EQ(parseHatchPatterns(L"*A\n" + repeated(101, L"x\n")).defects.size(), 100U);
}

// --- names for a list ----------------------------------------------------------------------------

struct NamesRow
{
    const char* sentence;
    std::wstring text;
    std::vector<std::wstring> names;
};

void PrintTo(const NamesRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class PatternNames : public ::testing::TestWithParam<NamesRow>
{
};

TEST_P(PatternNames, AreThoseOfTheLinesWithAStar)
{
    EXPECT_EQ(hatchPatternNames(GetParam().text), GetParam().names);
}

INSTANTIATE_TEST_SUITE_P(
    Host, PatternNames,
    ::testing::Values(
        NamesRow {"InTheOrderOfTheFile", L"*B, b\n0,0,0,0,1\n*A, a\n0,0,0,0,1\n", {L"B", L"A"}},
        NamesRow {"WithoutLinesBelowThem", L"*A, a\n*B, b\n", {L"A", L"B"}},
        NamesRow {"WithoutAComma", L"*A\n*B b\n", {L"A", L"B b"}},
        NamesRow {"OfCarriageReturns", L"*A\r\n0,0,0,0,1\r\n*B, b\r\n*C", {L"A", L"B", L"C"}},
        NamesRow {"BehindAMark", L"\xFEFF*A, a\n", {L"A"}},
        NamesRow {"TheSameNameTwice", L"*A, a\n*B\n*A, again\n", {L"A", L"B", L"A"}},
        NamesRow {"InTheCaseOfTheFile", L"*ansi31, a\n*ANSI31\n", {L"ansi31", L"ANSI31"}},
        NamesRow {"BlanksBelongToThem", L"* A , a\n", {L" A "}},
        NamesRow {"AnEmptyName", L"*, a\n*\n", {L"", L""}},
        NamesRow {"AStarFurtherOnIsNone", L" *A\n;*B\n0,*C\n", {}},
        NamesRow {"AsLongAsMayBe", L"*1234567890123456789, a", {L"1234567890123456789"}},
        NamesRow {"OneCharacterTooLong", L"*12345678901234567890, a", {L"1234567890123456789"}},
        NamesRow {"CutBeforeAComma", L"*" + std::wstring(300, L'x'), {std::wstring(19, L'x')}},
        NamesRow {"EmptyLines", L"\n\r\n*A\n\n", {L"A"}}, NamesRow {"NothingAtAll", L"", {}}),
    [](const auto& row) { return std::string(row.param.sentence); });

// --- what there is to choose ---------------------------------------------------------------------

class LoadPatterns : public ::testing::Test
{
protected:
    static std::wstring names(CustomPatterns custom = CustomPatterns::hidden)
    {
        std::wstring text;
        for (const auto& pattern : loadHatchPatterns(custom)) {
            text += pattern.name + L" ";
        }
        return text;
    }

    static void setMeasurement(short value)
    {
        resbuf variable {};
        variable.restype = RTSHORT;
        variable.resval.rint = value;
        ASSERT_EQ(acedSetVar(L"MEASUREMENT", &variable), RTNORM);
    }

    RecordingServices services;
    TempFolder folder;
    CurrentFolder there {folder.path()};
};

TEST_F(LoadPatterns, FromTheHostsOwnFileInTheUnitsOfTheDrawing)
{
    setMeasurement(0);
    const auto imperial = loadHatchPatterns(CustomPatterns::hidden);
    setMeasurement(1);
    const auto metric = loadHatchPatterns(CustomPatterns::hidden);
    ASSERT_EQ(imperial.size(), 17U);
    ASSERT_EQ(metric.size(), imperial.size());
    EXPECT_TRUE(imperial[0].isSolid());
    EXPECT_TRUE(std::none_of(imperial.begin() + 1, imperial.end(),
                             [](const auto& pattern) { return pattern.isSolid(); }));
    for (std::size_t i = 0; i < metric.size(); ++i) {
        EXPECT_EQ(metric[i].name, imperial[i].name);
        EXPECT_NE(metric[i].description, L"") << i;
        ASSERT_EQ(metric[i].families.size(), imperial[i].families.size());
        EXPECT_NEAR(metric[i].families[0].across, 25.4 * imperial[i].families[0].across, 1e-5);
    }
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(LoadPatterns, AFileThatTheHostFindsGoesBeforeItsOwn)
{
    folder.write(L"acadiso.pat", "*MINE,mine\n0,0,0,0,1\n*mine,again\n0,0,0,0,2\n");
    setMeasurement(2);
    EXPECT_EQ(names(), L"MINE ");
    EXPECT_TRUE(services.printed.empty());
    setMeasurement(0);
    EXPECT_TRUE(names().starts_with(L"SOLID "));
}

TEST_F(LoadPatterns, DefectsOfAFileAreToldOfOnce)
{
    const auto path = folder.write(L"acadiso.pat", "*A\n0,0,0,0,1\nx\n*B\n");
    EXPECT_EQ(names(), L"A ");
    EXPECT_EQ(services.allPrinted(),
              L"\nError in file " + path
                  + L" on line 3: expected numbers with \",\" between (and 1 more)");
}

TEST_F(LoadPatterns, CustomOnesHaveFilesOfTheirOwnInTheSupportFolders)
{
    folder.write(L"acadiso.pat", "*A\n0,0,0,0,1\n");
    folder.write(L"one/Waves.PAT", "*waves,w\n0,0,0,0,1\n*other\n0,0,0,0,1\n");
    folder.write(L"one/acad.pat", "*acad\n0,0,0,0,1\n");
    folder.write(L"one/a.pat", "*a\n0,0,0,0,1\n");
    folder.write(L"one/c.txt", "*c\n0,0,0,0,1\n");
    folder.write(L"two/b.pat", "*b\n0,0,0,0,1\n");
    services.variables[L"ACAD"]
        = folder.path(L"one") + L";" + folder.path(L"none") + L";" + folder.path(L"two");
    EXPECT_EQ(names(), L"A ");
    EXPECT_EQ(names(CustomPatterns::shown), L"A waves b ");
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(LoadPatterns, ACustomFileWithoutItsPatternIsToldOf)
{
    const auto path = folder.write(L"one/b.pat", "*x\n0,0,0,0,1\n");
    folder.write(L"acadiso.pat", "*A\n0,0,0,0,1\n");
    services.variables[L"ACAD"] = folder.path(L"one");
    EXPECT_EQ(names(CustomPatterns::shown), L"A ");
    EXPECT_EQ(services.allPrinted(),
              L"\nError in file " + path + L" on line 1: expected a pattern of the name b");
}

// --- one file ------------------------------------------------------------------------------------

using StandardPatterns = LoadPatterns;

TEST_F(StandardPatterns, AreMetricUnlessTheMeasurementIsNot)
{
    EXPECT_STREQ(standardPatternFile(), L"acadiso.pat") << "without a drawing";
    setMeasurement(0);
    EXPECT_STREQ(standardPatternFile(), L"acad.pat");
    for (const short measurement : {short {1}, short {2}, short {-1}}) {
        setMeasurement(measurement);
        EXPECT_STREQ(standardPatternFile(), L"acadiso.pat") << measurement;
    }
}

TEST_F(StandardPatterns, GoByTheDrawing)
{
    ASSERT_TRUE(corma::newDocument(folder.path(L"h.dxf").c_str()));
    setMeasurement(0);
    EXPECT_STREQ(standardPatternFile(), L"acad.pat");
    ASSERT_TRUE(corma::newDocument(folder.path(L"i.dxf").c_str()));
    setMeasurement(1);
    EXPECT_STREQ(standardPatternFile(), L"acadiso.pat");
}

TEST_F(StandardPatterns, AreFoundBeforeTheHostsOwn)
{
    const auto own = patternFile(L"acad.pat");
    ASSERT_TRUE(own);
    EXPECT_EQ(own->path, L"acad.pat");
    EXPECT_EQ(hatchPatternNames(own->text).size(), 17U);
    const std::wstring path = folder.write(L"acad.pat", "*MINE, mine\n0,0,0,0,1\n");
    const auto found = patternFile(L"acad.pat");
    ASSERT_TRUE(found);
    EXPECT_EQ(found->path, path);
    EXPECT_EQ(hatchPatternNames(found->text), std::vector<std::wstring> {L"MINE"});
}

TEST_F(StandardPatterns, OfAFileThatCannotBeReadAreNone)
{
    EXPECT_FALSE(patternFile(L"none.pat"));
    EXPECT_FALSE(patternFile(folder.makeFolder(L"acad.pat")));
    EXPECT_TRUE(services.printed.empty());
    EXPECT_TRUE(services.boxes.empty());
}

} // namespace
