#include "host/transform.h"
#include "host/transform/samples.h"

#include <cmath>
#include <gtest/gtest.h>
#include <iterator>
#include <limits>
#include <numbers>
#include <ostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace corma::host {

namespace {

using test::moved;
using test::recordFrom;
using test::samplesOf;
using test::stretched;
using test::textOf;

constexpr double kPi = std::numbers::pi;

// --- the entities --------------------------------------------------------------------------------

struct EntityRow
{
    const char* name;
    const wchar_t* lines;
    std::vector<const wchar_t*> subEntities = {};
};

std::ostream& operator<<(std::ostream& out, const EntityRow& row)
{
    return out << row.name;
}

const EntityRow planarEntities[] = {
    {"Circle", L"0 CIRCLE\n100 AcDbCircle\n39 1.5\n10 3\n20 4\n30 2\n40 2.5"},
    {"Arc", L"0 ARC\n100 AcDbCircle\n39 -2\n10 3\n20 4\n30 2\n40 2.5\n100 AcDbArc\n50 20\n51 110"},
    {"ArcThroughTheXAxis",
     L"0 ARC\n100 AcDbCircle\n10 3\n20 4\n40 2.5\n100 AcDbArc\n50 300\n51 30"},
    {"ArcOfR12", L"0 ARC\n10 3\n20 4\n30 0\n40 2.5\n50 20\n51 110"},
    {"Solid",
     L"0 SOLID\n100 AcDbTrace\n10 1\n20 1\n30 2\n11 4\n21 1\n31 2\n12 1\n22 3\n32 2\n"
     L"13 5\n23 4\n33 2\n39 1.5"},
    {"SolidWithThreeCorners", L"0 SOLID\n10 1\n20 1\n11 4\n21 1\n12 1\n22 3"},
    {"Trace", L"0 TRACE\n10 1\n20 1\n30 2\n11 4\n21 1\n31 2\n12 1\n22 3\n32 2\n13 5\n23 4\n33 2"},
    {"LightPolyline",
     L"0 LWPOLYLINE\n100 AcDbPolyline\n90 4\n70 1\n38 2.5\n39 1\n"
     L"10 0\n20 0\n42 0.5\n10 4\n20 0\n40 0.2\n41 0.6\n10 4\n20 3\n42 -1.2\n"
     L"10 1\n20 5"},
    {"LightPolylineOfOneWidth",
     L"0 LWPOLYLINE\n100 AcDbPolyline\n90 3\n70 0\n43 0.3\n10 1\n20 0\n10 4\n20 0\n10 4\n20 3"},
    {"FlatPolyline",
     L"0 POLYLINE\n100 AcDb2dPolyline\n66 1\n10 0\n20 0\n30 2.5\n39 1\n70 0\n40 0.1\n41 0.2",
     {L"0 VERTEX\n100 AcDbVertex\n100 AcDb2dVertex\n10 1\n20 2\n30 2.5\n42 0.7\n50 30",
      L"0 VERTEX\n100 AcDbVertex\n100 AcDb2dVertex\n10 4\n20 2\n30 2.5\n40 0.5\n41 0",
      L"0 VERTEX\n100 AcDbVertex\n100 AcDb2dVertex\n10 4\n20 6\n30 0\n42 -0.3",
      L"0 VERTEX\n10 0\n20 6", L"0 SEQEND"}},
    {"Text",
     L"0 TEXT\n100 AcDbText\n10 1\n20 2\n30 3\n40 2.5\n1 tekst\n50 30\n41 0.8\n51 15\n39 1"},
    {"TextInTheMiddle",
     L"0 TEXT\n100 AcDbText\n10 1\n20 2\n30 3\n40 2.5\n1 tekst\n72 4\n"
     L"11 5\n21 6\n31 3"},
    {"TextOnTop",
     L"0 TEXT\n100 AcDbText\n10 1\n20 2\n40 2.5\n1 tekst\n11 5\n21 6\n"
     L"100 AcDbText\n73 3"},
    {"BackwardText", L"0 TEXT\n10 1\n20 2\n30 3\n40 2.5\n1 tekst\n50 30\n51 15\n71 2"},
    {"UpsideDownText", L"0 TEXT\n10 1\n20 2\n30 3\n40 2.5\n1 tekst\n50 30\n51 15\n71 4"},
    {"Attribute",
     L"0 ATTRIB\n100 AcDbText\n10 1\n20 2\n30 3\n40 2.5\n1 waarde\n50 30\n72 1\n"
     L"11 5\n21 6\n31 3\n100 AcDbAttribute\n2 NAAM\n70 0\n73 7\n74 2"},
    {"AttributeDefinition",
     L"0 ATTDEF\n100 AcDbText\n10 1\n20 2\n30 3\n40 2.5\n1 waarde\n"
     L"100 AcDbAttributeDefinition\n3 vraag\n2 NAAM\n70 0"},
    {"Insert",
     L"0 INSERT\n100 AcDbBlockReference\n2 DEUR\n10 1\n20 2\n30 3\n41 2\n42 3\n43 4\n50 25"},
    {"InsertOfTheBlockAsItIs", L"0 INSERT\n2 DEUR\n10 1\n20 2\n30 0"},
    {"MirroredInsert", L"0 INSERT\n2 DEUR\n10 1\n20 2\n30 3\n41 -2\n42 3\n50 25"},
    {"ArrayOfInserts",
     L"0 INSERT\n100 AcDbMInsertBlock\n2 DEUR\n10 1\n20 2\n30 3\n42 2\n50 25\n"
     L"70 3\n71 2\n44 10\n45 -7"},
};

const EntityRow fillEntities[] = {
    {"SolidHatch",
     L"0 HATCH\n100 AcDbHatch\n10 0\n20 0\n30 2.5\n2 SOLID\n70 1\n71 0\n91 1\n"
     L"92 7\n72 1\n73 1\n93 3\n10 0\n20 0\n42 0.5\n10 4\n20 0\n42 0\n10 4\n20 3\n42 -1\n"
     L"97 0\n75 0\n76 1\n98 1\n10 1\n20 1"},
    {"HatchOfEdges",
     L"0 HATCH\n100 AcDbHatch\n10 0\n20 0\n30 2.5\n2 STEEN\n70 0\n71 1\n91 2\n"
     L"92 1\n93 5\n72 1\n10 0\n20 0\n11 4\n21 0\n"
     L"72 2\n10 4\n20 2\n40 2\n50 270\n51 380\n73 1\n"
     L"72 2\n10 1\n20 2\n40 3\n50 10\n51 95\n73 0\n"
     L"72 3\n10 2\n20 5\n11 3\n21 1\n40 0.4\n50 20\n51 130\n73 1\n"
     L"72 3\n10 2\n20 5\n11 3\n21 1\n40 0.4\n50 20\n51 130\n73 0\n"
     L"97 1\n330 1F\n"
     L"92 1\n93 3\n72 4\n94 2\n73 1\n74 0\n95 6\n96 3\n40 0\n40 0\n40 0\n40 1\n40 1\n40 1\n"
     L"10 0\n20 0\n42 1\n10 2\n20 3\n42 0.5\n10 4\n20 0\n42 1\n"
     L"97 2\n11 0\n21 0\n11 4\n21 0\n12 0.6\n22 0.8\n13 0.6\n23 -0.8\n"
     L"72 2\n10 9\n20 9\n40 2\n50 0\n51 360\n73 1\n"
     L"72 1\n10 4\n20 0\n11 0\n21 0\n97 0\n"
     L"75 1\n76 1\n52 30\n41 1.5\n77 0\n78 2\n"
     L"53 75\n43 1\n44 2\n45 -0.5\n46 0.25\n79 0\n"
     L"53 345\n43 0\n44 1\n45 0.25\n46 0.5\n79 2\n49 0.5\n49 -0.25\n47 0.01\n98 2\n10 1\n20 1\n"
     L"10 2\n20 1"},
    {"MultilineText",
     L"0 MTEXT\n100 AcDbMText\n10 1\n20 2\n30 3\n40 2.5\n41 30\n46 4\n71 1\n1 a\n"
     L"42 12\n43 5"},
    {"Shape", L"0 SHAPE\n100 AcDbShape\n39 1\n10 1\n20 2\n30 3\n40 2.5\n2 S\n50 20\n41 0.8\n51 10"},
    {"ShapeOfR12", L"0 SHAPE\n10 1\n20 2\n30 3\n40 2.5\n2 S\n50 20"},
    {"Tolerance", L"0 TOLERANCE\n100 AcDbFcf\n3 STANDARD\n10 1\n20 2\n30 3\n1 a"},
    {"RotatedDimension",
     L"0 DIMENSION\n100 AcDbDimension\n2 *D1\n10 9\n20 4\n30 1\n11 5\n21 4\n31 2\n70 32\n42 8\n"
     L"53 10\n51 350\n100 AcDbAlignedDimension\n13 1\n23 1\n33 1\n14 9\n24 1\n34 1\n50 15\n52 70\n"
     L"100 AcDbRotatedDimension"},
    {"AngularDimension",
     L"0 DIMENSION\n100 AcDbDimension\n2 *D2\n10 9\n20 4\n30 0\n11 5\n21 4\n31 0\n70 34\n42 0.5\n"
     L"100 AcDb2LineAngularDimension\n13 1\n23 1\n33 0\n14 9\n24 1\n34 0\n15 2\n25 2\n35 0\n"
     L"16 3\n26 3\n36 0"},
    {"RadialDimension",
     L"0 DIMENSION\n2 *D3\n10 9\n20 4\n30 0\n11 5\n21 4\n31 0\n70 4\n15 2\n25 2\n"
     L"35 0\n40 3"},
    {"Leader",
     L"0 LEADER\n100 AcDbLeader\n3 STANDARD\n71 1\n72 0\n73 3\n40 2\n41 3\n76 2\n10 1\n20 2\n"
     L"30 3\n10 4\n20 6\n30 3\n211 0.6\n221 0.8\n231 0\n212 1\n222 0\n232 0\n213 0\n223 2\n"
     L"233 0"},
};

const EntityRow spaceEntities[] = {
    {"Line", L"0 LINE\n100 AcDbLine\n10 1\n20 2\n30 3\n11 4\n21 6\n31 8"},
    {"ThickLine", L"0 LINE\n39 2\n10 1\n20 2\n30 3\n11 4\n21 6\n31 8\n210 0\n220 0.6\n230 0.8"},
    {"LineWithoutHeight", L"0 LINE\n10 1\n20 2\n11 4\n21 6"},
    {"Point", L"0 POINT\n100 AcDbPoint\n10 1\n20 2\n30 3\n39 -2\n50 20"},
    {"Ray", L"0 RAY\n100 AcDbRay\n10 1\n20 2\n30 3\n11 0.6\n21 0\n31 0.8"},
    {"ConstructionLine", L"0 XLINE\n100 AcDbXline\n10 1\n20 2\n30 3\n11 0\n21 1\n31 0"},
    {"Face",
     L"0 3DFACE\n100 AcDbFace\n10 1\n20 1\n30 2\n11 4\n21 1\n31 3\n12 4\n22 3\n32 4\n13 1\n"
     L"23 3\n33 5\n70 2"},
    {"Spline",
     L"0 SPLINE\n100 AcDbSpline\n70 0\n71 2\n72 6\n73 3\n74 2\n40 0\n40 0\n40 0\n40 1\n"
     L"40 1\n40 1\n10 0\n20 0\n30 0\n10 2\n20 3\n30 1\n10 4\n20 0\n30 2\n11 0\n21 0\n31 0\n"
     L"11 4\n21 0\n31 2\n12 0.6\n22 0.8\n32 0\n13 0\n23 0\n33 1"},
    {"PlaneSpline",
     L"0 SPLINE\n100 AcDbSpline\n210 0\n220 0\n230 1\n70 8\n71 2\n72 6\n73 3\n74 0\n"
     L"40 0\n40 0\n40 0\n40 1\n40 1\n40 1\n10 0\n20 0\n30 0\n10 2\n20 3\n30 0\n"
     L"10 4\n20 0\n30 0"},
    {"PolylineInSpace",
     L"0 POLYLINE\n100 AcDb3dPolyline\n66 1\n10 0\n20 0\n30 0\n70 8",
     {L"0 VERTEX\n100 AcDbVertex\n100 AcDb3dPolylineVertex\n10 1\n20 2\n30 3\n70 32",
      L"0 VERTEX\n10 4\n20 2\n30 0\n70 32", L"0 SEQEND"}},
    {"Mesh",
     L"0 POLYLINE\n66 1\n10 0\n20 0\n30 0\n70 16\n71 2\n72 1",
     {L"0 VERTEX\n10 1\n20 2\n30 3\n70 64", L"0 VERTEX\n10 4\n20 2\n30 0\n70 64", L"0 SEQEND"}},
    {"PolyfaceMesh",
     L"0 POLYLINE\n66 1\n10 0\n20 0\n30 0\n70 64\n71 3\n72 1",
     {L"0 VERTEX\n10 1\n20 2\n30 3\n70 192", L"0 VERTEX\n10 4\n20 2\n30 0\n70 192",
      L"0 VERTEX\n10 4\n20 5\n30 0\n70 192",
      L"0 VERTEX\n10 0\n20 0\n30 0\n70 128\n71 1\n72 2\n73 3", L"0 SEQEND"}},
    {"MultilineTextByAVector",
     L"0 MTEXT\n100 AcDbMText\n10 1\n20 2\n30 3\n40 2.5\n41 30\n1 a\n"
     L"210 0\n220 -1\n230 0\n11 0.6\n21 0\n31 0.8"},
    {"MultilineTextByAnAngle",
     L"0 MTEXT\n100 AcDbMText\n10 1\n20 2\n30 3\n40 2.5\n41 30\n1 a\n50 40"},
    {"MultilineTextInColumns",
     L"0 MTEXT\n100 AcDbMText\n10 1\n20 2\n30 3\n40 2.5\n41 30\n1 a\n11 1\n21 0\n31 0\n"
     L"101 Embedded Object\n70 1\n10 1\n20 0\n30 0\n11 1\n21 2\n31 3\n40 30\n41 0\n42 25\n43 12\n"
     L"71 2\n72 2\n44 12\n45 6\n73 0\n74 0\n46 5\n46 7"},
    {"AttributeOfSeveralLines",
     L"0 ATTRIB\n100 AcDbText\n10 1\n20 2\n30 3\n40 2.5\n1 a\n100 AcDbAttribute\n2 NAAM\n70 0\n74 "
     L"3\n"
     L"71 2\n72 0\n11 1\n21 5\n31 3\n101 Embedded Object\n10 1\n20 5\n30 3\n40 2.5\n41 20\n46 "
     L"0\n71 1\n"
     L"1 a"},
    {"ToleranceByAVector",
     L"0 TOLERANCE\n100 AcDbFcf\n3 STANDARD\n10 1\n20 2\n30 3\n1 a\n11 0.6\n21 "
     L"0.8\n31 0"},
    {"Viewport", L"0 VIEWPORT\n100 AcDbViewport\n10 100\n20 50\n30 0\n40 80\n41 60\n45 300"},
};

const EntityRow ellipses[] = {
    {"Ellipse",
     L"0 ELLIPSE\n100 AcDbEllipse\n10 1\n20 2\n30 3\n11 3\n21 4\n31 0\n40 0.4\n41 0\n"
     L"42 6.283185307179586"},
    {"EllipticArc",
     L"0 ELLIPSE\n100 AcDbEllipse\n10 1\n20 2\n30 3\n11 3\n21 4\n31 0\n40 0.4\n41 0.5\n"
     L"42 2.5"},
    {"EllipticArcThroughTheMajorAxis",
     L"0 ELLIPSE\n100 AcDbEllipse\n10 1\n20 2\n30 3\n11 3\n21 4\n31 "
     L"0\n40 0.4\n41 5\n42 7.5"},
    {"TiltedEllipticArc",
     L"0 ELLIPSE\n100 AcDbEllipse\n10 1\n20 2\n30 3\n11 0\n21 3\n31 4\n210 0\n220 -0.8\n230 0.6\n"
     L"40 0.4\n41 0.5\n42 2.5"},
};

// --- the transformations -------------------------------------------------------------------------

struct MotionRow
{
    const char* name;
    AcGeMatrix3d matrix;
};

AcGeMatrix3d turnedAboutPoint(double degrees, const AcGeVector3d& axis)
{
    return AcGeMatrix3d().setToRotation(degrees * kPi / 180.0, axis, {1, 2, 3});
}

const AcGeMatrix3d skewed
    = AcGeMatrix3d().setCoordSystem({5, 6, 7}, {2, 0.5, 0}, {0.3, 1, 0}, {0, 0, 1.5});

const AcGeMatrix3d skewedInSpace
    = AcGeMatrix3d().setCoordSystem({5, 6, 7}, {2, 0.5, -1}, {0.3, 1, 0.4}, {0.7, -0.2, 1.5});

const MotionRow similarities[] = {
    {"Moved", moved(10, -20, 30)},
    {"TurnedAboutX", turnedAboutPoint(40, {1, 0, 0})},
    {"TurnedAboutY", turnedAboutPoint(-75, {0, 1, 0})},
    {"TurnedAboutZ", turnedAboutPoint(30, {0, 0, 1})},
    {"TurnedByAQuarter", turnedAboutPoint(90, {0, 0, 1})},
    {"TurnedByAHalf", turnedAboutPoint(180, {0, 0, 1})},
    {"TurnedOver", turnedAboutPoint(180, {1, 0, 0})},
    {"MirroredInX", stretched(-1, 1, 1)},
    {"MirroredInY", stretched(1, -1, 1)},
    {"MirroredInZ", stretched(1, 1, -1)},
    {"MirroredAtAPoint", stretched(-1, -1, -1)},
    {"MirroredAtADiagonal", turnedAboutPoint(25, {0, 0, 1}) * stretched(-1, 1, 1)},
    {"Enlarged", stretched(2.5, 2.5, 2.5)},
    {"Reduced", AcGeMatrix3d().setToScaling(0.001, {5, 6, 7})},
    {"AllAtOnce", moved(1, 2, 3) * turnedAboutPoint(33, {1, 2, -3}) * stretched(3, 3, 3)},
    {"AllAtOnceMirrored", moved(1, 2, 3) * turnedAboutPoint(33, {1, 2, -3}) * stretched(3, -3, 3)},
};

struct Normal
{
    const char* name;
    AcGeVector3d vector;
};

const Normal normals[] = {
    {"Upwards", {0, 0, 1}},         {"Downwards", {0, 0, -1}},
    {"AlongX", {1, 0, 0}},          {"AlongMinusY", {0, -1, 0}},
    {"Tilted", {0.48, -0.6, 0.64}}, {"NearlyUpwards", {0.01, 0.0, 0.99994999874993749}},
};

struct Drawn
{
    Groups entity;
    std::vector<Groups> subEntities;

