#include "host/dwg/Frame.h"

#include "host/dwg/extended_data.h"
#include "host/dwg/line_weight_code.h"

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

// What is said of a linetype, a material or a plot style ahead of the handles.
enum Naming : std::uint8_t
{
    kAsLayer = 0,
    kAsBlock = 1,
    kAsContinuous = 2, // of a linetype
    kAsNamed = 3
};

constexpr wchar_t kByLayerName[] = L"ByLayer";
constexpr wchar_t kByBlockName[] = L"ByBlock";
constexpr wchar_t kContinuousName[] = L"Continuous";

constexpr unsigned kTwoBits = 2;

template<class Io> void extendedData(Io& io, std::vector<ExtendedData>& all)
{
    constexpr std::size_t kMost = 0xFFFF;
    if constexpr (Io::isReading) {
        all.clear();
        for (;;) {
            std::uint16_t size = 0;
            io.bitShort(size);
            if (size == 0 || !io.isGood()) {
                return;
            }
            ExtendedData& data = all.emplace_back();
            data.application = readRef(io.streams().data, io.self());
            io.bytes(data.bytes, size);
        }
    } else {
        for (const ExtendedData& data : all) {
            if (!data.bytes.empty() && data.bytes.size() <= kMost) {
                io.bitShort(data.bytes.size());
                writeRef(data.application, Bond::hardPointer, io.data());
                io.bytes(data.bytes, data.bytes.size());
            }
        }
        io.bitShort(0);
    }
}

template<class Io> void pictureOf(Io& io, Frame& frame)
{
    io.bit(frame.hasPicture);
    if (!frame.hasPicture) {
        return;
    }
    std::uint64_t size = frame.picture.size();
    if (io.since(r2010)) {
        io.bitLongLong(size);
    } else {
        auto small = static_cast<std::uint32_t>(size);
        io.rawLong(small);
        size = small;
    }
    io.bytes(frame.picture, size);
}

template<class Io> void reactorCount(Io& io, Frame& frame)
{
    constexpr std::size_t kFewestBits = 0; // their room is in another stream, which checks it
    if constexpr (Io::isReading) {
        std::uint32_t count = 0;
        io.bitLong(count);
        constexpr std::size_t kHandleBits = 8;
        frame.reactors.resize(io.streams().handles.count(count, kHandleBits));
    } else {
        io.count(frame.reactors, kFewestBits);
    }
}

template<class Io> void entityFields(Io& io, Frame& frame)
{
    io.entityColor(frame.color);
    io.bitDouble(frame.linetypeScale);
    if (io.since(r2000)) {
        io.bits(frame.linetypeKind, kTwoBits);
    }
    if (io.since(r2007)) {
        io.bits(frame.materialKind, kTwoBits);
        io.byte(frame.shadow);
    }
    if (io.since(r2000)) {
        io.bits(frame.plotStyleKind, kTwoBits);
    }
    if (io.since(r2010)) {
        io.bit(frame.hasFullStyle);
        io.bit(frame.hasFaceStyle);
        io.bit(frame.hasEdgeStyle);
    }
    io.bitShort(frame.invisible);
    if (io.since(r2000)) {
        io.byte(frame.lineWeight);
    }
}

template<class Io> void styleHandles(Io& io, Frame& frame)
{
    if (io.since(r2004) && (frame.color.flags & Color::kHasBookColor) != 0) {
        io.handle(frame.color.bookColor, Bond::hardPointer);
    }
    if (io.since(r2000)) {
        io.handle(frame.layer, Bond::hardPointer);
        if (frame.linetypeKind == kAsNamed) {
            io.handle(frame.linetype, Bond::hardPointer);
        }
    }
    if (io.since(r2007) && frame.materialKind == kAsNamed) {
        io.handle(frame.material, Bond::hardPointer);
    }
    if (io.since(r2000) && frame.plotStyleKind == kAsNamed) {
        io.handle(frame.plotStyle, Bond::hardPointer);
    }
    if (io.since(r2010)) {
        for (auto [has, style] : {std::pair(frame.hasFullStyle, &frame.fullStyle),
                                  std::pair(frame.hasFaceStyle, &frame.faceStyle),
                                  std::pair(frame.hasEdgeStyle, &frame.edgeStyle)}) {
            if (has) {
                io.handle(*style, Bond::hardPointer);
            }
        }
    }
}

