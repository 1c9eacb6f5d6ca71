#include "host/dxf/DxfFormat.h"

#include "host/drawing_files.h"
#include "host/dxf/group_codec.h"
#include "host/model/Store.h"

#include <algorithm>
#include <utility>

namespace corma::host::dxf {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

// Whole numbers are aligned where the first code of fewer digits than the column has is.
bool alignsNumbers(std::string_view bytes)
{
    constexpr int kLeastCodeOfThreeDigits = 100;
    for (TextTags tags(bytes); tags.next() == Step::group;) {
        if (tags.code() < kLeastCodeOfThreeDigits) {
            return *tags.begin() == ' ';
        }
    }
    return false;
}

Form formOf(std::string_view bytes)
{
    Form form;
    const std::string_view groups = bytes.substr(prefaceOf(bytes));
    form.isBinary = bytes.starts_with(kBinarySentinel);
    if (form.isBinary) {
        form.codes = codesOf(groups);
        return form;
    }
    form.alignsNumbers = alignsNumbers(groups);
    form.lineEnd = groups.substr(0, groups.find('\n')).ends_with('\r') ? "\r\n" : "\n";
    return form;
}

// Joins neighbours of the file, so that an unchanged drawing is one piece.
class PieceJoiner
{
public:
    PieceJoiner(const Form& form, const std::function<bool(std::string_view)>& take)
        : m_form(form)
        , m_take(take)
    {
    }

    bool add(std::string_view piece)
    {
        const char* const end = m_waiting.data() + m_waiting.size();
        if (!m_waiting.empty() && piece.data() == end) {
            m_waiting = {m_waiting.data(), m_waiting.size() + piece.size()};
            return true;
        }
        if (piece.empty()) {
            return true;
        }
        if (!flush() || (m_isLineOpen && !m_take(m_form.lineEnd))) {
            return false;
        }
        m_waiting = piece;
        return true;
    }

    bool flush()
    {
        if (m_waiting.empty()) {
            return true;
        }
        m_isLineOpen = !m_form.isBinary && m_waiting.back() != '\n';
        return m_take(std::exchange(m_waiting, {}));
    }

private:
    const Form& m_form;
    const std::function<bool(std::string_view)>& m_take;
    std::string_view m_waiting;
    bool m_isLineOpen = false; // the last line of the file may have no end
};

bool isWritten(const AcDbStub& stub)
{
    return !stub.isErased && !stub.isImplied && !stub.isLoose;
}

} // namespace

std::size_t prefaceOf(std::string_view bytes)
{
    if (bytes.starts_with(kBinarySentinel)) {
        return kBinarySentinel.size();
    }
    const std::size_t mark = bytes.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    std::size_t first = std::min(bytes.find_first_not_of(kBlanks, mark), bytes.size());
    while (first > mark && bytes[first - 1] != '\n') {
        --first; // the spaces ahead of a code are its own
    }
    return first;
}

bool isDxf(std::string_view bytes)
{
    if (bytes.starts_with(kBinarySentinel)) {
        return true;
    }
    TextTags tags(bytes.substr(prefaceOf(bytes)));
    while (tags.next() == Step::group) {
        if (tags.code() != code::comment) {
            const std::string_view first = trimmed(tags.value());
            return tags.code() == code::type && (first == "SECTION" || first == "EOF");
        }
    }
    return false;
}

DxfFormat::DxfFormat(platform::FileContent content)
    : m_content(std::move(content))
    , m_form(formOf(m_content.view()))
{
    if (bytes().starts_with(kByteOrderMark)) {
        m_form.page = CodePage::utf8();
    }
}

void DxfFormat::learnCharacters(const AcDbStub& header)
{
    constexpr std::wstring_view kVersion = L"$ACADVER";
    constexpr std::wstring_view kCodePage = L"$DWGCODEPAGE";
    constexpr std::wstring_view kVersionPrefix = L"AC";
    constexpr std::wstring_view kFirstWithUtf8 = L"AC1021";
    std::wstring version;
    std::wstring page;
    std::wstring* wanted = nullptr;
    for (const Group& group : decode(header)) {
        if (group.code == code::variable) {
            const bool isVersion = group.isText(kVersion);
            wanted = isVersion ? &version : group.isText(kCodePage) ? &page : nullptr;
        } else if (wanted != nullptr) {
            *std::exchange(wanted, nullptr) = group.text();
        }
    }
    const bool hasUtf8 = version.starts_with(kVersionPrefix) && version >= kFirstWithUtf8;
    if (hasUtf8 || bytes().starts_with(kByteOrderMark)) {
        m_form.page = CodePage::utf8();
    } else {
        m_form.page = CodePage::named(std::string(page.begin(), page.end()));
    }
}

std::string_view DxfFormat::bytesOf(const AcDbStub& stub) const
{
    return bytes().substr(stub.offset, stub.size);
}

void DxfFormat::decode(const AcDbStub& stub, Groups& groups) const
{
    decodeGroups(bytesOf(stub), m_form, groups);
}

bool DxfFormat::eachPiece(const Store& store,
                          const std::function<bool(std::string_view)>& take) const
{
    PieceJoiner joiner(m_form, take);
    std::string encoded;
    for (const AcDbStub* stub = store.first(); stub != nullptr; stub = stub->next) {
        if (!isWritten(*stub)) {
            continue;
        }
        if (!stub->isChanged) {
            if (!joiner.add(bytesOf(*stub))) {
                return false;
            }
            continue;
        }
        if (!joiner.flush()) {
            return false;
        }
        encoded.clear();
        encodeGroups(store.groupsOf(*stub), m_form, bytes(), encoded);
        if (!joiner.add(encoded) || !joiner.flush()) {
            return false;
        }
    }
    return joiner.flush();
}

namespace {

// A record that came into memory as bits of another format; null when there is none.
const AcDbStub* firstOfBits(const Store& store)
{
    if (!store.bitsForm()) {
        return nullptr;
    }
    const AcDbStub* at = store.first();
    while (at != nullptr
           && (at->isErased || !at->isChanged || store.groupsOf(*at).isUnderstood())) {
        at = at->next;
    }
    return at;
}

} // namespace

WriteResult DxfFormat::write(const Store& store, const std::wstring& path) const
{
    if (const AcDbStub* const unknown = firstOfBits(store)) {
        return {Acad::eNotImplementedYet,
                L"the " + store.groupsOf(*unknown)[0].text() + L" " + toText(unknown->handle)
                    + L" has no form in such a file: its content is not understood"};
    }
    platform::FileReplacement file(path);
    eachPiece(store, [&](std::string_view piece) { return file.write(piece); });
    return committed(file);
}

} // namespace corma::host::dxf
