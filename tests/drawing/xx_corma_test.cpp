#include "OpenedDrawing.h"
#include <corma/entities.h>

using corma::host::Opened;

namespace corma::testing {

namespace {

class Erase : public OpenedDrawing
{
protected:
    static bool isErased(const wchar_t* handle)
    {
        return Opened<AcDbObject>(id(handle), AcDb::kForRead, true)->isErased();
    }

    static constexpr const wchar_t* kReport
        = L"\nError in file xx_corma.cpp on line 244\n(0, ec = 0)";
};

TEST_F(Erase, TakesObjectsOutOfTheDrawing)
{
    open(L"ucs");
    EXPECT_EQ(xx_erase_ids(ids({L"78", L"5C"})), RTNORM);
    EXPECT_TRUE(isErased(L"78"));
    EXPECT_TRUE(isErased(L"5C"));
    EXPECT_FALSE(isErased(L"79"));
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(Erase, OfNothingIsNoFailure)
{
    EXPECT_EQ(xx_erase_ids({}), RTNORM);
}

TEST_F(Erase, EndsAtTheFirstObjectThatCannotBeOpened)
{
    open(L"ucs");
    const Opened<AcDbObject> reader(id(L"79"));
    EXPECT_EQ(xx_erase_ids(ids({L"78", L"79", L"7A"})), RTCAN);
    EXPECT_TRUE(isErased(L"78"));
    EXPECT_FALSE(reader->isErased());
    EXPECT_FALSE(isErased(L"7A"));
    EXPECT_EQ(services.allPrinted(), kReport);
}

TEST_F(Erase, RefusesWhatIsErasedAndWhatIsNotThere)
{
    AcDbDatabase& database = open(L"ucs");
    EXPECT_EQ(xx_erase_ids(ids({L"FFFF"})), RTCAN);
    EXPECT_FALSE(database.isModified());
    EXPECT_EQ(xx_erase_ids(ids({L"78", L"78"})), RTCAN);
    EXPECT_TRUE(isErased(L"78"));
    EXPECT_EQ(services.allPrinted(), std::wstring(kReport) + kReport);
}

} // namespace

} // namespace corma::testing
