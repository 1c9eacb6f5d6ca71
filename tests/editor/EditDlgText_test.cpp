#include "editor/EditDlgText.h"
#include "editor/VisDialogTest.h"
#include "platform/text.h"

#include <QLineEdit>

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

class EditDlgTextTest : public corma::testing::VisDialogTest
{
protected:
    EditDlgText& show(const char* value, const char* definition = "x", int language = 9)
    {
        writeIni("A=" + std::string(value) + "\n");
        define(definition);
        return showDialog<EditDlgText>(startAt(Levels::global, language));
    }
};

TEST_F(EditDlgTextTest, ShowsTheFieldsOfTheStyle)
{
    show("WALL,2,DASHED,0.25,notes,2.5,0.8,15");
    EXPECT_EQ(fieldText("typeText"), "Textstyle");
    EXPECT_EQ(listText("layerList"), "WALL");
    EXPECT_EQ(listText("styleList"), "NOTES");
    EXPECT_TRUE(isChecked("styleFromList"));
    EXPECT_EQ(enabledOf({"styleList", "styleField"}), "styleList");
    EXPECT_EQ(fieldText("height"), "2.5");
    EXPECT_EQ(fieldText("widthFactor"), "0.8");
    EXPECT_EQ(fieldText("oblique"), "15");
}

TEST_F(EditDlgTextTest, AStyleThatTheDrawingLacksStaysAsItIs)
{
    show("0,2,DASHED,0.25,TITLES,2.5,0.8,15");
    EXPECT_EQ(fieldText("styleField"), "TITLES");
    EXPECT_EQ(enabledOf({"styleList", "styleField"}), "styleField");
    click("okButton");
    EXPECT_EQ(corma::toUtf8(setting().value()), "0,2,DASHED,0.25,TITLES,2.5,0.8,15");
}

TEST_F(EditDlgTextTest, CommasBecomePointsAndTextIsStoredAsItIs)
{
    show("0,2,DASHED,0.25,Standard,1,1,0");
    for (const auto& [name, text] : {std::pair("height", "2,5"), std::pair("widthFactor", "abc"),
                                     std::pair("oblique", "1,2,3")}) {
        at<QLineEdit>(name).setFocus();
        at<QLineEdit>(name).selectAll();
        type(text);
    }
    press(Qt::Key_Return);
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(corma::toUtf8(setting().value()), "0,2,DASHED,0.25,Standard,2.5,abc,1.2.3");
}

TEST_F(EditDlgTextTest, AStyleIsChosenOrTypedByKeys)
{
    show("0,2,DASHED,0.25,Standard,1,1,0");
    chooseEntry("styleList", 1);
    EXPECT_EQ(listText("styleList"), "NOTES");
    at<QWidget>("styleFromList").setFocus();
    press(Qt::Key_Down); // to the other button
    EXPECT_TRUE(isChecked("styleFromField"));
    EXPECT_EQ(fieldText("styleField"), "NOTES");
    press(Qt::Key_Tab);
    EXPECT_EQ(focus(), "styleField");
    type("MINE");
    press(Qt::Key_Return);
    EXPECT_EQ(corma::toUtf8(setting().value()), "0,2,DASHED,0.25,MINE,1,1,0");
}

TEST_F(EditDlgTextTest, AReadOnlySettingIsOnlyLookedAt)
{
    show("0,2,DASHED,0.25,Standard,1,1,0", "x readonly=true");
    EXPECT_EQ(enabledOf({"styleFromList", "styleList", "styleFromField", "styleField", "height",
                         "widthFactor", "oblique", "layerList", "colour"}),
              "");
}

TEST_F(EditDlgTextTest, TabGoesAsOneReads)
{
    show("0,2,DASHED,0.25,Standard,1,1,0");
    EXPECT_THAT(tabOrder(),
                ElementsAre("typeText", "levelText", "layerFromList", "layerList", "colour",
                            "linetypeFromList", "linetypeList", "lineweight", "styleFromList",
                            "styleList", "height", "widthFactor", "oblique", "okButton",
                            "cancelButton"));
}

TEST_F(EditDlgTextTest, EveryWidgetHasAnAccessibleName)
{
    for (const int language : {9, 12, 19, 25}) {
        show("0,2,DASHED,0.25,Standard,1,1,0", "x", language);
        expectAccessibleNames();
    }
}

} // namespace
