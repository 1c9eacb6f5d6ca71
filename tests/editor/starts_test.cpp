// What each start passes to the main dialog, told by one line.

#include "editor/CCfgDeskExeDlg.h"
#include "editor/starts.h"
#include "host/host.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include <corma/IniBuffer.h>

#include <QSettings>
#include <QTest>
#include <QTimer>

#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace corma::testing {

namespace {

int refuseAll(const wchar_t* /*value*/, const wchar_t* /*name*/, const wchar_t* /*typeLabel*/)
{
    return 0;
}

std::string narrow(const std::wstring& text)
{
    return QString::fromStdWString(text).toStdString();
}

std::string tell(const DeskStart& start)
{
    std::string line
        = narrow(start.request.iniFile) + " language " + std::to_string(start.request.language);
    line += start.request.document != nullptr ? " document" : "";
    line += start.request.projectFile ? " project " + narrow(*start.request.projectFile) : "";
    line += start.defaultBitmap.empty() ? "" : " bitmap " + narrow(start.defaultBitmap);
    line += start.callback == refuseAll ? " callback" : "";
    line += start.startLocal ? " startLocal" : "";
    line += start.startProject ? " startProject" : "";
    line += start.clean ? " clean" : "";
    return line;
}

AcApDocument* document()
{
    newDocument(L"/plan/plan.dxf");
    return currentDocument();
}

TEST(Starts, EachLetterIsALanguage)
{
    struct Row
    {
        wchar_t letter;
        int language;
    };

    for (const Row& row :
         {Row {L'N', 19}, Row {L'F', 12}, Row {L'G', 7}, Row {L'S', 10}, Row {L'E', 9},
          Row {L'n', 9}, Row {L'P', 9}, Row {L'R', 9}, Row {L'X', 9}, Row {L'\0', 9}}) {
        EXPECT_EQ(languageOfLetter(row.letter), row.language) << static_cast<int>(row.letter);
    }
}

TEST(Starts, EachPassesWhatItIsGiven)
{
    const RecordingServices services;
    AcApDocument* const plan = document();
    const auto drawing = [plan](const wchar_t* project, const wchar_t* bitmap) {
        return tell(drawingStart(
            L"a.ini", 12,
            DrawingArguments {.document = plan, .projectFile = project, .bitmapFile = bitmap}));
    };
    const auto inMode = [plan](bool local, bool project) {
        return tell(drawingStart(
            L"a.ini", 12,
            ModeArguments {.document = plan, .startLocal = local, .startProject = project}));
    };
    EXPECT_EQ(tell(plainStart(L"a.ini", 9, nullptr, nullptr)), "a.ini language 9");
    EXPECT_EQ(tell(plainStart(L"a.ini", 19, L"p.ipr", refuseAll)),
              "a.ini language 19 project p.ipr callback");
    EXPECT_EQ(tell(plainStart(L"a.ini", 19, L"", nullptr)), "a.ini language 19");
    EXPECT_EQ(tell(plainStart(nullptr, 77, nullptr, nullptr)), " language 77");
    EXPECT_EQ(tell(cleanStart(L"a.ini", 7)), "a.ini language 7 startLocal startProject clean");
    EXPECT_EQ(drawing(nullptr, nullptr), "a.ini language 12 document");
    EXPECT_EQ(drawing(L"", L""), "a.ini language 12 document");
    EXPECT_EQ(drawing(L"p.ipr", L"b.bmp"), "a.ini language 12 document project p.ipr bitmap b.bmp");
    EXPECT_EQ(inMode(false, false), drawing(L"", nullptr));
    EXPECT_EQ(inMode(true, false), "a.ini language 12 document startLocal");
    EXPECT_EQ(inMode(false, true), "a.ini language 12 document startProject");
    EXPECT_EQ(inMode(true, true), "a.ini language 12 document startLocal startProject");
}

// --- the exported functions ----------------------------------------------------------------------

// With the editor open: what it shows, as a line; then it is closed.
class ExportedStarts : public ::testing::Test
{
protected:
    ExportedStarts()
    {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdWString(folder.path()));
        folder.write(L"tool.ini", "A=1\n");
        folder.write(L"tool.inr", "A=s access=3,3\n");
        folder.write(L"house/tool.ipr", "A=2\n");
        ini = folder.path(L"tool.ini");
        project = folder.path(L"house/tool.ipr");
    }

    ~ExportedStarts() override { xx_setAccessLevel(0); }

    void whileOpen(std::function<void(CCfgDeskExeDlg&)> act)
    {
        QTimer::singleShot(0, qApp, [act = std::move(act)] {
            auto* const dialog = qobject_cast<CCfgDeskExeDlg*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            act(*dialog);
            dialog->reject();
        });
    }

    std::string shownBy(const std::function<void()>& start)
    {
        std::string shown = "nothing";
        whileOpen([&shown](CCfgDeskExeDlg& dialog) { shown = tellOpen(dialog.desk()); });
        start();
        return shown;
    }

    static std::string tellOpen(const Desk& desk)
    {
        std::string line = "language " + std::to_string(desk.language());
        line += desk.mode().local ? " local" : "";
        line += desk.mode().project ? " project" : "";
        line += desk.database() != nullptr ? " database" : "";
        line += desk.callback() == refuseAll ? " callback" : "";
        line += desk.defaultBitmap().empty() ? "" : " bitmap";
        line += desk.isClean() ? " clean" : "";
        return line;
    }

