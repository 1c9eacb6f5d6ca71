// The types of drawn records of DWG files: groups are made a record, and the bits of that groups.

#include "host/dwg/Record.h"
#include "host/dwg/checksum.h"
#include "host/model/Store.h"
#include "platform/text.h"
#include "support/DxfDrawing.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace corma::host::dwg {
namespace {

using corma::testing::described;
using enum DrawingVersion;

constexpr Handle kSelf {0x40};
constexpr Handle kOwner {0x1F};

class FewNames : public Names
{
public:
    FewNames()
    {
        add(TableKind::layer, L"0", 0x10);
        add(TableKind::textStyle, L"Standard", 0x11);
        add(TableKind::textStyle, L"Roman", 0x12);
        add(TableKind::dimStyle, L"Standard", 0x13);
        add(TableKind::dimStyle, L"ISO-25", 0x14);
        add(TableKind::blockRecord, L"Chair", 0x15);
        add(TableKind::blockRecord, L"*D4", 0x16);
    }

    [[nodiscard]] std::wstring nameOf(Handle entry) const override
    {
        const auto found = m_names.find(entry);
        return found == m_names.end() ? std::wstring() : found->second;
    }

    [[nodiscard]] Handle find(TableKind table, std::wstring_view name) const override
    {
        const auto found = m_handles.find({table, foldedName(name)});
        return found == m_handles.end() ? Handle::none : found->second;
    }

private:
    void add(TableKind table, const std::wstring& name, std::uint64_t handle)
    {
        m_names.emplace(Handle {handle}, name);
        m_handles.emplace(std::pair(table, foldedName(name)), Handle {handle});
    }

    std::map<Handle, std::wstring> m_names;
    std::map<std::pair<TableKind, std::wstring>, Handle> m_handles;
};

/// Groups from lines of a code and a value. A line can begin with the only versions that have it,
/// such as "R2007+ 46 0.5", "R2010- 40 1.5" with those before that one.
class GroupLines
{
public:
    explicit GroupLines(DrawingVersion version)
        : m_version(version)
    {
    }

    [[nodiscard]] Groups parse(std::string_view type, std::string_view lines) const
    {
        Groups groups;
        groups.add(Group(code::type, GroupValue(toWide(type))));
        groups.add(Group(code::handle, kSelf));
        groups.add(Group(code::owner, kOwner));
        groups.add(Group(code::subclass, L"AcDbEntity"));
        groups.add(Group(code::layer, L"0"));
        while (!lines.empty()) {
            const std::string_view line = lines.substr(0, lines.find('\n'));
            lines.remove_prefix(std::min(line.size() + 1, lines.size()));
            addLine(line, groups);
        }
        return groups;
    }

private:
    static std::wstring toWide(std::string_view text) { return {text.begin(), text.end()}; }

    void addLine(std::string_view line, Groups& groups) const
    {
        if (line.starts_with('R')) {
            const std::size_t space = line.find(' ');
            const bool isFrom = line[space - 1] == '+';
            if ((m_version >= versionOf(line.substr(1, space - 2))) != isFrom) {
                return;
            }
            line.remove_prefix(space + 1);
        }
        if (!line.empty()) {
            const std::size_t space = std::min(line.find(' '), line.size());
            const int groupCode = std::stoi(std::string(line.substr(0, space)));
            const std::string_view value = line.substr(std::min(space + 1, line.size()));
            groups.add(Group(groupCode, valueOf(groupCode, value)));
        }
    }

    static DrawingVersion versionOf(std::string_view year)
    {
        static const std::map<std::string_view, DrawingVersion> versions
            = {{"2000", r2000}, {"2004", r2004}, {"2007", r2007},
               {"2010", r2010}, {"2013", r2013}, {"2018", r2018}};
        return versions.at(year);
    }

    static GroupValue valueOf(int groupCode, std::string_view value)
    {
        switch (valueKindOf(groupCode)) {
        case ValueKind::real:
            return std::stod(std::string(value));
        case ValueKind::text:
            return toWide(value);
        case ValueKind::handle:
            return *handleFrom(value);
        default:
            return std::int64_t {std::stoll(std::string(value))};
        }
    }

