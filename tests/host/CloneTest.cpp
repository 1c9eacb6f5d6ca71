#include "CloneTest.h"

namespace corma::testing {

namespace {

// A chair whose leg is a block of its own, on a layer with a linetype of its own.
constexpr std::string_view kChairTables = R"(
0 TABLE
2 LTYPE
5 10
100 AcDbSymbolTable
70 1
0 LTYPE
5 11
330 10
100 AcDbSymbolTableRecord
100 AcDbLinetypeTableRecord
2 DASHED
70 0
3 dashes
72 65
73 2
40 0.75
49 0.5
74 0
49 -0.25
74 0
0 ENDTAB
0 TABLE
2 LAYER
5 12
100 AcDbSymbolTable
70 1
0 LAYER
5 13
330 12
100 AcDbSymbolTableRecord
100 AcDbLayerTableRecord
2 WOOD
70 0
62 30
6 DASHED
0 ENDTAB
0 TABLE
2 BLOCK_RECORD
5 14
100 AcDbSymbolTable
70 2
0 BLOCK_RECORD
5 15
330 14
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 CHAIR
340 0
0 BLOCK_RECORD
5 16
330 14
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 LEG
340 0
0 ENDTAB)";

constexpr std::string_view kChairBlocks = R"(
0 BLOCK
5 20
330 15
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 CHAIR
70 0
10 1.0
20 2.0
30 0.0
3 CHAIR
1
0 INSERT
5 21
330 15
100 AcDbEntity
8 WOOD
100 AcDbBlockReference
2 LEG
10 5.0
20 0.0
30 0.0
0 ENDBLK
5 22
330 15
100 AcDbEntity
8 0
100 AcDbBlockEnd
0 BLOCK
5 23
330 16
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 LEG
70 0
10 0.0
20 0.0
30 0.0
3 LEG
1
0 LINE
5 24
330 16
100 AcDbEntity
8 WOOD
100 AcDbLine
10 0.0
20 0.0
30 0.0
11 0.0
21 9.0
31 0.0
0 ENDBLK
5 25
330 16
100 AcDbEntity
8 0
100 AcDbBlockEnd)";

constexpr std::string_view kOtherBlocks = R"(
0 BLOCK
5 23
330 16
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 Leg
70 0
10 0.0
20 0.0
30 0.0
3 Leg
1
0 CIRCLE
5 24
330 16
100 AcDbEntity
8 Wood
100 AcDbCircle
10 0.0
20 0.0
30 0.0
40 1.0
0 ENDBLK
5 25
330 16
100 AcDbEntity
8 0
100 AcDbBlockEnd)";

} // namespace

// Another leg, and another wood.
const std::string_view kOtherTables = R"(
0 TABLE
2 LAYER
5 12
100 AcDbSymbolTable
70 1
0 LAYER
5 13
330 12
100 AcDbSymbolTableRecord
100 AcDbLayerTableRecord
2 Wood
70 0
62 1
6 Continuous
0 ENDTAB
0 TABLE
2 BLOCK_RECORD
5 14
100 AcDbSymbolTable
70 1
0 BLOCK_RECORD
5 16
330 14
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 Leg
340 0
0 ENDTAB)";

Clone::Clone()
    : m_chairs({.tables = kChairTables, .blocks = kChairBlocks})
    , m_other({.tables = kOtherTables, .blocks = kOtherBlocks})
{
}

Acad::ErrorStatus Clone::cloneBlock(const CloneDrawing& from, const wchar_t* name,
                                    const CloneDrawing& to, AcDb::DuplicateRecordCloning rule)
{
    AcDbObjectIdArray ids;
    ids.append(from.block(name));
    AcDbObjectId owner = to.database().blockTableId();
    m_mapping = AcDbIdMapping();
    m_mapping.setDestDb(&to.database());
    return from.database().wblockCloneObjects(ids, owner, m_mapping, rule);
}

Acad::ErrorStatus Clone::cloneToModel(const CloneDrawing& from, int entity, const CloneDrawing& to)
{
    AcDbObjectIdArray ids;
    ids.append(from.entity(entity));
    AcDbObjectId owner = to.block(ACDB_MODEL_SPACE);
    m_mapping = AcDbIdMapping();
    return from.database().wblockCloneObjects(ids, owner, m_mapping, AcDb::kDrcIgnore);
}

AcDbObjectId Clone::cloneOf(AcDbObjectId source) const
{
    AcDbIdPair pair(source, {}, false);
    return m_mapping.compute(pair) ? pair.value() : AcDbObjectId();
}

} // namespace corma::testing
