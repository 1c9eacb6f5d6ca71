#include <corma/geometry.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <numbers>
#include <ostream>
#include <random>
#include <utility>

// For GoogleTest's failure texts.
static void PrintTo(const AcGePoint3d& p, std::ostream* out)
{
    *out << '(' << p.x << ", " << p.y << ", " << p.z << ')';
}

static void PrintTo(const AcGeVector3d& v, std::ostream* out)
{
    *out << '<' << v.x << ", " << v.y << ", " << v.z << '>';
}

static void PrintTo(const AcGeMatrix3d& m, std::ostream* out)
{
    for (const auto& row : m.entry) {
        *out << "\n[" << row[0] << ", " << row[1] << ", " << row[2] << ", " << row[3] << ']';
    }
}

namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr unsigned int kSeed = 20240229;
constexpr int kRounds = 500;

MATCHER_P2(IsNear, expected, tolerance, "")
{
    const auto off = std::max(
        {std::abs(arg.x - expected.x), std::abs(arg.y - expected.y), std::abs(arg.z - expected.z)});
    *result_listener << "off by " << off;
    return off <= tolerance;
}

MATCHER_P2(IsNearMatrix, expected, tolerance, "")
{
    double off = 0.0;
    for (unsigned int row = 0; row < 4; ++row) {
        for (unsigned int column = 0; column < 4; ++column) {
            const double here = std::abs(arg(row, column) - expected(row, column));
            off = here <= off ? off : here; // so written, NaN is kept
        }
    }
    *result_listener << "off by " << off;
    return off <= tolerance;
}

AcGeMatrix3d scalingAlongAxes(double x, double y, double z)
{
    return AcGeMatrix3d().setCoordSystem(AcGePoint3d::kOrigin, {x, 0, 0}, {0, y, 0}, {0, 0, z});
}

AcGeMatrix3d translation(double x, double y, double z)
{
    return AcGeMatrix3d().setToTranslation({x, y, z});
}

AcGeMatrix3d rotation(double angle, const AcGeVector3d& axis)
{
    return AcGeMatrix3d().setToRotation(angle, axis);
}

/// Random input of one seed, the same in every run.
class Random
{
public:
    double number(double low, double high)
    {
        // Not a distribution of the library, which may differ between libraries.
        return low + (high - low) * (static_cast<double>(m_engine() >> 11) * 0x1p-53);
    }

    AcGeVector3d vector() { return {number(-10, 10), number(-10, 10), number(-10, 10)}; }

    AcGePoint3d point() { return AcGePoint3d::kOrigin + vector(); }

    AcGeMatrix3d matrix()
    {
        return AcGeMatrix3d().setCoordSystem(point(), vector(), vector(), vector());
    }

private:
    std::mt19937_64 m_engine {kSeed};
};

// --- vectors -------------------------------------------------------------------------------------

TEST(Vector, ProductsOfTheAxes)
{
    EXPECT_EQ(AcGeVector3d::kXAxis.crossProduct(AcGeVector3d::kYAxis), AcGeVector3d::kZAxis);
    EXPECT_EQ(AcGeVector3d::kYAxis.crossProduct(AcGeVector3d::kXAxis), -AcGeVector3d::kZAxis);
    EXPECT_EQ(AcGeVector3d(1, 2, 3).dotProduct({4, -5, 6}), 12.0);
}

TEST(Vector, ArithmeticIsByCoordinate)
{
    const AcGeVector3d a(1, 2, 3);
    const AcGeVector3d b(10, 20, 30);
    EXPECT_EQ(a + b, AcGeVector3d(11, 22, 33));
    EXPECT_EQ(b - a, AcGeVector3d(9, 18, 27));
    EXPECT_EQ(a * 2.0, AcGeVector3d(2, 4, 6));
    EXPECT_EQ(a[0] + 10 * a[1] + 100 * a[2], 321.0);
}

TEST(Vector, PointsAndVectorsMix)
{
    const AcGePoint3d p(1, 2, 3);
    EXPECT_EQ(p + AcGeVector3d(1, 1, 1), AcGePoint3d(2, 3, 4));
    EXPECT_EQ(p - AcGeVector3d(1, 1, 1), AcGePoint3d(0, 1, 2));
    EXPECT_EQ(p - AcGePoint3d(1, 1, 1), AcGeVector3d(0, 1, 2));
    EXPECT_EQ(p.asVector(), AcGeVector3d(1, 2, 3));
    EXPECT_EQ(p[0] + 10 * p[1] + 100 * p[2], 321.0);
}

