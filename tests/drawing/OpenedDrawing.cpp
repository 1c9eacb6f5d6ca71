#include "OpenedDrawing.h"

#include "drawing/xx_entlay.h"
#include "platform/platform.h"
#include <corma/drawing_contents.h>

namespace corma::testing {

void OpenedDrawing::TearDown()
{
    OpenObjects::TearDown();
    closeDocument();
}

AcDbDatabase& OpenedDrawing::open(const wchar_t* name)
{
    const std::wstring path = platform::fromNative(CORMA_TEST_DATA "/") + name + L".dxf";
    EXPECT_TRUE(openDocument(path.c_str())) << platform::toNative(path);
    return *acdbHostApplicationServices()->workingDatabase();
}

AcDbObjectIdArray OpenedDrawing::ids(std::initializer_list<const wchar_t*> handles)
{
    AcDbObjectIdArray all;
    for (const wchar_t* const handle : handles) {
        all.append(id(handle));
    }
    return all;
}

AcDbObjectIdArray OpenedDrawing::entitiesOf(AcDbDatabase& database, const wchar_t* block)
{
    AcDbObjectIdArray all;
    EXPECT_EQ(xx_entlay(all, {.block = block, .database = &database}), RTNORM);
    return all;
}

std::wstring OpenedDrawing::blockNames(AcDbDatabase& database)
{
    const auto contents = contentsOf(&database);
    std::wstring names;
    for (const std::wstring& name : contents->blocks) {
        names += name + L' ';
    }
    return names;
}

} // namespace corma::testing