    explicit Drawn(const EntityRow& row)
        : entity(recordFrom(row.lines))
    {
        for (const wchar_t* lines : row.subEntities) {
            subEntities.push_back(recordFrom(lines));
        }
    }

    void setNormal(const AcGeVector3d& normal)
    {
        const bool isDefault = normal == AcGeVector3d::kZAxis;
        const GroupRange own = entity.subclass(firstMarker());
        if (!isDefault) {
            entity.setPoint(210, own, {normal.x, normal.y, normal.z});
        }
    }

    [[nodiscard]] test::Samples samples() const { return samplesOf(entity, subEntities); }

    Acad::ErrorStatus transform(const AcGeMatrix3d& matrix)
    {
        return transformRecords(entity, subEntities, matrix);
    }

    [[nodiscard]] std::wstring text() const
    {
        std::wstring text = textOf(entity);
        for (const Groups& sub : subEntities) {
            text += textOf(sub);
        }
        return text;
    }

private:
    [[nodiscard]] std::wstring firstMarker() const
    {
        const auto at = entity.find(code::subclass);
        return at ? entity[*at].text() : std::wstring();
    }
};

void expectThatItFollows(Drawn drawn, const AcGeMatrix3d& matrix)
{
    const test::Samples expected = drawn.samples().transformed(matrix);
    ASSERT_EQ(drawn.transform(matrix), Acad::eOk);
    test::expectSame(drawn.samples(), expected);
}

template<class Row> std::string nameOf(const ::testing::TestParamInfo<Row>& row)
{
    return row.param.name;
}

// --- similarities --------------------------------------------------------------------------------

/// Turned about any axis, moved, scaled, and every second one mirrored; the same in every run.
std::vector<MotionRow> randomSimilarities()
{
    std::mt19937 engine(20240229);
    const auto number = [&engine](double low, double high) {
        return low + (high - low) * static_cast<double>(engine()) * 0x1p-32;
    };
    std::vector<MotionRow> rows;
    for (int i = 0; i < 20; ++i) {
        const double scale = std::exp(number(-3, 3));
        const AcGeVector3d axis(number(-1, 1), number(-1, 1), number(-1, 1));
        rows.push_back({"random",
                        moved(number(-9, 9), number(-9, 9), number(-9, 9))
                            * turnedAboutPoint(number(0, 360), axis)
                            * stretched(i % 2 == 0 ? scale : -scale, scale, scale)});
    }
    return rows;
}

void expectThatItFollowsAll(const Drawn& drawn, const std::vector<MotionRow>& motions)
{
    for (const MotionRow& motion : motions) {
        SCOPED_TRACE(motion.name);
        expectThatItFollows(drawn, motion.matrix);
    }
}

std::vector<MotionRow> allSimilarities()
{
    std::vector<MotionRow> rows = randomSimilarities();
    rows.insert(rows.begin(), std::begin(similarities), std::end(similarities));
    return rows;
}

class PlanarEntity : public ::testing::TestWithParam<EntityRow>
{
};

TEST_P(PlanarEntity, LooksTheSameTransformedOutOfAnyPlane)
{
    for (const auto& [name, normal] : normals) {
        SCOPED_TRACE(name);
        Drawn drawn(GetParam());
        drawn.setNormal(normal);
        expectThatItFollowsAll(drawn, allSimilarities());
    }
}

INSTANTIATE_TEST_SUITE_P(Outlines, PlanarEntity, ::testing::ValuesIn(planarEntities),
                         nameOf<EntityRow>);
INSTANTIATE_TEST_SUITE_P(FillsAndNotes, PlanarEntity, ::testing::ValuesIn(fillEntities),
                         nameOf<EntityRow>);

class EntityInSpace : public ::testing::TestWithParam<EntityRow>
{
};

TEST_P(EntityInSpace, LooksTheSameTransformed)
{
    expectThatItFollowsAll(Drawn(GetParam()), allSimilarities());
}

INSTANTIATE_TEST_SUITE_P(Rows, EntityInSpace, ::testing::ValuesIn(spaceEntities),
                         nameOf<EntityRow>);
INSTANTIATE_TEST_SUITE_P(Ellipses, EntityInSpace, ::testing::ValuesIn(ellipses), nameOf<EntityRow>);

// --- other transformations, where there is a form for the result ---------------------------------

const MotionRow stretchings[] = {
    {"StretchedInX", stretched(3, 1, 1)},
    {"StretchedInZ", stretched(1, 1, 0.5)},
    {"StretchedAndMirrored", stretched(-3, 2, 1.5)},
    {"Skewed", skewed},
    {"SkewedInSpace", skewedInSpace},
};

const EntityRow stretchable[] = {
    {"Line", L"0 LINE\n39 2\n10 1\n20 2\n30 3\n11 4\n21 6\n31 8\n210 0\n220 0.6\n230 0.8"},
    {"Ray", L"0 RAY\n100 AcDbRay\n10 1\n20 2\n30 3\n11 0.6\n21 0\n31 0.8"},
    {"Face", L"0 3DFACE\n10 1\n20 1\n30 2\n11 4\n21 1\n31 3\n12 4\n22 3\n32 4\n13 1\n23 3\n33 5"},
    {"Solid",
     L"0 SOLID\n10 1\n20 1\n30 2\n11 4\n21 1\n31 2\n12 1\n22 3\n32 2\n13 5\n23 4\n33 2\n"
     L"210 0\n220 0.6\n230 0.8"},
    {"LightPolyline",
     L"0 LWPOLYLINE\n90 3\n70 0\n38 2\n43 0\n10 1\n20 0\n42 0\n10 4\n20 0\n10 4\n"
     L"20 3\n210 0\n220 0.6\n230 0.8"},
    {"FlatPolyline",
     L"0 POLYLINE\n66 1\n10 0\n20 0\n30 2.5\n70 0\n210 0\n220 0.6\n230 0.8",
     {L"0 VERTEX\n10 1\n20 2\n30 2.5", L"0 VERTEX\n10 4\n20 2\n30 0", L"0 SEQEND"}},
    {"PolylineInSpace",
     L"0 POLYLINE\n66 1\n10 0\n20 0\n30 0\n70 8",
     {L"0 VERTEX\n10 1\n20 2\n30 3\n70 32", L"0 VERTEX\n10 4\n20 2\n30 0\n70 32", L"0 SEQEND"}},
    {"Text", L"0 TEXT\n10 1\n20 2\n30 3\n40 2.5\n1 tekst\n50 30\n41 0.8\n51 15"},
    {"BackwardText", L"0 TEXT\n10 1\n20 2\n30 3\n40 2.5\n1 tekst\n50 130\n51 15\n71 2"},
    {"UpsideDownTiltedText",
     L"0 TEXT\n10 1\n20 2\n30 3\n40 2.5\n1 tekst\n50 30\n51 15\n71 4\n210 0\n"
     L"220 0.6\n230 0.8"},
    {"SolidHatch",
     L"0 HATCH\n10 0\n20 0\n30 2.5\n2 SOLID\n70 1\n71 0\n91 2\n"
     L"92 7\n72 1\n73 1\n93 3\n10 0\n20 0\n42 0\n10 4\n20 0\n42 0\n10 4\n20 3\n42 0\n"
     L"97 0\n92 1\n93 1\n72 1\n10 0\n20 0\n11 4\n21 0\n97 0\n75 0\n76 1\n98 1\n10 1\n20 "
     L"1"},
    {"EllipticArc", L"0 ELLIPSE\n10 1\n20 2\n30 3\n11 3\n21 4\n31 0\n40 0.4\n41 0.5\n42 2.5"},
    {"EllipticArcThroughTheMajorAxis",
     L"0 ELLIPSE\n10 1\n20 2\n30 3\n11 3\n21 4\n31 0\n40 0.4\n41 5\n42 7.5"},
    {"Ellipse",
     L"0 ELLIPSE\n10 1\n20 2\n30 3\n11 3\n21 4\n31 0\n40 0.4\n41 0\n42 6.283185307179586"},
    {"RoundEllipse",
     L"0 ELLIPSE\n10 1\n20 2\n30 3\n11 3\n21 4\n31 0\n40 1\n41 0\n42 6.283185307179586"},
    {"FlatSpline",
     L"0 SPLINE\n210 0\n220 0\n230 1\n70 8\n71 2\n72 6\n73 3\n74 0\n40 0\n40 0\n40 0\n"
     L"40 1\n40 1\n40 1\n10 0\n20 0\n30 0\n10 2\n20 3\n30 0\n10 4\n20 0\n30 0"},
};

class Stretched : public ::testing::TestWithParam<EntityRow>
{
};

TEST_P(Stretched, LooksTheSameTransformed)
{
    for (const MotionRow& motion : stretchings) {
        SCOPED_TRACE(motion.name);
        Drawn drawn(GetParam());
        test::Samples expected = drawn.samples().transformed(motion.matrix);
        expected.lines.clear(); // normals do not follow a skewing; the figures show where they are
        ASSERT_EQ(drawn.transform(motion.matrix), Acad::eOk);
        test::Samples actual = drawn.samples();
        actual.lines.clear();
        test::expectSame(actual, expected);
    }
}

INSTANTIATE_TEST_SUITE_P(Rows, Stretched, ::testing::ValuesIn(stretchable), nameOf<EntityRow>);

TEST(StretchedInsert, FollowsWhenItsAxesStayAtRightAngles)
{
    Drawn drawn({"", L"0 INSERT\n2 DEUR\n10 1\n20 2\n30 3\n41 2\n42 3\n50 90\n70 2\n44 5\n45 7"});
    expectThatItFollows(drawn, stretched(3, -2, 0.5));
}

TEST(StretchedCircle, FollowsAStretchAlongItsNormal)
{
    Drawn drawn({"", L"0 CIRCLE\n39 1.5\n10 3\n20 4\n30 2\n40 2.5"});
    expectThatItFollows(drawn, stretched(2, 2, 7));
}

// --- where there is none: nothing is changed -----------------------------------------------------

struct RefusalRow
{
    const char* name;
    EntityRow entity;
    AcGeMatrix3d matrix;
    Acad::ErrorStatus status = Acad::eCannotScaleNonUniformly;
};

std::ostream& operator<<(std::ostream& out, const RefusalRow& row)
{
    return out << row.name;
}

class Refused : public ::testing::TestWithParam<RefusalRow>
{
};

TEST_P(Refused, ChangesNothing)
{
    Drawn drawn(GetParam().entity);
    const std::wstring before = drawn.text();
    EXPECT_EQ(drawn.transform(GetParam().matrix), GetParam().status);
    EXPECT_EQ(drawn.text(), before);
}

const EntityRow someLine {"", L"0 LINE\n10 1\n20 2\n30 3\n11 4\n21 6\n31 8"};
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

const RefusalRow refusals[] = {
    {"Circle", {"", L"0 CIRCLE\n10 1\n20 2\n40 3"}, stretched(2, 1, 1)},
    {"Arc", {"", L"0 ARC\n10 1\n20 2\n40 3\n50 0\n51 90"}, stretched(2, 1, 1)},
    {"ThickCircleThatWouldLean",
     {"", L"0 CIRCLE\n10 1\n20 2\n40 3\n39 1"},
     AcGeMatrix3d().setCoordSystem({}, {1, 0, 0}, {0, 1, 0}, {0.5, 0, 1})},
    {"ThickSolidThatWouldLean",
     {"", L"0 SOLID\n10 1\n20 2\n11 3\n21 4\n12 5\n22 7\n39 1"},
     skewedInSpace},
    {"LightPolylineWithABulge",
     {"", L"0 LWPOLYLINE\n90 2\n10 1\n20 0\n42 0.5\n10 4\n20 0"},
     skewed},
    {"LightPolylineWithAWidth",
     {"", L"0 LWPOLYLINE\n90 2\n43 0.5\n10 1\n20 0\n10 4\n20 0"},
     skewed},
    {"PolylineOfWhichOneVertexHasABulge",
     {"",
      L"0 POLYLINE\n66 1\n10 0\n20 0\n30 0\n70 0",
      {L"0 VERTEX\n10 1\n20 2", L"0 VERTEX\n10 4\n20 2\n42 1", L"0 VERTEX\n10 4\n20 9",
       L"0 SEQEND"}},
     skewed},
    {"TextThatWouldLeanTooMuch",
     {"", L"0 TEXT\n10 1\n20 2\n40 3\n1 a"},
     AcGeMatrix3d().setCoordSystem({}, {1, 0, 0}, {20, 1, 0}, {0, 0, 1})},
    {"MultilineText", {"", L"0 MTEXT\n10 1\n20 2\n40 3\n1 a"}, stretched(2, 1, 1)},
    {"AttributeOfSeveralLines",
     {"", L"0 ATTRIB\n10 1\n20 2\n40 3\n1 a\n2 B\n101 Embedded Object\n10 1\n20 2\n40 3\n1 a"},
     stretched(2, 1, 1)},
    {"Shape", {"", L"0 SHAPE\n10 1\n20 2\n40 3\n2 S"}, stretched(2, 1, 1)},
    {"Tolerance", {"", L"0 TOLERANCE\n10 1\n20 2\n1 a"}, stretched(2, 1, 1)},
    {"InsertOnTheSkew", {"", L"0 INSERT\n2 DEUR\n10 1\n20 2\n50 30"}, stretched(2, 1, 1)},
    {"InsertThatWouldLean",
     {"", L"0 INSERT\n2 DEUR\n10 1\n20 2"},
     AcGeMatrix3d().setCoordSystem({}, {1, 0, 0}, {0, 1, 0}, {0.5, 0, 1})},
    {"InsertWithAnAttributeOfSeveralLines",
     {"",
      L"0 INSERT\n66 1\n2 DEUR\n10 1\n20 2",
      {L"0 ATTRIB\n10 1\n20 2\n40 3\n1 a\n2 B\n101 Embedded Object\n10 1\n20 2\n40 3\n1 a",
       L"0 SEQEND"}},
     stretched(2, 1, 1)},
    {"Dimension", {"", L"0 DIMENSION\n10 1\n20 2\n70 1"}, stretched(2, 1, 1)},
    {"Leader", {"", L"0 LEADER\n76 1\n10 1\n20 2\n30 3"}, stretched(2, 1, 1)},
    {"Viewport", {"", L"0 VIEWPORT\n10 1\n20 2\n40 3\n41 4"}, stretched(2, 1, 1)},
    {"HatchWithAnArc",
     {"",
      L"0 HATCH\n10 0\n20 0\n30 0\n2 SOLID\n70 1\n91 1\n92 1\n93 1\n72 2\n10 0\n20 0\n40 2\n50 "
      L"0\n51 360\n73 1\n97 0\n75 0\n76 1\n98 0"},
     skewed},
    {"HatchWithABulge",
     {"",
      L"0 HATCH\n10 0\n20 0\n30 0\n2 SOLID\n70 1\n91 1\n92 2\n72 1\n73 1\n93 2\n10 0\n20 0\n42 "
      L"1\n10 2\n20 0\n42 1\n97 0\n75 0\n76 1\n98 0"},
     skewed},
    {"HatchWithAPattern",
     {"",
      L"0 HATCH\n10 0\n20 0\n30 0\n2 STEEN\n70 0\n91 1\n92 2\n72 0\n73 1\n93 2\n10 0\n20 0\n10 "
      L"2\n20 0\n97 0\n75 0\n76 1\n52 0\n41 1\n77 0\n78 0\n98 0"},
     skewed},
    {"HatchWithAGradient",
     {"",
      L"0 HATCH\n10 0\n20 0\n30 0\n2 SOLID\n70 1\n91 1\n92 2\n72 0\n73 1\n93 2\n10 0\n20 0\n10 "
      L"2\n20 0\n97 0\n75 0\n76 1\n98 0\n450 1\n460 0.5"},
     skewed},
    {"AnUnknownType", {"", L"0 BODY\n10 1\n20 2"}, moved(1, 2, 3), Acad::eNotImplementedYet},
    {"AnUnknownTypeEvenAsItIs", {"", L"0 BODY\n10 1\n20 2"}, {}, Acad::eNotImplementedYet},
    {"ATypeInSmallLetters", {"", L"0 line\n10 1\n20 2"}, moved(1, 2, 3), Acad::eNotImplementedYet},
    {"ASubEntityOfAnUnknownType",
     {"", L"0 INSERT\n2 DEUR\n10 1\n20 2", {L"0 ATTRIB\n10 1\n20 2\n40 3", L"0 BODY"}},
     moved(1, 2, 3),
     Acad::eNotImplementedYet},
    {"AFlatteningMatrix", someLine, stretched(1, 1, 0), Acad::eInvalidInput},
    {"AMatrixWithNan", someLine, moved(kNan, 0, 0), Acad::eInvalidInput},
    {"AMatrixWithInfinity", someLine, moved(0, kInfinity, 0), Acad::eInvalidInput},
    {"AFlatteningMatrixForAnUnknownType",
     {"", L"0 BODY"},
     stretched(1, 1, 0),
     Acad::eNotImplementedYet},
};

INSTANTIATE_TEST_SUITE_P(Rows, Refused, ::testing::ValuesIn(refusals), nameOf<RefusalRow>);

TEST(TransformRecord, ARecordWithoutGroupsHasNoType)
{
    Groups none;
    EXPECT_EQ(transformRecord(none, moved(1, 2, 3)), Acad::eNotImplementedYet);
    EXPECT_TRUE(none.empty());
}

} // namespace

} // namespace corma::host
