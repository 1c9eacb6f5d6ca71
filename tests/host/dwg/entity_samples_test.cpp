// Drawn records of real DWG drawings: they are understood to the last bit, and their groups are
// those of the DXF file that the same drawing was saved as.

#include "host/dwg/DwgFormat.h"
#include "host/dwg/SampleRecords.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "support/DxfDrawing.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace corma::host::dwg {
namespace {

using corma::testing::DxfDrawing;
namespace fs = std::filesystem;

constexpr unsigned kBlock = 0x04;

// A SHAPE is left out: bits have the number of its form, groups the name, which only the file of
// the forms tells.
const std::set<std::string, std::less<>>& understoodTypes()
{
    static const std::set<std::string, std::less<>> types
        = {"3DFACE",  "ARC",    "ATTDEF",    "ATTRIB",   "BLOCK",  "CIRCLE",   "DIMENSION",
           "ELLIPSE", "ENDBLK", "HATCH",     "INSERT",   "LEADER", "LINE",     "LWPOLYLINE",
           "MLINE",   "MTEXT",  "POINT",     "POLYLINE", "RAY",    "SEQEND",   "SOLID",
           "SPLINE",  "TEXT",   "TOLERANCE", "TRACE",    "VERTEX", "VIEWPORT", "XLINE"};
    return types;
}

std::string shown(const Group& group)
{
    Groups one;
    one.add(Group(group.code, group.value));
    return corma::testing::described(one);
}

/// A real drawing in a store.
struct SampleDrawing
{
    explicit SampleDrawing(const fs::path& file)
        : path(file)
        , result(readDrawing(*platform::readFile(file.native()), file.wstring(), store))
    {
    }

    [[nodiscard]] const DwgFormat& format() const
    {
        return dynamic_cast<const DwgFormat&>(*store.format());
    }

    /// Calls `take` for each record of the types that are understood.
    void eachRecord(const std::function<void(const AcDbStub&, std::string_view type)>& take) const
    {
        for (const AcDbStub* stub = store.first(); stub != nullptr; stub = stub->next) {
            const std::string_view type = store.nameOf(stub->type);
            const bool isRecord = stub->size != 0 && stub->handle != Handle::none;
            if (isRecord && understoodTypes().contains(type)) {
                take(*stub, type);
            }
        }
    }

    [[nodiscard]] std::string nameOf(const AcDbStub& stub) const
    {
        return path.filename().string() + " " + std::string(store.nameOf(stub.type)) + " "
            + toUtf8(toText(stub.handle));
    }

    fs::path path;
    Store store {nullptr};
    ReadResult result;
};

// What bits say of the place of a record.
Surroundings surroundingsInBits(const Record& record)
{
    Surroundings around;
    around.space = static_cast<Surroundings::Space>(record.frame().space);
    around.previous = record.frame().previousHandle();
    around.next = record.frame().nextHandle();
    const Owned owned = record.owned().value_or(Owned {});
    around.owned = owned.members;
    around.end = owned.end;
    if (around.owned.empty() && owned.first != Handle::none) {
        around.owned = {owned.first, owned.last};
    }
    return around;
}

bool areSame(const Group& a, const Group& b)
{
    constexpr double kNoise = 1e-9;
    const auto* const x = std::get_if<double>(&a.value);
    const auto* const y = std::get_if<double>(&b.value);
    if (a.code == b.code && x != nullptr && y != nullptr) {
        return std::abs(*x - *y) <= kNoise * std::max({1.0, std::abs(*x), std::abs(*y)});
    }
    const bool areNames = a.code == code::name || a.code == code::layer || a.code == 3;
    return a.code == b.code
        && (areNames ? foldedName(a.text()) == foldedName(b.text()) : a.value == b.value);
}

bool isEmpty(const Group& group)
{
    return group.real() == 0.0 && group.text().empty() && group.handle() == Handle::none;
}

/// Groups that one of two records has and the other has not; those that say nothing are left out,
/// and so is what stands ahead of the fields of the type.
std::vector<Group> unsharedGroups(const Groups& ours, const Groups& theirs)
{
    const auto isFirst = [](const Group& group) { return group.code == code::subclass; };
    const auto ownBegin = [&](const Groups& groups) {
        const auto entity = std::find_if(groups.begin(), groups.end(), isFirst);
        return entity == groups.end() ? entity : std::find_if(entity + 1, groups.end(), isFirst);
    };
    std::vector<Group> rest;
    for (auto at = ownBegin(ours); at != ours.end() && at->code < code::firstExtended; ++at) {
        rest.push_back(*at);
    }
    std::vector<Group> missing;
    for (auto at = ownBegin(theirs); at != theirs.end() && at->code < code::firstExtended; ++at) {
        const auto same = std::find_if(rest.begin(), rest.end(),
                                       [&](const Group& group) { return areSame(group, *at); });
        if (same != rest.end()) {
            rest.erase(same);
        } else if (!isEmpty(*at)) {
            missing.push_back(*at);
        }
    }
    std::copy_if(rest.begin(), rest.end(), std::back_inserter(missing),
                 [](const Group& group) { return !isEmpty(group); });
    return missing;
}

struct KnownDifference
{
    std::string_view type;
    std::vector<int> codes;
    const char* reason;
};

const std::vector<KnownDifference>& knownDifferences()
{
    static const std::vector<KnownDifference> known = {
        {"SPLINE", {70, 210, 220, 230}, "whether it lies in a plane is worked out from its points"},
        {"SPLINE",
         {10, 20, 30, 40, 42, 43, 72, 73},
         "the curve through points is worked out from them"},
        {"VIEWPORT", {68, 69}, "its number is that of its place among those of its layout"},
        {"MLINE", {2}, "the name of its style is that in a dictionary"},
        {"MTEXT", {63}, "which number is nearest to red, green and blue is a matter of taste"},
        {"LEADER", {10, 20, 75, 76}, "the begin of its hook is worked out from its last point"},
        {"VERTEX", {40, 41}, "widths of the polyline are not told again in the file of groups"},
        {"VIEWPORT",
         {12, 22, 40, 41, 45},
         "the view of a sheet is as it was left before each save"},
        {"BLOCK", {1}, "some programs put its name where the path of a reference stands"},
        {"BLOCK", {70}, "whether it has definitions is worked out as it is written"},
        {"DIMENSION", {1}, "a blank in place of its text is lost in the file of groups"},
        {"BLOCK", {2, 3}, "nameless blocks are numbered as they are written"},
        {"INSERT", {2}, "nameless blocks are numbered as they are written"},
        {"DIMENSION", {2}, "nameless blocks are numbered as they are written"},
    };
    return known;
}

bool isKnown(std::string_view type, int groupCode)
{
    return std::any_of(knownDifferences().begin(), knownDifferences().end(),
                       [&](const KnownDifference& row) {
                           return row.type == type
                               && std::count(row.codes.begin(), row.codes.end(), groupCode) != 0;
                       });
}

std::optional<fs::path> twinOf(const fs::path& drawing)
{
    for (const char* const end : {".dxf", "_ascii.dxf"}) {
        fs::path twin = drawing;
        twin.replace_extension();
        twin += end;
        if (fs::exists(twin)) {
            return twin;
        }
    }
    return std::nullopt;
}

class DwgEntitySamples : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (sampleDwgFiles().empty()) {
            GTEST_SKIP() << kNoSamples;
        }
    }

    static void
    eachRecord(const std::function<void(const SampleDrawing&, const AcDbStub&, Record&)>& take)
    {
        for (const fs::path& path : sampleDwgFiles()) {
            const SampleDrawing drawing(path);
            ASSERT_EQ(drawing.result.status, Acad::eOk) << path;
            drawing.eachRecord([&](const AcDbStub& stub, std::string_view /*type*/) {
                auto record = drawing.format().recordOf(stub);
                ASSERT_TRUE(record) << drawing.nameOf(stub);
                take(drawing, stub, *record);
            });
        }
    }
};

