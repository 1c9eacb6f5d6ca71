#include "host/dwg/FlatContainer.h"

#include "host/dwg/Record.h"
#include "host/dwg/checksum.h"
#include "host/dwg/little_endian.h"
#include "host/dwg/object_map.h"
#include "host/dwg/release.h"
#include "host/dwg/sentinels.h"

#include <algorithm>

namespace corma::host::dwg {

namespace {

// Places in the head.
constexpr std::size_t kMaintenanceAt = 0x0B;
constexpr std::size_t kPictureAt = 0x0D;
constexpr std::size_t kCodePageAt = 0x13;
constexpr std::size_t kCountAt = 0x15;

// The numbers of sections.
enum SectionNumber : unsigned
{
    kHeaderSection,
    kClassesSection,
    kMapSection,
    kSummarySection,
    kTemplateSection,
    kAuxiliarySection
};

constexpr std::size_t kMostSections = 6;

// What the checksum of the head is changed by, for each number of sections.
constexpr std::array<std::uint16_t, kMostSections + 1> kHeadMasks
    = {0, 0, 0, 0xA598, 0x8101, 0x3CC4, 0x8461};
constexpr std::size_t kFewestSections = 3;

} // namespace

FlatContainer::FlatContainer(platform::FileContent content)
    : m_content(std::move(content))
{
}

Acad::ErrorStatus FlatContainer::canWrite() const
{
    return m_parts.version == DrawingVersion::r2000 ? Acad::eOk : Acad::eNotImplementedYet;
}

std::string_view FlatContainer::slice(Span span) const
{
    return bytes().substr(span.begin, span.end - span.begin);
}

// --- reading -------------------------------------------------------------------------------------

bool FlatContainer::readLocators()
{
    const std::string_view file = bytes();
    const auto count = numberAt<std::uint32_t>(file, kCountAt);
    if (count < kFewestSections || count > kMostSections) {
        return false;
    }
    m_headEnd = kLocatorsAt + count * kLocatorSize + kChecksumSize + kSentinelSize;
    if (m_headEnd > file.size()) {
        return false;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = kLocatorsAt + i * kLocatorSize;
        Locator locator;
        locator.number = static_cast<unsigned char>(file[at]);
        locator.at = at;
        locator.begin = numberAt<std::uint32_t>(file, at + 1);
        locator.size = numberAt<std::uint32_t>(file, at + 1 + sizeof(std::uint32_t));
        m_locators.push_back(locator);
    }
    const std::size_t sumAt = m_headEnd - kSentinelSize - kChecksumSize;
    const unsigned sum = checksum(file.substr(0, sumAt), 0) ^ kHeadMasks[count];
    return sum == numberAt<std::uint16_t>(file, sumAt)
        && file.substr(m_headEnd - kSentinelSize, kSentinelSize) == kHeadEnd;
}

const FlatContainer::Locator* FlatContainer::locatorOf(unsigned number) const
{
    const auto found
        = std::find_if(m_locators.begin(), m_locators.end(),
                       [&](const Locator& locator) { return locator.number == number; });
    return found == m_locators.end() ? nullptr : &*found;
}

// The size that the head has for the header variables and the classes is not the same in all
// files, so it is taken from the section itself.
std::optional<FlatContainer::Span> FlatContainer::spanOfVariables(unsigned number) const
{
    const bool isHeader = number == kHeaderSection;
    const Locator* const locator = locatorOf(number);
    const std::string_view file = bytes();
    if (locator == nullptr || locator->begin > file.size()) {
        return std::nullopt;
    }
    const std::string_view all = file.substr(locator->begin);
    const std::size_t size = 2 * kSentinelSize + sizeof(std::uint32_t) + kChecksumSize
        + std::size_t {numberAt<std::uint32_t>(all, kSentinelSize)};
    if (size > all.size() || !all.starts_with(isHeader ? kVariablesBegin : kClassesBegin)
        || !all.substr(0, size).ends_with(isHeader ? kVariablesEnd : kClassesEnd)) {
        return std::nullopt;
    }
    return Span {locator->begin, locator->begin + size};
}

std::optional<ReadResult> FlatContainer::open(const std::wstring& path)
{
    const std::string_view file = bytes();
    m_parts.version = releaseOf(file);
    if (!readLocators()) {
        return damage(path, kCountAt, L"the list of sections is wrong or has a wrong checksum");
    }
    m_parts.maintenance = static_cast<unsigned char>(file[kMaintenanceAt]);
    m_parts.codePage = numberAt<std::uint16_t>(file, kCodePageAt);
    const auto header = spanOfVariables(kHeaderSection);
    const auto classes = spanOfVariables(kClassesSection);
    if (!header || !classes) {
        return damage(path, (header ? m_locators[1] : m_locators[0]).begin,
                      header ? L"the classes are not where the head says"
                             : L"the header variables are not where the head says");
    }
    m_parts.header = slice(*header);
    m_parts.classes = slice(*classes);
    m_parts.objects = file;
    const Locator* const map = locatorOf(kMapSection);
    if (map == nullptr || map->begin > file.size() || map->size > file.size() - map->begin) {
        return damage(path, kLocatorsAt, L"the object map lies beyond the end of the file");
    }
    m_parts.map = file.substr(map->begin, map->size);
    std::vector<SecondHead::Section> sections;
    for (const Locator& locator : m_locators) {
        sections.push_back({locator.begin, locator.size});
    }
    m_secondHead = SecondHead::find(file, sections);
    return std::nullopt;
}

FlatContainer::Span FlatContainer::spanOfPicture() const
{
    const std::string_view file = bytes();
    const std::size_t begin = numberAt<std::uint32_t>(file, kPictureAt);
    if (begin < m_headEnd || begin > file.size()
        || !file.substr(begin).starts_with(kPictureBegin)) {
        return {};
    }
    const std::size_t size = 2 * kSentinelSize + sizeof(std::uint32_t)
        + std::size_t {numberAt<std::uint32_t>(file, begin + kSentinelSize)};
    const bool isWhole
        = size <= file.size() - begin && file.substr(begin, size).ends_with(kPictureEnd);
    return isWhole ? Span {begin, begin + size} : Span {};
}

std::optional<FlatContainer::Span> FlatContainer::spanOfObjects() const
{
    const auto places = decodeObjectMap(m_parts.map);
    if (!places || places->empty()) {
        return std::nullopt;
    }
    Span span {bytes().size(), 0};
    for (const ObjectPlace& place : *places) {
        const auto head = place.offset < bytes().size()
            ? readHead(bytes().substr(place.offset), m_parts.version)
            : std::nullopt;
        if (!head) {
            return std::nullopt;
        }
        span.begin = std::min<std::size_t>(span.begin, place.offset);
        span.end = std::max<std::size_t>(span.end, place.offset + head->size);
    }
    return span;
}

// --- writing -------------------------------------------------------------------------------------

// In a file without any they go ahead of their map.
void FlatContainer::addObjects(std::vector<Piece>& known) const
{
    const Locator* const map = locatorOf(kMapSection);
    if (const auto span = spanOfObjects()) {
        known.emplace_back(Piece::Kind::objects, *span);
    } else if (map != nullptr) {
        known.emplace_back(Piece::Kind::objects, Span {map->begin, map->begin});
    }
}

// All of the file, in order. Empty when its parts lie in each other.
std::vector<FlatContainer::Piece> FlatContainer::oldPieces() const
{
    std::vector<Piece> known = {Piece(Piece::Kind::head, {0, m_headEnd})};
    const auto add = [&](Piece::Kind kind, Span span) {
        if (span.begin < span.end) {
            known.emplace_back(kind, span);
        }
    };
    const auto addSection = [&](Piece::Kind kind, unsigned number) {
        const Locator* const locator = locatorOf(number);
        if (locator != nullptr && locator->begin <= bytes().size()
            && locator->size <= bytes().size() - locator->begin) {
            add(kind, {locator->begin, locator->begin + locator->size});
        }
    };
    add(Piece::Kind::header, spanOfVariables(kHeaderSection).value_or(Span()));
    add(Piece::Kind::classes, spanOfVariables(kClassesSection).value_or(Span()));
    addObjects(known);
    add(Piece::Kind::picture, spanOfPicture());
    addSection(Piece::Kind::map, kMapSection);
    addSection(Piece::Kind::summary, kSummarySection);
    addSection(Piece::Kind::other, kTemplateSection);
    addSection(Piece::Kind::auxiliary, kAuxiliarySection);
    if (m_secondHead) {
        add(Piece::Kind::secondHead, {m_secondHead->begin(), m_secondHead->end()});
    }
    std::stable_sort(known.begin(), known.end(),
                     [](const Piece& a, const Piece& b) { return a.old.begin < b.old.begin; });
    std::vector<Piece> all;
    std::size_t at = 0;
    for (Piece& piece : known) {
        if (piece.old.begin < at) {
            return {};
        }
        if (piece.old.begin > at) {
            all.emplace_back(Piece::Kind::other, Span {at, piece.old.begin});
        }
        at = piece.old.end;
        all.push_back(std::move(piece));
    }
    if (at < bytes().size()) {
        all.emplace_back(Piece::Kind::other, Span {at, bytes().size()});
    }
    return all;
}

namespace {

std::size_t sizeOf(const std::vector<ObjectBytes>& objects)
{
    std::size_t size = 0;
    for (const ObjectBytes& object : objects) {
        size += object.bytes.size();
    }
    return size;
}

} // namespace

std::string FlatContainer::newMap(const NewParts& parts, std::size_t begin)
{
    std::vector<ObjectPlace> places;
    places.reserve(parts.objects.size());
    for (const ObjectBytes& object : parts.objects) {
        if (object.handle != Handle::none) {
            places.push_back({object.handle, begin});
        }
        begin += object.bytes.size();
    }
    std::sort(places.begin(), places.end(),
              [](const ObjectPlace& a, const ObjectPlace& b) { return a.handle < b.handle; });
    return encodeObjectMap(places);
}

// The map comes behind the objects in every file that was seen; were it ahead, its size would move
// them, and it would have to be made anew.
std::vector<FlatContainer::Piece> FlatContainer::newPieces(const NewParts& parts) const
{
    std::vector<Piece> pieces = oldPieces();
    const Piece* objects = nullptr;
    std::size_t at = 0;
    for (Piece& piece : pieces) {
        piece.begin = at;
        if (piece.kind == Piece::Kind::header && !parts.header.empty()) {
            piece.replace(std::string(parts.header));
        } else if (piece.kind == Piece::Kind::classes && !parts.classes.empty()) {
            piece.replace(std::string(parts.classes));
        } else if (piece.kind == Piece::Kind::objects) {
            objects = &piece;
            piece.newSize = sizeOf(parts.objects);
        } else if (piece.kind == Piece::Kind::map) {
            if (objects == nullptr) {
                return {};
            }
            piece.replace(newMap(parts, objects->begin));
        }
        at += piece.newSize;
    }
    return pieces;
}

// Where something that was at a place of the old file is in the new one.
std::size_t FlatContainer::newPlace(std::size_t former, const std::vector<Piece>& pieces)
{
    for (const Piece& piece : pieces) {
        if (former >= piece.old.begin && former < piece.old.end) {
            return piece.begin + (former - piece.old.begin);
        }
    }
    return former;
}

std::vector<SecondHead::Section> FlatContainer::newSections(const std::vector<Piece>& pieces) const
{
    std::vector<SecondHead::Section> sections;
    for (const Locator& locator : m_locators) {
        SecondHead::Section section {newPlace(locator.begin, pieces), locator.size};
        for (const Piece& piece : pieces) {
            if (piece.isNew && piece.old.begin == locator.begin && locator.size != 0) {
                section.size += piece.newSize;
                section.size -= piece.old.end - piece.old.begin;
            }
        }
        sections.push_back(section);
    }
    return sections;
}

// Its size follows from the places in it, which follow from its size.
void FlatContainer::fitSecondHead(std::vector<Piece>& pieces, Handle seed) const
{
    constexpr int kMostRounds = 4; // numbers have few sizes
    for (int round = 0; m_secondHead && round < kMostRounds; ++round) {
        std::size_t at = 0;
        bool isSettled = true;
        for (Piece& piece : pieces) {
            piece.begin = at;
            if (piece.kind == Piece::Kind::secondHead) {
                std::string bytes = m_secondHead->moved(at, newSections(pieces), seed);
                isSettled = bytes.size() == piece.newSize && bytes == piece.bytes;
                piece.replace(std::move(bytes));
            }
            at += piece.newSize;
        }
        if (isSettled) {
            return;
        }
    }
}

void FlatContainer::patchHead(Piece& head, const std::vector<Piece>& pieces) const
{
    std::string bytes(slice(head.old));
    const std::vector<SecondHead::Section> sections = newSections(pieces);
    for (std::size_t i = 0; i < sections.size(); ++i) {
        const std::size_t at = m_locators[i].at + 1;
        putNumber(static_cast<std::uint32_t>(sections[i].begin), at, bytes);
        putNumber(static_cast<std::uint32_t>(sections[i].size), at + sizeof(std::uint32_t), bytes);
    }
    const std::size_t picture = newPlace(numberAt<std::uint32_t>(bytes, kPictureAt), pieces);
    putNumber(static_cast<std::uint32_t>(picture), kPictureAt, bytes);
    const std::size_t sumAt = m_headEnd - kSentinelSize - kChecksumSize;
    const unsigned sum
        = checksum(std::string_view(bytes).substr(0, sumAt), 0) ^ kHeadMasks[m_locators.size()];
    putNumber(static_cast<std::uint16_t>(sum), sumAt, bytes);
    head.replace(std::move(bytes));
}

// The images of the preview are found by their places in the file.
void FlatContainer::patchPicture(Piece& picture) const
{
    constexpr std::size_t kImageCountAt = kSentinelSize + sizeof(std::uint32_t);
    constexpr std::size_t kImageSize = 9; // kind, begin, size
    std::string bytes(slice(picture.old));
    const auto count = static_cast<unsigned char>(bytes[kImageCountAt]);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t at = kImageCountAt + 1 + i * kImageSize + 1;
        if (at + sizeof(std::uint32_t) > bytes.size()) {
            break;
        }
        const std::size_t begin = numberAt<std::uint32_t>(bytes, at);
        if (begin >= picture.old.begin && begin <= picture.old.end) {
            const std::size_t moved = picture.begin + (begin - picture.old.begin);
            putNumber(static_cast<std::uint32_t>(moved), at, bytes);
        }
    }
    picture.replace(std::move(bytes));
}

