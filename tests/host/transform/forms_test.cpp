// In which form a transformed entity is written down. That it looks right is tested elsewhere.

#include "host/transform.h"
#include "host/transform/samples.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <string>
#include <vector>

namespace corma::host {

namespace {

using test::moved;
using test::recordFrom;
using test::stretched;
using test::textOf;

AcGeMatrix3d turned(double degrees, const AcGeVector3d& axis = AcGeVector3d::kZAxis)
{
    return AcGeMatrix3d().setToRotation(degrees * std::numbers::pi / 180.0, axis);
}

const AcGeMatrix3d mirroredInX = stretched(-1, 1, 1);
const AcGeMatrix3d mirroredInY = stretched(1, -1, 1);
const AcGeMatrix3d doubled = stretched(2, 2, 2);

struct FormRow
{
    const char* sentence;
    const wchar_t* before;
    AcGeMatrix3d matrix;
    const wchar_t* after;
};

std::ostream& operator<<(std::ostream& out, const FormRow& row)
{
    return out << row.sentence;
}

class Form : public ::testing::TestWithParam<FormRow>
{
};

TEST_P(Form, IsAsExpected)
{
    Groups record = recordFrom(GetParam().before);
    EXPECT_EQ(transformRecord(record, GetParam().matrix), Acad::eOk);
    EXPECT_EQ(textOf(record), std::wstring(GetParam().after) + L"\n");
}

std::string sentenceOf(const ::testing::TestParamInfo<FormRow>& row)
{
    return row.param.sentence;
}

const FormRow outlineRows[] = {
    {"ALineHasTwoPointsInTheWorld", L"0 LINE\n10 1\n20 2\n30 3\n11 4\n21 5\n31 6",
     moved(10, 20, 30), L"0 LINE\n10 11\n20 22\n30 33\n11 14\n21 25\n31 36"},
    {"APointWithoutHeightGetsOneWhenItRises", L"0 LINE\n10 1\n20 2\n11 4\n21 5", moved(0, 0, 7),
     L"0 LINE\n10 1\n20 2\n30 7\n11 4\n21 5\n31 7"},
    {"ALineThatIsTiltedTellsItsExtrusion", L"0 LINE\n10 1\n20 0\n30 0\n11 2\n21 0\n31 0",
     turned(90, {1, 0, 0}), L"0 LINE\n10 1\n20 0\n30 0\n11 2\n21 0\n31 0\n210 0\n220 -1\n230 0"},
    {"ThicknessIsScaled", L"0 LINE\n39 2\n10 1\n20 0\n30 0\n11 2\n21 0\n31 0", doubled,
     L"0 LINE\n39 4\n10 2\n20 0\n30 0\n11 4\n21 0\n31 0"},
    {"TheAngleOfAPointIsNegative", L"0 POINT\n10 0\n20 0\n30 0\n50 20", turned(30),
     L"0 POINT\n10 0\n20 0\n30 0\n50 350"},
    {"ARayKeepsADirectionOfLengthOne", L"0 RAY\n10 1\n20 2\n30 3\n11 1\n21 0\n31 0", doubled,
     L"0 RAY\n10 2\n20 4\n30 6\n11 1\n21 0\n31 0"},
    {"ACircleKeepsItsRadiusWhenTurned", L"0 CIRCLE\n10 1\n20 0\n30 0\n40 3", turned(90),
     L"0 CIRCLE\n10 0\n20 1\n30 0\n40 3"},
    {"ANormalGoesIntoThePartOfTheCircle",
     L"0 ARC\n100 AcDbEntity\n8 0\n100 AcDbCircle\n10 1\n20 0\n30 0\n40 3\n100 AcDbArc\n50 0\n51 "
     L"90",
     turned(180, {1, 0, 0}),
     L"0 ARC\n100 AcDbEntity\n8 0\n100 AcDbCircle\n10 -1\n20 0\n30 0\n40 3\n210 0\n220 0\n230 -1\n"
     L"100 AcDbArc\n50 180\n51 270"},
    {"AMirroredArcRunsCounterClockwiseStill", L"0 ARC\n10 1\n20 0\n30 0\n40 3\n50 10\n51 60",
     mirroredInX, L"0 ARC\n10 -1\n20 0\n30 0\n40 3\n50 120\n51 170"},
    {"AnAngleStaysBelowAFullTurn", L"0 ARC\n10 0\n20 0\n30 0\n40 3\n50 270\n51 330", turned(90),
     L"0 ARC\n10 0\n20 0\n30 0\n40 3\n50 0\n51 60"},
    {"AnAngleOutOfTheUsualRangeStaysWhenNothingTurns",
     L"0 ARC\n10 0\n20 0\n30 0\n40 3\n50 -30\n51 400", moved(1, 0, 0),
     L"0 ARC\n10 1\n20 0\n30 0\n40 3\n50 -30\n51 400"},
    {"AMirroredEllipseRunsTheOtherWay",
     L"0 ELLIPSE\n10 1\n20 0\n30 0\n11 2\n21 0\n31 0\n40 0.5\n41 0.25\n42 1", mirroredInX,
     L"0 ELLIPSE\n10 -1\n20 0\n30 0\n11 -2\n21 0\n31 0\n40 0.5\n41 5.28319\n42 6.03319"},
    {"AMirroredFullEllipseStaysFull",
     L"0 ELLIPSE\n10 1\n20 0\n30 0\n11 2\n21 0\n31 0\n40 0.5\n41 0\n42 6.28318530717", mirroredInX,
     L"0 ELLIPSE\n10 -1\n20 0\n30 0\n11 -2\n21 0\n31 0\n40 0.5\n41 0\n42 6.28319"},
    {"ACircleAsEllipseStretchedHasItsLongAxisFirst",
     L"0 ELLIPSE\n10 0\n20 0\n30 0\n11 2\n21 0\n31 0\n40 1\n41 0\n42 6.283185307179586",
     stretched(1, 3, 1),
     L"0 ELLIPSE\n10 0\n20 0\n30 0\n11 0\n21 6\n31 0\n40 0.333333\n41 0\n42 6.28319"},
    {"AnEllipticArcBeginsWithinTheFirstTurn",
     L"0 ELLIPSE\n10 0\n20 0\n30 0\n11 2\n21 0\n31 0\n40 1\n41 0.1\n42 1", stretched(1, 3, 1),
     L"0 ELLIPSE\n10 0\n20 0\n30 0\n11 0\n21 6\n31 0\n40 0.333333\n41 4.81239\n42 5.71239"},
    {"ASplineWithoutANormalGetsNone", L"0 SPLINE\n70 0\n10 1\n20 0\n30 0", turned(90, {1, 0, 0}),
     L"0 SPLINE\n70 0\n10 1\n20 0\n30 0"},
    {"KnotsAndWeightsOfASplineStay",
     L"0 SPLINE\n40 0\n40 1\n41 0.5\n10 1\n20 0\n30 0\n41 1\n10 2\n20 0\n30 0\n12 1\n22 0\n32 "
     L"0\n44 "
     L"0.25",
     doubled,
     L"0 SPLINE\n40 0\n40 1\n41 0.5\n10 2\n20 0\n30 0\n41 1\n10 4\n20 0\n30 0\n12 1\n22 0\n32 "
     L"0\n44 "
     L"0.5"},
    {"BulgesOfAMirroredPolylineChangeTheirSign",
     L"0 LWPOLYLINE\n90 2\n43 0.5\n10 1\n20 0\n42 0.25\n10 3\n20 0\n42 -1", mirroredInX,
     L"0 LWPOLYLINE\n90 2\n43 0.5\n10 -1\n20 0\n42 -0.25\n10 -3\n20 0\n42 1"},
    {"WidthsOfAPolylineAreScaledBulgesAreNot",
     L"0 LWPOLYLINE\n90 2\n10 1\n20 0\n40 0.5\n41 1\n42 0.25\n91 7\n10 3\n20 0", doubled,
     L"0 LWPOLYLINE\n90 2\n10 2\n20 0\n40 1\n41 2\n42 0.25\n91 7\n10 6\n20 0"},
    {"ANewElevationStandsBeforeTheVertices", L"0 LWPOLYLINE\n90 2\n10 1\n20 0\n10 3\n20 0",
     moved(0, 0, 5), L"0 LWPOLYLINE\n90 2\n38 5\n10 1\n20 0\n10 3\n20 0"},
    {"AnElevationThatIsThereChangesInItsPlace", L"0 LWPOLYLINE\n90 2\n10 1\n20 0\n10 3\n20 0\n38 2",
     moved(0, 0, 5), L"0 LWPOLYLINE\n90 2\n10 1\n20 0\n10 3\n20 0\n38 7"},
    {"AnOldPolylineHasItsElevationInADummyPoint", L"0 POLYLINE\n66 1\n10 0\n20 0\n30 2\n40 1\n41 2",
     moved(1, 1, 5) * doubled, L"0 POLYLINE\n66 1\n10 0\n20 0\n30 9\n40 2\n41 4"},
    {"A3DPolylineHasNothingOfItsOwn", L"0 POLYLINE\n66 1\n10 0\n20 0\n30 0\n70 8", moved(1, 1, 5),
     L"0 POLYLINE\n66 1\n10 0\n20 0\n30 0\n70 8"},
    {"AVertexAloneIsInThePlaneOfTheWorld", L"0 VERTEX\n10 1\n20 2\n30 3\n42 0.5",
     mirroredInX* moved(0, 0, 5), L"0 VERTEX\n10 -1\n20 2\n30 8\n42 -0.5"},
    {"AVertexAloneTellsThatItIsInSpace", L"0 VERTEX\n10 1\n20 2\n30 3\n70 32",
     turned(90, {1, 0, 0}), L"0 VERTEX\n10 1\n20 -3\n30 2\n70 32"},
    {"AFaceOfAMeshHasNoPlace", L"0 VERTEX\n10 0\n20 0\n30 0\n70 128\n71 1\n72 2\n73 3",
     moved(1, 2, 3), L"0 VERTEX\n10 0\n20 0\n30 0\n70 128\n71 1\n72 2\n73 3"},
    {"TheEndOfASequenceHasNoPlace", L"0 SEQEND\n8 0", moved(1, 2, 3), L"0 SEQEND\n8 0"},
};

INSTANTIATE_TEST_SUITE_P(Outlines, Form, ::testing::ValuesIn(outlineRows), sentenceOf);

const FormRow textRows[] = {
    {"ATextMirroredInXIsBackward", L"0 TEXT\n10 1\n20 2\n30 0\n40 3\n1 a\n50 10", mirroredInX,
     L"0 TEXT\n10 -1\n20 2\n30 0\n40 3\n1 a\n50 350\n71 2"},
    {"ATextMirroredInYIsBackwardAndTurned", L"0 TEXT\n10 1\n20 2\n30 0\n40 3\n1 a", mirroredInY,
     L"0 TEXT\n10 1\n20 -2\n30 0\n40 3\n1 a\n50 180\n71 2"},
    {"ABackwardTextMirroredIsForwardAgain", L"0 TEXT\n10 1\n20 2\n30 0\n40 3\n1 a\n71 6",
     mirroredInX, L"0 TEXT\n10 -1\n20 2\n30 0\n40 3\n1 a\n71 4"},
    {"GenerationFlagsGoIntoTheFirstPart",
     L"0 TEXT\n100 AcDbText\n10 1\n20 2\n30 0\n40 3\n1 a\n100 AcDbText\n73 0", mirroredInX,
     L"0 TEXT\n100 AcDbText\n10 -1\n20 2\n30 0\n40 3\n1 a\n71 2\n100 AcDbText\n73 0"},
    {"ASecondPointWithoutAlignmentStays",
     L"0 TEXT\n10 1\n20 2\n30 0\n40 3\n1 a\n11 0\n21 0\n31 0\n72 0", moved(1, 2, 3),
     L"0 TEXT\n10 2\n20 4\n30 3\n40 3\n1 a\n11 0\n21 0\n31 0\n72 0"},
    {"TheLengthOfAFieldIsNoAlignment",
     L"0 ATTRIB\n10 1\n20 2\n30 0\n40 3\n1 a\n2 B\n73 5\n11 0\n21 0\n31 0", moved(1, 2, 3),
     L"0 ATTRIB\n10 2\n20 4\n30 3\n40 3\n1 a\n2 B\n73 5\n11 0\n21 0\n31 0"},
    {"AnAttributeOfSeveralLinesAlwaysUsesItsSecondPoint",
     L"0 ATTRIB\n10 1\n20 2\n30 0\n40 3\n1 a\n2 B\n11 7\n21 8\n31 0\n101 Embedded Object\n10 7\n20 "
     L"8\n30 0",
     moved(1, 2, 3),
     L"0 ATTRIB\n10 2\n20 4\n30 3\n40 3\n1 a\n2 B\n11 8\n21 10\n31 3\n101 Embedded Object\n10 "
     L"8\n20 "
     L"10\n30 3"},
    {"AStretchedTextIsWider", L"0 TEXT\n10 1\n20 2\n30 0\n40 3\n1 a", stretched(2, 1, 1),
     L"0 TEXT\n10 2\n20 2\n30 0\n40 3\n1 a\n41 2"},
    {"ATextScaledUniformlyKeepsItsWidthFactor", L"0 TEXT\n10 1\n20 2\n30 0\n40 3\n1 a\n41 0.8",
     doubled, L"0 TEXT\n10 2\n20 4\n30 0\n40 6\n1 a\n41 0.8"},
    {"ATurnedMultilineTextGetsADirection", L"0 MTEXT\n10 1\n20 0\n30 0\n40 3\n1 a", turned(90),
     L"0 MTEXT\n10 0\n20 1\n30 0\n40 3\n1 a\n11 0\n21 1\n31 0"},
    {"AMovedMultilineTextGetsNone", L"0 MTEXT\n10 1\n20 0\n30 0\n40 3\n1 a", moved(1, 2, 3),
     L"0 MTEXT\n10 2\n20 2\n30 3\n40 3\n1 a"},
    {"AMultilineTextSeenFromBehindRunsAlongXUnlessItSaysElse",
     L"0 MTEXT\n10 1\n20 0\n30 0\n40 3\n1 a\n210 0\n220 0\n230 -1", turned(180, {0, 1, 0}),
     L"0 MTEXT\n10 -1\n20 0\n30 0\n40 3\n1 a\n210 0\n220 0\n230 1\n11 -1\n21 0\n31 0"},
    {"AnAngleOfAMultilineTextStaysAnAngle", L"0 MTEXT\n10 1\n20 0\n30 0\n40 3\n1 a\n50 15",
     turned(90), L"0 MTEXT\n10 0\n20 1\n30 0\n40 3\n1 a\n50 105"},
    {"AMirroredMultilineTextIsSeenFromBehind",
     L"0 MTEXT\n10 1\n20 0\n30 0\n40 3\n1 a\n11 1\n21 0\n31 0", mirroredInX,
     L"0 MTEXT\n10 -1\n20 0\n30 0\n40 3\n1 a\n11 -1\n21 0\n31 0\n210 0\n220 0\n230 -1"},
    {"LineSpacingAndFillAreFactorsOfAMultilineText",
     L"0 MTEXT\n10 1\n20 0\n30 0\n40 3\n41 20\n1 a\n44 1.5\n45 1.2", doubled,
     L"0 MTEXT\n10 2\n20 0\n30 0\n40 6\n41 40\n1 a\n44 1.5\n45 1.2"},
    {"TheLinetypeScaleOfAMultilineTextStays",
     L"0 MTEXT\n100 AcDbEntity\n48 2\n100 AcDbMText\n10 1\n20 0\n30 0\n40 3\n1 a", doubled,
     L"0 MTEXT\n100 AcDbEntity\n48 2\n100 AcDbMText\n10 2\n20 0\n30 0\n40 6\n1 a"},
    {"ColumnsFollowTheirMultilineText",
     L"0 MTEXT\n10 1\n20 0\n30 0\n40 3\n1 a\n101 Embedded Object\n70 1\n10 1\n20 0\n30 0\n11 1\n21 "
     L"0\n"
     L"31 0\n40 20\n41 0\n71 2\n44 8\n45 4\n46 5\n46 6\n1001 A\n1000 b",
     turned(90) * doubled,
     L"0 MTEXT\n10 0\n20 2\n30 0\n40 6\n1 a\n11 0\n21 1\n31 0\n101 Embedded Object\n70 1\n10 0\n20 "
     L"1\n"
     L"30 0\n11 0\n21 2\n31 0\n40 40\n41 0\n71 2\n44 16\n45 8\n46 10\n46 12\n1001 A\n1000 b"},
    {"TheTextInsideAnAttributeFollows",
     L"0 ATTRIB\n10 1\n20 0\n30 0\n40 3\n1 a\n2 B\n101 Embedded Object\n10 1\n20 3\n30 0\n40 3\n44 "
     L"1",
     turned(90),
     L"0 ATTRIB\n10 0\n20 1\n30 0\n40 3\n1 a\n2 B\n50 90\n101 Embedded Object\n10 -3\n20 1\n30 "
     L"0\n40 "
     L"3\n44 1\n11 0\n21 1\n31 0"},
    {"TheSizeOfAToleranceIsThatOfItsStyle", L"0 TOLERANCE\n3 ISO\n10 1\n20 2\n30 0\n1 a", doubled,
     L"0 TOLERANCE\n3 ISO\n10 2\n20 4\n30 0\n1 a"},
};

INSTANTIATE_TEST_SUITE_P(Texts, Form, ::testing::ValuesIn(textRows), sentenceOf);

const FormRow referenceRows[] = {
    {"AMovedInsertTellsNoFactors", L"0 INSERT\n2 B\n10 1\n20 2\n30 0", moved(1, 2, 3),
     L"0 INSERT\n2 B\n10 2\n20 4\n30 3"},
    {"AMirroredInsertHasANegativeXFactor", L"0 INSERT\n2 B\n10 1\n20 2\n30 0\n50 10", mirroredInX,
     L"0 INSERT\n2 B\n10 -1\n20 2\n30 0\n50 350\n41 -1"},
    {"AnInsertMirroredTwiceIsAsItWas", L"0 INSERT\n2 B\n10 1\n20 2\n30 0\n41 -1", mirroredInX,
     L"0 INSERT\n2 B\n10 -1\n20 2\n30 0\n41 1"},
    {"AScaledArrayIsFartherApart", L"0 INSERT\n2 B\n10 1\n20 2\n30 0\n70 2\n71 3\n44 5\n45 6",
     doubled, L"0 INSERT\n2 B\n10 2\n20 4\n30 0\n70 2\n71 3\n44 10\n45 12\n41 2\n42 2\n43 2"},
    {"AStretchedInsertHasThreeFactors", L"0 INSERT\n2 B\n10 1\n20 2\n30 3", stretched(2, 3, 4),
     L"0 INSERT\n2 B\n10 2\n20 6\n30 12\n41 2\n42 3\n43 4"},
    {"AMovedDimensionMovesItsPicture",
     L"0 DIMENSION\n100 AcDbDimension\n2 *D1\n10 1\n20 2\n30 0\n70 33\n100 AcDbAlignedDimension\n"
     L"13 4\n23 5\n33 0",
     moved(1, 2, 3),
     L"0 DIMENSION\n100 AcDbDimension\n2 *D1\n10 2\n20 4\n30 3\n70 33\n12 1\n22 2\n32 3\n"
     L"100 AcDbAlignedDimension\n13 5\n23 7\n33 3"},
    {"APictureThatWasMovedBeforeMovesOn",
     L"0 DIMENSION\n2 *D1\n10 1\n20 2\n30 0\n12 7\n22 8\n32 0\n70 1", moved(1, 2, 3),
     L"0 DIMENSION\n2 *D1\n10 2\n20 4\n30 3\n12 8\n22 10\n32 3\n70 1"},
    {"ATurnedHorizontalDimensionGetsAnAngle",
     L"0 DIMENSION\n100 AcDbDimension\n2 *D1\n10 0\n20 0\n30 0\n70 32\n42 5\n"
     L"100 AcDbAlignedDimension\n13 0\n23 0\n33 0\n100 AcDbRotatedDimension",
     turned(30),
     L"0 DIMENSION\n100 AcDbDimension\n2 *D1\n10 0\n20 0\n30 0\n70 32\n42 5\n51 330\n"
     L"100 AcDbAlignedDimension\n13 0\n23 0\n33 0\n50 30\n100 AcDbRotatedDimension"},
    {"ADimensionMeasuresMoreWhenItGrows", L"0 DIMENSION\n10 0\n20 0\n30 0\n70 1\n42 5", doubled,
     L"0 DIMENSION\n10 0\n20 0\n30 0\n70 1\n42 10"},
    {"AnAngleStaysTheSameWhenItGrows", L"0 DIMENSION\n10 0\n20 0\n30 0\n70 2\n42 5", doubled,
     L"0 DIMENSION\n10 0\n20 0\n30 0\n70 2\n42 5"},
    {"ALeaderTellsWhatIsHorizontal", L"0 LEADER\n10 1\n20 0\n30 0\n10 2\n20 0\n30 0\n40 3\n41 4",
     turned(90) * doubled,
     L"0 LEADER\n10 0\n20 2\n30 0\n10 0\n20 4\n30 0\n40 6\n41 8\n211 0\n221 1\n231 0"},
    {"AViewportKeepsItsView",
     L"0 VIEWPORT\n10 100\n20 50\n30 0\n40 80\n41 60\n12 5\n22 6\n17 1\n27 2\n37 3\n45 300\n51 0",
     turned(90) * doubled,
     L"0 VIEWPORT\n10 -100\n20 200\n30 0\n40 160\n41 120\n12 5\n22 6\n17 1\n27 2\n37 3\n45 300\n51 "
     L"0"},
};

INSTANTIATE_TEST_SUITE_P(References, Form, ::testing::ValuesIn(referenceRows), sentenceOf);

const FormRow hatchRows[] = {
    {"APatternIsTurnedAndScaledInAllItsParts",
     L"0 HATCH\n10 0\n20 0\n30 0\n2 P\n70 0\n91 0\n75 0\n76 1\n52 10\n41 2\n77 0\n78 1\n53 45\n43 "
     L"1\n"
     L"44 0\n45 0\n46 3\n79 2\n49 1\n49 -1\n98 1\n10 5\n20 0",
     turned(90) * doubled,
     L"0 HATCH\n10 0\n20 0\n30 0\n2 P\n70 0\n91 0\n75 0\n76 1\n52 100\n41 4\n77 0\n78 1\n53 "
     L"135\n43 "
     L"0\n44 2\n45 -6\n46 0\n79 2\n49 2\n49 -2\n98 1\n10 0\n20 10"},
    {"AMirroredHatchIsSeenFromBehind",
     L"0 HATCH\n10 0\n20 0\n30 0\n210 0\n220 0\n230 1\n2 SOLID\n70 1\n91 1\n92 2\n72 1\n73 1\n93 "
     L"2\n"
     L"10 1\n20 0\n42 1\n10 3\n20 0\n42 0.5\n97 0\n75 0\n76 1\n98 1\n10 2\n20 0",
     mirroredInX,
     L"0 HATCH\n10 0\n20 0\n30 0\n210 0\n220 0\n230 -1\n2 SOLID\n70 1\n91 1\n92 2\n72 1\n73 1\n93 "
     L"2\n"
     L"10 1\n20 0\n42 1\n10 3\n20 0\n42 0.5\n97 0\n75 0\n76 1\n98 1\n10 2\n20 0"},
    {"AnglesOfAClockwiseArcCountClockwise",
     L"0 HATCH\n10 0\n20 0\n30 0\n70 1\n91 1\n92 1\n93 2\n72 2\n10 0\n20 0\n40 2\n50 350\n51 "
     L"400\n73 "
     L"1\n72 2\n10 0\n20 0\n40 2\n50 10\n51 60\n73 0\n97 0\n75 0\n98 0",
     turned(30),
     L"0 HATCH\n10 0\n20 0\n30 0\n70 1\n91 1\n92 1\n93 2\n72 2\n10 0\n20 0\n40 2\n50 20\n51 70\n73 "
     L"1\n72 2\n10 0\n20 0\n40 2\n50 340\n51 390\n73 0\n97 0\n75 0\n98 0"},
    {"ACircleInABoundaryBeginsWhereItBegan",
     L"0 HATCH\n10 0\n20 0\n30 0\n70 1\n91 1\n92 1\n93 1\n72 2\n10 1\n20 0\n40 2\n50 0\n51 360\n73 "
     L"1\n"
     L"97 0\n75 0\n98 0",
     turned(90),
     L"0 HATCH\n10 0\n20 0\n30 0\n70 1\n91 1\n92 1\n93 1\n72 2\n10 0\n20 1\n40 2\n50 0\n51 360\n73 "
     L"1\n"
     L"97 0\n75 0\n98 0"},
    {"AGradientTurnsInRadians",
     L"0 HATCH\n10 0\n20 0\n30 0\n70 1\n91 0\n75 0\n98 0\n450 1\n460 0.5\n461 0\n", turned(90),
     L"0 HATCH\n10 0\n20 0\n30 0\n70 1\n91 0\n75 0\n98 0\n450 1\n460 2.0708\n461 0"},
    {"TangentsOfASplineKeepTheirLength",
     L"0 HATCH\n10 0\n20 0\n30 0\n70 1\n91 1\n92 1\n93 1\n72 4\n94 2\n73 0\n74 0\n95 0\n96 1\n10 "
     L"1\n20 "
     L"0\n97 1\n11 1\n21 0\n12 1\n22 0\n13 0\n23 3\n97 0\n75 0\n98 0",
     turned(90) * doubled,
     L"0 HATCH\n10 0\n20 0\n30 0\n70 1\n91 1\n92 1\n93 1\n72 4\n94 2\n73 0\n74 0\n95 0\n96 1\n10 "
     L"0\n20 "
     L"2\n97 1\n11 0\n21 2\n12 0\n22 1\n13 -3\n23 0\n97 0\n75 0\n98 0"},
    {"APatternThatASolidHatchRemembersStays",
     L"0 HATCH\n10 0\n20 0\n30 0\n70 1\n91 0\n75 0\n76 1\n41 2\n98 0", stretched(2, 1, 1),
     L"0 HATCH\n10 0\n20 0\n30 0\n70 1\n91 0\n75 0\n76 1\n41 2\n98 0"},
    {"TheElevationOfAHatchRises", L"0 HATCH\n10 0\n20 0\n30 1\n70 1\n91 0\n75 0\n98 1\n10 1\n20 2",
     moved(1, 1, 5), L"0 HATCH\n10 0\n20 0\n30 6\n70 1\n91 0\n75 0\n98 1\n10 2\n20 3"},
    {"GroupsAheadOfTheHatchAreNoBoundary",
     L"0 HATCH\n100 AcDbEntity\n92 3\n310 AA\n100 AcDbHatch\n10 0\n20 0\n30 0\n70 1\n91 0\n75 "
     L"0\n98 0",
     moved(1, 1, 0),
     L"0 HATCH\n100 AcDbEntity\n92 3\n310 AA\n100 AcDbHatch\n10 0\n20 0\n30 0\n70 1\n91 0\n75 "
     L"0\n98 "
     L"0"},
};

INSTANTIATE_TEST_SUITE_P(Hatches, Form, ::testing::ValuesIn(hatchRows), sentenceOf);

const FormRow extendedRows[] = {
    {"APositionFollows", L"0 SEQEND\n1001 A\n1011 1\n1021 2\n1031 3", moved(10, 20, 30),
     L"0 SEQEND\n1001 A\n1011 11\n1021 22\n1031 33"},
    {"ADisplacementIsTurnedAndScaled", L"0 SEQEND\n1001 A\n1012 1\n1022 0\n1032 0",
     moved(10, 20, 30) * turned(90) * doubled, L"0 SEQEND\n1001 A\n1012 0\n1022 2\n1032 0"},
    {"ADirectionIsTurnedOnly", L"0 SEQEND\n1001 A\n1013 1\n1023 0\n1033 0",
     moved(10, 20, 30) * turned(90) * doubled, L"0 SEQEND\n1001 A\n1013 0\n1023 1\n1033 0"},
    {"ADistanceAndAFactorAreScaled", L"0 SEQEND\n1001 A\n1041 3\n1042 1.5", doubled,
     L"0 SEQEND\n1001 A\n1041 6\n1042 3"},
    {"OtherPointsAndNumbersStay",
     L"0 SEQEND\n1001 A\n1010 1\n1020 2\n1030 3\n1040 4\n1070 5\n1071 6", doubled,
     L"0 SEQEND\n1001 A\n1010 1\n1020 2\n1030 3\n1040 4\n1070 5\n1071 6"},
    {"TwoOfAKindAreTwo",
     L"0 SEQEND\n1001 A\n1011 1\n1021 2\n1031 3\n1011 4\n1021 5\n1031 6\n1001 B\n1011 7\n1021 "
     L"8\n1031 "
     L"9",
     moved(1, 1, 1),
     L"0 SEQEND\n1001 A\n1011 2\n1021 3\n1031 4\n1011 5\n1021 6\n1031 7\n1001 B\n1011 8\n1021 "
     L"9\n1031 "
     L"10"},
};

INSTANTIATE_TEST_SUITE_P(ExtendedData, Form, ::testing::ValuesIn(extendedRows), sentenceOf);

// --- what stays as it stands in the file ---------------------------------------------------------

/// Each group with bytes, as a record from a file has them.
Groups readRecord(const wchar_t* lines)
{
    Groups record = recordFrom(lines);
    for (Group& group : record) {
        group.raw = "bytes of the file";
    }
    return record;
}

/// Codes of the groups that lost their bytes or never had any.
std::vector<int> changedCodes(const Groups& record)
{
    std::vector<int> codes;
    for (const Group& group : record) {
        if (group.raw.empty()) {
            codes.push_back(group.code);
        }
    }
    return codes;
}

struct BytesRow
{
    const char* sentence;
    const wchar_t* record;
    AcGeMatrix3d matrix;
    std::vector<int> changed;
};

std::ostream& operator<<(std::ostream& out, const BytesRow& row)
{
    return out << row.sentence;
}

class Bytes : public ::testing::TestWithParam<BytesRow>
{
};

TEST_P(Bytes, AreLostByChangedGroupsOnly)
{
    Groups record = readRecord(GetParam().record);
    ASSERT_EQ(transformRecord(record, GetParam().matrix), Acad::eOk);
    EXPECT_EQ(changedCodes(record), GetParam().changed);
}

const wchar_t* const kTiltedArc
    = L"0 ARC\n8 0\n10 1\n20 2\n30 3\n40 2.5\n50 30\n51 400\n39 0\n210 0.48\n220 -0.6\n230 0.64";
const wchar_t* const kText = L"0 TEXT\n10 1\n20 2\n30 0\n40 2.5\n1 a\n50 30\n41 0.8\n51 15\n72 0";

const wchar_t* const kTiltedInsert
    = L"0 INSERT\n2 B\n10 1\n20 2\n30 3\n41 1\n42 1\n43 1\n210 0.36\n220 0.48\n230 0.8";
const wchar_t* const kFewDigits
    = L"0 CIRCLE\n10 1\n20 2\n30 3\n40 2.3\n39 1.7\n210 0.577\n220 0.577\n230 0.577";
const wchar_t* const kFewDigitsLine
    = L"0 LINE\n10 1\n20 2\n30 3\n11 4\n21 5\n31 6\n39 1.7\n210 0.577\n220 0.577\n230 0.577";

const BytesRow bytesRows[] = {
    {"OfALineMovedInX",
     L"0 LINE\n8 0\n10 1\n20 2\n30 3\n11 4\n21 5\n31 6",
     moved(1, 0, 0),
     {10, 11}},
    {"OfATiltedArcAsItIs", kTiltedArc, {}, {}},
    {"OfATiltedArcThatMoves", kTiltedArc, moved(1, 2, 3), {10, 20, 30}},
    {"OfATiltedArcThatMovesAlongItsNormal", kTiltedArc, moved(0.48, -0.6, 0.64), {30}},
    {"OfACircleThatTurnsAroundItself", L"0 CIRCLE\n10 0\n20 0\n30 3\n40 2.5\n39 1", turned(37), {}},
    {"OfATiltedArcThatGrows", kTiltedArc, stretched(2.7, 2.7, 2.7), {10, 20, 30, 40}},
    {"OfAnInsertWithoutAnAngleThatGrows",
     kTiltedInsert,
     stretched(2.7, 2.7, 2.7),
     {10, 20, 30, 41, 42, 43}},
    {"OfANormalOfFewDigits", kFewDigits, moved(1, 2, 3), {10, 20, 30}},
    {"OfANormalOfFewDigitsThatGrows", kFewDigits, stretched(2.7, 2.7, 2.7), {10, 20, 30, 40, 39}},
    {"OfAnExtrusionOfFewDigits", kFewDigitsLine, moved(1, 2, 3), {10, 20, 30, 11, 21, 31}},
    {"OfAnExtrusionThatTurns",
     kFewDigitsLine,
     turned(77, {1, 2, 3}),
     {10, 20, 30, 11, 21, 31, 210, 220, 230}},
    {"OfACircleThatTurnsInSpace", kFewDigits, turned(77, {1, 2, 3}), {10, 20, 210, 220, 230}},
    {"OfATextThatTurns", kText, turned(90), {10, 20, 50}},
    {"OfATextThatGrows", kText, doubled, {10, 20, 40}},
    {"OfAnInsertThatTurns",
     L"0 INSERT\n2 B\n10 1\n20 2\n30 0\n41 2\n42 2\n43 2\n50 10",
     turned(30),
     {10, 20, 50}},
    {"OfAnEllipseThatMoves",
     L"0 ELLIPSE\n10 1\n20 2\n30 3\n11 2\n21 1\n31 0\n40 0.3\n41 0\n42 6.28\n210 0\n220 0\n230 1",
     moved(1, 2, 3),
     {10, 20, 30}},
};

INSTANTIATE_TEST_SUITE_P(Rows, Bytes, ::testing::ValuesIn(bytesRows),
                         [](const auto& row) { return row.param.sentence; });

TEST(Extrusion, IsWrittenWithoutRoundingErrors)
{
    Groups line = recordFrom(L"0 LINE\n39 2\n10 0\n20 0\n30 0\n11 0\n21 0\n31 5");
    ASSERT_EQ(transformRecord(line, turned(90, {0, 1, 0})), Acad::eOk);
    EXPECT_EQ(line.point(210, line.body()), (Point {1.0, 0.0, 0.0}));
}

TEST(AngleInForm, ThatIsNotThereIsNotAddedByRounding)
{
    for (int i = 0; i < 100; ++i) {
        Groups insert = recordFrom(L"0 INSERT\n2 B\n10 1\n20 2\n30 3");
        insert.setPoint(210, insert.body(), {std::cos(i), std::sin(i), 0.1 * i - 5.0});
        ASSERT_EQ(transformRecord(insert, stretched(2540, 2540, 2540)), Acad::eOk);
        EXPECT_FALSE(insert.find(50)) << i;
    }
}

// --- frames --------------------------------------------------------------------------------------

TEST(PolylineFrame, IsReadFromThePolyline)
{
    const PolylineFrame frame = PolylineFrame::of(
        recordFrom(L"0 POLYLINE\n66 1\n10 0\n20 0\n30 2.5\n70 1\n210 0\n220 1\n230 0"));
    EXPECT_TRUE(frame.isFlat);
    EXPECT_EQ(frame.normal, AcGeVector3d(0, 1, 0));
    EXPECT_EQ(frame.elevation, 2.5);
}

TEST(PolylineFrame, OfA3DPolylineOrAMeshIsTheWorld)
{
    EXPECT_FALSE(PolylineFrame::of(recordFrom(L"0 POLYLINE\n70 8")).isFlat);
    EXPECT_FALSE(PolylineFrame::of(recordFrom(L"0 POLYLINE\n70 16")).isFlat);
    EXPECT_FALSE(PolylineFrame::of(recordFrom(L"0 POLYLINE\n70 65")).isFlat);
    EXPECT_TRUE(PolylineFrame::of(recordFrom(L"0 POLYLINE\n70 135")).isFlat);
    EXPECT_TRUE(PolylineFrame::of(recordFrom(L"0 POLYLINE")).isFlat);
}

TEST(PolylineFrame, SaysWhereAVertexIs)
{
    const PolylineFrame wall {.normal = {0, -1, 0}, .elevation = 4};
    Groups vertex = recordFrom(L"0 VERTEX\n10 1\n20 2\n30 0\n42 0.5");
    EXPECT_EQ(transformRecord(vertex, moved(10, 20, 30), &wall), Acad::eOk);
    EXPECT_EQ(textOf(vertex), L"0 VERTEX\n10 11\n20 32\n30 0\n42 0.5\n");
}

TEST(PolylineFrame, CountsMoreThanTheFlagsOfAVertex)
{
    const PolylineFrame space {.isFlat = false};
    Groups vertex = recordFrom(L"0 VERTEX\n10 1\n20 2\n30 3");
    EXPECT_EQ(transformRecord(vertex, turned(90, {1, 0, 0}), &space), Acad::eOk);
    EXPECT_EQ(textOf(vertex), L"0 VERTEX\n10 1\n20 -3\n30 2\n");
}

} // namespace

} // namespace corma::host
