#include "host/dxf/dxf_reader.h"
#include "platform/text.h"
#include "support/DxfDrawing.h"

#include <gtest/gtest.h>

namespace corma::host::dxf {
namespace {

using corma::testing::binaryDxf;
using corma::testing::described;
using corma::testing::DxfDrawing;
using corma::testing::dxfText;

struct StructureRow
{
    const char* test;
    const char* groups;
    const char* records;
};

class DxfStructure : public ::testing::TestWithParam<StructureRow>
{
};

TEST_P(DxfStructure, EveryRecordHasItsPart)
{
    for (const std::string& bytes : {dxfText(GetParam().groups), dxfText(GetParam().groups, "\r\n"),
                                     binaryDxf(GetParam().groups)}) {
        const DxfDrawing drawing(bytes);
        ASSERT_EQ(drawing.result.status, Acad::eOk) << toUtf8(drawing.result.message);
        std::string wanted = GetParam().records + 1;
        if (bytes.starts_with(kBinarySentinel) && !wanted.starts_with("structure \n")) {
            wanted.insert(0, "structure \n");
        }
        EXPECT_EQ(described(drawing), wanted);
        EXPECT_EQ(drawing.written(), bytes);
    }
}

constexpr StructureRow kWhole = {"OfAWholeDrawing", R"(
0 SECTION
2 HEADER
9 $ACADVER
1 AC1015
9 $HANDSEED
5 FF
0 ENDSEC
0 SECTION
2 CLASSES
0 CLASS
1 ACDBDICTIONARYWDFLT
0 ENDSEC
0 SECTION
2 TABLES
0 TABLE
2 LAYER
5 2
100 AcDbSymbolTable
70 1
0 LAYER
5 10
100 AcDbSymbolTableRecord
2 0
0 ENDTAB
0 TABLE
2 DIMSTYLE
5 A
0 DIMSTYLE
105 27
100 AcDbSymbolTableRecord
2 STANDARD
5 28
0 ENDTAB
0 ENDSEC
0 SECTION
2 BLOCKS
0 BLOCK
5 20
2 A
0 LINE
5 21
67 1
0 INSERT
5 22
0 ATTRIB
5 23
0 SEQEND
5 24
0 ENDBLK
5 25
0 ENDSEC
0 SECTION
2 ENTITIES
0 LINE
5 30
100 AcDbEntity
67 1
100 AcDbLine
0 POLYLINE
5 31
0 VERTEX
5 32
0 SEQEND
5 33
0 ENDSEC
0 SECTION
2 OBJECTS
0 DICTIONARY
5 C
0 XRECORD
102 {ACAD_REACTORS
5 99
102 }
0 ENDSEC
0 SECTION
2 ACDSDATA
0 ACDSRECORD
5 40
0 ENDSEC
0 EOF
)",
                                 R"(
header SECTION
structure ENDSEC
structure SECTION
structure CLASS
structure ENDSEC
structure SECTION
table TABLE #2
entry LAYER #10 in TABLE#2
structure ENDTAB
table TABLE #A
entry DIMSTYLE #27 in TABLE#A
structure ENDTAB
structure ENDSEC
structure SECTION
block BLOCK #20
entity LINE #21 in BLOCK#20
entity INSERT #22 in BLOCK#20
sub ATTRIB #23 in INSERT#22
sub SEQEND #24 in INSERT#22
blockEnd ENDBLK #25
structure ENDSEC
structure SECTION
entity LINE #30 paper
entity POLYLINE #31
sub VERTEX #32 in POLYLINE#31
sub SEQEND #33 in POLYLINE#31
structure ENDSEC
structure SECTION
object DICTIONARY #C
object XRECORD
structure ENDSEC
structure SECTION
structure ACDSRECORD
structure ENDSEC
structure EOF
)"};

INSTANTIATE_TEST_SUITE_P(
    Whole, DxfStructure,
    ::testing::Values(kWhole, StructureRow {"OfNothingButAnEnd", "0 EOF\n", "\nstructure EOF\n"},
                      StructureRow {"OfEntitiesAlone", R"(
0 SECTION
2 ENTITIES
0 LINE
8 0
0 LINE
8 0
67 1
0 ENDSEC
0 EOF
)",
                                    R"(
structure SECTION
entity LINE
entity LINE paper
structure ENDSEC
structure EOF
)"},
                      StructureRow {"OfPaperSpaceBehindBraces", R"(
0 SECTION
2 ENTITIES
0 VIEWPORT
5 50
102 {ACAD_XDICTIONARY
360 51
102 }
330 1B
100 AcDbEntity
67 1
8 0
100 AcDbViewport
0 ENDSEC
0 EOF
)",
                                    R"(
structure SECTION
entity VIEWPORT #50 paper
structure ENDSEC
structure EOF
)"},
                      StructureRow {"WithCommentsBetween", R"(
999 first
0 SECTION
999 second
2 ENTITIES
0 LINE
999 third
5 A
0 INSERT
5 B
999 fourth
0 ATTRIB
5 C
0 ENDSEC
0 EOF
999 last
)",
                                    R"(
structure 
structure SECTION
entity LINE #A
entity INSERT #B
sub ATTRIB #C in INSERT#B
structure ENDSEC
structure EOF
)"},
                      StructureRow {"WithHandlesThatNameNothing", R"(
0 SECTION
2 ENTITIES
0 LINE
5
0 LINE
5 0
0 LINE
5 xyz
0 LINE
5 12345678901234567
0 LINE
5  a
0 LINE
5 A
0 LINE
5 FFFFFFFFFFFFFFFF
0 ENDSEC
0 EOF
)",
                                    R"(