TEST(Vector, LengthOfTheLargestAndSmallestNumbers)
{
    EXPECT_EQ(AcGeVector3d(2, 3, 6).length(), 7.0);
    EXPECT_DOUBLE_EQ(AcGeVector3d(3e200, 4e200, 0).length(), 5e200);
    EXPECT_THAT(AcGeVector3d(3e-200, 4e-200, 0).normal(), IsNear(AcGeVector3d(0.6, 0.8, 0), 1e-15));
    EXPECT_THAT(AcGeVector3d(3e200, 4e200, 0).normal(), IsNear(AcGeVector3d(0.6, 0.8, 0), 1e-15));
}

TEST(Vector, OnlyTheZeroVectorHasNoLength)
{
    EXPECT_TRUE(AcGeVector3d::kIdentity.isZeroLength());
    EXPECT_FALSE(AcGeVector3d(0, 0, 1e-300).isZeroLength());
    EXPECT_EQ(AcGeVector3d::kIdentity.normal(), AcGeVector3d::kIdentity);
}

struct AngleRow
{
    const char* sentence;
    AcGeVector3d from;
    AcGeVector3d to;
    AcGeVector3d axis;
    double angle;
};

class Angle : public testing::TestWithParam<AngleRow>
{
};

TEST_P(Angle, IsCounterClockwise)
{
    const AngleRow& row = GetParam();
    EXPECT_NEAR(row.from.angleTo(row.to, row.axis), row.angle, 1e-15);
}

// clang-format off
const AngleRow angleRows[] = {
    {"AQuarter",                   {1, 0, 0}, {0, 2, 0},       {0, 0, 1},  kPi / 2},
    {"AQuarterSeenFromBehind",     {1, 0, 0}, {0, 2, 0},       {0, 0, -1}, 3 * kPi / 2},
    {"ThreeQuarters",              {1, 0, 0}, {0, -2, 0},      {0, 0, 1},  3 * kPi / 2},
    {"NothingToItself",            {1, 2, 3}, {1, 2, 3},       {0, 0, 1},  0},
    {"HalfToItsOpposite",          {1, 2, 3}, {-1, -2, -3},    {0, 0, 1},  kPi},
    {"ATinyAngleKeepsItsDigits",   {1, 0, 0}, {1, 1e-9, 0},    {0, 0, 1},  1e-9},
    {"NoLengthNoAngle",            {0, 0, 0}, {1, 0, 0},       {0, 0, 1},  0},
    {"AboutATiltedAxis",           {1, 0, 0}, {0, 0, 1},       {0, -1, 0}, kPi / 2},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Rows, Angle, testing::ValuesIn(angleRows),
                         [](const auto& row) { return row.param.sentence; });

// --- building matrices ---------------------------------------------------------------------------

