#include "editor/ColourDlg.h"
#include "editor/EditDlgVis.h"
#include "editor/VisDialogTest.h"
#include "editor/visual_controls.h"
#include "platform/text.h"

#include <QGroupBox>
#include <QLineEdit>

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

class EditDlgVisTest : public corma::testing::VisDialogTest
{
protected:
    EditDlgVis& show(const char* value, Levels levels = Levels::global, int language = 9)
    {
        writeIni("A=" + std::string(value) + "\n");
        define(m_definition);
        return showDialog<EditDlgVis>(startAt(levels, language));
    }

    void makeReadOnly() { m_definition = "v readonly=true"; }

    static constexpr auto kNameWidgets
        = {"layerFromList",    "layerList",    "layerFromField",    "layerField",
           "linetypeFromList", "linetypeList", "linetypeFromField", "linetypeField"};

private:
    std::string m_definition = "v";
};

// --- opening -------------------------------------------------------------------------------------

TEST_F(EditDlgVisTest, ShowsAValueWhoseNamesTheDrawingHas)
{
    show("wall,3,dashed,0.25");
    EXPECT_EQ(dialog->windowTitle().toStdString(), "Settings - A");
    EXPECT_EQ(fieldText("typeText"), "Visualisation");
    EXPECT_EQ(listText("layerList"), "WALL");
    EXPECT_EQ(listText("linetypeList"), "DASHED");
    EXPECT_EQ(listText("lineweight"), "0.25 mm");
    EXPECT_EQ(at<QPushButton>("colour").text().toStdString(), "3");
    EXPECT_TRUE(isChecked("layerFromList"));
    EXPECT_TRUE(isChecked("linetypeFromList"));
    EXPECT_EQ(enabledOf(kNameWidgets),
              "layerFromList layerList layerFromField linetypeFromList linetypeList "
              "linetypeFromField");
    EXPECT_FALSE(isShown("valueField"));
    EXPECT_FALSE(isShown("newValueLabel"));
}

TEST_F(EditDlgVisTest, ShowsNamesThatTheDrawingLacksInTheirFields)
{
    show("ROOF,ByLayer,ZIGZAG,ByLayer");
    EXPECT_EQ(fieldText("layerField"), "ROOF");
    EXPECT_EQ(fieldText("linetypeField"), "ZIGZAG");
    EXPECT_EQ(listText("layerList"), "");
    EXPECT_EQ(listText("linetypeList"), "");
    EXPECT_TRUE(isChecked("layerFromField"));
    EXPECT_TRUE(isChecked("linetypeFromField"));
    EXPECT_EQ(enabledOf(kNameWidgets),
              "layerFromList layerFromField layerField linetypeFromList linetypeFromField "
              "linetypeField");
    click("okButton");
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(corma::toUtf8(setting().value()), "ROOF,ByLayer,ZIGZAG,ByLayer");
}

TEST_F(EditDlgVisTest, WithoutADrawingAllIsTyped)
{
    corma::closeDocument();
    show("ROOF,1,ZIGZAG,0.50");
    EXPECT_EQ(enabledOf(kNameWidgets), "layerFromField layerField linetypeFromField linetypeField");
    EXPECT_TRUE(isEnabled("colour"));
    EXPECT_EQ(listText("lineweight"), "0.50 mm");
}

TEST_F(EditDlgVisTest, AReadOnlySettingIsOnlyLookedAt)
{
    makeReadOnly();
    show("ROOF,1,DASHED,0.50");
    EXPECT_EQ(enabledOf(kNameWidgets), "");
    EXPECT_FALSE(isEnabled("colour"));
    EXPECT_FALSE(isEnabled("lineweight"));
    EXPECT_TRUE(isEnabled("okButton"));
}

TEST_F(EditDlgVisTest, TheListsHaveWhatTheDrawingHas)
{
    show("0,1,Continuous,0");
    const auto texts = [&](const char* name) {
        std::vector<std::string> all;
        const auto& box = at<QComboBox>(name);
        for (int i = 0; i < box.count(); ++i) {
            all.push_back(box.itemText(i).toStdString());
            EXPECT_EQ(box.itemIcon(i).isNull(), box.itemData(i).toInt() < 0) << name << i;
        }
        return all;
    };
    EXPECT_THAT(texts("layerList"), ElementsAre("0", "WALL"));
    EXPECT_THAT(texts("linetypeList"), ElementsAre("ByBlock", "ByLayer", "Continuous", "DASHED"));
    const auto weights = texts("lineweight");
    ASSERT_EQ(weights.size(), 3 + 24U);
    EXPECT_EQ(weights[0], "ByLayer");
    EXPECT_EQ(weights[1], "ByBlock");
    EXPECT_EQ(weights[2], "Default");
    EXPECT_EQ(weights[3], "0.00 mm");
    EXPECT_EQ(weights.back(), "2.11 mm");
}

// --- hands ---------------------------------------------------------------------------------------