    DrawingVersion m_version;
};

FileForm formOf(DrawingVersion version)
{
    FileForm form;
    form.version = version;
    return form;
}

struct Case
{
    const char* sentence;
    const char* type;
    unsigned number;
    const char* lines;
    int ownedCount = 0; // vertices or attributes
    DrawingVersion first = r2000;
};

std::ostream& operator<<(std::ostream& out, const Case& shown)
{
    return out << shown.sentence;
}

Surroundings surroundingsOf(const Case& tested)
{
    constexpr std::uint64_t kFirstOwned = 0x41;
    Surroundings around;
    around.space = Surroundings::Space::ofOwner;
    for (int i = 0; i < tested.ownedCount; ++i) {
        around.owned.push_back(Handle {kFirstOwned + static_cast<std::uint64_t>(i)});
    }
    if (tested.ownedCount > 0) {
        around.end = Handle {kFirstOwned + static_cast<std::uint64_t>(tested.ownedCount)};
    }
    return around;
}

using CaseOfVersion = std::tuple<Case, DrawingVersion>;

class EntityTypes : public ::testing::TestWithParam<CaseOfVersion>
{
protected:
    [[nodiscard]] static const Case& tested() { return std::get<0>(GetParam()); }

    [[nodiscard]] static DrawingVersion version() { return std::get<1>(GetParam()); }

    [[nodiscard]] Groups groups() const
    {
        return GroupLines(version()).parse(tested().type, tested().lines);
    }

    [[nodiscard]] std::string newBytes() const
    {
        Record record(m_form, m_types, tested().number);
        const auto trouble = record.fromGroups(m_names, groups(), surroundingsOf(tested()));
        EXPECT_FALSE(trouble) << toUtf8(trouble.value_or(L""));
        return record.bytes();
    }

    [[nodiscard]] std::string describedGroups(const Record& record) const
    {
        Groups found;
        record.toGroups(m_names, found);
        return described(found);
    }

    FewNames m_names;
    TypeTable m_types;
    FileForm m_form = formOf(version());
};

TEST_P(EntityTypes, ANewRecordHasTheGroupsThatItWasMadeOf)
{
    EXPECT_EQ(m_types.numberFor(groups()), tested().number);
    const std::string bytes = newBytes();
    const auto record = Record::read(bytes, m_form, m_types);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->depth(), Record::Depth::all);
    EXPECT_EQ(describedGroups(*record), described(groups()));
}

TEST_P(EntityTypes, ARecordThatIsWrittenFromItsOwnGroupsKeepsItsBits)
{
    const std::string bytes = newBytes();
    auto record = Record::read(bytes, m_form, m_types);
    ASSERT_TRUE(record);
    Groups found;
    record->toGroups(m_names, found);
    EXPECT_FALSE(record->fromGroups(m_names, found, surroundingsOf(tested())));
    EXPECT_EQ(record->bytes(), bytes);
}

TEST_P(EntityTypes, WhatARecordOwnsIsWhatStandsBehindIt)
{
    const std::string bytes = newBytes();
    const auto record = Record::read(bytes, m_form, m_types);
    ASSERT_TRUE(record);
    const auto owned = record->owned().value_or(Owned {});
    const Surroundings around = surroundingsOf(tested());
    EXPECT_EQ(owned.end, around.end);
    if (version() >= r2004) {
        EXPECT_EQ(owned.members, around.owned);
    } else {
        EXPECT_EQ(owned.first, around.owned.empty() ? Handle::none : around.owned.front());
        EXPECT_EQ(owned.last, around.owned.empty() ? Handle::none : around.owned.back());
    }
}

// Each byte takes values that make numbers large, counts above all. What is read from such bits is
// either not understood or comes back to the same.
TEST_P(EntityTypes, ADamagedRecordIsReadWithoutHarm)
{
    constexpr std::size_t kChecksumSize = 2;
    const std::string whole = newBytes();
    for (std::size_t at = 2; at + kChecksumSize < whole.size(); ++at) {
        for (const char damage : {'\x00', '\x0F', '\x40', '\x7F', '\xFF'}) {
            std::string bytes = whole;
            bytes[at] = damage;
            const std::size_t end = bytes.size() - kChecksumSize;
            const std::uint16_t sum = checksum(std::string_view(bytes).substr(0, end));
            bytes[end] = static_cast<char>(sum);
            bytes[end + 1] = static_cast<char>(sum >> 8);
            const auto record = Record::read(bytes, m_form, m_types);
            if (record && record->depth() == Record::Depth::all) {
                EXPECT_EQ(record->bytes(), bytes) << at;
                EXPECT_FALSE(describedGroups(*record).empty());
            }
        }
    }
}

