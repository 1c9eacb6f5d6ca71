#include "host/dxf/dxf_reader.h"

#include "host/dxf/DxfFormat.h"
#include "host/dxf/StructureBuilder.h"
#include "platform/text.h"

#include <algorithm>
#include <limits>

namespace corma::host::dxf {

namespace {

constexpr const wchar_t* kNoCode = L": a group code was expected, found ";
constexpr const wchar_t* kNotToItsEnd = L"; the file was not saved or copied to its end: copy it "
                                        L"again, or use a backup";
constexpr const wchar_t* kDamaged = L"; the file is damaged: use a backup, or save the drawing "
                                    L"again in the CAD program";

constexpr std::string_view kEndOfFile = "EOF";
constexpr std::string_view kEndOfSection = "ENDSEC";
constexpr std::uint64_t kMostOfRecord = std::numeric_limits<std::uint32_t>::max();

// What stopped the reading, and where.
struct Trouble
{
    enum class Kind : unsigned char
    {
        none,
        noCode,
        cutOff,
        cutOffSection,
        tooLarge
    };

    Kind kind = Kind::none;
    const char* at = nullptr;
    int code = 0; // in a binary file what stands in place of a group code
    std::string_view section {};
};

// Makes the records of a file in one pass over its groups.
template<class Tags> class FileReader
{
public:
    FileReader(Tags tags, std::string_view file, Store& store)
        : m_tags(tags)
        , m_file(file)
        , m_builder(store)
    {
    }

    Trouble read()
    {
        Step step = Step::group;
        do {
            step = m_tags.next();
        } while (step == Step::group && m_tags.code() != code::type);
        const auto preface = static_cast<std::uint64_t>(m_tags.begin() - m_file.data());
        if (preface > kMostOfRecord) {
            return {Trouble::Kind::tooLarge, m_file.data()};
        }
        m_builder.addPreface(static_cast<std::uint32_t>(preface));
        while (step == Step::group) {
            step = readRecord();
        }
        return troubleAfter(step);
    }

    Store::Structure finish() { return m_builder.finish(); }

private:
    // From a group of code 0 to the next one.
    Step readRecord()
    {
        const char* const begin = m_tags.begin();
        m_record = {};
        m_record.type = trimmed(m_tags.value());
        Step step = Step::end;
        if (m_record.type == kEndOfFile) {
            m_tags.skipAll();
            m_hasEnd = true;
        } else {
            step = readGroups();
        }
        if (step != Step::group && step != Step::end) {
            return step;
        }
        const char* const end = step == Step::group ? m_tags.begin() : m_tags.end();
        const auto size = static_cast<std::uint64_t>(end - begin);
        if (size > kMostOfRecord) {
            m_isTooLarge = true;
            return Step::cutOff;
        }
        m_record.offset = static_cast<std::uint64_t>(begin - m_file.data());
        m_record.size = static_cast<std::uint32_t>(size);
        m_builder.add(m_record);
        return step;
    }

    // Behind braces or the first subclass marker the code of the handle is data, behind the second
    // marker that of paper space, and in embedded objects and extended data both are.
    Step readGroups()
    {
        const int handleCode = m_record.type == "DIMSTYLE" ? code::dimStyleHandle : code::handle;
        bool isAhead = true;
        int markers = 0;
        for (;;) {
            const Step step = m_tags.next();
            const int groupCode = m_tags.code();
            if (step != Step::group || groupCode == code::type) {
                return step;
            }
            if (groupCode == handleCode && isAhead && m_record.handle.empty()) {
                m_record.handle = m_tags.value();
            } else if (groupCode == code::name && m_record.name.empty()) {
                m_record.name = trimmed(m_tags.value());
            } else if (groupCode == code::paperSpace && markers < 2) {
                m_record.isPaperSpace = m_tags.smallNumber() != 0;
            } else if (groupCode == code::subclass) {
                isAhead = false;
                ++markers;
            } else if (groupCode == code::braces) {
                isAhead = false;
            } else if (groupCode == code::embeddedObject || groupCode == code::application) {
                isAhead = false;
                markers = 2;
            }
        }
    }

    [[nodiscard]] Trouble troubleAfter(Step step) const
    {
        Trouble trouble {Trouble::Kind::none, m_tags.begin(), m_tags.code(),
                         m_builder.sectionName()};
        if (m_isTooLarge) {
            trouble.kind = Trouble::Kind::tooLarge;
        } else if (step == Step::noCode) {
            trouble.kind = Trouble::Kind::noCode;
        } else if (step == Step::cutOff) {
            trouble.kind = Trouble::Kind::cutOff;
        } else if (!m_hasEnd && m_record.type != kEndOfSection) {
            // What the end of the file is missing behind it is known to be whole.
            const bool isNamed = m_builder.isInSection() && !trouble.section.empty();
            trouble.kind = isNamed ? Trouble::Kind::cutOffSection : Trouble::Kind::cutOff;
        }
        return trouble;
    }

    Tags m_tags;
    std::string_view m_file;
    StructureBuilder m_builder;
    FileRecord m_record;
    bool m_hasEnd = false;
    bool m_isTooLarge = false;
};

// The line that stands in place of a group code.
std::wstring shownLine(std::string_view bytes)
{
    constexpr std::size_t kMostShown = 40;
    std::wstring line
        = fromUtf8(bytes.substr(0, std::min(bytes.find_first_of("\r\n"), kMostShown)));
    std::replace_if(
        line.begin(), line.end(), [](wchar_t c) { return c < L' '; }, L'?');
    return L'"' + line + L'"';
}

std::wstring described(const Trouble& trouble, const std::wstring& path, std::string_view file,
                       bool isBinary)
{
    const auto at = static_cast<std::size_t>(trouble.at - file.data());
    const auto lines = std::count(file.data(), trouble.at, '\n') + 1;
    const std::wstring place
        = isBinary ? L"byte " + std::to_wstring(at) : L"line " + std::to_wstring(lines);
    switch (trouble.kind) {
    case Trouble::Kind::none:
        break;
    case Trouble::Kind::noCode:
        return path + L", " + place + kNoCode
            + (isBinary ? std::to_wstring(trouble.code) : shownLine(file.substr(at))) + kDamaged;
    case Trouble::Kind::cutOff:
        return path + L": ends in the middle of a group (" + place + L")" + kNotToItsEnd;
    case Trouble::Kind::cutOffSection:
        return path + L": ends in the middle of the section " + fromUtf8(trouble.section) + L" ("
            + place + L")" + kNotToItsEnd;
    case Trouble::Kind::tooLarge:
        return path + L", " + place + L": an object has more than 4 GB" + kDamaged;
    }
    return {};
}

template<class Tags>
ReadResult readAll(Tags tags, std::unique_ptr<DxfFormat> format, const std::wstring& path,
                   Store& store)
{
    FileReader<Tags> reader(tags, format->bytes(), store);
    const Trouble trouble = reader.read();
    if (trouble.kind != Trouble::Kind::none) {
        return {Acad::eBadDxfFile,
                described(trouble, path, format->bytes(), format->form().isBinary)};
    }
    Store::Structure structure = reader.finish();
    if (structure.header != nullptr) {
        format->learnCharacters(*structure.header);
    }
    store.finishLoading(std::move(structure), std::move(format));
    return {};
}

} // namespace

ReadResult readDxf(platform::FileContent content, const std::wstring& path, Store& store)
{
    constexpr std::size_t kUsualSizeOfRecord = 200;
    store.reserve(content.size / kUsualSizeOfRecord);
    auto format = std::make_unique<DxfFormat>(std::move(content));
    const std::string_view file = format->bytes();
    const std::string_view groups = file.substr(prefaceOf(file));
    if (format->form().isBinary) {
        const BinaryTags tags(groups, format->form().codes);
        return readAll(tags, std::move(format), path, store);
    }
    return readAll(TextTags(groups), std::move(format), path, store);
}

} // namespace corma::host::dxf
