// The records of the symbol tables but for blocks.

#include "host/acdb_symbol_table.h"
#include "host/color_index.h"
#include "host/model/Store.h"
#include "host/new_records.h"

#include <array>
#include <cstdlib>

CORMA_HOST_CLASS_BODY(AcDbLayerTableRecord, AcDbSymbolTableRecord)
CORMA_HOST_CLASS_BODY(AcDbLinetypeTableRecord, AcDbSymbolTableRecord)
CORMA_HOST_CLASS_BODY(AcDbTextStyleTableRecord, AcDbSymbolTableRecord)
CORMA_HOST_CLASS_BODY(AcDbViewportTableRecord, AcDbSymbolTableRecord)

namespace {

using namespace corma::host;

constexpr const wchar_t* kLayerMarker = L"AcDbLayerTableRecord";
constexpr const wchar_t* kContinuous = L"Continuous";
constexpr unsigned short kWhite = 7;

constexpr int kTrueColor = 420;
constexpr int kColorName = 430;
constexpr int kLineWeight = 370;
constexpr int kPlotStyle = 390;
constexpr int kMaterial = 347;

constexpr std::int64_t kFrozen = 1;
constexpr std::int64_t kLocked = 4;

void add(Groups& groups, std::initializer_list<Group> more)
{
    for (const Group& group : more) {
        groups.add(group);
    }
}

void addMarkers(Groups& groups, const wchar_t* marker)
{
    add(groups, {{code::subclass, L"AcDbSymbolTableRecord"}, {code::subclass, marker}});
}

} // namespace

Acad::ErrorStatus AcCmColor::setColorIndex(unsigned short index)
{
    if (index > kColorByLayer) {
        return Acad::eInvalidInput;
    }
    m_index = index;
    return Acad::eOk;
}

// --- layers --------------------------------------------------------------------------------------

AcDbLayerTableRecord::AcDbLayerTableRecord()
    : AcDbSymbolTableRecord(L"LAYER")
{
    addMarkers(m_groups, kLayerMarker);
    add(m_groups,
        {{code::name, L""},
         {code::flags, 0},
         {code::color, kWhite},
         {code::linetype, kContinuous},
         {kLineWeight, AcDb::kLnWtByLwDefault}});
}

GroupRange AcDbLayerTableRecord::own() const
{
    return m_groups.subclass(kLayerMarker);
}

// The linetype in the spelling of the drawing, and what all layers of the drawing have alike.
void AcDbLayerTableRecord::fitInto(Store& store)
{
    AcDbStub* const linetype
        = store.findEntry(TableKind::linetype, m_groups.text(code::linetype, own(), kContinuous));
    if (linetype != nullptr) {
        m_groups.set(code::linetype, own(), store.nameOfEntry(*linetype));
    }
    AcDbStub* other = store.firstEntry(TableKind::layer);
    while (other != nullptr && other->isErased) {
        other = store.entryBehind(TableKind::layer, *other);
    }
    if (other != nullptr) {
        const Groups example = store.groupsOf(*other);
        for (const int sharedCode : {kPlotStyle, kMaterial}) {
            const GroupRange in = example.subclass(kLayerMarker);
            if (example.find(sharedCode, in)) {
                m_groups.set(sharedCode, own(), example.handle(sharedCode, in));
            }
        }
    }
    AcDbSymbolTableRecord::fitInto(store);
}

AcCmColor AcDbLayerTableRecord::color() const
{
    AcCmColor color;
    const auto index = std::abs(m_groups.integer(code::color, own(), kWhite));
    color.setColorIndex(static_cast<unsigned short>(index));
    return color;
}

Acad::ErrorStatus AcDbLayerTableRecord::setColor(const AcCmColor& color)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    const int index = color.colorIndex();
    if (index == 0 || index >= kColorByLayer) {
        return Acad::eInvalidInput;
    }
    const bool wasOff = isOff();
    Groups& groups = changeGroups();
    groups.set(code::color, own(), std::int64_t {wasOff ? -index : index});
    groups.remove(kTrueColor, own()); // it would win over the index
    groups.remove(kColorName, own());
    return Acad::eOk;
}

AcDbObjectId AcDbLayerTableRecord::linetypeObjectId() const
{
    return stub() == nullptr
        ? AcDbObjectId()
        : AcDbObjectId(stub()->store->findEntry(TableKind::linetype,
                                                m_groups.text(code::linetype, own(), kContinuous)));
}

Acad::ErrorStatus AcDbLayerTableRecord::setLinetypeObjectId(AcDbObjectId id)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    if (id.isNull()) {
        return Acad::eNullObjectId;
    }
    Store& store = *id.stub()->store;
    if (stub() != nullptr && stub()->store != &store) {
        return Acad::eWrongDatabase;
    }
    if (id.stub()->container != &store.table(TableKind::linetype)) {
        return Acad::eWrongObjectType;
    }
    changeGroups().set(code::linetype, own(), store.nameOfEntry(*id.stub()));
    return Acad::eOk;
}

