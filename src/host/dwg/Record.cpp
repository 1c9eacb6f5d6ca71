#include "host/dwg/Record.h"

#include "host/dwg/checksum.h"
#include "host/dwg/streams.h"

#include <algorithm>

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

constexpr std::size_t kWordSize = 2;
constexpr unsigned kSevenBits = 7;
constexpr unsigned kSevenMask = 0x7F;
constexpr unsigned kMoreBytes = 0x80;
constexpr unsigned kFirstOfTwoBytes = 0x1F0; // from R2010 on: what a type of the second form adds

unsigned byteAt(std::string_view bytes, std::size_t at)
{
    return static_cast<unsigned char>(bytes[at]);
}

unsigned shortAt(std::string_view bytes, std::size_t at)
{
    return byteAt(bytes, at) | byteAt(bytes, at + 1) << kByteBits;
}

/// What stands around the bits of a record.
struct Envelope
{
    std::size_t begin = 0; // of the bits, in bytes
    std::size_t size = 0; // of the bits, in bytes
    std::size_t handleBits = 0; // from R2010 on

    [[nodiscard]] std::size_t whole() const { return begin + size + kChecksumSize; }
};

std::optional<Envelope> openEnvelope(std::string_view bytes, DrawingVersion version)
{
    Envelope envelope;
    for (unsigned shift = 0;; shift += kWordBits) {
        if (envelope.begin + kWordSize > bytes.size() || shift > kWordBits) {
            return std::nullopt;
        }
        const unsigned word = shortAt(bytes, envelope.begin);
        envelope.begin += kWordSize;
        envelope.size |= std::size_t {word & kWordMask} << shift;
        if ((word & kMoreWords) == 0) {
            break;
        }
    }
    constexpr unsigned kMostShift = 28;
    for (unsigned shift = 0; version >= r2010; shift += kSevenBits) {
        if (envelope.begin >= bytes.size() || shift > kMostShift) {
            return std::nullopt;
        }
        const unsigned byte = byteAt(bytes, envelope.begin++);
        envelope.handleBits |= std::size_t {byte & kSevenMask} << shift;
        if ((byte & kMoreBytes) == 0) {
            break;
        }
    }
    const bool fits = envelope.size <= bytes.size() && envelope.whole() <= bytes.size()
        && envelope.handleBits <= envelope.size * kByteBits;
    return fits ? std::optional(envelope) : std::nullopt;
}

unsigned readType(BitReader& from, DrawingVersion version)
{
    constexpr unsigned kFormBits = 2;
    if (version < r2010) {
        return from.bitShort();
    }
    switch (from.bits(kFormBits)) {
    case 0:
        return from.byte();
    case 1:
        return kFirstOfTwoBytes + from.byte();
    default:
        return from.rawShort();
    }
}

void writeType(unsigned type, DrawingVersion version, BitWriter& to)
{
    constexpr unsigned kFormBits = 2;
    constexpr unsigned kMostOfByte = 0xFF;
    if (version < r2010) {
        to.bitShort(static_cast<std::uint16_t>(type));
    } else if (type <= kMostOfByte) {
        to.bits(0, kFormBits);
        to.byte(static_cast<std::uint8_t>(type));
    } else if (type >= kFirstOfTwoBytes && type - kFirstOfTwoBytes <= kMostOfByte) {
        to.bits(1, kFormBits);
        to.byte(static_cast<std::uint8_t>(type - kFirstOfTwoBytes));
    } else {
        to.bits(2, kFormBits);
        to.rawShort(static_cast<std::uint16_t>(type));
    }
}

std::string enveloped(const BitWriter& bits, std::size_t handleBits, DrawingVersion version)
{
    std::string bytes;
    std::size_t size = bits.bytes().size();
    do {
        const unsigned more = size > kWordMask ? kMoreWords : 0;
        const auto word = static_cast<unsigned>(size & kWordMask) | more;
        bytes += static_cast<char>(word);
        bytes += static_cast<char>(word >> kByteBits);
        size >>= kWordBits;
    } while (size != 0);
    while (version >= r2010) {
        const unsigned more = handleBits > kSevenMask ? kMoreBytes : 0;
        bytes += static_cast<char>((handleBits & kSevenMask) | more);
        handleBits >>= kSevenBits;
        if (more == 0) {
            break;
        }
    }
    bytes += bits.bytes();
    const std::uint16_t sum = checksum(bytes);
    bytes += static_cast<char>(sum);
    bytes += static_cast<char>(sum >> kByteBits);
    return bytes;
}