std::vector<Case> simpleCases()
{
    return {
        {"AFlatLine", "LINE", 0x13, "100 AcDbLine\n10 1.5\n20 2.5\n30 0\n11 3.5\n21 2.5\n31 0"},
        {"ALineInSpace", "LINE", 0x13,
         "100 AcDbLine\n39 0.5\n10 1.5\n20 2.5\n30 1\n11 3.5\n21 2.5\n31 4\n"
         "210 0\n220 1\n230 0"},
        {"APoint", "POINT", 0x1B, "100 AcDbPoint\n10 1.5\n20 2.5\n30 3.5\n39 2\n50 90"},
        {"ARay", "RAY", 0x28, "100 AcDbRay\n10 1.5\n20 2\n30 3\n11 0\n21 1\n31 0"},
        {"AnXline", "XLINE", 0x29, "100 AcDbXline\n10 1.5\n20 2\n30 3\n11 0\n21 1\n31 0"},
        {"ASolid", "SOLID", 0x1F,
         "100 AcDbTrace\n10 1\n20 2\n30 5\n11 3\n21 4\n31 5\n12 6\n22 7\n32 5\n13 8\n23 9\n33 5\n"
         "39 2"},
        {"ATrace", "TRACE", 0x20,
         "100 AcDbTrace\n10 1\n20 2\n30 0\n11 3\n21 4\n31 0\n12 6\n22 7\n32 0\n13 8\n23 9\n33 0\n"
         "210 0\n220 0\n230 -1"},
        {"AFlatFace", "3DFACE", 0x1C,
         "100 AcDbFace\n10 1\n20 2\n30 0\n11 3\n21 4\n31 5\n12 6\n22 7\n32 5\n13 8\n23 9\n33 5"},
        {"AFaceWithHiddenEdges", "3DFACE", 0x1C,
         "100 AcDbFace\n10 1\n20 2\n30 3\n11 3\n21 4\n31 5\n12 6\n22 7\n32 5\n13 8\n23 9\n33 5\n"
         "70 13"},
        {"ACircle", "CIRCLE", 0x12, "100 AcDbCircle\n39 0.5\n10 1\n20 2\n30 3\n40 4.5"},
        {"AnArc", "ARC", 0x11,
         "100 AcDbCircle\n10 1\n20 2\n30 3\n40 4.5\n100 AcDbArc\n50 30\n51 270"},
        {"AnEllipse", "ELLIPSE", 0x23,
         "100 AcDbEllipse\n10 1\n20 2\n30 3\n11 5\n21 0\n31 0\n210 0\n220 0\n230 1\n"
         "40 0.5\n41 0.25\n42 3.5"},
        {"ASplineByControlPoints", "SPLINE", 0x24,
         "100 AcDbSpline\n70 4\n71 2\n72 6\n73 3\n74 0\n42 1e-9\n43 1e-10\n40 0\n40 0\n40 0\n40 1\n"
         "40 1\n40 1\n10 1\n20 2\n30 3\n41 1\n10 4\n20 5\n30 6\n41 0.5\n10 7\n20 8\n30 9\n41 1"},
        {"ASplineByFitPoints", "SPLINE", 0x24,
         "100 AcDbSpline\nR2013- 70 0\nR2013+ 70 1056\n71 3\n72 0\n73 0\n74 2\n44 1e-10\n"
         "12 1\n22 0\n32 0\n11 1\n21 2\n31 3\n11 4\n21 5\n31 6"},
    };
}

std::vector<Case> blockCases()
{
    return {
        {"TheBeginOfABlock", "BLOCK", 0x04, "100 AcDbBlockBegin\n2 Chair"},
        {"TheEndOfABlock", "ENDBLK", 0x05, "100 AcDbBlockEnd"},
        {"TheEndOfASequence", "SEQEND", 0x06, ""},
        {"AReference", "INSERT", 0x07, "100 AcDbBlockReference\n2 Chair\n10 1\n20 2\n30 3"},
        {"AReferenceOfAnotherSize", "INSERT", 0x07,
         "100 AcDbBlockReference\n2 Chair\n10 1\n20 2\n30 3\n41 2\n42 2\n43 2\n50 45"},
        {"AReferenceThatIsStretched", "INSERT", 0x07,
         "100 AcDbBlockReference\n2 Chair\n10 1\n20 2\n30 3\n42 2.5\n43 0.5"},
        {"AMirroredReferenceWithAttributes", "INSERT", 0x07,
         "100 AcDbBlockReference\n66 1\n2 Chair\n10 1\n20 2\n30 3\n41 -2\n42 2\n43 4\n50 45\n"
         "210 0\n220 0\n230 -1",
         2},
        {"AReferenceInRowsAndColumns", "INSERT", 0x08,
         "100 AcDbMInsertBlock\n2 Chair\n10 1\n20 2\n30 3\n50 45\n70 5\n71 3\n44 10\n45 12"},
        {"AReferenceInRowsWithAttributes", "INSERT", 0x08,
         "100 AcDbMInsertBlock\n66 1\n2 Chair\n10 1\n20 2\n30 3\n71 3\n45 12", 3},
    };
}

