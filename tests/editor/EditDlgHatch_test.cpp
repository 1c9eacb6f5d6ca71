#include "editor/CHatchpatternctrl2.h"
#include "editor/EditDlgHatch.h"
#include "editor/VisDialogTest.h"
#include "platform/text.h"

#include <QComboBox>
#include <QImage>
#include <QLineEdit>
#include <QWidget>

#include <gmock/gmock.h>

using ::testing::ElementsAre;

namespace {

class EditDlgHatchTest : public corma::testing::VisDialogTest
{
protected:
    EditDlgHatch& show(const char* value, const char* definition = "h", int language = 9)
    {
        writeIni("A=" + std::string(value) + "\n");
        define(definition);
        return showDialog<EditDlgHatch>(startAt(Levels::global, language));
    }

    [[nodiscard]] QImage preview() const { return at<QWidget>("preview").grab().toImage(); }

    void typeInto(const char* box, const char* text) const
    {
        at<QComboBox>(box).setFocus();
        at<QComboBox>(box).lineEdit()->selectAll();
        QTest::keyClicks(at<QComboBox>(box).lineEdit(), QString::fromUtf8(text));
    }
};

TEST_F(EditDlgHatchTest, ShowsTheFieldsOfTheHatch)
{
    show("WALL,2,DASHED,0.25,ansi31,45,0.5");
    EXPECT_EQ(fieldText("typeText"), "Hatch");
    EXPECT_EQ(listText("layerList"), "WALL");
    EXPECT_EQ(listText("patternList"), "ANSI31");
    EXPECT_EQ(listText("angle"), "45");
    EXPECT_EQ(listText("scale"), "0.5");
    EXPECT_TRUE(at<QWidget>("preview").toolTip().endsWith(QStringLiteral("acadiso.pat(ANSI31)")));
}

TEST_F(EditDlgHatchTest, OffersAnglesAndScales)
{
    show("0,2,DASHED,0.25,ANSI31,0,1");
    const auto& angle = at<QComboBox>("angle");
    const auto& scale = at<QComboBox>("scale");
    ASSERT_EQ(angle.count(), 9);
    ASSERT_EQ(scale.count(), 8);
    EXPECT_EQ(angle.itemText(0).toStdString(), "0.00");
    EXPECT_EQ(angle.itemText(1).toStdString(), "45.00");
    EXPECT_EQ(angle.itemText(8).toStdString(), "360.00");
    EXPECT_EQ(scale.itemText(0).toStdString(), "0.25");
    EXPECT_EQ(scale.itemText(7).toStdString(), "2.00");
    chooseEntry("angle", 2); // behind the number that is there
    chooseEntry("scale", 1);
    click("okButton");
    EXPECT_EQ(corma::toUtf8(setting().value()), "0,2,DASHED,0.25,ANSI31,90.00,1.25");
}

TEST_F(EditDlgHatchTest, DrawsThePatternAtItsAngleAndScale)
{
    show("0,2,DASHED,0.25,ANSI31,0,1");
    std::vector<QImage> seen = {preview()};
    const auto expectNew = [&] {
        seen.push_back(preview());
        for (std::size_t i = 0; i + 1 < seen.size(); ++i) {
            EXPECT_NE(seen[i], seen.back()) << i;
        }
    };
    typeInto("angle", "30");
    expectNew();
    typeInto("scale", "2");
    expectNew();
    typeInto("scale", "0,5");
    expectNew();
    chooseEntry("patternList", at<QComboBox>("patternList").findText(QStringLiteral("BRICK")));
    expectNew();
    typeInto("angle", "0");
    typeInto("scale", "1");
    chooseEntry("patternList", at<QComboBox>("patternList").findText(QStringLiteral("ANSI31")));
    EXPECT_EQ(preview(), seen.front());
}

TEST_F(EditDlgHatchTest, APatternThatTheFileLacksIsNone)
{
    show("0,2,DASHED,0.25,MINE,0,1");
    EXPECT_EQ(listText("patternList"), "");
    EXPECT_EQ(at<QWidget>("preview").toolTip().toStdString(), "");
    click("okButton");
    EXPECT_EQ(corma::toUtf8(setting().value()), "0,2,DASHED,0.25,,0,1");
}

TEST_F(EditDlgHatchTest, AWrongAngleKeepsTheDialogOpen)
{
    show("0,2,DASHED,0.25,ANSI31,0,1");
    typeInto("angle", "361");
    press(Qt::Key_Return);
    EXPECT_EQ(messages(),
              "exclamation, CfgDesk: The degrees of the angle must lie between 0° and 360°\n"
              "exclamation, CfgDesk: This is not a correct value for a setting of type Hatch\n");
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(listText("angle"), "361");
    typeInto("angle", "360,9");
    typeInto("scale", "1,5");
    press(Qt::Key_Return);
    EXPECT_TRUE(isAccepted());
    EXPECT_EQ(corma::toUtf8(setting().value()), "0,2,DASHED,0.25,ANSI31,360.9,1.5");
}

TEST_F(EditDlgHatchTest, AReadOnlySettingIsOnlyLookedAt)
{
    show("0,2,DASHED,0.25,ANSI31,0,1", "h readonly=true");
    EXPECT_EQ(enabledOf({"patternList", "angle", "scale", "layerList", "colour"}), "");
    EXPECT_FALSE(preview().isNull());
}

TEST_F(EditDlgHatchTest, TabGoesAsOneReads)
{
    show("0,2,DASHED,0.25,ANSI31,0,1");
    EXPECT_THAT(tabOrder(),
                ElementsAre("typeText", "levelText", "layerFromList", "layerList", "colour",
                            "linetypeFromList", "linetypeList", "lineweight", "patternList",
                            "angle", "scale", "okButton", "cancelButton"));
}

TEST_F(EditDlgHatchTest, EveryWidgetHasAnAccessibleName)
{
    for (const int language : {9, 12, 19, 25}) {
        show("0,2,DASHED,0.25,ANSI31,0,1", "h", language);
        expectAccessibleNames();
        EXPECT_FALSE(at<QWidget>("preview").accessibleName().isEmpty());
        EXPECT_FALSE(at<QWidget>("preview").accessibleDescription().isEmpty());
    }
}

} // namespace