structure SECTION
entity LINE
entity LINE
entity LINE
entity LINE
entity LINE #A
entity LINE
entity LINE #FFFFFFFFFFFFFFFF
structure ENDSEC
structure EOF
)"},
                      StructureRow {"WithCodesThatMeanSomethingElseFurtherOn", R"(
0 SECTION
2 ENTITIES
0 LINE
100 AcDbEntity
5 A
67 0
100 AcDbLine
67 1
0 LINE
102 {X
5 B
102 }
67 1
0 MTEXT
101 Embedded Object
5 C
67 1
0 LINE
1001 APP
5 D
67 1
0 LINE
105 E
0 ENDSEC
0 EOF
)",
                                    R"(
structure SECTION
entity LINE
entity LINE paper
entity MTEXT
entity LINE
entity LINE
structure ENDSEC
structure EOF
)"}),
    [](const auto& row) { return std::string(row.param.test); });

INSTANTIATE_TEST_SUITE_P(Damaged, DxfStructure,
                         ::testing::Values(StructureRow {"WithoutTheEndOfTheFile", R"(
0 SECTION
2 ENTITIES
0 ENDSEC
)",
                                                         R"(
structure SECTION
structure ENDSEC
structure EOF implied
)"},
                                           StructureRow {"WithoutTheEndOfASection", R"(
0 SECTION
2 TABLES
0 TABLE
2 LAYER
0 LAYER
2 0
0 SECTION
2 BLOCKS
0 BLOCK
2 A
0 LINE
8 0
0 SECTION
2 OBJECTS
0 DICTIONARY
5 C
0 EOF
)",
                                                         R"(
structure SECTION
table TABLE
entry LAYER in TABLE
structure ENDTAB implied
structure ENDSEC implied
structure SECTION
block BLOCK
entity LINE in BLOCK
blockEnd ENDBLK implied
structure ENDSEC implied
structure SECTION
object DICTIONARY #C
structure ENDSEC implied
structure EOF
)"},
                                           StructureRow {"WithBlocksThatDoNotEnd", R"(
0 SECTION
2 BLOCKS
0 BLOCK
5 A
0 INSERT
5 B
0 BLOCK
5 C
0 ATTRIB
5 D
0 ENDBLK
0 ENDBLK
0 LINE
5 E
0 ENDSEC
0 EOF
)",
                                                         R"(