std::vector<Case> textCases()
{
    return {
        {"AText", "TEXT", 0x01,
         "100 AcDbText\n10 1\n20 2\n30 0\n40 2.5\n1 some words\n100 AcDbText"},
        {"ATextWithAllThatItCanHave", "TEXT", 0x01,
         "100 AcDbText\n39 1\n10 1\n20 2\n30 3\n40 2.5\n1 some words\n50 30\n41 0.8\n51 15\n"
         "7 Roman\n71 2\n72 1\n11 4\n21 5\n31 3\n210 0\n220 1\n230 0\n100 AcDbText\n73 2"},
        {"AnAttribute", "ATTRIB", 0x02,
         "100 AcDbText\n10 1\n20 2\n30 0\n40 2.5\n1 value\n100 AcDbAttribute\nR2010+ 280 0\n"
         "2 TAG\n70 8\nR2007+ 280 1"},
        {"ADefinition", "ATTDEF", 0x03,
         "100 AcDbText\n10 1\n20 2\n30 0\n40 2.5\n1 value\n11 4\n21 5\n31 0\n"
         "100 AcDbAttributeDefinition\nR2010+ 280 0\n3 Which one?\n2 TAG\n70 2\n74 3\n"
         "R2007+ 280 0"},
        {"AnAttributeOfSeveralLines", "ATTRIB", 0x02,
         "100 AcDbText\n10 1\n20 2\n30 0\n40 2.5\n1 \n11 4\n21 5\n31 0\n100 AcDbAttribute\n"
         "280 0\n2 TAG\n70 0\n74 3\n280 1\n71 2\n72 0\n11 4\n21 5\n31 0\n101 Embedded Object\n"
         "10 4\n20 5\n30 0\n40 2.5\n41 0\n46 0\n71 1\n72 5\n1 one\\Ptwo\n73 1\n44 1",
         0, r2018},
        {"ADefinitionOfSeveralLines", "ATTDEF", 0x03,
         "100 AcDbText\n10 1\n20 2\n30 0\n40 2.5\n1 \n11 4\n21 5\n31 0\n"
         "100 AcDbAttributeDefinition\n280 0\n3 Which one?\n2 TAG\n70 0\n74 3\n280 1\n71 4\n72 0\n"
         "11 4\n21 5\n31 0\n101 Embedded Object\n10 4\n20 5\n30 0\n40 2.5\n41 8\n46 0\n71 1\n72 5\n"
         "1 one\n7 Roman\n73 1\n44 1",
         0, r2018},
        {"ATextOfSeveralLines", "MTEXT", 0x2C,
         "100 AcDbMText\n10 1\n20 2\n30 3\n40 2.5\n41 40\nR2007+ 46 1.5\n71 5\n72 1\n1 one\\Ptwo\n"
         "7 Roman\n11 0\n21 1\n31 0\n73 1\n44 1.25"},
        {"ATextOnABackground", "MTEXT", 0x2C,
         "100 AcDbMText\n10 1\n20 2\n30 3\n40 2.5\n41 40\nR2007+ 46 0\n71 1\n72 5\n1 one\n"
         "210 0\n220 0\n230 -1\n73 1\n44 1\n90 1\n63 5\n45 1.25\n441 0",
         0, r2004},
        {"ATextInColumns", "MTEXT", 0x2C,
         "100 AcDbMText\n10 1\n20 2\n30 3\n40 2.5\n41 40\n46 0\n71 1\n72 5\n1 one\n73 1\n44 1\n"
         "101 Embedded Object\n70 1\n10 1\n20 0\n30 0\n11 1\n21 2\n31 3\n40 40\n41 0\n42 30\n43 "
         "20\n"
         "71 2\n72 2\n44 15\n45 5\n73 0\n74 0\n46 10\n46 12",
         0, r2018},
    };
}