template<class Io> void entityHandles(Io& io, Frame& frame)
{
    if (io.until(r14)) {
        io.handle(frame.layer, Bond::hardPointer);
        if (!frame.isByLayerLinetype) {
            io.handle(frame.linetype, Bond::hardPointer);
        }
    }
    if (io.until(r2000) && !frame.hasNeighbours) {
        io.handle(frame.previous, Bond::softPointer);
        io.handle(frame.next, Bond::softPointer);
    }
    styleHandles(io, frame);
}

} // namespace

// --- bits ----------------------------------------------------------------------------------------

template<class Io> void Frame::head(Io& io)
{
    dwg::extendedData(io, extendedData);
    if (isEntity) {
        pictureOf(io, *this);
    }
}

template<class Io> void Frame::fields(Io& io)
{
    if (isEntity) {
        io.bits(space, kTwoBits);
    }
    reactorCount(io, *this);
    if (isEntity && io.until(r14)) {
        io.bit(isByLayerLinetype);
    }
    if (io.since(r2004)) {
        io.bit(hasNoDictionary);
    }
    if (io.since(r2013)) {
        io.bit(hasBinaryData);
    }
    if (isEntity && io.until(r2000)) {
        io.bit(hasNeighbours);
    }
    if (isEntity) {
        entityFields(io, *this);
    }
}

template<class Io> void Frame::handles(Io& io)
{
    if (!isEntity || space == 0) {
        io.handle(owner, Bond::softPointer);
    }
    for (Ref& reactor : reactors) {
        io.handle(reactor, Bond::softPointer);
    }
    if (!io.since(r2004) || !hasNoDictionary) {
        io.handle(dictionary, Bond::hardOwner);
    }
    if (isEntity) {
        entityHandles(io, *this);
    }
}

template void Frame::head(FieldsFromBits& io);
template void Frame::head(FieldsToBits& io);
template void Frame::fields(FieldsFromBits& io);
template void Frame::fields(FieldsToBits& io);
template void Frame::handles(FieldsFromBits& io);
template void Frame::handles(FieldsToBits& io);

Handle Frame::previousHandle() const
{
    return hasNeighbours ? Handle {static_cast<std::uint64_t>(self.target) - 1} : previous.target;
}

Handle Frame::nextHandle() const
{
    return hasNeighbours ? Handle {static_cast<std::uint64_t>(self.target) + 1} : next.target;
}

// --- groups --------------------------------------------------------------------------------------