structure SECTION
block BLOCK #A
entity INSERT #B in BLOCK#A
blockEnd ENDBLK implied
block BLOCK #C
entity ATTRIB #D in BLOCK#C
blockEnd ENDBLK
structure ENDBLK
structure LINE
structure ENDSEC
structure EOF
)"},
                                           StructureRow {"WithTablesThatDoNotEnd", R"(
0 SECTION
2 TABLES
0 LAYER
2 STRAY
0 TABLE
2 LAYER
5 2
0 LAYER
2 0
0 TABLE
2 LAYER
5 3
0 LAYER
2 1
0 BLOCK
2 B
0 ENDTAB
0 ENDTAB
0 TABLE
2 MARTIANS
0 MARTIAN
2 M
0 ENDTAB
0 ENDSEC
0 EOF
)",
                                                         R"(
structure SECTION
structure LAYER
table TABLE #2
entry LAYER in TABLE#2
structure ENDTAB implied
table TABLE #3
entry LAYER in TABLE#3
structure BLOCK
structure ENDTAB
structure ENDTAB
table TABLE
entry MARTIAN in TABLE
structure ENDTAB
structure ENDSEC
structure EOF
)"},
                                           StructureRow {"WithPartsOfEntitiesThatAreNotThere", R"(
0 SECTION
2 ENTITIES
0 SEQEND
5 1
0 ATTRIB
5 2
0 INSERT
5 3
0 VERTEX
5 4
0 POLYLINE
5 5
0 VERTEX
5 6
0 ATTRIB
5 7
0 SEQEND
5 8
0 INSERT
5 9
0 ATTRIB
5 A
0 SEQEND
5 B
0 ATTRIB
5 C
0 ENDSEC
0 SECTION
2 ENTITIES
0 ATTRIB
5 D
0 ENDSEC
0 EOF
)",
                                                         R"(
structure SECTION
entity SEQEND #1
entity ATTRIB #2
entity INSERT #3
entity VERTEX #4
entity POLYLINE #5
sub VERTEX #6 in POLYLINE#5
entity ATTRIB #7
entity SEQEND #8
entity INSERT #9
sub ATTRIB #A in INSERT#9
sub SEQEND #B in INSERT#9
entity ATTRIB #C
structure ENDSEC
structure SECTION
entity ATTRIB #D
structure ENDSEC
structure EOF
)"},
                                           StructureRow {"WithRecordsOutsideOfEverything", R"(
0 EOF
)",
                                                         R"(
structure EOF
)"},
                                           StructureRow {"WithFramesInWrongPlaces", R"(
0 SECTION
0 LINE
5 1
0 ENDSEC
0 LINE
5 2
0 ENDSEC
0 SECTION
2 ENTITIES
0 BLOCK
5 3
0 TABLE
2 LAYER
0 ENDTAB
0 ENDBLK
0 ENDSEC
0 SECTION
2 OBJECTS
0 TABLE
2 LAYER
0 ENDSEC
0 SECTION
2 HEADER
9 $ACADVER
1 AC1015
0 ENDSEC
0 SECTION
2 HEADER
0 ENDSEC
0 EOF
)",
                                                         R"(
structure SECTION
structure LINE
structure ENDSEC
structure LINE
structure ENDSEC
structure SECTION
structure BLOCK
structure TABLE
structure ENDTAB
structure ENDBLK
structure ENDSEC
structure SECTION
structure TABLE
structure ENDSEC
header SECTION
structure ENDSEC
structure SECTION
structure ENDSEC
structure EOF
)"}),
                         [](const auto& row) { return std::string(row.param.test); });

// --- what leads to the records ---------------------------------------------------------------

