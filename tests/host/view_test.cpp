// Where the user works: spaces, viewports, coordinates, and the variables of a drawing.

#include "host/host.h"
#include "host/view.h"
#include "platform/platform.h"
#include "support/OpenObjects.h"
#include "support/RecordingServices.h"

#include <array>
#include <cmath>
#include <cstdlib>

using corma::host::Opened;
using corma::host::WorkPlace;
using corma::testing::OpenObjects;
using corma::testing::RecordingServices;

namespace {

class View : public OpenObjects
{
protected:
    static AcDbDatabase& open(const wchar_t* name)
    {
        const std::wstring path
            = corma::platform::fromNative(CORMA_SOURCE_FOLDER "/tests/data/") + name;
        EXPECT_TRUE(corma::openDocument(path.c_str()));
        return *acdbHostApplicationServices()->workingDatabase();
    }

    static std::array<double, 3> toWorld(std::array<double, 3> p, bool isVector)
    {
        EXPECT_TRUE(acdbUcs2Wcs(p.data(), p.data(), isVector));
        return p;
    }

    static void expectNear(const std::array<double, 3>& a, const std::array<double, 3>& b)
    {
        for (std::size_t i = 0; i < a.size(); ++i) {
            EXPECT_NEAR(a[i], b[i], 1e-12) << i;
        }
    }

    static std::array<double, 3> pointVariable(const wchar_t* name)
    {
        resbuf value {};
        EXPECT_EQ(acedGetVar(name, &value), RTNORM) << name;
        EXPECT_EQ(value.restype, RT3DPOINT);
        return {value.resval.rpoint[0], value.resval.rpoint[1], value.resval.rpoint[2]};
    }

    static int shortVariable(const wchar_t* name)
    {
        resbuf value {};
        EXPECT_EQ(acedGetVar(name, &value), RTNORM) << name;
        EXPECT_EQ(value.restype, RTSHORT);
        return value.resval.rint;
    }

