#include "host/acdb_dictionary.h"
#include "host/model/Store.h"
#include "host/result_list.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <optional>
#include <variant>

CORMA_HOST_CLASS_BODY(AcDbXrecord, AcDbObject)

namespace {

using namespace corma::host;

constexpr int kCloningOfData = 280;
constexpr std::size_t kMostBytesOfNode = 32767; // what its count can tell

// One value of a list, in whichever form it stands.
using ListValue
    = std::variant<std::wstring, double, Point, std::int64_t, AcDbObjectId, std::string>;

// --- from and to groups --------------------------------------------------------------------------

// The groups of each value: the coordinates of a point belong together.
std::vector<GroupRange> valuesIn(const Groups& groups, GroupRange data)
{
    std::vector<GroupRange> values;
    for (std::size_t i = data.begin; i < data.end;) {
        GroupRange value {i, i + 1};
        if (resultMemberOf(groups[i].code) == ResultMember::point) {
            for (int axis = 1; axis <= 2 && value.end < data.end
                 && groups[value.end].code == groups[i].code + axis * kCoordinateStep;
                 ++axis) {
                ++value.end;
            }
        }
        values.push_back(value);
        i = value.end;
    }
    return values;
}

ListValue valueOf(const Groups& groups, GroupRange at, const AcDbStub* stub)
{
    const Group& first = groups[at.begin];
    switch (resultMemberOf(first.code)) {
    case ResultMember::real:
        return first.real();
    case ResultMember::point:
        return groups.point(first.code, at);
    case ResultMember::int16:
        return std::int64_t {static_cast<short>(first.integer())};
    case ResultMember::int32:
        return std::int64_t {static_cast<int>(first.integer())};
    case ResultMember::int64:
        return first.integer();
    case ResultMember::id:
        return AcDbObjectId(stub == nullptr ? nullptr : stub->store->find(first.handle()));
    case ResultMember::binary:
        return first.bytes().substr(0, kMostBytesOfNode);
    default:
        return std::holds_alternative<Handle>(first.value) ? toText(first.handle()) : first.text();
    }
}

struct ToGroups
{
    int code;
    std::vector<Group>& groups;

    void operator()(const std::wstring& text) const
    {
        if (valueKindOf(code) == ValueKind::handle) {
            groups.emplace_back(code, handleFrom(text).value_or(Handle::none));
        } else {
            groups.emplace_back(code, GroupValue(text));
        }
    }

    void operator()(const Point& point) const
    {
        groups.emplace_back(code, point.x);
        groups.emplace_back(code + kCoordinateStep, point.y);
        groups.emplace_back(code + 2 * kCoordinateStep, point.z);
    }

    void operator()(AcDbObjectId id) const
    {
        groups.emplace_back(code, id.isNull() ? Handle::none : id.stub()->handle);
    }

    // A group of a file holds no more than that.
    void operator()(const std::string& bytes) const
    {
        constexpr std::size_t kMostBytes = 127;
        std::size_t at = 0;
        do {
            groups.emplace_back(code, GroupValue(bytes.substr(at, kMostBytes)));
            at += kMostBytes;
        } while (at < bytes.size());
    }

    void operator()(double real) const { groups.emplace_back(code, real); }

    void operator()(std::int64_t number) const { groups.emplace_back(code, GroupValue(number)); }
};

// --- from and to lists ---------------------------------------------------------------------------

std::optional<ListValue> textOf(const resbuf& node)
{
    const ACHAR* const text = node.resval.rstring;
    const bool isHandle = valueKindOf(node.restype) == ValueKind::handle;
    if (text == nullptr || (isHandle && !handleFrom(std::wstring_view(text)))) {
        return std::nullopt;
    }
    return text;
}

std::optional<ListValue> bytesOf(const resbuf& node)
{
    const ads_binary& binary = node.resval.rbinary;
    if (binary.clen < 0 || (binary.buf == nullptr && binary.clen != 0)) {
        return std::nullopt;
    }
    return std::string(binary.buf, static_cast<std::size_t>(binary.clen));
}

// Nothing for what a record cannot hold. 1001 would begin its extended data.
std::optional<ListValue> valueOf(const resbuf& node)
{
    if (node.restype <= 0 || node.restype > 1071 || node.restype == code::comment
        || node.restype == code::application) {
        return std::nullopt;
    }
    switch (resultMemberOf(node.restype)) {
    case ResultMember::text:
        return textOf(node);
    case ResultMember::real:
        return node.resval.rreal;
    case ResultMember::point:
        return Point {node.resval.rpoint[0], node.resval.rpoint[1], node.resval.rpoint[2]};
    case ResultMember::int16:
        return std::int64_t {node.resval.rint};
    case ResultMember::int32:
        return std::int64_t {node.resval.rlong};
    case ResultMember::int64:
        return std::int64_t {node.resval.mnInt64};
    case ResultMember::id:
        // NOLINTNEXTLINE(performance-no-int-to-ptr): the host's nodes have numbers for ids
        return AcDbObjectId(reinterpret_cast<AcDbStub*>(node.resval.rlname[0]));
    case ResultMember::binary:
        return bytesOf(node);
    default:
        return std::nullopt;
    }
}

// Each is false when there is no memory.
struct ToNode
{
    resbuf& node;