TEST(DxfReader, TheStoreFindsWhatTheFileHas)
{
    DxfDrawing drawing(dxfText(kWhole.groups));
    Store& store = drawing.store;
    EXPECT_EQ(store.version(), DrawingVersion::r2000);
    AcDbStub* const layer = store.findEntry(TableKind::layer, L"0");
    ASSERT_NE(layer, nullptr);
    EXPECT_EQ(layer->handle, Handle {0x10});
    EXPECT_EQ(store.find(Handle {0x24}), &drawing.record("SEQEND"));
    EXPECT_EQ(store.namedObjects().handle, Handle {0xC});
    const Block* const block = store.findBlock(L"a");
    ASSERT_NE(block, nullptr);
    const AcDbStub* const line = store.firstEntity(*block);
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->handle, Handle {0x21});
    EXPECT_EQ(block->end->handle, Handle {0x25});
    const Block* const paper = store.findBlock(L"*Paper_Space");
    ASSERT_NE(paper, nullptr);
    EXPECT_EQ(store.firstEntity(*paper)->handle, Handle {0x30});
}

TEST(DxfReader, NewRecordsFindTheirPlaceInADamagedFile)
{
    DxfDrawing drawing(dxfText("0 SECTION\n2 ENTITIES\n0 LINE\n5 A\n0 EOF\n"));
    Block* const model = drawing.store.findBlock(L"*Model_Space");
    ASSERT_NE(model, nullptr);
    const AcDbStub* const entity = drawing.store.appendEntity(*model, RecordType::text);
    EXPECT_EQ(entity->previous, &drawing.record("LINE"));
    EXPECT_TRUE(entity->next->isImplied);
}

TEST(DxfReader, KeepsAByteOrderMarkAndEmptyLinesAheadOfEverything)
{
    for (const std::string preface :
         {"\xEF\xBB\xBF", "\n", " \r\n\r\n", "\xEF\xBB\xBF\n\n", "\n999\ncomment\n"}) {
        const std::string bytes = preface + "  0\nSECTION\n  2\nENTITIES\n  0\nENDSEC\n  0\nEOF\n";
        const DxfDrawing drawing(bytes);
        EXPECT_EQ(drawing.result.status, Acad::eOk) << toUtf8(drawing.result.message);
        EXPECT_EQ(described(*drawing.store.first()), "structure ");
        EXPECT_EQ(drawing.store.first()->size, preface.size());
        EXPECT_EQ(drawing.written(), bytes);
    }
}

TEST(DxfReader, KeepsWhatStandsBehindTheEnd)
{
    const std::string whole = dxfText("0 SECTION\n2 ENTITIES\n0 ENDSEC\n");
    for (const std::string tail :
         {"0\nEOF", "0\nEOF\n\n\n", "0\nEOF\n\x1A", "0\nEOF\nno group at all\n", "0\nEOF \nx", "",
          "\n\n", " \r\n"}) {
        const DxfDrawing drawing(whole + tail);
        EXPECT_EQ(drawing.result.status, Acad::eOk) << tail;
        EXPECT_EQ(drawing.written(), whole + tail);
    }
}

// --- what cannot be read ---------------------------------------------------------------------

struct DamageRow
{
    const char* test;
    std::string bytes;
    const wchar_t* message;
};

class DxfDamage : public ::testing::TestWithParam<DamageRow>
{
};

TEST_P(DxfDamage, IsToldInOneMessage)
{
    const DxfDrawing drawing(GetParam().bytes, L"DIR/FILE");
    EXPECT_EQ(drawing.result.status, Acad::eBadDxfFile);
    EXPECT_EQ(drawing.result.message, GetParam().message);
}

#define DAMAGED L"; the file is damaged: use a backup, or save the drawing again in the CAD program"
#define NOT_TO_ITS_END                                                                             \
    L"; the file was not saved or copied to its end: copy it again, or use a backup"