    RecordingServices services;
};

TEST_F(View, WithoutADrawingNothingIsCurrent)
{
    EXPECT_TRUE(acedGetCurViewportObjectId().isNull());
    AcGeMatrix3d matrix;
    matrix.setToTranslation({1, 2, 3});
    EXPECT_FALSE(acdbUcsMatrix(matrix));
    EXPECT_EQ(matrix, AcGeMatrix3d::kIdentity);
    ads_point p = {1, 2, 3};
    ads_point q = {};
    EXPECT_FALSE(acdbUcs2Wcs(p, q, false));
    EXPECT_EQ(q[2], 3.0);
    resbuf value {};
    EXPECT_EQ(acedGetVar(L"VIEWDIR", &value), RTERROR);
    EXPECT_EQ(acedGetVar(L"TILEMODE", &value), RTERROR);
}

TEST_F(View, OfTheModelIsTheActiveRecordOfTheViewportTable)
{
    AcDbDatabase& database = open(L"ucs.dxf");
    EXPECT_TRUE(database.tilemode());
    EXPECT_EQ(corma::host::workPlaceOf(database), WorkPlace::model);
    const Opened<AcDbViewportTableRecord> viewport(acedGetCurViewportObjectId());
    ASSERT_TRUE(viewport);
    std::wstring name;
    viewport->getName(name);
    EXPECT_EQ(name, L"*Active");
}

TEST_F(View, UserCoordinatesTurnAndMovePointsButOnlyTurnVectors)
{
    open(L"ucs.dxf");
    expectNear(toWorld({1, 0, 0}, false), {100.6, 50.8, 0});
    expectNear(toWorld({1, 0, 0}, true), {0.6, 0.8, 0});
    expectNear(toWorld({0, 1, 2}, true), {-0.8, 0.6, 2});
    AcGeMatrix3d matrix;
    ASSERT_TRUE(acdbUcsMatrix(matrix));
    EXPECT_NEAR(matrix.det(), 1.0, 1e-12);
    EXPECT_EQ(matrix(0, 3), 100.0);
}

TEST_F(View, OfALayoutIsTheViewportThatWasLastActive)
{
    AcDbDatabase& database = open(L"layout_current.dxf");
    EXPECT_FALSE(database.tilemode());
    EXPECT_EQ(corma::host::workPlaceOf(database), WorkPlace::floatingViewport);
    const Opened<AcDbViewport> viewport(acedGetCurViewportObjectId());
    ASSERT_TRUE(viewport);
    EXPECT_EQ(viewport->number(), 2);
}

TEST_F(View, OfALayoutWithoutAnActiveWindowIsThePaper)
{
    AcDbDatabase& database = open(L"layout_current.dxf");
    {
        const Opened<AcDbViewport> viewport(acedGetCurViewportObjectId(), AcDb::kForWrite);
        ASSERT_EQ(viewport->erase(), Acad::eOk);
    }
    EXPECT_EQ(corma::host::workPlaceOf(database), WorkPlace::paper);
    const Opened<AcDbViewport> viewport(acedGetCurViewportObjectId());
    ASSERT_TRUE(viewport);
    EXPECT_EQ(viewport->number(), 1);
}

TEST_F(View, OfALayoutWithoutAnyViewportIsTheModel)
{
    AcDbDatabase& database = open(L"layout_current.dxf");
    while (!acedGetCurViewportObjectId().isNull()) {
        const Opened<AcDbViewport> viewport(acedGetCurViewportObjectId(), AcDb::kForWrite);
        ASSERT_TRUE(viewport);
        ASSERT_EQ(viewport->erase(), Acad::eOk);
    }
    EXPECT_EQ(corma::host::workPlaceOf(database), WorkPlace::model);
}

TEST_F(View, ItsDirectionIsToldInUserCoordinates)
{
    AcDbDatabase& database = open(L"ucs.dxf");
    expectNear(pointVariable(L"VIEWDIR"), {0, 0, 1});
    {
        const Opened<AcDbViewportTableRecord> viewport(acedGetCurViewportObjectId(),
                                                       AcDb::kForWrite);
        auto& groups = viewport->changeGroups();
        groups.setPoint(16, groups.body(), {0.6, 0.8, 1});
    }
    expectNear(pointVariable(L"VIEWDIR"), {1, 0, 1});
    const AcGeVector3d world = corma::host::viewDirectionOf(database);
    EXPECT_EQ(world, AcGeVector3d(0.6, 0.8, 1));
}

TEST_F(View, VariablesOfTheDrawingComeFromItsHeader)
{
    open(L"ucs.dxf");
    EXPECT_EQ(shortVariable(L"TILEMODE"), 1);
    EXPECT_EQ(shortVariable(L"measurement"), 1);
    expectNear(pointVariable(L"UCSORG"), {100, 50, 0});
    resbuf name {};
    ASSERT_EQ(acedGetVar(L"DWGNAME", &name), RTNORM);
    EXPECT_STREQ(name.resval.rstring, L"ucs.dxf");
    acutDelString(name.resval.rstring);
    open(L"layout_current.dxf");
    EXPECT_EQ(shortVariable(L"TILEMODE"), 0);
}

TEST_F(View, VariablesOfTheDrawingAreKeptInIt)
{
    AcDbDatabase& database = open(L"ucs.dxf");
    resbuf value {};
    value.restype = RTSHORT;
    value.resval.rint = 0;
    EXPECT_EQ(acedSetVar(L"MEASUREMENT", &value), RTNORM);
    EXPECT_EQ(shortVariable(L"MEASUREMENT"), 0);
    EXPECT_TRUE(database.isModified());
    EXPECT_EQ(acedSetVar(L"VIEWDIR", &value), RTERROR);
    EXPECT_EQ(acedSetVar(L"UCSORG", &value), RTERROR);
    EXPECT_EQ(acedSetVar(L"LTSCALE", &value), RTERROR); // another type
    value.restype = RTREAL;
    value.resval.rreal = 2.5;
    EXPECT_EQ(acedSetVar(L"LTSCALE", &value), RTNORM);
    value = {};
    ASSERT_EQ(acedGetVar(L"LTSCALE", &value), RTNORM);
    EXPECT_EQ(value.resval.rreal, 2.5);
    resbuf point {};
    point.restype = RT3DPOINT;
    point.resval.rpoint[0] = 7;
    EXPECT_EQ(acedSetVar(L"INSBASE", &point), RTNORM);
    expectNear(pointVariable(L"INSBASE"), {7, 0, 0});
}

} // namespace