// As readRef does it, for the usual form.
Handle readOwnHandle(BitReader& from)
{
    constexpr unsigned kMostUsual = 7; // bytes; the code is 0
    BitReader ahead = from;
    const unsigned size = ahead.byte();
    if (size > kMostUsual) {
        return readRef(from, Handle::none).target;
    }
    const Handle handle {ahead.bigEndian(size)};
    from = ahead;
    return handle;
}

} // namespace

// --- head ----------------------------------------------------------------------------------------

std::optional<RecordHead> readHead(std::string_view bytes, DrawingVersion version)
{
    std::optional<RecordHead> head;
    const auto envelope = openEnvelope(bytes, version);
    if (!envelope) {
        return head;
    }
    const std::size_t end = envelope->begin + envelope->size;
    if (checksum(bytes.substr(0, end)) != shortAt(bytes, end)) {
        return head;
    }
    head.emplace(); // filled in its place: this is done for all records of a file
    head->bits = bytes.substr(envelope->begin, envelope->size);
    BitReader from(head->bits);
    head->type = readType(from, version);
    if (version >= r2000 && version < r2010) {
        head->handlesBegin = from.rawLong();
    }
    head->handle = readOwnHandle(from);
    head->size = envelope->whole();
    head->behind = from.position();
    if (!from.isGood()) {
        head.reset();
    }
    return head;
}

// This is asked of each entity when a drawing is opened; Frame has all of the fields.
Handle nextInChain(const RecordHead& entity, DrawingVersion version)
{
    constexpr unsigned kSpaceBits = 2;
    constexpr std::size_t kHandleBits = 8;
    // Most entities have no extended data, no picture and no reactors, and one that was made right
    // behind them. In R2000 that is one byte, but for the two bits of the space.
    constexpr unsigned kUsualMask = 0b11100111;
    constexpr unsigned kUsual = 0b10000101;
    const Handle following {static_cast<std::uint64_t>(entity.handle) + 1};
    const std::size_t end = entity.bits.size() * kByteBits;
    BitReader from(entity.bits, entity.behind, end);
    if (BitReader usual = from; version == r2000 && (usual.byte() & kUsualMask) == kUsual) {
        return following;
    }
    while (const std::size_t size = from.bitShort()) { // extended data
        readRef(from, entity.handle);
        from.skip(size * kByteBits);
    }
    if (from.bit()) {
        from.skip(std::size_t {from.rawLong()} * kByteBits);
    }
    const std::size_t handlesBegin = version < r2000 ? from.rawLong() : entity.handlesBegin;
    const bool hasOwner = from.bits(kSpaceBits) == 0;
    const std::uint32_t reactors = from.bitLong();
    const bool isByLayerLinetype = version >= r2000 || from.bit();
    if (from.bit()) {
        return following;
    }
    BitReader handles(entity.bits, handlesBegin, end);
    std::size_t ahead = (hasOwner ? 1 : 0) + handles.count(reactors, kHandleBits) + 1;
    if (version < r2000) {
        ahead += isByLayerLinetype ? 1 : 2;
    }
    for (std::size_t i = 0; i <= ahead; ++i) { // the last of them is the one before this one
        readRef(handles, entity.handle);
    }
    return readRef(handles, entity.handle).target;
}

// --- Record --------------------------------------------------------------------------------------

Record::Record(const FileForm& form, const TypeTable& types, unsigned type, bool isUnderstood)
    : m_form(&form)
    , m_types(&types)
    , m_type(type)
{
    const TypeInfo info = types.find(type);
    m_frame.isEntity = info.isEntity;
    m_frame.hasNoDictionary = true;
    if (info.makeBody == nullptr || !isUnderstood) {
        m_depth = Depth::frame;
        m_body = std::make_unique<OpaqueBody>();
    } else {
        m_depth = Depth::all;
        m_body = info.makeBody();
    }
}

std::optional<Record> Record::read(std::string_view bytes, const FileForm& form,
                                   const TypeTable& types)
{
    return read(bytes, form, types, Check::bitsAreTheSame);
}

std::optional<Record> Record::peek(std::string_view bytes, const FileForm& form,
                                   const TypeTable& types)
{
    return read(bytes, form, types, Check::no);
}

