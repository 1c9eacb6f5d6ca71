// Linetypes.

#include "host/dwg/bodies.h"
#include "host/dwg/types/EntryHead.h"
#include "host/dxf/dxf_text.h"

#include <algorithm>

namespace corma::host::dwg {

using enum DrawingVersion;

namespace {

constexpr wchar_t kMarker[] = L"AcDbLinetypeTableRecord";
constexpr std::int16_t kHasText = 2; // of what a dash has
constexpr std::size_t kMostDashes = 12; // a program refuses more

struct Dash
{
    double length = 0.0;
    std::int16_t shape = 0; // the number of a shape, or where its text begins
    double x = 0.0;
    double y = 0.0;
    double scale = 1.0;
    double rotation = 0.0;
    std::int16_t kind = 0;
    Ref style;
    std::wstring text;
};

struct Linetype
{
    EntryHead head;
    Text description;
    double length = 0.0;
    std::uint8_t alignment = 'A';
    std::vector<Dash> dashes;
    std::string texts; // of the dashes, each with a zero behind it
    bool isTextsFromFile = false;

    template<class Io> void bits(Io& io)
    {
        auto count = static_cast<std::uint8_t>(dashes.size());
        head.bits(io);
        io.text(description);
        io.bitDouble(length);
        io.byte(alignment);
        io.byte(count);
        if constexpr (Io::isReading) {
            dashes.assign(count, {});
        } else if (!isTextsFromFile) {
            placeTexts(io);
        }
        for (Dash& dash : dashes) {
            dashBits(io, dash);
        }
        if (io.until(r2004) || hasText()) {
            io.bytes(texts, areaSize(io));
        }
        if constexpr (Io::isReading) {
            isTextsFromFile = true;
            readTexts(io);
        }
        for (Dash& dash : dashes) {
            io.handle(dash.style, Bond::hardPointer);
        }
    }

    template<class Io> static std::size_t areaSize(const Io& io)
    {
        constexpr std::size_t kBytes = 256;
        constexpr std::size_t kUnicodeBytes = 512;
        return io.since(r2007) ? kUnicodeBytes : kBytes;
    }

    template<class Io> void dashBits(Io& io, Dash& dash)
    {
        io.bitDouble(dash.length);
        io.bitShort(dash.shape);
        io.rawDouble(dash.x);
        io.rawDouble(dash.y);
        io.bitDouble(dash.scale);
        io.bitDouble(dash.rotation);
        io.bitShort(dash.kind);
    }

    [[nodiscard]] bool hasText() const
    {
        return std::any_of(dashes.begin(), dashes.end(),
                           [](const Dash& dash) { return (dash.kind & kHasText) != 0; });
    }

    void readTexts(const FieldsFromBits& io)
    {
        const std::size_t unit = io.since(r2007) ? 2 : 1;
        for (Dash& dash : dashes) {
            if ((dash.kind & kHasText) == 0 || dash.shape < 0) {
                continue;
            }
            const std::size_t begin = static_cast<std::size_t>(dash.shape) * unit;
            std::size_t end = begin;
            while (end + unit <= texts.size()
                   && (texts[end] != '\0' || (unit == 2 && texts[end + 1] != '\0'))) {
                end += unit;
            }
            if (begin < end) {
                const std::string_view raw = std::string_view(texts).substr(begin, end - begin);
                dash.text = unit == 2 ? textFromUnicode(raw)
                                      : dxf::decodeText(raw, io.form().page, dxf::Caret::isItself);
            }
        }
    }

    // The first byte is not in use; a shape that has no text begins there.
    void placeTexts(const FieldsToBits& io)
    {
        const std::size_t unit = io.since(r2007) ? 2 : 1;
        texts.assign(unit, '\0');
        for (Dash& dash : dashes) {
            if ((dash.kind & kHasText) == 0) {
                continue;
            }
            std::string raw = io.since(r2007)
                ? textToUnicode(dash.text)
                : dxf::encodeText(dash.text, io.form().page, dxf::Caret::isItself);
            raw.append(unit, '\0');
            if (texts.size() + raw.size() > areaSize(io)) {
                raw.assign(unit, '\0');
            }
            dash.shape = static_cast<std::int16_t>(texts.size() / unit);
            texts += raw;
        }
        texts.resize(areaSize(io), '\0');
    }

    void groups(FieldsToGroups& io) const
    {
        head.groups(io, kMarker, 0);
        io.text(3, description);
        io.integer(72, alignment);
        io.integer(73, dashes.size());
        io.real(40, length);
        for (const Dash& dash : dashes) {
            io.real(kLength, dash.length);
            io.integer(kKind, dash.kind);
            if (dash.kind == 0) {
                continue;
            }
            io.integer(kShape, (dash.kind & kHasText) != 0 ? 0 : dash.shape);
            io.handle(kStyle, dash.style);
            io.real(kScale, dash.scale);
            io.angle(kRotation, dash.rotation);
            io.real(kX, dash.x);
            io.real(kY, dash.y);
            if ((dash.kind & kHasText) != 0) {
                io.groups().add(Group(kText, GroupValue(dash.text)));
            }
        }
    }

    static constexpr int kLength = 49; // begins a dash
    static constexpr int kKind = 74;
    static constexpr int kShape = 75;
    static constexpr int kStyle = 340;
    static constexpr int kScale = 46;
    static constexpr int kRotation = 50;
    static constexpr int kX = 44;
    static constexpr int kY = 45;
    static constexpr int kText = 9;

    void groups(FieldsFromGroups& io)
    {
        head.groups(io, kMarker);
        io.text(3, description);
        io.integer(72, alignment, 'A');
        io.real(40, length);
        std::vector<std::size_t> begins;
        const Groups& all = io.groups();
        for (std::size_t i = io.range().begin; i < io.range().end; ++i) {
            if (all[i].code == kLength) {
                begins.push_back(i);
            }
        }
        if (begins.size() > kMostDashes && begins.size() != dashes.size()) {
            io.fail(L"it has more dashes than a DWG file takes");
            return;
        }
        dashes.resize(begins.size());
        for (std::size_t i = 0; i < begins.size(); ++i) {
            const std::size_t end = i + 1 < begins.size() ? begins[i + 1] : io.range().end;
            setDash(all, {begins[i], end}, dashes[i]);
        }
    }

    void setDash(const Groups& all, GroupRange range, Dash& dash)
    {
        dash.length = all.real(kLength, range);
        const auto kind = static_cast<std::int16_t>(all.integer(kKind, range));
        const std::wstring text(all.text(kText, range));
        if (kind != dash.kind || text != dash.text) {
            isTextsFromFile = false;
        }
        dash.kind = kind;
        dash.text = text;
        if ((kind & kHasText) == 0) {
            dash.shape = static_cast<std::int16_t>(all.integer(kShape, range));
        }
        if (kind == 0) {
            return;
        }
        dash.style.set(all.handle(kStyle, range));
        dash.scale = all.real(kScale, range, 1.0);
        const double degrees = all.real(kRotation, range);
        if (!isSameNumber(degreesFrom(dash.rotation), degrees)) {
            dash.rotation = radiansFrom(degrees);
        }
        dash.x = all.real(kX, range);
        dash.y = all.real(kY, range);
    }
};

} // namespace

std::unique_ptr<Body> makeLinetype()
{
    return makeBody<Linetype>();
}

} // namespace corma::host::dwg