void FlatContainer::patchSummary(Piece& summary, const std::vector<Piece>& pieces,
                                 std::size_t count) const
{
    constexpr std::size_t kObjectCountAt = 4;
    constexpr std::size_t kObjectsAt = 16;
    std::string bytes(slice(summary.old));
    if (bytes.size() < kObjectsAt + sizeof(std::uint32_t)) {
        return;
    }
    putNumber(static_cast<std::uint32_t>(count), kObjectCountAt, bytes);
    const std::size_t begin = newPlace(numberAt<std::uint32_t>(bytes, kObjectsAt), pieces);
    putNumber(static_cast<std::uint32_t>(begin), kObjectsAt, bytes);
    summary.replace(std::move(bytes));
}

void FlatContainer::patchAuxiliary(Piece& auxiliary, Handle seed) const
{
    constexpr std::size_t kSeedAt = 0x4F;
    constexpr std::uint64_t kMost = 0x7FFFFFFF; // a greater one has no place there
    std::string bytes(slice(auxiliary.old));
    if (bytes.size() < kSeedAt + sizeof(std::uint32_t) || seed == Handle::none) {
        return;
    }
    const auto number = static_cast<std::uint64_t>(seed);
    putNumber(static_cast<std::uint32_t>(number > kMost ? ~std::uint64_t {0} : number), kSeedAt,
              bytes);
    auxiliary.replace(std::move(bytes));
}