    void makeDrawing() const { newDocument(folder.path(L"house/plan.dxf").c_str()); }

    RecordingServices services;
    const TempFolder folder;
    std::wstring ini;
    std::wstring project;
    std::wstring bitmap = L"b.bmp";
};

TEST_F(ExportedStarts, WithoutADrawing)
{
    EXPECT_EQ(shownBy([this] { xx_startCfgDesk(ini.data(), 19); }), "language 19");
    EXPECT_EQ(shownBy([this] { xx_startCfgDesk(ini.data(), 21, project.data(), refuseAll); }),
              "language 21 project callback");
    EXPECT_EQ(shownBy([this] { xx_startCfgDesk(ini.data(), L'F', project.data(), nullptr); }),
              "language 12 project");
    EXPECT_EQ(shownBy([this] { xx_startCfgDeskClean(ini.data(), 9); }), "language 9 clean");
}

TEST_F(ExportedStarts, OnADrawing)
{
    makeDrawing();
    AcApDocument* const plan = currentDocument();
    EXPECT_EQ(shownBy([&] { xx_startCfgDeskFromDwg(ini.data(), plan, 9, nullptr, bitmap.data()); }),
              "language 9 local project database bitmap");
    EXPECT_EQ(shownBy([&] { xx_startCfgDeskFromDwg(ini.data(), plan, L'N', nullptr, nullptr); }),
              "language 19 local project database");
    EXPECT_EQ(shownBy([&] { xx_startCfgDeskFromDwg(ini.data(), plan, 9, true, false); }),
              "language 9 local database");
    EXPECT_EQ(shownBy([&] { xx_startCfgDeskFromDwg(ini.data(), plan, L'G', false, true); }),
              "language 7 project database");
    EXPECT_EQ(shownBy([&] { xx_startCfgDeskFromDwg(ini.data(), plan, L'X', true, true); }),
              "language 9 database");
    EXPECT_EQ(shownBy([&] { xx_startCfgDeskFromDwg(ini.data(), plan, L'X', false, false); }),
              "language 9 local project database");
}

TEST_F(ExportedStarts, ANullDocumentIsNone)
{
    EXPECT_EQ(
        shownBy([&] { xx_startCfgDeskFromDwg(ini.data(), nullptr, 9, project.data(), nullptr); }),
        "language 9 project");
}

TEST_F(ExportedStarts, TheAccessLevelHoldsForAllLaterOnes)
{
    std::vector<std::size_t> rows;
    const auto start = [&] {
        whileOpen([&rows](CCfgDeskExeDlg& dialog) { rows.push_back(dialog.desk().rows().size()); });
        xx_startCfgDesk(ini.data(), 9);
    };
    start();
    xx_setAccessLevel(3);
    start();
    start();
    EXPECT_THAT(rows, ElementsAre(0U, 1U, 1U));
}

TEST_F(ExportedStarts, TheLanguageStays)
{
    shownBy([this] { xx_startCfgDesk(ini.data(), 19); });
    EXPECT_EQ(textLanguage(), 19);
}

TEST_F(ExportedStarts, TheReadCacheIsEmptyBehindEach)
{
    const auto isKept = [] {
        std::array<wchar_t, 10> value {};
        int slot = -1;
        return IniBuffer::shared().lookup(L"[A]B", value.data(), 10, &slot, nullptr);
    };
    const auto keep = [] {
        std::array<wchar_t, 10> value {};
        int slot = -1;
        IniBuffer::shared().lookup(L"[A]B", value.data(), 10, &slot, nullptr);
        IniBuffer::shared().store(L"[A]B", L"7", slot, nullptr);
    };
    keep();
    ASSERT_TRUE(isKept());
    shownBy([this] { xx_startCfgDesk(ini.data(), 9); });
    EXPECT_FALSE(isKept());
}

TEST_F(ExportedStarts, AStartWithinAStartStandsAboveIt)
{
    std::string inner;
    whileOpen([&](CCfgDeskExeDlg& outer) {
        whileOpen([&](CCfgDeskExeDlg& dialog) {
            EXPECT_EQ(dialog.parentWidget(), &outer);
            inner = tellOpen(dialog.desk());
        });
        xx_startCfgDesk(ini.data(), 12);
        EXPECT_TRUE(outer.isVisible());
    });
    xx_startCfgDesk(ini.data(), 12);
    EXPECT_EQ(inner, "language 12");
}

TEST_F(ExportedStarts, MessagesAreShownWhileItLasts)
{
    folder.remove(L"tool.ini");
    std::string text;
    QTimer::singleShot(0, qApp, [&] {
        QWidget* const box = QApplication::activeModalWidget();
        ASSERT_NE(box, nullptr);
        text = box->objectName().toStdString();
        whileOpen([](CCfgDeskExeDlg& /*dialog*/) {});
        box->close();
    });
    xx_startCfgDesk(ini.data(), 9);
    EXPECT_EQ(text, "messageBox");
    EXPECT_THAT(services.boxes, IsEmpty());
}

TEST_F(ExportedStarts, TheFormerServicesComeBack)
{
    shownBy([this] { xx_startCfgDesk(ini.data(), 9); });
    EXPECT_EQ(&corma::services(), &services);
}

} // namespace

} // namespace corma::testing