std::vector<Case> polylineCases()
{
    return {
        {"ALightPolyline", "LWPOLYLINE", 0x4D,
         "100 AcDbPolyline\n90 3\n70 0\n43 0\n10 1\n20 2\n10 3\n20 2\n10 3\n20 5"},
        {"AClosedPolylineWithArcs", "LWPOLYLINE", 0x4D,
         "100 AcDbPolyline\n90 3\n70 129\n43 0.5\n38 4\n39 2\n10 1\n20 2\n42 0.5\n10 3\n20 2\n"
         "10 3\n20 5\n42 -1\n210 0\n220 0\n230 -1"},
        {"APolylineOfVaryingWidth", "LWPOLYLINE", 0x4D,
         "100 AcDbPolyline\n90 2\n70 0\n10 1\n20 2\n40 0\n41 1\nR2010+ 91 7\n10 3\n20 2\n40 1\n"
         "41 0.5\nR2010+ 91 8"},
        {"APolylineOfVertices", "POLYLINE", 0x0F,
         "100 AcDb2dPolyline\n66 1\n10 0\n20 0\n30 3\n39 1\n70 1\n40 0.5\n41 0.25\n75 6", 3},
        {"APolylineInSpace", "POLYLINE", 0x10, "100 AcDb3dPolyline\n66 1\n10 0\n20 0\n30 0\n70 9",
         2},
        {"ACurveInSpace", "POLYLINE", 0x10,
         "100 AcDb3dPolyline\n66 1\n10 0\n20 0\n30 0\n70 12\n75 5", 2},
        {"AMesh", "POLYLINE", 0x1E,
         "100 AcDbPolygonMesh\n66 1\n10 0\n20 0\n30 0\n70 17\n71 2\n72 3\n73 4\n74 5\n75 6", 6},
        {"FacesOfVertices", "POLYLINE", 0x1D,
         "100 AcDbPolyFaceMesh\n66 1\n10 0\n20 0\n30 0\n70 64\n71 4\n72 1", 5},
        {"AVertex", "VERTEX", 0x0A,
         "100 AcDbVertex\n100 AcDb2dVertex\n10 1\n20 2\n30 0\n40 0.5\n41 0.5\n42 1\n70 1\n50 90\n"
         "R2010+ 91 3"},
        {"AVertexOfTwoWidths", "VERTEX", 0x0A,
         "100 AcDbVertex\n100 AcDb2dVertex\n10 1\n20 2\n30 0\n40 0.5\n41 0\nR2010+ 91 0"},
        {"AVertexInSpace", "VERTEX", 0x0B,
         "100 AcDbVertex\n100 AcDb3dPolylineVertex\n10 1\n20 2\n30 3\n70 32"},
        {"AVertexOfAMesh", "VERTEX", 0x0C,
         "100 AcDbVertex\n100 AcDbPolygonMeshVertex\n10 1\n20 2\n30 3\n70 64"},
        {"AVertexOfFaces", "VERTEX", 0x0D,
         "100 AcDbVertex\n100 AcDbPolyFaceMeshVertex\n10 1\n20 2\n30 3\n70 192"},
        {"AFaceOfVertices", "VERTEX", 0x0E,
         "100 AcDbFaceRecord\n10 0\n20 0\n30 0\n70 128\n71 1\n72 -2\n73 3"},
    };
}

constexpr const char* kDimensionHead
    = "100 AcDbDimension\nR2010+ 280 0\n2 *D4\n10 1\n20 2\n30 3\n11 4\n21 5\n31 6\n";

std::string dimensionLines(int flags, const char* rest)
{
    return std::string(kDimensionHead) + "70 " + std::to_string(flags)
        + "\n1 about <>\n53 15\n51 30\n71 5\n42 12.5\nR2007+ 73 0\nR2007+ 74 1\nR2007+ 75 0\n"
          "3 ISO-25\n"
        + rest;
}