INSTANTIATE_TEST_SUITE_P(
    Reader, DxfDamage,
    ::testing::Values(
        DamageRow {"NoCode", "0\nSECTION\n2\nENTITIES\n0\nLINE\nabc\nx\n",
                   L"DIR/FILE, line 7: a group code was expected, found \"abc\"" DAMAGED},
        DamageRow {"NoCodeWithCrLf", "0\r\nSECTION\r\n  x y \r\n",
                   L"DIR/FILE, line 3: a group code was expected, found \"  x y \"" DAMAGED},
        DamageRow {"AnEmptyLine", "0\nSECTION\n\n2\nX\n",
                   L"DIR/FILE, line 3: a group code was expected, found \"\"" DAMAGED},
        DamageRow {"BytesThatAreNoText", "0\nSECTION\n\xFF\x01\n2\n",
                   L"DIR/FILE, line 3: a group code was expected, found \"\xFFFD?\"" DAMAGED},
        DamageRow {"ALongLine", "0\nSECTION\n" + std::string(100, 'x') + "\n2\n",
                   L"DIR/FILE, line 3: a group code was expected, found "
                   L"\"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\"" DAMAGED},
        DamageRow {"TheEndBehindACode", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n  0\n",
                   L"DIR/FILE: ends in the middle of a group (line 7)" NOT_TO_ITS_END},
        DamageRow {"TheEndInACode", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0",
                   L"DIR/FILE: ends in the middle of a group (line 7)" NOT_TO_ITS_END},
        DamageRow {"TheEndInASection", "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n0\n",
                   L"DIR/FILE: ends in the middle of the section ENTITIES (line 9)" NOT_TO_ITS_END},
        DamageRow {"TheEndInASectionWithoutAName", "0\nSECTION\n",
                   L"DIR/FILE: ends in the middle of a group (line 3)" NOT_TO_ITS_END},
        DamageRow {"TheEndInAWord", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEO",
                   L"DIR/FILE: ends in the middle of a group (line 8)" NOT_TO_ITS_END},
        DamageRow {"BinaryWithNothing", std::string(kBinarySentinel),
                   L"DIR/FILE: ends in the middle of a group (byte 22)" NOT_TO_ITS_END},
        DamageRow {"BinaryWithAnUnknownCode",
                   std::string(kBinarySentinel) + std::string("\0\0SECTION\0\x30\x27x", 13),
                   L"DIR/FILE, byte 32: a group code was expected, found 10032" DAMAGED},
        DamageRow {"BinaryWithAnUnknownLongCode",
                   std::string(kBinarySentinel) + std::string("\0SECTION\0\xFF\x30\x27x", 13),
                   L"DIR/FILE, byte 31: a group code was expected, found 10032" DAMAGED},
        DamageRow {"BinaryCutOff",
                   std::string(kBinarySentinel) + std::string("\0\0SECTION\0\2\0HEAD", 16),
                   L"DIR/FILE: ends in the middle of a group (byte 32)" NOT_TO_ITS_END}),
    [](const auto& row) { return std::string(row.param.test); });

TEST(DxfReader, AFileThatIsCutAnywhereIsRefusedOrComesBack)
{
    for (const std::string& whole : {dxfText(kWhole.groups), binaryDxf(kWhole.groups)}) {
        std::size_t loaded = 0;
        for (std::size_t size = 0; size < whole.size(); ++size) {
            const std::string bytes = whole.substr(0, size);
            const DxfDrawing drawing(bytes);
            if (drawing.result.status == Acad::eOk) {
                ++loaded;
                EXPECT_EQ(drawing.written(), bytes);
            } else {
                EXPECT_FALSE(drawing.result.message.empty());
            }
        }
        // Behind each of the 7 ENDSEC, with its line end or without, the file could be a whole one;
        // and so behind EOF.
        EXPECT_EQ(loaded, whole.starts_with(kBinarySentinel) ? 7U : 2 * 7U + 1U);
    }
}

} // namespace
} // namespace corma::host::dxf