void FlatContainer::patch(std::vector<Piece>& pieces, const NewParts& parts) const
{
    fitSecondHead(pieces, parts.seed);
    for (Piece& piece : pieces) {
        switch (piece.kind) {
        case Piece::Kind::head:
            patchHead(piece, pieces);
            break;
        case Piece::Kind::picture:
            patchPicture(piece);
            break;
        case Piece::Kind::summary:
            patchSummary(piece, pieces, parts.objects.size());
            break;
        case Piece::Kind::auxiliary:
            patchAuxiliary(piece, parts.seed);
            break;
        default:
            break;
        }
    }
}

bool FlatContainer::write(const NewParts& parts, const TakeBytes& take) const
{
    std::vector<Piece> pieces = newPieces(parts);
    if (pieces.empty()) {
        return false;
    }
    patch(pieces, parts);
    for (const Piece& piece : pieces) {
        if (piece.kind != Piece::Kind::objects) {
            if (!take(piece.isNew ? std::string_view(piece.bytes) : slice(piece.old))) {
                return false;
            }
            continue;
        }
        for (const ObjectBytes& object : parts.objects) {
            if (!take(object.bytes)) {
                return false;
            }
        }
    }
    return true;
}

// --- making --------------------------------------------------------------------------------------

ContainerOrTrouble readFlatContainer(platform::FileContent content, const std::wstring& path)
{
    auto container = std::make_unique<FlatContainer>(std::move(content));
    if (auto trouble = container->open(path)) {
        return std::move(*trouble);
    }
    return std::unique_ptr<Container>(std::move(container));
}

} // namespace corma::host::dwg