namespace {

namespace entity_code {
constexpr int dictionary = 360;
constexpr int weight = 370;
constexpr int linetypeScale = 48;
constexpr int invisible = 60;
constexpr int pictureSize = 92;
constexpr int pictureSizeR2010 = 160;
constexpr int picture = 310;
constexpr int rgb = 420;
constexpr int transparency = 440;
constexpr int plotStyle = 390;
constexpr int material = 347;
constexpr int shadow = 284;
constexpr int fullStyle = 348;
} // namespace entity_code

constexpr wchar_t kReactors[] = L"ACAD_REACTORS";
constexpr wchar_t kDictionary[] = L"ACAD_XDICTIONARY";
constexpr std::uint32_t kRgbByColor = 0xC2000000;

void addBraces(Groups& groups, const wchar_t* name, int code, const std::vector<Ref>& refs)
{
    if (refs.empty()) {
        return;
    }
    groups.add(Group(code::braces, GroupValue(std::wstring(L"{") + name)));
    for (const Ref& ref : refs) {
        groups.add(Group(code, ref.target));
    }
    groups.add(Group(code::braces, L"}"));
}

void linetypeToGroups(const Frame& frame, FieldsToGroups& io)
{
    const bool hasHandle
        = io.since(r2000) ? frame.linetypeKind == kAsNamed : !frame.isByLayerLinetype;
    if (hasHandle) {
        io.named(code::linetype, frame.linetype, TableKind::linetype);
    } else if (io.since(r2000) && frame.linetypeKind != kAsLayer) {
        const bool isByBlock = frame.linetypeKind == kAsBlock;
        io.groups().add(Group(code::linetype, isByBlock ? kByBlockName : kContinuousName));
    }
}

void pictureToGroups(const Frame& frame, FieldsToGroups& io)
{
    constexpr std::size_t kChunk = 127;
    if (!frame.hasPicture) {
        return;
    }
    io.integer(io.since(r2010) ? entity_code::pictureSizeR2010 : entity_code::pictureSize,
               frame.picture.size());
    for (std::size_t at = 0; at < frame.picture.size(); at += kChunk) {
        io.groups().add(Group(entity_code::picture, GroupValue(frame.picture.substr(at, kChunk))));
    }
}

void colorToGroups(const Color& color, FieldsToGroups& io)
{
    io.integer(code::color, color.index, kColorByLayer);
    if (color.hasRgb()) {
        io.integer(entity_code::rgb, color.rgb & Color::kRgbMask);
    }
    if ((color.flags & Color::kHasTransparency) != 0) {
        io.integer(entity_code::transparency, color.transparency);
    }
}

void colorFromGroups(FieldsFromGroups& io, Color& color)
{
    io.integer(code::color, color.index, kColorByLayer);
    if (!io.since(r2004)) {
        return;
    }
    const auto setFlag = [&](int code, std::uint16_t flag) {
        const bool has = io.groups().find(code, io.range()).has_value();
        color.flags = static_cast<std::uint16_t>(has ? color.flags | flag : color.flags & ~flag);
        return has;
    };
    const bool isOfBook = (color.flags & Color::kHasBookColor) != 0;
    const bool hasRgb = io.groups().find(entity_code::rgb, io.range()).has_value();
    if (hasRgb || !isOfBook) {
        setFlag(entity_code::rgb, Color::kHasRgb);
        color.flags = static_cast<std::uint16_t>(color.flags & ~Color::kHasBookColor);
    }
    if (hasRgb) {
        std::uint32_t rgb = 0;
        io.integer(entity_code::rgb, rgb);
        color.rgb
            = (color.rgb & Color::kRgbMask) == rgb && !isOfBook ? color.rgb : rgb | kRgbByColor;
    }
    if (setFlag(entity_code::transparency, Color::kHasTransparency)) {
        io.integer(entity_code::transparency, color.transparency);
    }
}

void entityToGroups(const Frame& frame, FieldsToGroups& io)
{
    io.marker(kEntityMarker);
    io.integer(code::paperSpace, frame.space == 1 ? 1 : 0, 0);
    io.named(code::layer, frame.layer, TableKind::layer);
    linetypeToGroups(frame, io);
    if (io.since(r2007) && frame.materialKind == kAsNamed) {
        io.optionalHandle(entity_code::material, frame.material);
    }
    colorToGroups(frame.color, io);
    if (io.since(r2000)) {
        io.integer(entity_code::weight, weightFromCode(frame.lineWeight), kWeightByLayer);
    }
    io.real(entity_code::linetypeScale, frame.linetypeScale, 1.0);
    io.integer(entity_code::invisible, frame.invisible, 0);
    pictureToGroups(frame, io);
    if (io.since(r2000) && frame.plotStyleKind == kAsNamed) {
        io.optionalHandle(entity_code::plotStyle, frame.plotStyle);
    }
    io.integer(entity_code::shadow, frame.shadow, 0);
    if (frame.hasFullStyle) {
        io.handle(entity_code::fullStyle, frame.fullStyle);
    }
}

// Without a group for it nothing has a handle that had one; the other kinds have no groups, nor has
// a handle that is empty.
void kindFromGroups(FieldsFromGroups& io, int code, std::uint8_t& kind, Ref& ref)
{
    if (io.groups().find(code, io.range())) {
        kind = kAsNamed;
        io.handle(code, ref);
    } else if (kind == kAsNamed && ref.target != Handle::none) {
        kind = kAsLayer;
    }
}

void linetypeFromGroups(FieldsFromGroups& io, Frame& frame)
{
    const bool hasHandle
        = io.since(r2000) ? frame.linetypeKind == kAsNamed : !frame.isByLayerLinetype;
    if (hasHandle && io.isNamed(code::linetype, frame.linetype)) {
        return; // even if it is the entry that says ByLayer
    }
    const std::wstring name
        = foldedName(io.groups().text(code::linetype, io.range(), kByLayerName));
    frame.isByLayerLinetype = name == foldedName(kByLayerName);
    if (!io.since(r2000)) {
        if (!frame.isByLayerLinetype) {
            io.named(code::linetype, frame.linetype, TableKind::linetype);
        }
        return;
    }
    if (frame.isByLayerLinetype) {
        frame.linetypeKind = kAsLayer;
    } else if (name == foldedName(kByBlockName)) {
        frame.linetypeKind = kAsBlock;
    } else if (name == foldedName(kContinuousName) && frame.linetypeKind != kAsNamed) {
        frame.linetypeKind = kAsContinuous;
    } else {
        frame.linetypeKind = kAsNamed;
        io.named(code::linetype, frame.linetype, TableKind::linetype);
    }
}

void pictureFromGroups(FieldsFromGroups& io, Frame& frame)
{
    frame.picture.clear();
    for (std::size_t i = io.range().begin; i < io.range().end; ++i) {
        if (io.groups()[i].code == entity_code::picture) {
            frame.picture += io.groups()[i].bytes();
        }
    }
    const int size = io.since(r2010) ? entity_code::pictureSizeR2010 : entity_code::pictureSize;
    frame.hasPicture = !frame.picture.empty() || io.groups().find(size, io.range()).has_value();
}

void placeFromGroups(FieldsFromGroups& io, Frame& frame)
{
    const Surroundings& around = io.around();
    frame.space = static_cast<std::uint8_t>(around.space);
    if (!io.since(r2004)) {
        const auto own = static_cast<std::uint64_t>(frame.self.target);
        const bool isBetween
            = around.previous == Handle {own - 1} && around.next == Handle {own + 1};
        const bool isSame
            = frame.previousHandle() == around.previous && frame.nextHandle() == around.next;
        frame.hasNeighbours = isSame ? frame.hasNeighbours : isBetween;
        frame.previous.set(around.previous);
        frame.next.set(around.next);
    }
}

void entityFromGroups(FieldsFromGroups& io, Frame& frame)
{
    placeFromGroups(io, frame);
    io.marker(kEntityMarker);
    io.named(code::layer, frame.layer, TableKind::layer, L"0");
    linetypeFromGroups(io, frame);
    kindFromGroups(io, entity_code::material, frame.materialKind, frame.material);
    colorFromGroups(io, frame.color);
    std::int64_t weight = kWeightByLayer;
    io.integer(entity_code::weight, weight, kWeightByLayer);
    if (weightFromCode(frame.lineWeight) != weight) {
        frame.lineWeight = codeFromWeight(weight);
    }
    io.real(entity_code::linetypeScale, frame.linetypeScale, 1.0);
    io.integer(entity_code::invisible, frame.invisible);
    pictureFromGroups(io, frame);
    kindFromGroups(io, entity_code::plotStyle, frame.plotStyleKind, frame.plotStyle);
    io.integer(entity_code::shadow, frame.shadow);
    frame.hasFullStyle = io.groups().find(entity_code::fullStyle, io.range()).has_value();
    io.optionalHandle(entity_code::fullStyle, frame.fullStyle);
}

void refsFromBraces(const Groups& groups, const wchar_t* name, int code, std::vector<Ref>& refs)
{
    const GroupRange range = groups.braces(name);
    std::size_t count = 0;
    for (std::size_t i = range.begin; i < range.end; ++i) {
        if (groups[i].code == code) {
            if (count == refs.size()) {
                refs.emplace_back();
            }
            refs[count++].set(groups[i].handle());
        }
    }
    refs.resize(count);
}

} // namespace

