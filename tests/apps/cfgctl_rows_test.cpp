// cfgctl rows: how a list shows a category, and wrong usage of the commands over the model.

#include "CfgctlTest.h"

#include <gmock/gmock.h>

namespace corma::testing {

namespace {

class CfgctlRows : public CfgctlTest
{
protected:
    CfgctlRows()
    {
        write("tool.ini",
              "Kop=k\n[Maat]\nTekst=x\nUit=0\nAan=1\nLeeg=\nSoort=midden\nVrij=iets\nOud=o\nVast="
              "v\n");
        write("tool.inr",
              "[Maat]\nUit=t\nAan=t\nLeeg=t\nSoort=c choices={links,midden}\n"
              "Vrij=q choices={a,b} rgb=1,2,3\nOud=o\nVast=s readonly=true\n");
        write("LanEN/tool.ind", "[Maat]\nTekst=Free\xC2\xA7text\nOud=No longer used\n");
        write("LanNL/tool.ind", "[Maat]\nTekst=Vrije tekst\n");
    }

    // The document of a run that succeeds and has nothing to tell.
    Json rows(Words arguments) const
    {
        arguments.insert(arguments.begin(), "rows");
        const ProgramResult result = run(arguments);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.err, "");
        return Json::parse(result.out);
    }

    // The rows as "image name, image name".
    std::string shown(const Words& arguments) const
    {
        std::string all;
        for (const Json& row : rows(arguments)) {
            all += (all.empty() ? "" : ", ") + row["image"].dump() + ' '
                + row["name"].get<std::string>();
        }
        return all;
    }
};

TEST_F(CfgctlRows, GiveAllKeysInTheirOrder)
{
    const std::string document
        = R"([{"image":0,"name":"Tekst","type":"String","value":"x","description":"Free text","rgb":0},)"
          R"({"image":0,"name":"Uit","type":"Yes/No","value":"No","description":"","rgb":0},)"
          R"({"image":0,"name":"Aan","type":"Yes/No","value":"Yes","description":"","rgb":0},)"
          R"({"image":0,"name":"Leeg","type":"Yes/No","value":"Yes","description":"","rgb":0},)"
          R"({"image":0,"name":"Soort","type":"Option","value":"midden","description":"","rgb":0},)"
          R"({"image":0,"name":"Vrij","type":"Option","value":"iets","description":"","rgb":197121},)"
          R"({"image":7,"name":"Oud","type":"Obsolete","value":"o","description":"No longer used",)"
          R"("rgb":0},)"
          R"({"image":8,"name":"Vast","type":"String","value":"v","description":"","rgb":0}])";
    EXPECT_EQ(run({"rows", "tool.ini", "Maat"}).out, document + "\n");
    EXPECT_EQ(json({"rows", "tool.ini", "Maat"}), document);
}

TEST_F(CfgctlRows, AreInTheLanguage)
{
    EXPECT_EQ(
        rows({"tool.ini", "Maat", "--language=19", "--search=t"}).dump(),
        R"([{"image":0,"name":"Tekst","type":"Tekst","value":"x","description":"Vrije tekst","rgb":0},)"
        R"({"image":0,"name":"Uit","type":"Ja/Nee","value":"Nee","description":"","rgb":0},)"
        R"({"image":0,"name":"Soort","type":"Optie","value":"midden","description":"","rgb":0},)"
        R"({"image":8,"name":"Vast","type":"Tekst","value":"v","description":"","rgb":0}])");
}

struct Search
{
    const char* sentence;
    Words arguments;
    const char* shown;
};

class CfgctlRowsSearch : public CfgctlRows, public ::testing::WithParamInterface<Search>
{
};

TEST_P(CfgctlRowsSearch, ShowsWhatItFinds)
{
    Words words = GetParam().arguments;
    words.insert(words.begin(), {"tool.ini", "Maat"});
    EXPECT_EQ(shown(words), GetParam().shown);
}

constexpr const char* kAllRows = "0 Tekst, 0 Uit, 0 Aan, 0 Leeg, 0 Soort, 0 Vrij, 7 Oud, 8 Vast";

// clang-format off
INSTANTIATE_TEST_SUITE_P(For, CfgctlRowsSearch, ::testing::Values(
    Search {"NothingTold",         {}, kAllRows},
    Search {"EmptyText",           {"--search", ""}, kAllRows},
    Search {"ANameInAnyCase",      {"--search", "VAST"}, "8 Vast"},
    Search {"ADescription",        {"--search", "ree text"}, "0 Tekst"},
    Search {"WhatIsNowhere",       {"--search", "zzz"}, ""},
    Search {"AValue",              {"--search", "midden"}, ""},
    Search {"TwoParts",            {"--search", "uit+USED"}, "0 Uit, 7 Oud"},
    Search {"APlusAtTheEnd",       {"--search", "zzz+"}, kAllRows},
    Search {"ThePartBehindTheLastPlus", {"--search", "uit+aan+oud"}, "7 Oud"},
    Search {"NoTextAtAll",         {"--no-search"}, ""}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

class CfgctlRowsLevels : public CfgctlRows
{
protected:
    CfgctlRowsLevels()
    {
        write("maat.ini", "[Maat]\nA0=g\nB1=g\nC2=g\nD3=g\nE4=g\nF5=g\nG6=g\nH7=g\nI8=g\n");
        write("maat.inr", "[Maat]\nH7=o\nI8=s readonly=true\n");
        write("werk/maat.ipr", "[Maat]\nB1=p\nD3=g\nF5=p\nG6=g\n");
        copyDrawing("r2000", "werk/plan.dxf");
        for (const Words& each : {Words {"[Maat]C2", "d"}, Words {"[Maat]E4", "g"},
                                  Words {"[Maat]F5", "p"}, Words {"[Maat]G6", "g"}}) {
            run({"set", "maat.ini", each[0], each[1], "--drawing=werk/plan.dxf"});
        }
    }

    std::string shownWithDrawing(Words arguments) const
    {
        arguments.insert(arguments.begin(), {"maat.ini", "Maat", "--drawing=werk/plan.dxf"});
        return shown(arguments);
    }
};

TEST_F(CfgctlRowsLevels, HaveTheirImages)
{
    EXPECT_EQ(shownWithDrawing({}), "0 A0, 1 B1, 2 C2, 3 D3, 4 E4, 5 F5, 6 G6, 7 H7, 8 I8");
    EXPECT_EQ(shown({"maat.ini", "Maat", "--project=werk/maat.ipr"}),
              "0 A0, 1 B1, 0 C2, 3 D3, 0 E4, 1 F5, 3 G6, 7 H7, 8 I8");
}

// Obsolete and read-only settings stay.
TEST_F(CfgctlRowsLevels, CanBeHidden)
{
    EXPECT_EQ(shownWithDrawing({"--hide", "global"}),
              "1 B1, 2 C2, 3 D3, 4 E4, 5 F5, 6 G6, 7 H7, 8 I8");
    EXPECT_EQ(shownWithDrawing({"--hide", "project"}), "0 A0, 2 C2, 4 E4, 5 F5, 6 G6, 7 H7, 8 I8");
    EXPECT_EQ(shownWithDrawing({"--hide", "local"}), "0 A0, 1 B1, 3 D3, 7 H7, 8 I8");
    EXPECT_EQ(shownWithDrawing({"--hide", "local,global"}), "1 B1, 3 D3, 7 H7, 8 I8");
    EXPECT_EQ(shownWithDrawing({"--hide=global,project,local,global"}), "7 H7, 8 I8");
}

class CfgctlRowsAccess : public CfgctlRows
{
protected:
    CfgctlRowsAccess()
    {
        write("tool.ini", "Vrij=1\nBeheer=2\n");
        write("tool.inr", "Beheer=s access=5,10\n");
    }

    std::string shownTo(const char* access, const char* fills) const
    {
        return shown({"tool.ini", "Algemeen", "--access", access, "--fills", fills});
    }
};

TEST_F(CfgctlRowsAccess, HidesWhatIsNotToBeSeen)
{
    EXPECT_EQ(shown({"tool.ini", "Algemeen"}), "0 Vrij");
    EXPECT_EQ(shownTo("4", "2"), "0 Vrij");
    EXPECT_EQ(shownTo("-1", "1"), "");
}

TEST_F(CfgctlRowsAccess, MakesReadOnlyFromTheSecondFillOn)
{
    EXPECT_EQ(shownTo("5", "1"), "0 Vrij, 0 Beheer");
    EXPECT_EQ(shownTo("5", "2"), "0 Vrij, 8 Beheer");
    EXPECT_EQ(shownTo("9", "3"), "0 Vrij, 8 Beheer");
    EXPECT_EQ(shownTo("10", "2"), "0 Vrij, 0 Beheer");
}

TEST_F(CfgctlRows, OfAListThatWasNeverFilledAreNone)
{
    EXPECT_EQ(run({"rows", "tool.ini", "Maat", "--fills", "0"}).out, "[]\n");
}

TEST_F(CfgctlRows, OfTheHeadStandUnderItsName)
{
    EXPECT_EQ(shown({"tool.ini", "Algemeen"}), "0 Kop");
}

TEST_F(CfgctlRows, OfACategoryThatIsNotThereAreThoseOfTheFirst)
{
    for (const char* name : {"Weg", "maat", ""}) {
        const ProgramResult result = run({"rows", "tool.ini", name});
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(
            result.out,
            R"([{"image":0,"name":"Kop","type":"String","value":"k","description":"","rgb":0}])"
            "\n");
        EXPECT_EQ(result.err,
                  std::string("cfgctl: there is no category \"") + name
                      + "\"; the rows are those of \"Algemeen\"\n");
    }
    EXPECT_EQ(run({"rows", "tool.ini", "a\nb"}).err,
              "cfgctl: there is no category \"a b\"; the rows are those of \"Algemeen\"\n");
}

class CfgctlRowsTranslated : public CfgctlRows
{
protected:
    CfgctlRowsTranslated()
    {
        write("bouw.ini",
              "TranslateDB=woorden.db3\n[Trap]\nTekst=WOOD\nSoort=WOOD\nVrij=STEEL\nEigen=bamboe\n"
              "Leeg=\nAan=0\nOud=WOOD\nVast=STEEL\n");
        write("bouw.inr",
              "[Trap]\nSoort=c choices={WOOD,STEEL}\nVrij=q choices={WOOD,STEEL}\n"
              "Eigen=q choices={WOOD}\nLeeg=c choices={WOOD}\nAan=t\nOud=o\n"
              "Vast=c choices={STEEL} readonly=true\n");
        database("woorden.db3").run(kWords);
    }

    // The rows as "name value, name value".
    std::string values(const Words& arguments) const
    {
        std::string all;
        for (const Json& row : rows(arguments)) {
            all += (all.empty() ? "" : ", ") + row["name"].get<std::string>() + ' '
                + row["value"].get<std::string>();
        }
        return all;
    }
};

// Only options are: what is a text, or was an option once, is not looked up.
TEST_F(CfgctlRowsTranslated, ShowOptionsInTheLanguage)
{
    EXPECT_EQ(values({"bouw.ini", "Trap"}),
              "Tekst WOOD, Soort Wood, Vrij Steel, Eigen bamboe, Leeg , Aan No, Oud WOOD, "
              "Vast Steel");
    EXPECT_EQ(values({"bouw.ini", "Trap", "--language=19", "--search=r"}),
              "Soort Hout, Vrij Staal");
    EXPECT_EQ(values({"bouw.ini", "Trap", "--language=7", "--search=soort"}), "Soort Holz");
    EXPECT_EQ(values({"bouw.ini", "Trap", "--language=25", "--search=soort"}), "Soort Wood");
}

TEST_F(CfgctlRowsTranslated, AreFoundByNameAndDescriptionOnly)
{
    EXPECT_EQ(values({"bouw.ini", "Trap", "--search=Steel"}), "");
}

TEST_F(CfgctlRowsTranslated, ShowTheValueOfTheProject)
{
    write("werk/bouw.ipr", "[Trap]\nSoort=STEEL\n");
    EXPECT_EQ(values({"bouw.ini", "Trap", "--project=werk/bouw.ipr", "--hide=global"}),
              "Soort Steel, Oud WOOD, Vast Steel");
}

TEST_F(CfgctlRowsTranslated, TakeTheDatabaseOfTheirOwnFile)
{
    write("map/bouw.ini", "TranslateDB=map/anders.db3\n[Trap]\nSoort=WOOD\n");
    write("map/bouw.inr", "[Trap]\nSoort=c choices={WOOD}\n");
    database("map/anders.db3")
        .run("CREATE TABLE Keys(Key TEXT,E TEXT);INSERT INTO Keys VALUES('WOOD','Timber')");
    const Words search {"Trap", "--search=soort"};
    const auto of = [&](Words words) {
        words.insert(words.end(), search.begin(), search.end());
        return values(words);
    };
    EXPECT_EQ(of({"map/bouw.ini"}), "Soort Timber");
    EXPECT_EQ(of({"map/bouw"}), "Soort Timber") << "its extension may be left out";
    EXPECT_EQ(of({pathOf("map/bouw.ini")}), "Soort Timber");
    // A lookup would ask the module's folder first.
    EXPECT_EQ(of({"--module-dir=map", "bouw.ini"}), "Soort Wood");
    // There the model has no file of that name; without an extension it is a bare name.
    write("bouw", "TranslateDB=map/anders.db3\n[Trap]\nSoort=WOOD\n");
    EXPECT_EQ(of({"bouw"}), "Soort WOOD");
}

TEST_F(CfgctlRowsTranslated, ShowAValueAsItIsStoredWhenItIsNotFound)
{
    write("bouw.ini", "[Trap]\nSoort=WOOD\n");
    EXPECT_EQ(values({"bouw.ini", "Trap"}), "Soort WOOD");
    write("bouw.ini", "TranslateDB=weg.db3\n[Trap]\nSoort=WOOD\n");
    EXPECT_EQ(values({"bouw.ini", "Trap"}), "Soort WOOD");
}

TEST_F(CfgctlRowsTranslated, AreShownWhenAStatementBreaks)
{
    write("bouw.ini", "TranslateDB=woorden.db3\n[Trap]\nSoort=O'K\nVrij=WOOD\n");
    const ProgramResult result = run({"rows", "bouw.ini", "Trap"});
    EXPECT_EQ(result.exitStatus, 0);
    const Json document = Json::parse(result.out);
    EXPECT_EQ(document[0]["value"], "O'K");
    EXPECT_EQ(document[1]["value"], "Wood");
    EXPECT_EQ(result.err,
              "Error in file xx__sqlite.cpp on line 137\n(S=" + pathOf("woorden.db3")
                  + " : prepare : SQL error or missing database, ec = 1)\n");
}

TEST_F(CfgctlRows, OfAFileThatIsMissingAreNone)
{
    const ProgramResult result = run({"rows", "weg.ini", "Maat"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "[]\n");
    EXPECT_EQ(result.err, pathOf("weg.ini") + " was not found.\n");
}

TEST_F(CfgctlRows, OfAProjectThatCannotBeOpenedAreThoseOfTheFile)
{
    const ProgramResult result = run({"rows", "tool.ini", "Algemeen", "--project", "weg/x.ipr"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(Json::parse(result.out).size(), 1U);
    EXPECT_EQ(result.err, "weg/x.ipr was not found.\n");
}

struct Wrong
{
    const char* sentence;
    Words arguments;
    const char* message; // behind "cfgctl: "
};

class CfgctlModelUsage : public CfgctlRows, public ::testing::WithParamInterface<Wrong>
{
};

TEST_P(CfgctlModelUsage, IsToldInOneLine)
{
    const ProgramResult result = run(GetParam().arguments);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, std::string("cfgctl: ") + GetParam().message + "\n");
    EXPECT_FALSE(folder.has(L"p.ipr"));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Wrong, CfgctlModelUsage, ::testing::Values(
    Wrong {"ModelWithoutAFile",      {"model"}, "FILE is required; see cfgctl model --help"},
    Wrong {"ModelOfTwoFiles",        {"model", "tool.ini", "b.ini"}, "not expected: \"b.ini\"; see cfgctl model --help"},
    Wrong {"ModelWithASearch",       {"model", "tool.ini", "--search", "x"}, "not expected: \"--search\" \"x\"; see cfgctl model --help"},
    Wrong {"AnEmptyProject",         {"model", "tool.ini", "--project", ""}, "--project is empty; pass the name of a project file"},
    Wrong {"AnEmptyProjectForRows",  {"rows", "tool.ini", "Maat", "--project", ""}, "--project is empty; pass the name of a project file"},
    Wrong {"ADrawingThatIsNotThere", {"model", "tool.ini", "--drawing", "/weg/plan.dxf"}, "/weg/plan.dxf does not exist; pass a DWG or DXF drawing to --drawing"},
    Wrong {"RowsWithoutACategory",   {"rows", "tool.ini"}, "CATEGORY is required; see cfgctl rows --help"},
    Wrong {"TwoSearches",            {"rows", "tool.ini", "Maat", "--search", "", "--no-search", "--project", "p.ipr"}, "--search and --no-search exclude each other; pass one of them"},
    Wrong {"AnUnknownLevel",         {"rows", "tool.ini", "Maat", "--hide", "drawing", "--project", "p.ipr"}, "unknown level \"drawing\"; pass global, project or local to --hide, or several with \",\" between them"},
    Wrong {"ALevelInOtherCase",      {"rows", "tool.ini", "Maat", "--hide", "global,Local"}, "unknown level \"Local\"; pass global, project or local to --hide, or several with \",\" between them"},
    Wrong {"ALevelWithABlank",       {"rows", "tool.ini", "Maat", "--hide", "global, local"}, "unknown level \" local\"; pass global, project or local to --hide, or several with \",\" between them"},
    Wrong {"NoLevel",                {"rows", "tool.ini", "Maat", "--hide", ""}, "unknown level \"\"; pass global, project or local to --hide, or several with \",\" between them"},
    Wrong {"ACommaAtTheEnd",         {"rows", "tool.ini", "Maat", "--hide", "global,"}, "unknown level \"\"; pass global, project or local to --hide, or several with \",\" between them"},
    Wrong {"NegativeFills",          {"rows", "tool.ini", "Maat", "--fills", "-1", "--project", "p.ipr"}, "--fills -1 is below 0; pass 0 or a larger number"},
    Wrong {"FillsThatAreNoNumber",   {"rows", "tool.ini", "Maat", "--fills", "twee"}, "--fills is no whole number that can be used: \"twee\"; pass one such as 7"}),
    [](const auto& row) { return row.param.sentence; });
// clang-format on

} // namespace

} // namespace corma::testing