TEST_F(EditDlgVisTest, KeysAloneChangeAllOfIt)
{
    show("0,1,Continuous,0.25");
    chooseEntry("layerList", 1);
    chooseEntry("linetypeList", 3);
    chooseEntry("lineweight", 1);
    answer<ColourDlg>(
        [this] {
            at<QWidget>("colour").setFocus();
            press(Qt::Key_Space);
        },
        [](ColourDlg& colours) {
            QTest::keyClick(colours.focusWidget(), Qt::Key_Right); // from red to yellow
            QTest::keyClick(colours.focusWidget(), Qt::Key_Return);
        });
    EXPECT_EQ(at<QPushButton>("colour").text().toStdString(), "2");
    press(Qt::Key_Return);
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(corma::toUtf8(setting().value()), "WALL,2,DASHED,ByBlock");
}

TEST_F(EditDlgVisTest, AColourThatIsNotChosenStays)
{
    show("0,1,Continuous,0.25");
    answer<ColourDlg>([this] { click("colour"); }, [](ColourDlg& colours) { colours.reject(); });
    EXPECT_EQ(at<QPushButton>("colour").text().toStdString(), "1");
}

TEST_F(EditDlgVisTest, ANameIsTypedOrChosen)
{
    show("WALL,1,DASHED,0.25");
    click("layerFromField");
    EXPECT_EQ(enabledOf({"layerList", "layerField"}), "layerField");
    EXPECT_EQ(fieldText("layerField"), "WALL");
    at<QLineEdit>("layerField").setFocus();
    press(Qt::Key_End);
    type("-2");
    click("linetypeFromField");
    at<QLineEdit>("linetypeField").selectAll();
    at<QLineEdit>("linetypeField").setFocus();
    type("ZIGZAG");
    click("linetypeFromList");
    EXPECT_EQ(enabledOf({"linetypeList", "linetypeField"}), "linetypeList");
    EXPECT_EQ(fieldText("linetypeField"), "ZIGZAG");
    click("okButton");
    EXPECT_EQ(corma::toUtf8(setting().value()), "WALL-2,1,DASHED,0.25");
}

TEST_F(EditDlgVisTest, TheColourOfTheLayerFollowsIt)
{
    const auto sample = [this] {
        const QImage image = at<QPushButton>("colour").icon().pixmap(16, 16).toImage();
        return image.pixelColor(image.width() / 2, image.height() / 2).name().toStdString();
    };
    show("WALL,ByLayer,Continuous,ByLayer");
    EXPECT_EQ(sample(), "#ff0000");
    chooseEntry("layerList", 0);
    EXPECT_EQ(sample(), "#ffffff");
    chooseEntry("layerList", 1);
    EXPECT_EQ(sample(), "#ff0000");
    click("layerFromField");
    EXPECT_NE(sample(), "#ff0000");
    click("layerFromList");
    EXPECT_EQ(sample(), "#ff0000");
}

TEST_F(EditDlgVisTest, EscapeStoresNothing)
{
    show("0,1,Continuous,0.25");
    chooseEntry("layerList", 1);
    press(Qt::Key_Escape);
    EXPECT_TRUE(isRejected());
    EXPECT_EQ(corma::toUtf8(setting().value()), "0,1,Continuous,0.25");
}

TEST_F(EditDlgVisTest, ABoxSavesAtAnotherLevelToo)
{
    writeIpr("A=0,2,Continuous,0.25\n");
    show("0,1,Continuous,0.25", Levels::project);
    EXPECT_TRUE(isShown("saveGlobally"));
    EXPECT_FALSE(isShown("saveInProject"));
    chooseEntry("layerList", 1);
    click("saveGlobally");
    click("okButton");
    EXPECT_EQ(ini(), "A=WALL,2,Continuous,0.25\n");
    EXPECT_EQ(ipr(), "A=WALL,2,Continuous,0.25\n");
}

// --- those who do not see or point ---------------------------------------------------------------

TEST_F(EditDlgVisTest, TabGoesAsOneReads)
{
    show("0,1,Continuous,0.25");
    EXPECT_THAT(tabOrder(),
                ElementsAre("typeText", "levelText", "layerFromList", "layerList", "colour",
                            "linetypeFromList", "linetypeList", "lineweight", "okButton",
                            "cancelButton"));
    click("layerFromField");
    click("linetypeFromField");
    EXPECT_THAT(tabOrder(),
                ElementsAre("typeText", "levelText", "layerFromField", "layerField", "colour",
                            "linetypeFromField", "linetypeField", "lineweight", "okButton",
                            "cancelButton"));
}

TEST_F(EditDlgVisTest, EveryWidgetHasAnAccessibleName)
{
    for (const int language : {9, 12, 19, 25}) {
        show("0,1,Continuous,0.25", Levels::global, language);
        expectAccessibleNames();
        EXPECT_EQ(at<QWidget>("colour").accessibleDescription().toStdString(), "1");
    }
}

TEST_F(EditDlgVisTest, AltAndALetterReachTheGroups)
{
    show("0,1,Continuous,0.25");
    EXPECT_EQ(at<QGroupBox>("layerGroup").title().toStdString(), "&Layer");
    EXPECT_EQ(at<QGroupBox>("linetypeGroup").title().toStdString(), "L&inetype");
    press(Qt::Key_C, Qt::AltModifier);
    EXPECT_EQ(focus(), "colour");
    press(Qt::Key_I, Qt::AltModifier);
    EXPECT_EQ(focus(), "linetypeFromList");
}

} // namespace
