#include "OpenedDrawing.h"
#include <corma/entities.h>

using corma::host::Opened;

namespace corma::testing {

namespace {

class CurrentView : public OpenedDrawing
{
protected:
    // In a layout, with no window of it active.
    AcDbDatabase& openOnPaper()
    {
        AcDbDatabase& database = open(L"layout_current");
        EXPECT_EQ(xx_erase_ids([] {
                      AcDbObjectIdArray window;
                      window.append(xx_getCurViewportObjectId_arx());
                      return window;
                  }()),
                  RTNORM);
        return database;
    }

    static void lookFrom(const AcGeVector3d& direction)
    {
        const Opened<AcDbObject> viewport(xx_getCurViewportObjectId_arx(), AcDb::kForWrite);
        constexpr int kViewDirection = 16;
        auto& groups = viewport->changeGroups();
        groups.setPoint(kViewDirection, groups.body(), {direction.x, direction.y, direction.z});
    }

    static void expectNear(const AcGeVector3d& found, const AcGeVector3d& wanted)
    {
        EXPECT_NEAR((found - wanted).length(), 0, 1e-12)
            << found.x << ' ' << found.y << ' ' << found.z;
    }
};

TEST_F(CurrentView, HasItsDirectionInTheWorldWhateverTheUserCoordinates)
{
    open(L"ucs");
    expectNear(xx_getCurrentViewDir_arx(), {0, 0, 1});
    lookFrom({0.6, -0.8, 2});
    expectNear(xx_getCurrentViewDir_arx(), {0.6, -0.8, 2});
}

TEST_F(CurrentView, OfAWindowIsThatOfTheWindow)
{
    open(L"layout_current");
    lookFrom({1, 1, 1});
    expectNear(xx_getCurrentViewDir_arx(), {1, 1, 1});
}

TEST_F(CurrentView, WithoutADrawingIsTheZeroVectorAndTold)
{
    EXPECT_EQ(xx_getCurrentViewDir_arx(), AcGeVector3d::kIdentity);
    EXPECT_EQ(services.allPrinted(),
              L"\nError in file xx_curvwdir.cpp on line 38\n(100, ec = RTERROR)");
}

TEST_F(CurrentView, HasTheViewportThatTheUserWorksIn)
{
    EXPECT_TRUE(xx_getCurViewportObjectId_arx().isNull());
    open(L"ucs");
    EXPECT_TRUE(Opened<AcDbViewportTableRecord>(xx_getCurViewportObjectId_arx()));
    open(L"layout_current");
    const Opened<AcDbViewport> window(xx_getCurViewportObjectId_arx());
    ASSERT_TRUE(window);
    EXPECT_EQ(window->number(), 2);
}

TEST_F(CurrentView, IsOfModelSpaceWithoutADrawing)
{
    EXPECT_STREQ(xx_current_space_name(), L"*Model_Space");
}

TEST_F(CurrentView, OfTheModelIsOfModelSpace)
{
    AcDbDatabase& database = open(L"ucs");
    EXPECT_STREQ(xx_current_space_name(), L"*Model_Space");
    EXPECT_STREQ(xx_current_space_name(&database), L"*Model_Space");
}

TEST_F(CurrentView, OfAWindowInALayoutIsOfModelSpace)
{
    AcDbDatabase& database = open(L"layout_current");
    EXPECT_STREQ(xx_current_space_name(), L"*Model_Space");
    EXPECT_STREQ(xx_current_space_name(&database), L"*Model_Space");
}

TEST_F(CurrentView, OfALayoutItselfIsOfPaperSpace)
{
    AcDbDatabase& database = openOnPaper();
    EXPECT_STREQ(xx_current_space_name(), L"*Paper_Space");
    EXPECT_STREQ(xx_current_space_name(&database), L"*Paper_Space");
}

TEST_F(CurrentView, OfADrawingAsideIsOfModelSpaceThoughItShowsALayout)
{
    AcDbDatabase& onPaper = openOnPaper();
    AcDbDatabase working;
    acdbHostApplicationServices()->setWorkingDatabase(&working);
    EXPECT_STREQ(xx_current_space_name(&onPaper), L"*Model_Space");
    EXPECT_STREQ(xx_current_space_name(&working), L"*Model_Space");
}

} // namespace

} // namespace corma::testing