AcDb::LineWeight AcDbLayerTableRecord::lineWeight() const
{
    return static_cast<AcDb::LineWeight>(
        m_groups.integer(kLineWeight, own(), AcDb::kLnWtByLwDefault));
}

bool AcDbLayerTableRecord::isFrozen() const
{
    return (m_groups.integer(code::flags, own()) & kFrozen) != 0;
}

bool AcDbLayerTableRecord::isOff() const
{
    return m_groups.integer(code::color, own(), kWhite) < 0;
}

bool AcDbLayerTableRecord::isLocked() const
{
    return (m_groups.integer(code::flags, own()) & kLocked) != 0;
}

// --- others --------------------------------------------------------------------------------------

namespace {

constexpr const wchar_t* kLinetypeMarker = L"AcDbLinetypeTableRecord";
constexpr int kDash = 49;

// The lengths as the record has them; the count that it tells may be another.
std::vector<double> dashesOf(const Groups& groups)
{
    std::vector<double> dashes;
    const GroupRange own = groups.subclass(kLinetypeMarker);
    for (std::size_t at = own.begin; at < own.end; ++at) {
        if (groups[at].code == kDash) {
            dashes.push_back(groups[at].real());
        }
    }
    return dashes;
}

} // namespace

// A line without gaps.
AcDbLinetypeTableRecord::AcDbLinetypeTableRecord()
    : AcDbSymbolTableRecord(L"LTYPE")
{
    constexpr int kDescription = 3;
    constexpr int kAlignment = 72;
    constexpr int kAligned = 65;
    constexpr int kDashes = 73;
    constexpr int kLength = 40;
    addMarkers(m_groups, kLinetypeMarker);
    add(m_groups,
        {{code::name, L""},
         {code::flags, 0},
         {kDescription, L""},
         {kAlignment, kAligned},
         {kDashes, 0},
         {kLength, 0.0}});
}

int AcDbLinetypeTableRecord::numDashes() const
{
    return static_cast<int>(dashesOf(m_groups).size());
}

double AcDbLinetypeTableRecord::dashLengthAt(int index) const
{
    const std::vector<double> dashes = dashesOf(m_groups);
    const auto at = static_cast<std::size_t>(index);
    return index >= 0 && at < dashes.size() ? dashes[at] : 0.0;
}

AcDbTextStyleTableRecord::AcDbTextStyleTableRecord()
    : AcDbSymbolTableRecord(L"STYLE")
{
    constexpr int kHeight = 40;
    constexpr int kWidth = 41;
    constexpr int kSlant = 50;
    constexpr int kGeneration = 71;
    constexpr int kLastHeight = 42;
    constexpr int kFont = 3;
    constexpr int kBigFont = 4;
    addMarkers(m_groups, L"AcDbTextStyleTableRecord");
    add(m_groups,
        {{code::name, L""},
         {code::flags, 0},
         {kHeight, 0.0},
         {kWidth, 1.0},
         {kSlant, 0.0},
         {kGeneration, 0},
         {kLastHeight, 2.5},
         {kFont, L"txt"},
         {kBigFont, L""}});
}

// The whole screen, seen from above.
AcDbViewportTableRecord::AcDbViewportTableRecord()
    : AcDbSymbolTableRecord(L"VPORT")
{
    struct Coordinate
    {
        int code;
        double value;
    };

    constexpr std::array kCoordinates = {
        // clang-format off
        Coordinate {10, 0.0}, Coordinate {20, 0.0}, // lower left corner of the screen's part
        Coordinate {11, 1.0}, Coordinate {21, 1.0}, // upper right corner
        Coordinate {12, 0.0}, Coordinate {22, 0.0}, // center of the view
        Coordinate {13, 0.0}, Coordinate {23, 0.0}, // base of the snap
        Coordinate {14, 10.0}, Coordinate {24, 10.0}, // its steps
        Coordinate {15, 10.0}, Coordinate {25, 10.0}, // steps of the grid
        Coordinate {16, 0.0}, Coordinate {26, 0.0}, Coordinate {36, 1.0}, // direction to the eye
        Coordinate {17, 0.0}, Coordinate {27, 0.0}, Coordinate {37, 0.0}, // target
        Coordinate {40, 297.0}, // height of the view
        Coordinate {41, 1.5}, // its width for a height of 1
        Coordinate {42, 50.0}, // focal length
        Coordinate {43, 0.0}, Coordinate {44, 0.0}, // clipping planes
        Coordinate {50, 0.0}, Coordinate {51, 0.0}, // rotation of the snap, twist of the view
        // clang-format on
    };
    constexpr int kCircleSides = 72;
    addMarkers(m_groups, L"AcDbViewportTableRecord");
    add(m_groups, {{code::name, L""}, {code::flags, 0}});
    for (const Coordinate& coordinate : kCoordinates) {
        m_groups.add(Group(coordinate.code, coordinate.value));
    }
    add(m_groups,
        {{71, 0}, {kCircleSides, 1000}, {73, 1}, {74, 3}, {75, 0}, {76, 0}, {77, 0}, {78, 0}});
}
