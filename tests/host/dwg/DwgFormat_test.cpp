#include "host/dwg/DwgDrawing.h"
#include "host/dwg/DwgFormat.h"
#include "host/host.h"
#include "support/CloneDrawing.h"
#include "support/OpenObjects.h"

#include <gtest/gtest.h>

namespace corma::host::dwg {
namespace {

using testing::CloneDrawing;
using testing::TempFolder;

constexpr std::string_view kEntities = R"(
0 LINE
5 A0
330 1F
100 AcDbEntity
8 0
100 AcDbLine
10 1.5
20 2
30 0
11 4
21 5
31 0
0 CIRCLE
5 A1
330 1F
100 AcDbEntity
8 0
62 3
100 AcDbCircle
10 7
20 8
30 0
40 2.5
0 TEXT
5 A2
330 1F
100 AcDbEntity
8 0
100 AcDbText
10 1
20 1
30 0
40 2.5
1 Ruimte
100 AcDbText
)";

/// A drawing of each version that can be written.
class DwgDrawing : public testing::OpenObjects,
                   public ::testing::WithParamInterface<std::string_view>
{
protected:
    /// Writes the drawing as a DWG file. Returns its path.
    std::wstring writeDwg()
    {
        const auto drawing
            = read(m_folder.write(L"source.dxf", drawingText(GetParam(), kEntities)));
        const std::wstring path = m_folder.path(L"drawing.dwg");
        EXPECT_EQ(drawing->saveAs(path.c_str()), Acad::eOk);
        return path;
    }

    static AcDbObjectId idOf(AcDbDatabase& database, const wchar_t* handle)
    {
        AcDbObjectId id;
        EXPECT_EQ(database.getAcDbObjectId(id, false, AcDbHandle(handle)), Acad::eOk) << handle;
        return id;
    }

    static AcDbObjectId addLine(AcDbDatabase& database)
    {
        Opened<AcDbBlockTable> blocks;
        AcDbObjectId space;
        EXPECT_EQ(database.getBlockTable(blocks.out()), Acad::eOk);
        EXPECT_EQ(blocks->getAt(ACDB_MODEL_SPACE, space), Acad::eOk);
        Opened<AcDbBlockTableRecord> model(space, AcDb::kForWrite);
        auto text = std::make_unique<AcDbText>();
        text->setTextString(L"Nieuw");
        EXPECT_EQ(model->appendAcDbEntity(text.get()), Acad::eOk);
        const AcDbObjectId id = text->objectId();
        text.release()->close();
        return id;
    }

    static std::string handleOf(const AcDbObjectId& id)
    {
        const std::wstring text = toText(id.stub()->handle);
        return {text.begin(), text.end()};
    }

    /// The types of the entities of the model, in order.
    static std::string modelOf(AcDbDatabase& database)
    {
        Store& store = database.store();
        std::string types;
        const Block& model = *store.findBlock(L"*Model_Space");
        for (const AcDbStub* at = store.firstEntity(model); at != nullptr;
             at = store.entityBehind(model, *at)) {
            if (!at->isErased) {
                types += (types.empty() ? "" : " ") + std::string(store.nameOf(at->type));
            }
        }
        return types;
    }

    TempFolder m_folder;
};

TEST_P(DwgDrawing, EveryRecordOfANewFileIsUnderstood)
{
    const auto drawing = read(writeDwg());
    const Store& store = drawing->store();
    std::size_t count = 0;
    for (const AcDbStub* at = store.first(); at != nullptr; at = at->next) {
        if (const auto record = formatOf(*drawing).recordOf(*at)) {
            EXPECT_EQ(record->depth(), Record::Depth::all)
                << store.nameOf(at->type) << " " << static_cast<std::uint64_t>(at->handle);
            ++count;
        }
    }
    EXPECT_EQ(count, 35U);
    EXPECT_EQ(drawing->versionText(), std::wstring(GetParam().begin(), GetParam().end()));
    EXPECT_EQ(modelOf(*drawing), "LINE CIRCLE TEXT");
}

TEST_P(DwgDrawing, IsWrittenTheSameAgain)
{
    const std::wstring path = writeDwg();
    const std::string bytes = m_folder.read(L"drawing.dwg");
    const auto drawing = read(path);
    EXPECT_EQ(drawing->saveAs(m_folder.path(L"copy.dwg").c_str()), Acad::eOk);
    EXPECT_EQ(m_folder.read(L"copy.dwg"), bytes);
    EXPECT_EQ(writeDwg(), path);
    EXPECT_EQ(m_folder.read(L"drawing.dwg"), bytes) << "the same drawing gives another file";
}

TEST_P(DwgDrawing, KeepsTheGroupsOfItsRecords)
{
    const auto source = read(m_folder.write(L"source.dxf", drawingText(GetParam(), kEntities)));
    const auto before = groupsByHandle(*source);
    const auto drawing = read(writeDwg());
    const auto after = groupsByHandle(*drawing);
    for (const char* handle : {"A0", "A1", "A2"}) {
        EXPECT_EQ(after.at(handle), before.at(handle));
    }
    for (const auto& [handle, groups] : before) {
        EXPECT_TRUE(after.contains(handle)) << handle << "\n" << groups;
    }
}

TEST_P(DwgDrawing, TakesANewEntityBehindAllOthers)
{
    const std::wstring path = writeDwg();
    const auto drawing = read(path);
    const auto before = bitsByHandle(*drawing);
    const std::string added = handleOf(addLine(*drawing));
    EXPECT_EQ(drawing->save(), Acad::eOk);
    const auto again = read(path);
    EXPECT_EQ(modelOf(*again), "LINE CIRCLE TEXT TEXT");
    // The record of the model lists its entities; up to R2000 the one before tells the next one.
    const bool hasChain = GetParam() == "AC1015";
    EXPECT_EQ(differences(before, bitsByHandle(*again)),
              hasChain ? "1F A2 " + added : "1F " + added);
}

TEST_P(DwgDrawing, LosesAnErasedEntityAndNothingElse)
{
    const std::wstring path = writeDwg();
    const auto drawing = read(path);
    const auto before = bitsByHandle(*drawing);
    {
        Opened<AcDbEntity> circle(idOf(*drawing, L"A1"), AcDb::kForWrite);
        EXPECT_EQ(circle->erase(), Acad::eOk);
    }
    EXPECT_EQ(drawing->save(), Acad::eOk);
    const auto again = read(path);
    EXPECT_EQ(modelOf(*again), "LINE TEXT");
    const bool hasChain = GetParam() == "AC1015";
    EXPECT_EQ(differences(before, bitsByHandle(*again)), hasChain ? "A0 A1 A2" : "1F A1");
}

TEST_P(DwgDrawing, IsWrittenTwiceWithAllChanges)
{
    const std::wstring path = writeDwg();
    const auto drawing = read(path);
    addLine(*drawing);
    EXPECT_EQ(drawing->save(), Acad::eOk);
    addLine(*drawing);
    EXPECT_EQ(drawing->save(), Acad::eOk);
    EXPECT_EQ(modelOf(*read(path)), "LINE CIRCLE TEXT TEXT TEXT");
}

TEST_P(DwgDrawing, CanBeNamedAsItsFirstFormat)
{
    const auto drawing = read(writeDwg());
    const std::string before = m_folder.read(L"drawing.dwg");
    addLine(*drawing);
    EXPECT_EQ(drawing->saveAs(m_folder.path(L"other.dwg").c_str()), Acad::eOk);
    EXPECT_EQ(m_folder.read(L"drawing.dwg"), before);
    EXPECT_EQ(modelOf(*read(m_folder.path(L"other.dwg"))), "LINE CIRCLE TEXT TEXT");
}

INSTANTIATE_TEST_SUITE_P(Versions, DwgDrawing,
                         ::testing::Values("AC1015", "AC1018", "AC1024", "AC1027", "AC1032"),
                         [](const auto& row) { return std::string(row.param); });

} // namespace
} // namespace corma::host::dwg