void Frame::toGroups(FieldsToGroups& io, std::string_view type, std::wstring_view name) const
{
    Groups& groups = io.groups();
    groups.add(Group(code::type, GroupValue(std::wstring(type.begin(), type.end()))));
    if (!name.empty()) {
        groups.add(Group(code::name, GroupValue(std::wstring(name))));
    }
    const bool isDimStyle = type == "DIMSTYLE";
    groups.add(Group(isDimStyle ? code::dimStyleHandle : code::handle, self.target));
    if (dictionary.target != Handle::none) {
        addBraces(groups, kDictionary, entity_code::dictionary, {dictionary});
    }
    addBraces(groups, kReactors, code::owner, reactors);
    if (!isEntity || space == 0) {
        groups.add(Group(code::owner, owner.target));
    } else {
        const std::wstring_view block = space == 1 ? L"*Paper_Space" : L"*Model_Space";
        groups.add(Group(code::owner, io.names().find(TableKind::blockRecord, block)));
    }
    if (isEntity) {
        entityToGroups(*this, io);
    }
}

void Frame::fromGroups(FieldsFromGroups& io)
{
    const Groups& groups = io.groups();
    owner.set(groups.ownerHandle());
    refsFromBraces(groups, kReactors, code::owner, reactors);
    std::vector<Ref> dictionaries = {dictionary};
    refsFromBraces(groups, kDictionary, entity_code::dictionary, dictionaries);
    if (dictionaries.empty()) {
        dictionary.set(Handle::none);
    } else {
        dictionary = dictionaries.front();
    }
    hasNoDictionary = hasNoDictionary && dictionary.target == Handle::none;
    if (isEntity) {
        entityFromGroups(io, *this);
    }
}