std::vector<Case> dimensionCases()
{
    static const std::vector<std::string> lines = {
        dimensionLines(32,
                       "100 AcDbAlignedDimension\n13 1\n23 2\n33 3\n14 4\n24 5\n34 6\n52 80\n"
                       "50 30\n100 AcDbRotatedDimension"),
        dimensionLines(161, "100 AcDbAlignedDimension\n13 1\n23 2\n33 3\n14 4\n24 5\n34 6"),
        dimensionLines(2,
                       "100 AcDb2LineAngularDimension\n13 1\n23 2\n33 3\n14 4\n24 5\n34 6\n"
                       "15 7\n25 8\n35 9\n16 10\n26 11\n36 6"),
        dimensionLines(35, "100 AcDbDiametricDimension\n15 7\n25 8\n35 9\n40 2"),
        dimensionLines(36, "100 AcDbRadialDimension\n15 7\n25 8\n35 9\n40 0"),
        dimensionLines(37,
                       "100 AcDb3PointAngularDimension\n13 1\n23 2\n33 3\n14 4\n24 5\n34 6\n"
                       "15 7\n25 8\n35 9"),
        dimensionLines(102, "100 AcDbOrdinateDimension\n13 1\n23 2\n33 3\n14 4\n24 5\n34 6"),
    };
    return {
        {"ARotatedDimension", "DIMENSION", 0x15, lines[0].c_str()},
        {"AnAlignedDimensionWithMovedText", "DIMENSION", 0x16, lines[1].c_str()},
        {"AnAngleBetweenLines", "DIMENSION", 0x18, lines[2].c_str()},
        {"ADiameter", "DIMENSION", 0x1A, lines[3].c_str()},
        {"ARadius", "DIMENSION", 0x19, lines[4].c_str()},
        {"AnAngleAtAPoint", "DIMENSION", 0x17, lines[5].c_str()},
        {"AnOrdinate", "DIMENSION", 0x14, lines[6].c_str()},
    };
}

std::vector<Case> annotationCases()
{
    return {
        {"ALeader", "LEADER", 0x2D,
         "100 AcDbLeader\n3 ISO-25\n72 1\n73 0\n74 1\nR2010- 40 1.5\nR2010- 41 12\n76 3\n"
         "10 1\n20 2\n30 0\n10 3\n20 4\n30 0\n10 5\n20 6\n30 0\n340 513\n210 0\n220 0\n230 -1\n"
         "211 -1\n221 0\n231 0\n213 1\n223 2\n233 0"},
        {"ATolerance", "TOLERANCE", 0x2E,
         "100 AcDbFcf\n3 Standard\n10 1\n20 2\n30 3\n1 {\\Fgdt;j}%%v\n11 0\n21 1\n31 0"},
        {"AMultiline", "MLINE", 0x2F,
         "100 AcDbMline\n340 18\n40 20\n70 0\n71 3\n72 2\n73 2\n10 1\n20 2\n30 0\n"
         "210 0\n220 0\n230 1\n"
         "11 1\n21 2\n31 0\n12 1\n22 0\n32 0\n13 0\n23 1\n33 0\n74 2\n41 0\n41 0.5\n75 0\n"
         "74 1\n41 -3\n75 1\n42 4\n"
         "11 9\n21 2\n31 0\n12 1\n22 0\n32 0\n13 0\n23 1\n33 0\n74 0\n75 0\n74 0\n75 0"},
        {"AViewport", "VIEWPORT", 0x22,
         "100 AcDbViewport\n10 1\n20 2\n30 0\n40 200\n41 100\n12 3\n22 4\n13 0\n23 0\n14 10\n"
         "24 10\n15 10\n25 10\n16 0\n26 0\n36 1\n17 1\n27 2\n37 3\n42 50\n43 0\n44 0\n45 120\n"
         "50 15\n51 30\n72 1000\nR2004- 341 10\nR2004+ 331 10\n90 32864\n340 77\n1 style.ctb\n"
         "281 2\n71 1\n74 0\n110 0\n120 0\n130 0\n111 1\n121 0\n131 0\n112 0\n122 1\n132 0\n345 "
         "78\n"
         "79 0\n146 2\nR2004+ 170 1\nR2007+ 61 5\nR2007+ 348 9F\nR2007+ 292 1\nR2007+ 282 1\n"
         "R2007+ 141 0\nR2007+ 142 0\nR2007+ 63 250\nR2007+ 421 3355443"},
    };
}

