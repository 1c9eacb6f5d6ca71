// Copies of entities of real DWG drawings whose records, or those they need, stay bits.

#include "host/dwg/DwgDrawing.h"
#include "host/dwg/DwgFormat.h"
#include "host/dwg/SampleRecords.h"
#include "host/host.h"
#include "support/OpenObjects.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <memory>
#include <vector>

namespace corma::host::dwg {
namespace {

constexpr int kMaterial = 347;

class DwgCopies : public testing::OpenObjects
{
protected:
    /// The entities of the model that are bits themselves, or name a material, which is.
    static std::vector<AcDbStub*> withBits(Store& store)
    {
        std::vector<AcDbStub*> found;
        const Block& model = *store.findBlock(ACDB_MODEL_SPACE);
        for (AcDbStub* at = store.firstEntity(model); at != nullptr;
             at = store.entityBehind(model, *at)) {
            const Groups groups = store.groupsOf(*at);
            if (!groups.isUnderstood() || groups.find(kMaterial, groups.subclass(kEntityMarker))) {
                found.push_back(at);
            }
        }
        return found;
    }

    static std::size_t countOf(Store& store)
    {
        std::size_t count = 0;
        const Block& model = *store.findBlock(ACDB_MODEL_SPACE);
        for (const AcDbStub* at = store.firstEntity(model); at != nullptr;
             at = store.entityBehind(model, *at)) {
            ++count;
        }
        return count;
    }

    testing::TempFolder m_folder;
};

TEST_F(DwgCopies, StayBitsWithinTheirDrawing)
{
    const auto files = sampleDwgFiles();
    if (files.empty()) {
        GTEST_SKIP() << kNoSamples;
    }
    std::size_t copies = 0;
    for (const auto& path : files) {
        const auto drawing = read(path.wstring());
        Store& store = drawing->store();
        const std::size_t before = countOf(store);
        std::size_t added = 0;
        for (AcDbStub* const original : withBits(store)) {
            AcDbObjectIdArray ids;
            ids.append(AcDbObjectId(original));
            AcDbDatabase* made = nullptr;
            if (store.version() < DrawingVersion::r2000) {
                continue; // what is taken out of such a drawing is one of R2000
            }
            ASSERT_EQ(drawing->wblock(made, ids, AcGePoint3d::kOrigin), Acad::eOk)
                << path << " " << static_cast<std::uint64_t>(original->handle);
            const std::unique_ptr<AcDbDatabase> taken(made);
            EXPECT_EQ(taken->saveAs(m_folder.path(L"taken.dxf").c_str()), Acad::eNotImplementedYet);
            EXPECT_FALSE(m_folder.has(L"taken.dxf"));
            ASSERT_EQ(drawing->insert(AcGeMatrix3d::kIdentity, taken.get(), false), Acad::eOk)
                << path << " " << static_cast<std::uint64_t>(original->handle);
            ++added;
        }
        EXPECT_EQ(countOf(store), before + added) << path;
        copies += added;
        if (added != 0 && store.version() != DrawingVersion::r2007) {
            const std::wstring copy = m_folder.path(L"copy.dwg");
            ASSERT_EQ(drawing->saveAs(copy.c_str()), Acad::eOk) << path;
            const auto again = read(copy);
            EXPECT_EQ(countOf(again->store()), before + added) << path;
        }
    }
    EXPECT_GT(copies, 0U);
}

} // namespace
} // namespace corma::host::dwg
