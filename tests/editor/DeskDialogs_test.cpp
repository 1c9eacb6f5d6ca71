// The dialogs for colours, visualisations, text styles and hatches, as a double click brings them.

#include "editor/ColourDlg.h"
#include "editor/DeskDialogTest.h"
#include "editor/DialogLibrary.h"
#include "editor/EditDlgHatch.h"
#include "editor/EditDlgText.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

using corma::testing::DialogLibrary;

namespace {

class DeskDialogs : public corma::testing::DeskDialogTest
{
protected:
    void write(const char* definition, const std::string& value) const
    {
        folder.write(L"cfg/tool.inr", "A=" + std::string(definition) + "\n");
        writeIni("A=" + value + "\n");
    }

    /// Double clicks the setting and acts on the dialog that comes up.
    template<class Dialog> void edit(const std::function<void(Dialog&)>& reply)
    {
        answer<Dialog>([this] { doubleClickRow("A"); }, reply);
    }

    template<class Widget> static Widget& in(QWidget& shown, const char* name)
    {
        return *shown.findChild<Widget*>(QString::fromUtf8(name));
    }

    static void typeInto(QWidget& shown, const char* name, const char* text)
    {
        auto& field = in<QLineEdit>(shown, name);
        field.selectAll();
        QTest::keyClicks(&field, QString::fromUtf8(text));
    }
};

TEST_F(DeskDialogs, AVisualisationIsEditedAndStoredGlobally)
{
    write("v", "ROOF,1,ZIGZAG,0.25");
    show();
    edit<EditDlgVis>([](EditDlgVis& shown) {
        EXPECT_EQ(shown.windowTitle().toStdString(), "Settings - A");
        EXPECT_FALSE(in<QWidget>(shown, "saveGlobally").isVisible());
        typeInto(shown, "layerField", "WALL");
        shown.accept();
    });
    EXPECT_EQ(ini(), "A=WALL,1,ZIGZAG,0.25\n");
    EXPECT_EQ(listed(), "A=WALL,1,ZIGZAG,0.25 (Visualisation) \n");
}

TEST_F(DeskDialogs, InAProjectTheFileIsWrittenAllTheSame)
{
    write("v", "ROOF,1,ZIGZAG,0.25");
    writeIpr("A=ROOF,2,ZIGZAG,0.25\n");
    show(Levels::project);
    edit<EditDlgVis>([](EditDlgVis& shown) {
        EXPECT_FALSE(in<QWidget>(shown, "saveGlobally").isVisible());
        typeInto(shown, "layerField", "WALL");
        shown.accept();
    });
    EXPECT_EQ(ini(), "A=WALL,2,ZIGZAG,0.25\n");
    EXPECT_EQ(ipr(), "A=ROOF,2,ZIGZAG,0.25\n");
}

TEST_F(DeskDialogs, ATextStyleIsEdited)
{
    write("x", "ROOF,1,ZIGZAG,0.25,NOTES,2.5,1,0");
    show();
    edit<EditDlgText>([](EditDlgText& shown) {
        typeInto(shown, "height", "3,5");
        shown.accept();
    });
    EXPECT_EQ(ini(), "A=ROOF,1,ZIGZAG,0.25,NOTES,3.5,1,0\n");
}

TEST_F(DeskDialogs, AHatchIsEdited)
{
    write("h", "ROOF,1,ZIGZAG,0.25,ANSI31,45,1");
    show();
    edit<EditDlgHatch>([](EditDlgHatch& shown) {
        auto& scale = in<QComboBox>(shown, "scale");
        scale.lineEdit()->selectAll();
        QTest::keyClicks(scale.lineEdit(), QStringLiteral("2"));
        shown.accept();
    });
    EXPECT_EQ(ini(), "A=ROOF,1,ZIGZAG,0.25,ANSI31,45,2\n");
}

TEST_F(DeskDialogs, AColourIsChosen)
{
    write("k", "1");
    show();
    edit<ColourDlg>([](ColourDlg& shown) {
        EXPECT_EQ(shown.chosen(), 1);
        typeInto(shown, "number", "30");
        shown.accept();
    });
    EXPECT_EQ(ini(), "A=30\n");
}

TEST_F(DeskDialogs, WhoeverCancelsStoresNothing)
{
    const std::string value = "ROOF,1,ZIGZAG,0.25,ANSI31,45,1";
    writeIpr("A=2\n");
    for (const char* definition : {"v", "x", "h", "k"}) {
        write(definition, value);
        show(Levels::project);
        edit<QDialog>([](QDialog& shown) { shown.reject(); });
        EXPECT_EQ(ini(), "A=" + value + "\n") << definition;
        end();
    }
}

TEST_F(DeskDialogs, AReadOnlySettingIsShownAndNotStored)
{
    const std::string value = "ROOF,1,zigzag,0.2";
    for (const char* definition : {"v readonly=true", "k readonly=true"}) {
        write(definition, value);
        show();
        edit<QDialog>([](QDialog& shown) { shown.accept(); });
        EXPECT_EQ(ini(), "A=" + value + "\n") << definition;
        end();
    }
}

TEST_F(DeskDialogs, AValueThatWouldNotFitIsRefused)
{
    write("v", "ROOF,1,ZIGZAG,0.25");
    show();
    edit<EditDlgVis>([this](EditDlgVis& shown) {
        const std::string longName(250, 'L');
        typeInto(shown, "layerField", longName.c_str());
        shown.accept();
        EXPECT_TRUE(shown.isVisible());
        EXPECT_EQ(asked(), "This is not a correct value for a setting of type Visualisation\n");
        shown.reject();
    });
    EXPECT_EQ(ini(), "A=ROOF,1,ZIGZAG,0.25\n");
}

TEST_F(DeskDialogs, AnotherLibrarysGoFirst)
{
    DialogLibrary library(folder);
    ASSERT_TRUE(library.isLoaded());
    library.dialogs().status = RTNORM;
    library.dialogs().answer.fill(0);
    std::copy_n(L"theirs", 6, library.dialogs().answer.begin());
    write("v", "ROOF,1,ZIGZAG,0.25");
    show();
    doubleClickRow("A");
    EXPECT_EQ(ini(), "A=theirs\n");
}

TEST_F(DeskDialogs, F2OpensThemToo)
{
    write("v", "ROOF,1,ZIGZAG,0.25");
    show();
    clickRow("A");
    answer<EditDlgVis>([] { press(Qt::Key_F2); },
                       [](EditDlgVis& shown) {
                           typeInto(shown, "layerField", "WALL");
                           QTest::keyClick(shown.focusWidget(), Qt::Key_Return);
                       });
    EXPECT_EQ(ini(), "A=WALL,1,ZIGZAG,0.25\n");
}

} // namespace
