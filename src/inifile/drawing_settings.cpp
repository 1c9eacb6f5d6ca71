#include "inifile/drawing_settings.h"

#include "foundation/wide_text.h"
#include "inifile/Ident.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <memory>

using corma::host::Opened;

namespace {

constexpr std::wstring_view kIllegal = L"<>/\\\"\u00B4`:;?*|,='";
constexpr std::wstring_view kCodedPrefix = L"XX_HEX_0x";
constexpr std::size_t kDigitsOfUnit = 4;
constexpr short kTextOfSetting = 1; // the group code of a record's value

constexpr int kDigitBits = 4;
constexpr unsigned kDigitMask = 0xF;

wchar_t hexDigit(unsigned value)
{
    return L"0123456789abcdef"[value & kDigitMask];
}

// A character that is no digit counts as 0.
unsigned valueOfDigit(wchar_t digit)
{
    if (digit >= L'0' && digit <= L'9') {
        return static_cast<unsigned>(digit - L'0');
    }
    const wchar_t lower = corma::foldCase(digit);
    return lower >= L'a' && lower <= L'f' ? static_cast<unsigned>(lower - L'a') + 10U : 0U;
}

// The dictionary under a key, open for read; made, when it is missing and wanted. Null when there
// is none, or when something else has the key.
Opened<AcDbDictionary> dictionaryIn(AcDbDictionary& parent, const std::wstring& key, bool create)
{
    AcDbObjectId id;
    if (parent.getAt(key.c_str(), id) == Acad::eOk) {
        return Opened<AcDbDictionary>(id);
    }
    if (!create || (!parent.isWriteEnabled() && parent.upgradeOpen() != Acad::eOk)) {
        return {};
    }
    auto made = std::make_unique<AcDbDictionary>();
    if (parent.setAt(key.c_str(), made.get(), id) != Acad::eOk) {
        return {};
    }
    made->downgradeOpen();
    return Opened<AcDbDictionary>(made.release());
}

} // namespace

bool xx_isLegalKey(std::wstring_view text)
{
    return text.find_first_of(kIllegal) == std::wstring_view::npos;
}

std::wstring xx_encodeKey(std::wstring_view text)
{
    if (xx_isLegalKey(text)) {
        return std::wstring(text);
    }
    std::wstring key(kCodedPrefix);
    for (const char16_t unit : corma::toUtf16(text)) {
        const unsigned number = unit;
        for (const unsigned byte : {number & 0xFFU, number >> 8U}) {
            key.push_back(hexDigit(byte >> kDigitBits));
            key.push_back(hexDigit(byte));
        }
    }
    return key;
}

std::wstring xx_decodeKey(std::wstring_view text)
{
    if (!text.starts_with(kCodedPrefix)) {
        return std::wstring(text);
    }
    std::wstring name;
    for (std::size_t at = kCodedPrefix.size(); at + 1 < text.size(); at += kDigitsOfUnit) {
        const unsigned high = valueOfDigit(text[at]);
        name.push_back(static_cast<wchar_t>((high << kDigitBits) | valueOfDigit(text[at + 1])));
    }
    return name;
}

Acad::ErrorStatus xx_dictionaryFor(const wchar_t* fileName, const wchar_t* chapter,
                                   AcDbDictionary*& dictionary, bool create, AcDbDatabase* database)
{
    dictionary = nullptr;
    if (database == nullptr) {
        database = acdbHostApplicationServices()->workingDatabase();
    }
    const auto path = corma::platform::splitPath(corma::view(fileName));
    Opened<AcDbDictionary> namedObjects;
    if (database == nullptr || path.fileName().empty()
        || database->getNamedObjectsDictionary(namedObjects.out()) != Acad::eOk) {
        return Acad::eKeyNotFound;
    }
    Opened<AcDbDictionary> root = dictionaryIn(*namedObjects, corma::kSettingsRoot, create);
    namedObjects.close();
    if (!root) {
        return Acad::eKeyNotFound;
    }
    Opened<AcDbDictionary> found = dictionaryIn(*root, corma::upperCase(path.fileName()), create);
    root.close();
    const std::wstring_view name = corma::view(chapter);
    if (found && !name.empty() && name != corma::kHeadChapter) {
        found = dictionaryIn(*found, xx_encodeKey(name), create);
    }
    dictionary = found.release();
    return dictionary == nullptr ? Acad::eKeyNotFound : Acad::eOk;
}

namespace corma {

std::optional<std::wstring> textOfRecord(const AcDbObject& object)
{
    const AcDbXrecord* const record = AcDbXrecord::cast(&object);
    resbuf* chain = nullptr;
    if (record == nullptr || record->rbChain(&chain) != Acad::eOk || chain == nullptr) {
        return std::nullopt;
    }
    std::optional<std::wstring> text;
    if (chain->restype == kTextOfSetting) {
        text = view(chain->resval.rstring);
    }
    acutRelRb(chain);
    return text;
}

std::optional<std::wstring> readFromDrawing(const wchar_t* fileName, const wchar_t* chapter,
                                            const wchar_t* ident, AcDbDatabase* database)
{
    Opened<AcDbDictionary> dictionary;
    if (xx_dictionaryFor(fileName, chapter, dictionary.out(), false, database) != Acad::eOk) {
        return std::nullopt;
    }
    AcDbObjectId id;
    if (dictionary->getAt(ident, id) != Acad::eOk) {
        return std::nullopt;
    }
    const Opened<AcDbObject> record(id);
    return record ? textOfRecord(*record) : std::nullopt;
}

Acad::ErrorStatus writeToDrawing(const wchar_t* fileName, const wchar_t* chapter,
                                 const wchar_t* ident, const wchar_t* value, AcDbDatabase* database)
{
    if (view(ident).empty()) {
        return Acad::eInvalidKey; // before dictionaries are made for it
    }
    Opened<AcDbDictionary> dictionary;
    Acad::ErrorStatus status
        = xx_dictionaryFor(fileName, chapter, dictionary.out(), true, database);
    if (status != Acad::eOk) {
        return status;
    }
    status = dictionary->isWriteEnabled() ? Acad::eOk : dictionary->upgradeOpen();
    if (status != Acad::eOk) {
        return status;
    }
    if (dictionary->has(ident)) {
        dictionary->remove(ident);
    }
    resbuf node {};
    node.restype = kTextOfSetting;
    std::wstring text(view(value));
    node.resval.rstring = text.data();
    auto record = std::make_unique<AcDbXrecord>();
    record->setFromRbChain(node);
    AcDbObjectId id;
    status = dictionary->setAt(ident, record.get(), id);
    if (status == Acad::eOk) {
        record.release()->close();
    }
    return status;
}

} // namespace corma