void Frame::extendedToGroups(FieldsToGroups& io, const FileForm& form) const
{
    for (const ExtendedData& data : extendedData) {
        const std::wstring application = io.names().nameOf(data.application.target);
        io.groups().add(Group(code::application, GroupValue(application)));
        extendedDataToGroups(data.bytes, form, io.names(), io.groups());
    }
}

void Frame::extendedFromGroups(FieldsFromGroups& io, const FileForm& form)
{
    const Groups& groups = io.groups();
    std::vector<ExtendedData> former = std::move(extendedData);
    extendedData.clear();
    std::size_t at = groups.body().end;
    while (at < groups.size() && groups[at].code != code::application) {
        ++at;
    }
    while (at < groups.size()) {
        const std::wstring& name = groups[at].text();
        std::size_t end = at + 1;
        while (end < groups.size() && groups[end].code != code::application) {
            ++end;
        }
        const Handle application = io.names().find(TableKind::appId, name);
        if (application == Handle::none) {
            io.fail(L"its extended data names the application \"" + name
                    + L"\", which the drawing does not have");
            return;
        }
        ExtendedData data;
        data.application.set(application);
        for (const ExtendedData& before : former) {
            if (before.application.target == application) {
                data = before;
            }
        }
        if (!extendedDataFromGroups(groups, {at + 1, end}, form, io.names(), data.bytes)) {
            io.fail(L"the extended data of \"" + name + L"\" is too long for a DWG file");
            return;
        }
        extendedData.push_back(std::move(data));
        at = end;
    }
}

} // namespace corma::host::dwg
