#include "host/dwg/classes.h"

#include "host/dwg/section_frame.h"
#include "host/dwg/sentinels.h"

#include <algorithm>

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

constexpr Sentinels kClassSentinels = {kClassesBegin, kClassesEnd};

constexpr std::uint16_t kEntityKind = 0x1F2;
constexpr std::uint16_t kObjectKind = 0x1F3;

template<class Io> void headOfClasses(Io& io, std::uint16_t& mostNumber)
{
    if (io.since(r2004)) {
        std::uint16_t unknown = 0;
        bool isThere = true;
        io.bitShort(mostNumber);
        io.byte(unknown);
        io.byte(unknown);
        io.bit(isThere);
    }
}

template<class Io> void fields(Io& io, ClassInfo& info)
{
    std::uint16_t kind = info.isEntity ? kEntityKind : kObjectKind;
    io.bitShort(info.number);
    io.bitShort(info.proxyFlags);
    io.text(info.application);
    io.text(info.cppName);
    io.text(info.dxfName);
    io.bit(info.wasZombie);
    io.bitShort(kind);
    info.isEntity = kind == kEntityKind;
    if (io.since(r2004)) {
        io.bitLong(info.count);
        io.bitLong(info.version);
        io.bitLong(info.maintenance);
        io.bitLong(info.unknown1);
        io.bitLong(info.unknown2);
    }
}

constexpr int kDxfName = 1;
constexpr int kCppName = 2;
constexpr int kApplication = 3;
constexpr int kProxyFlags = 90;
constexpr int kInstances = 91;
constexpr int kWasZombie = 280;
constexpr int kIsEntity = 281;

} // namespace

std::optional<std::vector<ClassInfo>> decodeClasses(std::string_view section, const FileForm& form)
{
    auto streams = openSection(section, kClassSentinels, form);
    if (!streams) {
        return std::nullopt;
    }
    FieldsFromBits io(form, Handle::none, *streams);
    std::uint16_t mostNumber = 0;
    headOfClasses(io, mostNumber);
    std::vector<ClassInfo> classes;
    while (io.isGood() && io.streams().data.left() >= kByteBits) {
        fields(io, classes.emplace_back());
    }
    return io.isGood() ? std::optional(std::move(classes)) : std::nullopt;
}

std::string encodeClasses(const std::vector<ClassInfo>& classes, const FileForm& form,
                          std::string_view former)
{
    FieldsToBits io(form, Handle::none);
    std::uint16_t mostNumber = 0;
    for (const ClassInfo& info : classes) {
        mostNumber = std::max(mostNumber, static_cast<std::uint16_t>(info.number));
    }
    headOfClasses(io, mostNumber);
    for (ClassInfo info : classes) {
        fields(io, info);
    }
    return closeSection(io, kClassSentinels, form, former);
}

Groups classToGroups(const ClassInfo& described, DrawingVersion version)
{
    Groups groups;
    groups.add(Group(code::type, L"CLASS"));
    groups.add(Group(kDxfName, GroupValue(described.dxfName.value)));
    groups.add(Group(kCppName, GroupValue(described.cppName.value)));
    groups.add(Group(kApplication, GroupValue(described.application.value)));
    groups.add(Group(kProxyFlags, described.proxyFlags));
    if (version >= r2004) {
        groups.add(Group(kInstances, described.count));
    }
    groups.add(Group(kWasZombie, described.wasZombie ? 1 : 0));
    groups.add(Group(kIsEntity, described.isEntity ? 1 : 0));
    return groups;
}

ClassInfo classFromGroups(const Groups& groups)
{
    const GroupRange body = groups.body();
    ClassInfo info;
    info.dxfName.set(groups.text(kDxfName, body));
    info.cppName.set(groups.text(kCppName, body));
    info.application.set(groups.text(kApplication, body));
    info.proxyFlags = static_cast<int>(groups.integer(kProxyFlags, body));
    info.count = static_cast<std::int32_t>(groups.integer(kInstances, body));
    info.wasZombie = groups.integer(kWasZombie, body) != 0;
    info.isEntity = groups.integer(kIsEntity, body) != 0;
    return info;
}

} // namespace corma::host::dwg
