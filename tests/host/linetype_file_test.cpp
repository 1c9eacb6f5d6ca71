#include "host/host.h"
#include "host/linetype_file.h"
#include "support/OpenObjects.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"

using corma::host::LinetypeDefinition;
using corma::host::Opened;
using corma::host::parseLinetypes;
using corma::testing::CurrentFolder;
using corma::testing::OpenObjects;
using corma::testing::RecordingServices;
using corma::testing::TempFolder;

namespace {

std::wstring described(const std::vector<LinetypeDefinition>& definitions)
{
    std::wstring text;
    for (const auto& definition : definitions) {
        text += definition.name + L"|" + definition.description + L"|";
        for (const double dash : definition.dashes) {
            text += std::to_wstring(dash).substr(0, 5) + L" ";
        }
        text += definition.isSimple ? L"\n" : L"not simple\n";
    }
    return text;
}

struct LinetypeRow
{
    const char* sentence;
    const wchar_t* text;
    const wchar_t* found;
};

class LinetypeFile : public ::testing::TestWithParam<LinetypeRow>
{
};

TEST_P(LinetypeFile, IsRead)
{
    EXPECT_EQ(described(parseLinetypes(GetParam().text)), GetParam().found);
}

INSTANTIATE_TEST_SUITE_P(
    Host, LinetypeFile,
    ::testing::Values(
        LinetypeRow {"OneDefinition", L"*HALF,half a line\nA,0.5,-0.25\n",
                     L"HALF|half a line|0.500 -0.25 \n"},
        LinetypeRow {"CommentsAndBlankLines", L";; x\n\n*A,a\n;; between\nA,1,-1\n",
                     L"A|a|1.000 -1.00 \n"},
        LinetypeRow {"BlanksAndCarriageReturns", L" *A , a b \r\n a , 1 ,\t-.5 ,+0\r\n",
                     L"A|a b|1.000 -0.50 0.000 \n"},
        LinetypeRow {"NoDescription", L"*A\nA,1,-1", L"A||1.000 -1.00 \n"},
        LinetypeRow {"ANameWithoutAPattern", L"*A,a\n*B,b\nA,1", L"A|a|\nB|b|1.000 \n"},
        LinetypeRow {"TextsBetweenDashes", L"*GAS,gas\nA,.5,-.2,[\"GAS\",STANDARD,S=.1],-.25\n",
                     L"GAS|gas|0.500 -0.20 not simple\n"},
        LinetypeRow {
            "TooManyDashes", L"*M,m\nA,1,1,1,1,1,1,1,1,1,1,1,1,1\n",
            L"M|m|1.000 1.000 1.000 1.000 1.000 1.000 1.000 1.000 1.000 1.000 1.000 1.000 not "
            L"simple\n"},
        LinetypeRow {"NothingAtAll", L"", L""},
        LinetypeRow {"APatternWithoutAName", L"A,1,2\n", L""}),
    [](const auto& row) { return std::string(row.param.sentence); });

class LoadLinetype : public OpenObjects
{
protected:
    bool has(const wchar_t* name)
    {
        Opened<AcDbLinetypeTable> table;
        database.getLinetypeTable(table.out());
        return table->has(name);
    }

    Acad::ErrorStatus load(const wchar_t* name, const wchar_t* file = L"acad.lin")
    {
        return database.loadLineTypeFile(name, file);
    }

    RecordingServices services;
    TempFolder folder;
    CurrentFolder there {folder.path()};
    AcDbDatabase database;
};

TEST_F(LoadLinetype, FromTheHostsOwnFile)
{
    EXPECT_EQ(load(L"dashed"), Acad::eOk);
    EXPECT_TRUE(has(L"DASHED"));
    EXPECT_EQ(load(L"DASHED"), Acad::eDuplicateKey);
    EXPECT_EQ(load(L"Continuous"), Acad::eDuplicateKey);
    EXPECT_EQ(load(L"NOSUCH"), Acad::eUndefinedLineType);
    EXPECT_EQ(load(L"HIDDEN", L"nosuch.lin"), Acad::eFileNotFound);
    EXPECT_EQ(load(L""), Acad::eInvalidInput);
    EXPECT_EQ(load(nullptr), Acad::eInvalidInput);
    EXPECT_EQ(load(L"HIDDEN", nullptr), Acad::eInvalidInput);
}

TEST_F(LoadLinetype, AFileThatTheHostFindsGoesBeforeItsOwn)
{
    folder.write(L"acad.lin", "*MINE,mine\nA,2,-1,0,-1\n");
    EXPECT_EQ(load(L"DASHED"), Acad::eUndefinedLineType);
    EXPECT_EQ(load(L"MINE"), Acad::eOk);
    Opened<AcDbLinetypeTable> table;
    database.getLinetypeTable(table.out());
    AcDbObjectId id;
    ASSERT_EQ(table->getIdAt(L"MINE", id), Acad::eOk);
    const Opened<AcDbObject> record(id);
    const auto& groups = record->groups();
    EXPECT_EQ(groups.text(3, groups.body()), L"mine");
    EXPECT_EQ(groups.integer(73, groups.body()), 4);
    EXPECT_EQ(groups.real(40, groups.body()), 4.0);
    std::vector<double> dashes;
    for (const auto& group : groups) {
        if (group.code == 49) {
            dashes.push_back(group.real());
        }
    }
    EXPECT_EQ(dashes, (std::vector {2.0, -1.0, 0.0, -1.0}));
}

TEST_F(LoadLinetype, AllOfThemForAStar)
{
    EXPECT_EQ(load(L"CENTER"), Acad::eOk);
    EXPECT_EQ(load(L"*", L"acadiso.lin"), Acad::eOk);
    EXPECT_TRUE(has(L"BORDERX2"));
    EXPECT_TRUE(has(L"PHANTOM"));
    EXPECT_EQ(load(L"*", L"acadiso.lin"), Acad::eOk);
}

TEST_F(LoadLinetype, OneWithTextsIsRefused)
{
    folder.write(L"x.lin", "*GAS,gas\nA,.5,-.2,[\"GAS\",STANDARD],-.25\n");
    EXPECT_EQ(load(L"GAS", L"x.lin"), Acad::eNotImplementedYet);
    EXPECT_FALSE(has(L"GAS"));
    EXPECT_FALSE(database.isModified());
}

} // namespace