TEST_F(DwgEntitySamples, EachRecordIsUnderstood)
{
    std::size_t count = 0;
    eachRecord([&](const SampleDrawing& drawing, const AcDbStub& stub, const Record& record) {
        EXPECT_EQ(record.depth(), Record::Depth::all) << drawing.nameOf(stub);
        ++count;
    });
    EXPECT_GT(count, 0U);
}

TEST_F(DwgEntitySamples, ARecordThatIsWrittenFromItsOwnGroupsKeepsItsBits)
{
    eachRecord([](const SampleDrawing& drawing, const AcDbStub& stub, Record& record) {
        const StoreNames names(const_cast<Store&>(drawing.store));
        Groups groups;
        record.toGroups(names, groups);
        const auto trouble = record.fromGroups(names, groups, surroundingsInBits(record));
        EXPECT_FALSE(trouble) << drawing.nameOf(stub) << toUtf8(trouble.value_or(L""));
        EXPECT_EQ(record.bytes(), drawing.format().bytesOf(stub)) << drawing.nameOf(stub);
    });
}

TEST_F(DwgEntitySamples, ANewRecordHasTheGroupsThatItWasMadeOf)
{
    eachRecord([](const SampleDrawing& drawing, const AcDbStub& stub, const Record& record) {
        const DwgFormat& format = drawing.format();
        const StoreNames names(const_cast<Store&>(drawing.store));
        Groups groups;
        record.toGroups(names, groups);
        if (record.type() == kBlock) {
            return; // bits lack the number of a nameless one, so a new one has another name
        }
        ASSERT_EQ(format.types().numberFor(groups), record.type()) << drawing.nameOf(stub);
        Record made(format.form(), format.types(), record.type());
        const auto trouble = made.fromGroups(names, groups, surroundingsInBits(record));
        EXPECT_FALSE(trouble) << drawing.nameOf(stub) << toUtf8(trouble.value_or(L""));
        const std::string bytes = made.bytes();
        const auto read = Record::read(bytes, format.form(), format.types());
        ASSERT_TRUE(read) << drawing.nameOf(stub);
        EXPECT_EQ(read->depth(), Record::Depth::all) << drawing.nameOf(stub);
        Groups again;
        read->toGroups(names, again);
        EXPECT_EQ(corma::testing::described(again), corma::testing::described(groups))
            << drawing.nameOf(stub);
    });
}

TEST_F(DwgEntitySamples, GroupsAreThoseOfTheSameDrawingInDxf)
{
    std::size_t count = 0;
    for (const fs::path& path : sampleDwgFiles()) {
        const auto twin = twinOf(path);
        if (!twin) {
            continue;
        }
        const SampleDrawing drawing(path);
        const DxfDrawing other(platform::readFile(twin->native())->view(), twin->wstring());
        drawing.eachRecord([&](const AcDbStub& stub, std::string_view type) {
            const AcDbStub* const same = other.store.find(stub.handle);
            if (same == nullptr || other.store.nameOf(same->type) != type) {
                return; // the two were saved one after the other, so handles can differ
            }
            const Groups ours = drawing.format().decode(stub);
            const Groups theirs = other.format().decode(*same);
            for (const Group& group : unsharedGroups(ours, theirs)) {
                EXPECT_TRUE(isKnown(type, group.code))
                    << drawing.nameOf(stub) << " " << shown(group);
            }
            ++count;
        });
    }
    EXPECT_GT(count, 0U);
}

} // namespace

} // namespace corma::host::dwg