    bool operator()(const std::wstring& text) const
    {
        node.resval.rstring = heapCopy(text);
        return node.resval.rstring != nullptr;
    }

    bool operator()(const Point& point) const
    {
        node.resval.rpoint[0] = point.x;
        node.resval.rpoint[1] = point.y;
        node.resval.rpoint[2] = point.z;
        return true;
    }

    bool operator()(AcDbObjectId id) const
    {
        node.resval.rlname[0] = reinterpret_cast<long long>(id.stub());
        return true;
    }

    bool operator()(const std::string& bytes) const
    {
        node.resval.rbinary.buf
            = static_cast<char*>(std::malloc(std::max<std::size_t>(bytes.size(), 1)));
        if (node.resval.rbinary.buf == nullptr) {
            return false;
        }
        std::copy(bytes.begin(), bytes.end(), node.resval.rbinary.buf);
        node.resval.rbinary.clen = static_cast<short>(bytes.size());
        return true;
    }

    bool operator()(double real) const
    {
        node.resval.rreal = real;
        return true;
    }

    bool operator()(std::int64_t number) const
    {
        switch (resultMemberOf(node.restype)) {
        case ResultMember::int16:
            node.resval.rint = static_cast<short>(number);
            break;
        case ResultMember::int32:
            node.resval.rlong = static_cast<int>(number);
            break;
        default:
            node.resval.mnInt64 = number;
        }
        return true;
    }
};

} // namespace

AcDbXrecord::AcDbXrecord()
    : AcDbObject(L"XRECORD")
{
    m_groups.add(Group(code::subclass, L"AcDbXrecord"));
    m_groups.add(Group(kCloningOfData, 1));
}

// All behind its marker but for the cloning flag, which R13 and R14 do not have, and the extended
// data. What would end the record's own groups elsewhere is data here.
GroupRange AcDbXrecord::data() const
{
    GroupRange data {m_groups.size(), m_groups.size()};
    for (std::size_t i = 0; i < m_groups.size(); ++i) {
        if (m_groups[i].code == code::subclass && m_groups[i].isText(L"AcDbXrecord")) {
            data.begin = i + 1;
            break;
        }
    }
    const bool hasFlag = stub() == nullptr || stub()->store->version() >= DrawingVersion::r2000;
    if (hasFlag && data.begin < data.end && m_groups[data.begin].code == kCloningOfData) {
        ++data.begin;
    }
    data.end = m_groups.find(code::application, data).value_or(data.end);
    return data;
}

Acad::ErrorStatus AcDbXrecord::rbChain(resbuf** list) const
{
    if (list == nullptr) {
        return Acad::eNullObjectPointer;
    }
    *list = nullptr;
    resbuf** behind = list;
    for (const GroupRange at : valuesIn(m_groups, data())) {
        *behind = acutNewRb(m_groups[at.begin].code);
        if (*behind == nullptr || !std::visit(ToNode {**behind}, valueOf(m_groups, at, stub()))) {
            acutRelRb(*list);
            *list = nullptr;
            return Acad::eOutOfMemory;
        }
        behind = &(*behind)->rbnext;
    }
    return Acad::eOk;
}

// The groups of one value of a list: those at its place where it is the same, else new ones. What
// the file says in its own way, or of what is not there, stays so.
Acad::ErrorStatus AcDbXrecord::addGroups(const resbuf& node, std::optional<GroupRange> former,
                                         std::vector<Group>& groups) const
{
    const auto value = valueOf(node);
    if (!value) {
        return Acad::eInvalidResBuf;
    }
    const auto* id = std::get_if<AcDbObjectId>(&*value);
    const bool isNamed = id != nullptr && !id->isNull();
    if (isNamed && stub() != nullptr && id->stub()->store != stub()->store) {
        return Acad::eWrongDatabase;
    }
    if (former && m_groups[former->begin].code == node.restype
        && valueOf(m_groups, *former, stub()) == *value) {
        std::copy(m_groups.begin() + static_cast<std::ptrdiff_t>(former->begin),
                  m_groups.begin() + static_cast<std::ptrdiff_t>(former->end),
                  std::back_inserter(groups));
    } else {
        std::visit(ToGroups {node.restype, groups}, *value);
    }
    return Acad::eOk;
}

Acad::ErrorStatus AcDbXrecord::setFromRbChain(const resbuf& list)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    const GroupRange present = data();
    const std::vector<GroupRange> former = valuesIn(m_groups, present);
    std::vector<Group> groups;
    std::size_t position = 0;
    for (const resbuf* node = &list; node != nullptr; node = node->rbnext, ++position) {
        const Acad::ErrorStatus status = addGroups(
            *node, position < former.size() ? std::optional(former[position]) : std::nullopt,
            groups);
        if (status != Acad::eOk) {
            return status;
        }
    }
    Groups& all = changeGroups();
    all.erase(present.begin, present.end - present.begin);
    all.insert(present.begin, std::move(groups));
    return Acad::eOk;
}