TEST(Matrix, IsTheIdentityAtFirst)
{
    const AcGeMatrix3d matrix;
    EXPECT_EQ(matrix, AcGeMatrix3d::kIdentity);
    EXPECT_EQ(matrix * AcGePoint3d(1, 2, 3), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(translation(1, 2, 3).setToIdentity(), AcGeMatrix3d::kIdentity);
}

TEST(Matrix, ATranslationMovesPointsButNotVectors)
{
    const AcGeMatrix3d matrix = translation(10, 20, 30);
    AcGePoint3d point(1, 2, 3);
    AcGeVector3d vector(1, 2, 3);
    EXPECT_EQ(point.transformBy(matrix), AcGePoint3d(11, 22, 33));
    EXPECT_EQ(vector.transformBy(matrix), AcGeVector3d(1, 2, 3));
}

TEST(Matrix, ARotationTurnsCounterClockwiseAboutItsCenter)
{
    AcGeMatrix3d matrix;
    matrix.setToRotation(kPi / 2, {0, 0, 5}, {10, 10, 0});
    EXPECT_THAT(matrix * AcGePoint3d(11, 10, 7), IsNear(AcGePoint3d(10, 11, 7), 1e-14));
    EXPECT_THAT(matrix * AcGePoint3d(10, 10, -3), IsNear(AcGePoint3d(10, 10, -3), 1e-14));
}

TEST(Matrix, ARotationAboutNoAxisIsTheIdentity)
{
    EXPECT_EQ(rotation(1.0, {0, 0, 0}), AcGeMatrix3d::kIdentity);
}

TEST(Matrix, AScalingLeavesItsCenter)
{
    AcGeMatrix3d matrix;
    matrix.setToScaling(3.0, {1, 2, 3});
    EXPECT_EQ(matrix * AcGePoint3d(1, 2, 3), AcGePoint3d(1, 2, 3));
    EXPECT_EQ(matrix * AcGePoint3d(2, 2, 3), AcGePoint3d(4, 2, 3));
}

TEST(Matrix, ACoordinateSystemComesBackAsItWas)
{
    Random random;
    for (int round = 0; round < kRounds; ++round) {
        const std::array in = {random.vector(), random.vector(), random.vector()};
        const AcGePoint3d inOrigin = random.point();
        AcGePoint3d origin;
        std::array<AcGeVector3d, 3> out;
        AcGeMatrix3d()
            .setCoordSystem(inOrigin, in[0], in[1], in[2])
            .getCoordSystem(origin, out[0], out[1], out[2]);
        EXPECT_EQ(origin, inOrigin);
        EXPECT_EQ(out, in);
    }
}

TEST(Matrix, ProductsAreDoneFromTheRight)
{
    const AcGeMatrix3d move = translation(10, 0, 0);
    const AcGeMatrix3d turn = rotation(kPi / 2, AcGeVector3d::kZAxis);
    const AcGePoint3d point(1, 0, 0);
    EXPECT_THAT(turn * move * point, IsNear(AcGePoint3d(0, 11, 0), 1e-14));
    EXPECT_THAT(move * turn * point, IsNear(AcGePoint3d(10, 1, 0), 1e-14));
    EXPECT_EQ(AcGeMatrix3d(turn).postMultBy(move), turn * move);
    EXPECT_EQ(AcGeMatrix3d(turn).preMultBy(move), move * turn);
    AcGeMatrix3d product = turn;
    product *= move;
    EXPECT_EQ(product, turn * move);
}

TEST(Matrix, AProductWithItselfMayBeAssigned)
{
    AcGeMatrix3d matrix = translation(1, 2, 3);
    EXPECT_EQ(matrix.postMultBy(matrix), translation(2, 4, 6));
}

TEST(Matrix, AProductDoesOneAfterTheOther)
{
    Random random;
    for (int round = 0; round < kRounds; ++round) {
        const AcGeMatrix3d a = random.matrix();
        const AcGeMatrix3d b = random.matrix();
        const AcGePoint3d point = random.point();
        EXPECT_THAT((a * b) * point, IsNear(a * (b * point), 1e-10));
        EXPECT_NEAR((a * b).det(), a.det() * b.det(), 1e-8 * std::abs(a.det() * b.det()) + 1e-8);
    }
}

TEST(Matrix, EntriesAreReadAndWrittenByRowAndColumn)
{
    AcGeMatrix3d matrix;
    matrix(0, 3) = 7.0;
    EXPECT_EQ(matrix.entry[0][3], 7.0);
    EXPECT_EQ(std::as_const(matrix)(0, 3), 7.0);
    EXPECT_NE(matrix, AcGeMatrix3d::kIdentity);
}

// --- inverse -------------------------------------------------------------------------------------

TEST(Inverse, UndoesRandomMatrices)
{
    Random random;
    for (int round = 0; round < kRounds; ++round) {
        const AcGeMatrix3d matrix = random.matrix();
        ASSERT_FALSE(matrix.isSingular(1e-6)) << "choose another seed, round " << round;
        EXPECT_THAT(matrix * matrix.inverse(), IsNearMatrix(AcGeMatrix3d::kIdentity, 1e-7));
        EXPECT_THAT(matrix.inverse() * matrix, IsNearMatrix(AcGeMatrix3d::kIdentity, 1e-7));
        EXPECT_NEAR(matrix.inverse().det() * matrix.det(), 1.0, 1e-9);
    }
}

TEST(Inverse, OfARotationTurnsBack)
{
    EXPECT_THAT(rotation(0.3, {1, 2, 3}).inverse(), IsNearMatrix(rotation(-0.3, {1, 2, 3}), 1e-15));
}

TEST(Inverse, OfATranslationIsExact)
{
    EXPECT_EQ(translation(0.1, 1e6, -7).inverse(), translation(-0.1, -1e6, 7));
}

class InverseOfScale : public testing::TestWithParam<double>
{
};

TEST_P(InverseOfScale, IsAsGoodForSmallAndLargeScales)
{
    const double factor = GetParam();
    const AcGeMatrix3d matrix = rotation(0.7, {1, 1, 0}) * AcGeMatrix3d().setToScaling(factor);
    EXPECT_FALSE(matrix.isSingular());
    EXPECT_THAT(matrix * matrix.inverse(), IsNearMatrix(AcGeMatrix3d::kIdentity, 1e-15));
    EXPECT_NEAR(matrix.uniformScale() / factor, 1.0, 1e-15);
}

INSTANTIATE_TEST_SUITE_P(Factors, InverseOfScale,
                         testing::Values(1e-200, 1e-12, 1e-5, 1.0, 1e5, 1e12, 1e200));

struct SingularRow
{
    const char* sentence;
    AcGeMatrix3d matrix;
    bool isSingular;
};

class Singular : public testing::TestWithParam<SingularRow>
{
};

TEST_P(Singular, IsAskedFor)
{
    EXPECT_EQ(GetParam().matrix.isSingular(), GetParam().isSingular);
}

const AcGeMatrix3d flattening = scalingAlongAxes(1, 1, 0);

AcGeMatrix3d leaning(double height)
{
    return AcGeMatrix3d().setCoordSystem({}, {1, 0, 0}, {1, height, 0}, {0, 0, 1});
}

// clang-format off
const SingularRow singularRows[] = {
    {"TheIdentityIsNot",              AcGeMatrix3d::kIdentity,                      false},
    {"AMirroringIsNot",               scalingAlongAxes(-1, 1, 1),                   false},
    {"AVeryFlatScalingIsNot",         scalingAlongAxes(1, 1, 1e-12),                false},
    {"AFlatteningIs",                 flattening,                                   true},
    {"OneLineIs",                     scalingAlongAxes(1, 0, 0),                    true},
    {"NothingIs",                     scalingAlongAxes(0, 0, 0),                    true},
    {"NanIs",                         scalingAlongAxes(1, kNan, 1),                 true},
    {"InfinityIs",                    scalingAlongAxes(1, kInfinity, 1),            true},
    {"AxesJustOffEachOtherAreNot",    leaning(1.1e-10),                             false},
    {"AxesOnEachOtherAre",            leaning(0.9e-10),                             true},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Rows, Singular, testing::ValuesIn(singularRows),
                         [](const auto& row) { return row.param.sentence; });

TEST(Singular, HasTheIdentityAsInverse)
{
    EXPECT_EQ(flattening.inverse(), AcGeMatrix3d::kIdentity);
    EXPECT_EQ(scalingAlongAxes(0, 0, 0).inverse(), AcGeMatrix3d::kIdentity);
    EXPECT_EQ(scalingAlongAxes(kNan, 1, 1).inverse(), AcGeMatrix3d::kIdentity);
}

TEST(Singular, ANearlySingularMatrixIsInvertedAsWellAsItGoes)
{
    const AcGeMatrix3d matrix = leaning(1e-11);
    EXPECT_TRUE(matrix.isSingular());
    EXPECT_THAT(matrix * matrix.inverse(), IsNearMatrix(AcGeMatrix3d::kIdentity, 1e-4));
}

// --- scale ---------------------------------------------------------------------------------------

struct ScaleRow
{
    const char* sentence;
    AcGeMatrix3d matrix;
    double scale;
};

class UniformScale : public testing::TestWithParam<ScaleRow>
{
};

TEST_P(UniformScale, IsTheSameInEveryDirectionOrNothing)
{
    EXPECT_NEAR(GetParam().matrix.uniformScale(), GetParam().scale, 1e-14);
}

// clang-format off
const ScaleRow scaleRows[] = {
    {"OneForTheIdentity",          AcGeMatrix3d::kIdentity,                                  1},
    {"OneForATranslation",         translation(1, 2, 3),                                     1},
    {"OneForARotation",            rotation(0.4, {1, 2, 3}),                                 1},
    {"OneForAMirroring",           scalingAlongAxes(-1, 1, 1),                               1},
    {"TwoForAScaling",             AcGeMatrix3d().setToScaling(2),                           2},
    {"TwoForATurnedScaling",       rotation(0.4, {1, 2, 3}) * scalingAlongAxes(2, 2, 2),     2},
    {"TwoForAScalingByMinusTwo",   AcGeMatrix3d().setToScaling(-2),                          2},
    {"NothingForOneLongerAxis",    scalingAlongAxes(1, 1, 2),                                0},
    {"NothingForATurnedOne",       rotation(0.4, {1, 2, 3}) * scalingAlongAxes(1, 2, 1),     0},
    {"NothingForAShear",           leaning(1),                                               0},
    {"NothingForRhombicAxes",
     AcGeMatrix3d().setCoordSystem({}, {1, 0, 0}, {0.6, 0.8, 0}, {0, 0, 1}),                 0},
    {"NothingForScalingByZero",    scalingAlongAxes(0, 0, 0),                                0},
    {"NothingForNan",              scalingAlongAxes(kNan, kNan, kNan),                       0},
    {"NothingForInfinity",         scalingAlongAxes(kInfinity, kInfinity, kInfinity),        0},
    {"WithinTheTolerance",         scalingAlongAxes(1, 1 + 0.9e-9, 1),                       1},
    {"BeyondTheTolerance",         scalingAlongAxes(1, 1 + 1.1e-9, 1),                       0},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Rows, UniformScale, testing::ValuesIn(scaleRows),
                         [](const auto& row) { return row.param.sentence; });

// --- an object's own plane -----------------------------------------------------------------------

struct PlaneRow
{
    const char* sentence;
    AcGeVector3d normal;
    AcGeVector3d xAxis;
    AcGeVector3d yAxis;
};

class Plane : public testing::TestWithParam<PlaneRow>
{
};

TEST_P(Plane, HasItsAxesByTheArbitraryAxisRule)
{
    const PlaneRow& row = GetParam();
    AcGePoint3d origin;
    AcGeVector3d xAxis;
    AcGeVector3d yAxis;
    AcGeVector3d zAxis;
    AcGeMatrix3d().setToPlaneToWorld(row.normal).getCoordSystem(origin, xAxis, yAxis, zAxis);
    EXPECT_EQ(origin, AcGePoint3d::kOrigin);
    EXPECT_THAT(xAxis, IsNear(row.xAxis, 1e-9));
    EXPECT_THAT(yAxis, IsNear(row.yAxis, 1e-9));
}

// 1/64 = 0.015625 is where the rule changes; the rows stand on both sides of it.
// clang-format off
const PlaneRow planeRows[] = {
    {"OfTheWorld",               {0, 0, 1},              {1, 0, 0},              {0, 1, 0}},
    {"OfAnyLength",              {0, 0, 7},              {1, 0, 0},              {0, 1, 0}},
    {"WithoutANormalIsTheWorlds", {0, 0, 0},             {1, 0, 0},              {0, 1, 0}},
    {"SeenFromBehind",           {0, 0, -1},             {-1, 0, 0},             {0, 1, 0}},
    {"OfAWallFacingX",           {1, 0, 0},              {0, 1, 0},              {0, 0, 1}},
    {"OfAWallFacingY",           {0, 1, 0},              {-1, 0, 0},             {0, 0, 1}},
    {"OfAWallFacingMinusY",      {0, -1, 0},             {1, 0, 0},              {0, 0, 1}},
    {"JustBelowTheLimit",        {0.0156, 0, std::sqrt(1 - 0.0156 * 0.0156)},
     {std::sqrt(1 - 0.0156 * 0.0156), 0, -0.0156},       {0, 1, 0}},
    {"JustAboveTheLimit",        {0.0157, 0, std::sqrt(1 - 0.0157 * 0.0157)},
     {0, 1, 0},                  {-std::sqrt(1 - 0.0157 * 0.0157), 0, 0.0157}},
    {"JustBelowTheLimitInY",     {0, -0.0156, std::sqrt(1 - 0.0156 * 0.0156)},
     {1, 0, 0},                  {0, std::sqrt(1 - 0.0156 * 0.0156), 0.0156}},
    {"JustAboveTheLimitInY",     {0, -0.0157, std::sqrt(1 - 0.0157 * 0.0157)},
     {1, 0, 0},                  {0, std::sqrt(1 - 0.0157 * 0.0157), 0.0157}},
    {"OfASpaceDiagonal",         {1, 1, 1},
     {-1 / std::sqrt(2), 1 / std::sqrt(2), 0},
     {-1 / std::sqrt(6), -1 / std::sqrt(6), 2 / std::sqrt(6)}},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Rows, Plane, testing::ValuesIn(planeRows),
                         [](const auto& row) { return row.param.sentence; });

TEST(Plane, IsARightHandedSystemOfUnitAxesForAnyNormal)
{
    Random random;
    for (int round = 0; round < kRounds; ++round) {
        const AcGeVector3d normal = random.vector();
        const AcGeMatrix3d toWorld = AcGeMatrix3d().setToPlaneToWorld(normal);
        EXPECT_NEAR(toWorld.uniformScale(), 1.0, 1e-14);
        EXPECT_NEAR(toWorld.det(), 1.0, 1e-14);
        EXPECT_THAT(toWorld * AcGeVector3d::kZAxis, IsNear(normal.normal(), 1e-15));
        EXPECT_THAT(toWorld * AcGeMatrix3d().setToWorldToPlane(normal),
                    IsNearMatrix(AcGeMatrix3d::kIdentity, 1e-15));
    }
}

} // namespace
