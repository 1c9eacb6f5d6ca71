#include "host/dwg/Body.h"

namespace corma::host::dwg {

namespace {

// The codes under which groups name other records, by what the name means.
constexpr int kSoftPointerCode = 330;
constexpr int kHardPointerCode = 340;
constexpr int kSoftOwnerCode = 350;
constexpr int kHardOwnerCode = 360;

constexpr std::size_t kFewestHandleBits = 8;

int groupCodeOf(const Ref& ref)
{
    switch (static_cast<Bond>(ref.code)) {
    case Bond::softOwner:
        return kSoftOwnerCode;
    case Bond::hardOwner:
        return kHardOwnerCode;
    case Bond::hardPointer:
        return kHardPointerCode;
    default:
        return kSoftPointerCode;
    }
}

Bond bondOf(int groupCode)
{
    switch (groupCode) {
    case kSoftOwnerCode:
        return Bond::softOwner;
    case kHardOwnerCode:
        return Bond::hardOwner;
    case kHardPointerCode:
        return Bond::hardPointer;
    default:
        return Bond::softPointer;
    }
}

bool isHandleCode(int groupCode)
{
    return groupCode == kSoftPointerCode || groupCode == kHardPointerCode
        || groupCode == kSoftOwnerCode || groupCode == kHardOwnerCode;
}

} // namespace

std::vector<Handle> handlesOf(const std::vector<Ref>& refs)
{
    std::vector<Handle> handles;
    handles.reserve(refs.size());
    for (const Ref& ref : refs) {
        if (ref.target != Handle::none) {
            handles.push_back(ref.target);
        }
    }
    return handles;
}

void setHandles(std::vector<Ref>& refs, const std::vector<Handle>& handles)
{
    if (handlesOf(refs) == handles) {
        return;
    }
    refs.resize(handles.size());
    for (std::size_t i = 0; i < handles.size(); ++i) {
        refs[i].set(handles[i]);
    }
}

// The texts stand behind the fields in the same bits, so both are one here.
void OpaqueBody::read(FieldsFromBits& io)
{
    m_data = {};
    m_handles.clear();
    BitReader& data = io.streams().data;
    m_data.append(io.streams().bytes, data.position(), io.streams().dataEnd);
    data.skipAll();
    BitReader& handles = io.streams().handles;
    while (handles.left() >= kFewestHandleBits && handles.isGood()) {
        m_handles.push_back(readRef(handles, io.self()));
    }
}

void OpaqueBody::write(FieldsToBits& io) const
{
    io.setOpaque(m_data);
    for (const Ref& ref : m_handles) {
        io.handle(ref, ref.bond);
    }
}

void OpaqueBody::toGroups(FieldsToGroups& io) const
{
    io.integer(code::opaqueVersion, static_cast<int>(io.version()));
    io.integer(code::opaqueSize, m_data.size());
    io.groups().add(Group(code::opaqueBits, GroupValue(m_data.bytes())));
    for (const Ref& ref : m_handles) {
        io.handle(groupCodeOf(ref), ref);
    }
}

void OpaqueBody::fromGroups(FieldsFromGroups& io)
{
    const Groups& groups = io.groups();
    const GroupRange body = groups.body();
    const auto bits = groups.find(code::opaqueBits);
    const auto size = static_cast<std::size_t>(groups.integer(code::opaqueSize, body));
    const auto version = static_cast<DrawingVersion>(groups.integer(code::opaqueVersion, body));
    if (!bits || version != io.version() || groups[*bits].bytes().size() * kByteBits < size) {
        io.fail(L"its content is not understood, and it comes from a drawing of another format");
        return;
    }
    m_data = {};
    m_data.append(groups[*bits].bytes(), 0, size);
    std::size_t count = 0;
    for (std::size_t i = *bits + 1; i < body.end && isHandleCode(groups[i].code); ++i) {
        if (count == m_handles.size()) {
            m_handles.emplace_back();
        }
        Ref& ref = m_handles[count++];
        ref.set(groups[i].handle());
        ref.bond = bondOf(groups[i].code);
    }
    m_handles.resize(count);
}

} // namespace corma::host::dwg
