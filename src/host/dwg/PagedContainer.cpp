#include "host/dwg/PagedContainer.h"

#include "host/dwg/PagedWriter.h"
#include "host/dwg/little_endian.h"
#include "host/dwg/object_map.h"
#include "host/dwg/release.h"

#include <algorithm>

namespace corma::host::dwg {

namespace {

constexpr std::string_view kObjectsBegin("\xCA\x0D\0\0", 4);

// Where data of pages stands, so that programs need not read the maps to find it.
constexpr std::size_t kPreviewAt = 0x0D;
constexpr std::size_t kSummaryAt = 0x20;
constexpr std::size_t kProjectAt = 0x24;
constexpr std::size_t kAppInfoAt = 0x2C;
constexpr std::size_t kAppInfoHistoryAt = 0x30;

// How many objects there are. Some programs put no number there but this mark.
void setCount(std::size_t count, std::string& freeSpace)
{
    constexpr std::size_t kShortSize = 53; // R2004
    constexpr std::size_t kShortAt = 4;
    constexpr std::size_t kLongSize = 89;
    constexpr std::size_t kLongAt = 8;
    constexpr std::uint32_t kNoCount = 0xFFFF0000;
    if (freeSpace.size() == kLongSize) {
        putNumber<std::uint64_t>(count, kLongAt, freeSpace);
    } else if (freeSpace.size() == kShortSize
               && numberAt<std::uint32_t>(freeSpace, kShortAt) != kNoCount) {
        putNumber(static_cast<std::uint32_t>(count), kShortAt, freeSpace);
    }
}

void setSeed(Handle seed, std::string& auxiliary)
{
    constexpr std::size_t kShortSize = 123;
    constexpr std::size_t kShortAt = 79;
    constexpr std::size_t kLongSize = 129; // R2018
    constexpr std::size_t kLongAt = 85;
    constexpr std::uint64_t kMost = 0x7FFFFFFE;
    constexpr std::uint32_t kTooHigh = 0xFFFFFFFF;
    const auto value = static_cast<std::uint64_t>(seed);
    const auto number = value > kMost ? kTooHigh : static_cast<std::uint32_t>(value);
    if (auxiliary.size() == kShortSize) {
        putNumber(number, kShortAt, auxiliary);
    } else if (auxiliary.size() == kLongSize) {
        putNumber(number, kLongAt, auxiliary);
    }
}

struct ObjectSections
{
    std::string objects;
    std::string map;
    std::size_t count = 0;
};

ObjectSections objectSections(std::string_view former, const std::vector<ObjectBytes>& objects)
{
    ObjectSections made;
    std::size_t size = kObjectsBegin.size();
    for (const ObjectBytes& object : objects) {
        size += object.bytes.size();
    }
    made.objects.reserve(size);
    made.objects = former.size() < kObjectsBegin.size() ? kObjectsBegin
                                                        : former.substr(0, kObjectsBegin.size());
    std::vector<ObjectPlace> places;
    places.reserve(objects.size());
    for (const ObjectBytes& object : objects) {
        if (object.handle != Handle::none) {
            places.push_back({.handle = object.handle, .offset = made.objects.size()});
        }
        made.objects += object.bytes;
    }
    std::sort(places.begin(), places.end(),
              [](const ObjectPlace& a, const ObjectPlace& b) { return a.handle < b.handle; });
    made.map = encodeObjectMap(places);
    made.count = places.size();
    return made;
}

} // namespace

ReadResult PagedContainer::open(platform::FileContent content, const std::wstring& path)
{
    m_content = std::move(content);
    const std::string_view bytes = m_content.view();
    m_file.emplace(bytes);
    ReadResult result;
    const auto trouble = [&] {
        result = damage(path, m_file->trouble().at, m_file->trouble().what);
        return false;
    };
    if (!m_file->open()) {
        trouble();
        return result;
    }
    if (isSecret(bytes)) {
        return secret(path);
    }
    const bool isRead = eachPart(m_parted, [&](std::string_view name, std::string& target) {
        const Section* const section = m_file->find(name);
        if (section == nullptr) {
            result = missing(path, name);
            return false;
        }
        auto part = m_file->read(*section);
        if (!part) {
            return trouble();
        }
        target = std::move(*part);
        return true;
    });
    if (isRead) {
        m_head = bytes.substr(0, kPagedHeadSize);
        m_parts = partsOfHead(m_head);
        setParts(m_parted, m_parts);
        for (const Section& section : m_file->sections()) {
            m_sections.push_back({.section = section, .content = {}});
        }
    }
    return result;
}

void PagedContainer::begin(std::string head, std::vector<Made> sections)
{
    constexpr std::size_t kBehindClasses = 8; // zeros behind the sentinel
    m_head = std::move(head);
    m_sections = std::move(sections);
    m_parted.classes.assign(kBehindClasses, '\0');
    m_parts = partsOfHead(m_head);
}

std::optional<std::string> PagedContainer::contentOf(std::string_view name) const
{
    if (m_file) {
        // Another reader, since what this one may read is for one time.
        PagedFile file(m_content.view());
        const Section* const found = file.open() ? file.find(name) : nullptr;
        return found == nullptr ? std::nullopt : file.read(*found);
    }
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [&](const Made& made) { return made.section.name() == name; });
    return found == m_sections.end() ? std::nullopt : std::optional(found->content);
}