std::optional<Record> Record::read(std::string_view bytes, const FileForm& form,
                                   const TypeTable& types, Check check)
{
    const auto envelope = openEnvelope(bytes, form.version);
    if (!envelope) {
        return std::nullopt;
    }
    bytes = bytes.substr(0, envelope->whole());
    Streams streams;
    streams.bytes = bytes.substr(envelope->begin, envelope->size);
    streams.data = BitReader(streams.bytes);
    Record record(form, types, readType(streams.data, form.version));
    record.m_depth = Depth::nothing;
    record.m_lastByte = streams.bytes.empty() ? '\0' : streams.bytes.back();
    const std::size_t end = envelope->size * kByteBits;
    std::size_t handlesBegin = end - envelope->handleBits;
    if (form.version >= r2000 && form.version < r2010) {
        handlesBegin = streams.data.rawLong();
    }
    record.m_frame.self = readRef(streams.data, Handle::none);
    if (!streams.data.isGood()) {
        return std::nullopt;
    }
    if (form.version >= r2000) {
        partStreams(streams, handlesBegin, end, form.hasUnicode());
    }
    FieldsFromBits io(form, record.m_frame.self.target, streams);
    if (record.readFrame(io)) {
        record.readBody(io, bytes, check);
    }
    return record;
}

bool Record::readFrame(FieldsFromBits& io)
{
    m_frame.head(io);
    if (m_form->version < r2000) {
        const std::size_t handlesBegin = io.streams().data.rawLong();
        partStreams(io.streams(), handlesBegin, io.streams().bytes.size() * kByteBits, false);
    }
    m_frame.fields(io);
    m_frame.handles(io);
    return io.isGood();
}

void Record::readBody(const FieldsFromBits& behindFrame, std::string_view bytes, Check check)
{
    constexpr std::size_t kFewestHandleBits = 8;
    const TypeInfo info = m_types->find(m_type);
    if (info.makeBody != nullptr) {
        FieldsFromBits io = behindFrame;
        m_body->read(io);
        m_depth = Depth::all;
        const bool isWhole = io.isGood() && io.streams().handles.left() < kFewestHandleBits;
        if (isWhole && (check == Check::no || this->bytes() == bytes)) {
            return;
        }
    }
    FieldsFromBits io = behindFrame;
    m_body = std::make_unique<OpaqueBody>();
    m_body->read(io);
    m_depth = Depth::frame;
    if (!io.isGood() || this->bytes() != bytes) {
        m_depth = Depth::nothing;
    }
}

std::string Record::bytes() const
{
    FieldsToBits io(*m_form, m_frame.self.target);
    auto& frame = const_cast<Frame&>(m_frame); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    const DrawingVersion version = m_form->version;
    writeType(m_type, version, io.data());
    std::size_t sizeAt = io.data().size();
    if (version >= r2000 && version < r2010) {
        io.data().rawLong(0);
    }
    writeRef(m_frame.self, Bond::none, io.data());
    frame.head(io);
    if (version < r2000) {
        sizeAt = io.data().size();
        io.data().rawLong(0);
    }
    frame.fields(io);
    frame.handles(io);
    m_body->write(io);
    BitWriter bits = io.data();
    if (m_form->hasUnicode()) {
        appendTexts(io, bits);
    }
    if (version < r2010) {
        bits.setRawLong(sizeAt, static_cast<std::uint32_t>(bits.size()));
    }
    const std::size_t handlesBegin = bits.size();
    bits.append(io.handleBits());
    const std::size_t handleBits = bits.bytes().size() * kByteBits - handlesBegin;
    bits.padWith(m_lastByte);
    return enveloped(bits, handleBits, version);
}

void Record::toGroups(const Names& names, Groups& groups) const
{
    FieldsToGroups io(names, m_form->version, groups);
    const TypeInfo info = m_types->find(m_type);
    if (m_depth == Depth::nothing) {
        groups.add(Group(code::type, GroupValue(std::wstring(info.name.begin(), info.name.end()))));
        const bool isDimStyle = info.name == "DIMSTYLE";
        groups.add(Group(isDimStyle ? code::dimStyleHandle : code::handle, m_frame.self.target));
        groups.add(Group(code::opaqueVersion, static_cast<int>(DrawingVersion::unknown)));
        return;
    }
    m_frame.toGroups(io, info.name, m_body->headName());
    m_body->toGroups(io);
    m_frame.extendedToGroups(io, *m_form);
}

std::optional<std::wstring> Record::fromGroups(const Names& names, const Groups& groups,
                                               const Surroundings& around)
{
    if (m_depth == Depth::nothing) {
        return L"nothing of it is understood";
    }
    FieldsFromGroups io(names, m_form->version, groups, around);
    m_frame.self.set(groups.ownHandle());
    m_frame.fromGroups(io);
    m_body->fromGroups(io);
    m_frame.extendedFromGroups(io, *m_form);
    return io.isGood() ? std::nullopt : std::optional(io.problem());
}

} // namespace corma::host::dwg
