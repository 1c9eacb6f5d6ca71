#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "platform/text.h"
#include "settings/SettingsTest.h"
#include "settings/model_start.h"
#include "settings/texts.h"

#include <cstdlib>

using corma::StartedModel;
using corma::startModel;
using corma::testing::CurrentFolder;
using corma::testing::SettingsTest;
using corma::testing::TempFolder;
using corma::testing::valuesOf;

namespace {

// --- names beside a file -------------------------------------------------------------------------

struct NameRow
{
    const char* sentence;
    const wchar_t* file;
    const wchar_t* definitions;
    const wchar_t* descriptions;
    const wchar_t* project;
};

void PrintTo(const NameRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class NamesBesideAFile : public ::testing::TestWithParam<NameRow>
{
};

TEST_P(NamesBesideAFile, AreMadeByPosition)
{
    const FileNameSet names = FileNameSet::of(L"/cfg/", GetParam().file, 19);
    EXPECT_EQ(names.fileName, GetParam().file);
    EXPECT_EQ(names.definitionsName, GetParam().definitions);
    EXPECT_EQ(names.descriptionsName, GetParam().descriptions);
    EXPECT_EQ(names.projectName, GetParam().project);
    EXPECT_EQ(names.globalFolder, L"/cfg/");
    EXPECT_EQ(names.projectFolder, L"/cfg/");
    EXPECT_EQ(names.drawingName, L"");
    EXPECT_EQ(names.language, 19);
}

INSTANTIATE_TEST_SUITE_P(
    FileNameSet, NamesBesideAFile,
    ::testing::Values(NameRow {"OfAnIniFile", L"tool.ini", L"tool.inr", L"tool.ind", L"tool.ipr"},
                      NameRow {"OfAnotherExtension", L"a.cfg", L"a.cfr", L"a.cfd", L"a.cpr"},
                      NameRow {"InCapitals", L"A.INI", L"A.INr", L"A.INd", L"A.Ipr"},
                      NameRow {"WithoutAnExtension", L"settings", L"settingr", L"settingd",
                               L"settinpr"},
                      NameRow {"OfTwoLetters", L"ab", L"ar", L"ad", L"pr"},
                      NameRow {"OfOneLetter", L"a", L"r", L"d", L"pr"},
                      NameRow {"OfNone", L"", L"", L"", L""}),
    [](const auto& row) { return row.param.sentence; });

// --- names as callers give them ------------------------------------------------------------------

class NamesFor : public SettingsTest
{
protected:
    /// The folder and the name; "~" is the current folder.
    std::string split(const std::wstring& file)
    {
        const CurrentFolder there(folder.path());
        const FileNameSet names = corma::namesFor(file, 9);
        EXPECT_EQ(names.projectFolder, names.globalFolder);
        return homely(corma::toUtf8(names.globalFolder) + " " + corma::toUtf8(names.fileName) + " "
                      + corma::toUtf8(names.projectName));
    }
};

TEST_F(NamesFor, AFileInAFolderAreCutAtTheLastSeparator)
{
    EXPECT_EQ(split(L"/a/b/settings.ini"), "/a/b/ settings.ini settings.ipr");
    EXPECT_EQ(split(L"a/settings.ini"), "a/ settings.ini settings.ipr");
    EXPECT_EQ(split(L"/settings.ini"), "/ settings.ini settings.ipr");
    EXPECT_EQ(split(L"a\\b/c\\settings.ini"), "a/b/c/ settings.ini settings.ipr");
    EXPECT_EQ(split(L"a/settings.cfg"), "a/ settings.cfg settings.cpr");
}

TEST_F(NamesFor, AFileInAFolderGetAnExtensionWhenTheyHaveNoDot)
{
    EXPECT_EQ(split(L"a/b/settings"), "a/b/ settings.ini settings.ipr");
    EXPECT_EQ(split(L"a.b/settings"), "a.b/ settings settinpr") << "a dot in the folder counts";
    EXPECT_EQ(split(L"a/settings."), "a/ settings. settingpr");
}

TEST_F(NamesFor, ABareNameAreOfTheCurrentFolderAsItStands)
{
    EXPECT_EQ(split(L"settings"), "~/ settings settinpr");
    EXPECT_EQ(split(L"settings.ini"), "~/ settings.ini settings.ipr");
}

TEST_F(NamesFor, ABareNameHaveOneSeparatorInTheRootToo)
{
    const CurrentFolder root(L"/");
    EXPECT_EQ(corma::namesFor(L"settings", 9).globalFolder, L"/");
}

// --- starts --------------------------------------------------------------------------------------

class ModelStart : public SettingsTest
{
protected:
    void SetUp() override
    {
        SettingsTest::SetUp();
        ini = folder.write(L"cfg/tool.ini", "X=G\n");
        folder.makeFolder(L"drawings");
    }

    AcApDocument* document(const std::wstring& name)
    {
        EXPECT_TRUE(corma::newDocument(name.c_str()));
        return acDocManagerPtr()->curDocument();
    }

    static void store(const wchar_t* ident, const wchar_t* value)
    {
        ASSERT_EQ(corma::writeToDrawing(L"tool.ini", L"", ident, value, nullptr), Acad::eOk);
    }

    /// The project folder and name; the folder is "~".
    std::string projectOf(const StartedModel& started)
    {
        return homely(corma::toUtf8(started.fileNames.projectFolder) + " "
                      + corma::toUtf8(started.fileNames.projectName));
    }

    /// The settings of the head.
    static std::string settingsOf(const StartedModel& started)
    {
        const std::string text = valuesOf(*started.model);
        return text.substr(text.find('\n') + 1);
    }

    std::wstring ini;
};

TEST_F(ModelStart, LoadsTheGlobalLevelAlone)
{
    folder.write(L"cfg/tool.ipr", "X=P\n");
    const StartedModel started = startModel({.iniFile = ini});
    EXPECT_EQ(settingsOf(started), "  X=G\n");
    EXPECT_FALSE(started.model->projectMode);
    EXPECT_FALSE(started.model->localMode);
    EXPECT_FALSE(started.projectFailed);
    EXPECT_EQ(started.database, nullptr);
    EXPECT_EQ(projectOf(started), "~/cfg/ tool.ipr");
}

TEST_F(ModelStart, TheLanguageIsThatOfDescriptionsAndTexts)
{
    folder.write(L"cfg/LanNL/tool.ind", "X=tekst\n");
    const StartedModel started = startModel({.iniFile = ini, .language = 19});
    EXPECT_EQ(started.fileNames.language, 19);
    EXPECT_EQ(corma::textLanguage(), 19);
    EXPECT_EQ((*started.model)[0].description, L"Algemene instellingen");
    EXPECT_EQ((*started.model)[0].settings()[0].longDescription(), L"tekst");
}

TEST_F(ModelStart, AFileThatIsMissingIsToldAndTheModelIsEmpty)
{
    const StartedModel started = startModel({.iniFile = folder.path(L"cfg/none")});
    EXPECT_TRUE(started.model->empty());
    EXPECT_EQ(boxes(), "~/cfg/none.ini was not found.\n");
}

TEST_F(ModelStart, ABareNameIsReadAsItStands)
{
    const CurrentFolder there(folder.path(L"cfg"));
    EXPECT_TRUE(startModel({.iniFile = L"tool"}).model->empty());
    EXPECT_EQ(boxes(), "~/cfg/tool was not found.\n");
    EXPECT_EQ(settingsOf(startModel({.iniFile = L"tool.ini"})), "  X=G\n");
}

// --- with a project file -------------------------------------------------------------------------

TEST_F(ModelStart, AProjectFileIsLoadedByItsName)
{
    const StartedModel started
        = startModel({.iniFile = ini, .projectFile = folder.write(L"house/garden.ipr", "X=P\n")});
    EXPECT_EQ(settingsOf(started), "  X=P (project; global G)\n");
    EXPECT_TRUE(started.model->projectMode);
    EXPECT_FALSE(started.model->localMode);
    EXPECT_FALSE(started.projectFailed);
    EXPECT_EQ(projectOf(started), "~/house/ garden.ipr");
}

TEST_F(ModelStart, AProjectFileThatIsMissingIsMade)
{
    folder.makeFolder(L"house");
    const StartedModel started
        = startModel({.iniFile = ini, .projectFile = folder.path(L"house/new.ipr")});
    EXPECT_EQ(settingsOf(started), "  X=G\n");
    EXPECT_TRUE(started.model->projectMode);
    EXPECT_TRUE(folder.has(L"house/new.ipr"));
}

TEST_F(ModelStart, AProjectFileWithoutADotIsReadAsItStandsAndWrittenWithAnExtension)
{
    folder.write(L"house/garden.ipr", "X=other\n");
    const StartedModel started
        = startModel({.iniFile = ini, .projectFile = folder.write(L"house/garden", "X=P\n")});
    EXPECT_EQ(settingsOf(started), "  X=P (project; global G)\n");
    EXPECT_EQ(projectOf(started), "~/house/ garden.ipr");
}

TEST_F(ModelStart, ABareProjectFileIsInTheCurrentFolder)
{
    folder.write(L"house/garden", "X=P\n");
    const CurrentFolder there(folder.path(L"house"));
    const StartedModel started = startModel({.iniFile = ini, .projectFile = L"garden"});
    EXPECT_EQ(settingsOf(started), "  X=P (project; global G)\n");
    EXPECT_EQ(projectOf(started), "~/house/ garden.ipr");
}

TEST_F(ModelStart, AProjectFileMayHaveBothSeparators)
{
    folder.write(L"house/sub/garden.prj", "X=P\n");
    const StartedModel started
        = startModel({.iniFile = ini, .projectFile = folder.path(L"house\\sub\\garden.prj")});
    EXPECT_EQ(settingsOf(started), "  X=P (project; global G)\n");
    EXPECT_EQ(projectOf(started), "~/house/sub/ garden.prj");
}

TEST_F(ModelStart, AProjectFileThatCannotBeMadeIsTold)
{
    const StartedModel started
        = startModel({.iniFile = ini, .projectFile = folder.path(L"none/garden.ipr")});
    EXPECT_TRUE(started.projectFailed);
    EXPECT_TRUE(started.model->projectMode);
    EXPECT_EQ(settingsOf(started), "  X=G\n");
    EXPECT_EQ(boxes(), "~/none/garden.ipr was not found.\n");
    EXPECT_EQ(services.icons, std::vector {corma::MessageIcon::exclamation});
}

// --- with a document -----------------------------------------------------------------------------

TEST_F(ModelStart, ADocumentHasItsLevelLoaded)
{
    AcApDocument* const house = document(folder.path(L"drawings/house.dxf"));
    store(L"X", L"D");
    const StartedModel started = startModel({.iniFile = ini, .document = house});
    EXPECT_EQ(settingsOf(started), "  X=D (drawing; global G; project none)\n");
    EXPECT_TRUE(started.model->localMode);
    EXPECT_FALSE(started.model->projectMode) << "there is no project file";
    EXPECT_FALSE(folder.has(L"drawings/tool.ipr")) << "a start makes none";
    EXPECT_EQ(started.database, house->database());
    EXPECT_EQ(started.fileNames.drawingName, L"house.dxf");
    EXPECT_EQ(projectOf(started), "~/drawings/ tool.ipr");
}

TEST_F(ModelStart, ADocumentHasTheProjectFileOfItsFolderBelowItsLevel)
{
    folder.write(L"drawings/tool.ipr", "X=P\nY=Q\n");
    AcApDocument* const house = document(folder.path(L"drawings/house.dxf"));
    store(L"X", L"D");
    const StartedModel started = startModel({.iniFile = ini, .document = house});
    EXPECT_EQ(settingsOf(started),
              "  X=D (drawing; global G; project P)\n  Y=Q (project; global none)\n");
    EXPECT_TRUE(started.model->localMode);
    EXPECT_TRUE(started.model->projectMode);
}

TEST_F(ModelStart, ADocumentGoesBeforeTheProjectFile)
{
    const StartedModel started
        = startModel({.iniFile = ini,
                      .projectFile = folder.write(L"house/garden.ipr", "X=P\n"),
                      .document = document(folder.path(L"drawings/house.dxf"))});
    EXPECT_EQ(settingsOf(started), "  X=G\n");
    EXPECT_FALSE(started.model->projectMode);
    EXPECT_EQ(projectOf(started), "~/drawings/ tool.ipr");
}

TEST_F(ModelStart, TheProjectFileBesideTheConfigurationFileIsNotTheDocuments)
{
    folder.write(L"cfg/tool.ipr", "X=P\n");
    const StartedModel started
        = startModel({.iniFile = ini, .document = document(folder.path(L"drawings/house.dxf"))});
    EXPECT_EQ(settingsOf(started), "  X=G\n");
}

TEST_F(ModelStart, AFolderInThePlaceOfTheProjectFileIsNone)
{
    folder.makeFolder(L"drawings/tool.ipr");
    const StartedModel started
        = startModel({.iniFile = ini, .document = document(folder.path(L"drawings/house.dxf"))});
    EXPECT_FALSE(started.model->projectMode);
    EXPECT_FALSE(started.projectFailed);
    EXPECT_EQ(boxes(), "");
}

TEST_F(ModelStart, ADocumentMayHaveBothSeparatorsInItsName)
{
    folder.write(L"drawings/sub/tool.ipr", "X=P\n");
    const StartedModel started = startModel(
        {.iniFile = ini, .document = document(folder.path(L"drawings\\sub\\house.dxf"))});
    EXPECT_EQ(settingsOf(started), "  X=P (project; global G)\n");
    EXPECT_EQ(started.fileNames.drawingName, L"house.dxf");
    EXPECT_EQ(projectOf(started), "~/drawings/sub/ tool.ipr");
}

/// Makes a folder the one for temporary files for the life of the object.
class TemporaryFolder
{
public:
    explicit TemporaryFolder(const std::wstring& path)
        : m_former(std::getenv("TMPDIR") == nullptr ? "" : std::getenv("TMPDIR"))
    {
        ::setenv("TMPDIR", corma::toUtf8(path).c_str(), 1);
    }

    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    ~TemporaryFolder()
    {
        if (m_former.empty()) {
            ::unsetenv("TMPDIR");
        } else {
            ::setenv("TMPDIR", m_former.c_str(), 1);
        }
    }

private:
    std::string m_former;
};

TEST_F(ModelStart, ADocumentThatWasNeverSavedIsInTheTemporaryFolder)
{
    folder.write(L"tmp/tool.ipr", "X=P\n");
    folder.write(L"here/tool.ipr", "X=other\n");
    const TemporaryFolder temporary(folder.path(L"tmp"));
    const CurrentFolder there(folder.path(L"here"));
    for (const wchar_t* const name : {L"", L"Drawing1.dwg"}) {
        AcApDocument unsaved(name, std::make_unique<AcDbDatabase>());
        const StartedModel started = startModel({.iniFile = ini, .document = &unsaved});
        EXPECT_EQ(settingsOf(started), "  X=P (project; global G)\n");
        EXPECT_EQ(projectOf(started), "~/tmp/ tool.ipr");
        EXPECT_EQ(started.fileNames.drawingName, name);
        EXPECT_TRUE(started.model->localMode);
    }
}

TEST_F(ModelStart, ADocumentsValuesAreThoseOfTheFilesName)
{
    AcApDocument* const house = document(folder.path(L"drawings/house.dxf"));
    store(L"X", L"D");
    const std::wstring other = folder.write(L"cfg/other.ini", "X=G\n");
    EXPECT_EQ(settingsOf(startModel({.iniFile = other, .document = house})), "  X=G\n");
}

} // namespace