std::vector<Case> hatchCases()
{
    return {
        {"AHatchOfLines", "HATCH", 0x4E,
         "100 AcDbHatch\n10 0\n20 0\n30 2\n210 0\n220 0\n230 1\n2 ANSI31\n70 0\n71 1\n91 1\n92 1\n"
         "93 2\n72 1\n10 1\n20 2\n11 3\n21 4\n72 1\n10 3\n20 4\n11 1\n21 2\n97 1\n330 8E\n75 0\n"
         "76 1\n52 15\n41 2\n77 0\n78 2\n53 45\n43 0\n44 1\n45 2\n46 3\n79 0\n53 90\n43 0\n44 0\n"
         "45 -1\n46 1\n79 2\n49 1\n49 -0.5\n98 1\n10 5\n20 6"},
        {"AHatchOfCurves", "HATCH", 0x4E,
         "100 AcDbHatch\n10 0\n20 0\n30 0\n210 0\n220 0\n230 -1\n2 SOLID\n70 1\n71 0\n91 1\n92 5\n"
         "93 3\n72 2\n10 1\n20 2\n40 3\n50 30\n51 60\n73 0\n72 3\n10 1\n20 2\n11 4\n21 0\n40 0.5\n"
         "50 0\n51 90\n73 1\n72 4\n94 2\n73 1\n74 0\n95 5\n96 2\n40 0\n40 0\n40 0\n40 1\n40 1\n10 "
         "1\n"
         "20 2\n42 1\n10 3\n20 4\n42 0.5\nR2010+ 97 2\nR2010+ 11 1\nR2010+ 21 2\nR2010+ 11 3\n"
         "R2010+ 21 4\nR2010+ 12 1\nR2010+ 22 0\nR2010+ 13 0\nR2010+ 23 1\n97 0\n75 1\n76 1\n47 "
         "0.25\n"
         "98 0"},
        {"AHatchOfPolylines", "HATCH", 0x4E,
         "100 AcDbHatch\n10 0\n20 0\n30 0\n210 0\n220 0\n230 1\n2 SOLID\n70 1\n71 0\n91 2\n92 3\n"
         "72 1\n73 1\n93 2\n10 1\n20 2\n42 0\n10 3\n20 4\n42 0.5\n97 2\n330 8E\n330 8F\n92 2\n72 "
         "0\n"
         "73 1\n93 2\n10 1\n20 2\n10 3\n20 4\n97 0\n75 0\n76 1\n98 2\n10 5\n20 6\n10 7\n20 8"},
        {"AGradient", "HATCH", 0x4E,
         "100 AcDbHatch\n10 0\n20 0\n30 0\n210 0\n220 0\n230 1\n2 SOLID\n70 1\n71 0\n91 1\n92 2\n"
         "72 0\n73 1\n93 2\n10 1\n20 2\n10 3\n20 4\n97 0\n75 0\n76 1\n98 0\n450 1\n451 0\n460 0.5\n"
         "461 0\n452 0\n462 0\n453 2\n463 0\n63 5\n421 255\n463 1\n63 2\n421 16776960\n470 LINEAR",
         0, r2004},
    };
}

std::string nameOf(const ::testing::TestParamInfo<CaseOfVersion>& info)
{
    return std::string(std::get<0>(info.param).sentence) + "_AC"
        + std::to_string(static_cast<int>(std::get<1>(info.param)));
}

// Each case in all versions that have it.
auto inVersions(const std::vector<Case>& cases)
{
    std::vector<CaseOfVersion> all;
    for (const Case& single : cases) {
        for (const DrawingVersion version : {r2000, r2004, r2010, r2018}) {
            if (version >= single.first) {
                all.emplace_back(single, version);
            }
        }
    }
    return ::testing::ValuesIn(all);
}

INSTANTIATE_TEST_SUITE_P(Simple, EntityTypes, inVersions(simpleCases()), nameOf);
INSTANTIATE_TEST_SUITE_P(Blocks, EntityTypes, inVersions(blockCases()), nameOf);
INSTANTIATE_TEST_SUITE_P(Texts, EntityTypes, inVersions(textCases()), nameOf);
INSTANTIATE_TEST_SUITE_P(Polylines, EntityTypes, inVersions(polylineCases()), nameOf);
INSTANTIATE_TEST_SUITE_P(Dimensions, EntityTypes, inVersions(dimensionCases()), nameOf);
INSTANTIATE_TEST_SUITE_P(Annotations, EntityTypes, inVersions(annotationCases()), nameOf);
INSTANTIATE_TEST_SUITE_P(Hatches, EntityTypes, inVersions(hatchCases()), nameOf);

} // namespace

} // namespace corma::host::dwg