std::vector<PagedContainer::NewContent> PagedContainer::newContents(const NewParts& parts) const
{
    ObjectSections objects = objectSections(m_parted.objects, parts.objects);
    std::vector<NewContent> contents;
    const auto add = [&](std::string_view section, std::string content) {
        contents.push_back({.section = section, .content = std::move(content)});
    };
    // What stands behind the sentinel in the file stays there.
    if (!parts.header.empty()) {
        add(section::kHeader,
            std::string(parts.header) + m_parted.header.substr(m_parts.header.size()));
    }
    if (!parts.classes.empty()) {
        add(section::kClasses,
            std::string(parts.classes) + m_parted.classes.substr(m_parts.classes.size()));
    }
    if (auto freeSpace = contentOf(section::kFreeSpace)) {
        const std::string former = *freeSpace;
        setCount(objects.count, *freeSpace);
        if (*freeSpace != former) {
            add(section::kFreeSpace, std::move(*freeSpace));
        }
    }
    if (auto auxiliary = contentOf(section::kAuxiliary); auxiliary && parts.seed != Handle::none) {
        const std::string former = *auxiliary;
        setSeed(parts.seed, *auxiliary);
        if (*auxiliary != former) {
            add(section::kAuxiliary, std::move(*auxiliary));
        }
    }
    add(section::kMap, std::move(objects.map));
    add(section::kObjects, std::move(objects.objects));
    return contents;
}

// Sections of a file stay in the order in which their first pages stand there.
std::vector<std::size_t> PagedContainer::orderOfFile() const
{
    constexpr std::size_t kLast = ~std::size_t {0};
    std::vector<std::pair<std::size_t, std::size_t>> order;
    for (std::size_t i = 0; i < m_sections.size(); ++i) {
        const auto& pages = m_sections[i].section.pages;
        const PlacedPage* const first
            = m_file && !pages.empty() ? m_file->placeOf(pages.front().id) : nullptr;
        order.emplace_back(first != nullptr ? first->address : kLast, i);
    }
    std::sort(order.begin(), order.end());
    std::vector<std::size_t> sections;
    sections.reserve(order.size());
    for (const auto& [address, index] : order) {
        sections.push_back(index);
    }
    return sections;
}

bool PagedContainer::write(const NewParts& parts, const TakeBytes& take) const
{
    const std::vector<NewContent> contents = newContents(parts);
    std::vector<Section> sections;
    for (const Made& made : m_sections) {
        sections.push_back(made.section);
    }
    PagedWriter writer(m_head, std::move(sections));
    CopiedPages copied;
    for (const std::size_t index : orderOfFile()) {
        const Made& made = m_sections[index];
        const auto found
            = std::find_if(contents.begin(), contents.end(), [&](const NewContent& row) {
                  return row.section == made.section.name();
              });
        if (found != contents.end()) {
            writer.add(index, found->content);
        } else if (m_file) {
            copyPages(index, writer, copied);
        } else {
            writer.add(index, made.content);
        }
    }
    setAddresses(writer, copied);
    return writer.write(take);
}

// A page that is not in the file stays absent.
void PagedContainer::copyPages(std::size_t section, PagedWriter& writer, CopiedPages& copied) const
{
    for (const SectionPage& page : m_sections[section].section.pages) {
        if (const auto found = copied.find(page.id); found != copied.end()) {
            writer.addAgain(section, page, found->second);
            continue;
        }
        const PlacedPage* const place = m_file->placeOf(page.id);
        if (place == nullptr) {
            continue;
        }
        const std::string_view bytes = m_content.view().substr(place->address, place->size);
        if (bytes.size() >= PageHeader::kSize) {
            const std::uint32_t id
                = writer.add(section, {.page = page, .address = place->address, .bytes = bytes});
            copied.emplace(page.id, id);
        }
    }
}

void PagedContainer::setAddresses(PagedWriter& writer, const CopiedPages& copied) const
{
    if (!m_file) {
        writer.pointTo(kPreviewAt, section::kPreview);
        writer.pointTo(kSummaryAt, section::kSummary);
        writer.pointTo(kAppInfoAt, section::kAppInfo);
        return;
    }
    for (const std::size_t at :
         {kPreviewAt, kSummaryAt, kProjectAt, kAppInfoAt, kAppInfoHistoryAt}) {
        const auto former = numberAt<std::uint32_t>(m_head, at);
        const PlacedPage* const place = m_file->pageAt(former);
        if (place == nullptr) {
            writer.setAddress(at, 0);
            continue;
        }
        const auto found = copied.find(place->id);
        const bool isCopied = found != copied.end();
        writer.setAddress(
            at, isCopied ? writer.addressOf(found->second) + (former - place->address) : 0);
    }
}

ContainerOrTrouble readPagedContainer(platform::FileContent content, const std::wstring& path)
{
    auto container = std::make_unique<PagedContainer>();
    ReadResult result = container->open(std::move(content), path);
    if (result.status != Acad::eOk) {
        return result;
    }
    return container;
}

} // namespace corma::host::dwg
