#include "data/providers.h"

#include "foundation/text_file.h"
#include "foundation/wide_text.h"
#include "foundation/xx_findf.h"
#include "host/host.h"
#include "platform/text.h"

#include <algorithm>

namespace corma {

namespace {

constexpr const wchar_t* kTableFile = L"odbc_drivers.txt";
constexpr std::size_t kLongestPath = 4096;
constexpr std::size_t kNowhere = std::wstring_view::npos;

constexpr const wchar_t* kProviderKey = L"Provider";
constexpr const wchar_t* kExtendedKey = L"Extended Properties";
constexpr const wchar_t* kOdbcKeys[] = {L"DSN", L"FILEDSN", L"Driver"};

// MDB Tools takes the file from the text without minding braces; it opens files with a password
// without asking for it, other drivers of that name need it.
constexpr const wchar_t* kAccess
    = L"Driver={MDBTools};DBQ=<Data Source>;PWD=<Jet OLEDB:Database Password>";

// A server's instance ("HOST\NAME") and port ("HOST,1433") stay with its name, where FreeTDS looks
// for them too. The version is the one of the servers since 2012, and an older one answers with its
// own. Without a character set, letters beyond Latin-1 would be lost.
constexpr const wchar_t* kSqlServer
    = L"Driver={FreeTDS};Server=<Data Source|Server|Address|Addr|Network Address>;"
      L"Database=<Initial Catalog|Database>;UID=<User ID|UID|User>;PWD=<Password|PWD>;"
      L"Trusted_Connection=<Trusted_Connection>;TDS_Version=7.4;ClientCharset=UTF-8";

// Booleans would come as texts otherwise.
constexpr const wchar_t* kPostgreSql
    = L"Driver={PostgreSQL Unicode};Server=<Data Source|Server>;Port=<Port>;"
      L"Database=<Initial Catalog|Database|Location>;UID=<User ID|UID|User>;PWD=<Password|PWD>;"
      L"BoolsAsChar=0";

constexpr const wchar_t* kSqlite = L"Driver={SQLite3};Database=<Data Source|Database>";

struct BuiltInRow
{
    const wchar_t* provider;
    const wchar_t* odbc;
};

constexpr BuiltInRow kBuiltIn[] = {
    {L"Microsoft.ACE.OLEDB.*", kAccess}, {L"Microsoft.Jet.OLEDB.*", kAccess},
    {L"SQLNCLI*", kSqlServer},           {L"SQLOLEDB*", kSqlServer},
    {L"MSOLEDBSQL*", kSqlServer},        {L"PGNP*", kPostgreSql},
    {L"PGNP*/*", kPostgreSql}, // its extended properties are further settings, no other format
    {L"PostgreSQL*", kPostgreSql},       {L"SQLite*", kSqlite},
};

/// A part of a connection text between two ";".
struct Part
{
    std::wstring_view whole;
    std::optional<std::pair<std::wstring, std::wstring>> pair; // none without "="
};

/// Reads the value behind the quote or brace at `at`. Returns where its part ends.
std::size_t readQuoted(std::wstring_view text, std::size_t at, std::wstring& value)
{
    const wchar_t closing = text[at] == L'{' ? L'}' : text[at];
    for (++at; at < text.size(); ++at) {
        if (text[at] == closing) {
            if (at + 1 < text.size() && text[at + 1] == closing) {
                ++at;
            } else {
                const std::size_t next
                    = std::min(text.find_first_not_of(L' ', at + 1), text.size());
                if (next == text.size() || text[next] == L';') {
                    return next;
                }
            }
        }
        value.push_back(text[at]);
    }
    return at;
}

/// The part that begins at `at`, which moves to its end.
Part readPart(std::wstring_view text, std::size_t& at)
{
    const std::size_t begin = at;
    at = std::min(text.find_first_of(L"=;", begin), text.size());
    if (at == text.size() || text[at] == L';') {
        return {text.substr(begin, at - begin), std::nullopt};
    }
    std::wstring key(trimmed(text.substr(begin, at - begin)));
    std::wstring value;
    const std::size_t first = std::min(text.find_first_not_of(L' ', at + 1), text.size());
    if (first < text.size() && std::wstring_view(L"'\"{").find(text[first]) != kNowhere) {
        at = readQuoted(text, first, value);
    } else {
        at = std::min(text.find(L';', first), text.size());
        value = trimmed(text.substr(first, at - first));
    }
    return {text.substr(begin, at - begin), std::pair {std::move(key), std::move(value)}};
}

std::vector<Part> partsOf(std::wstring_view text)
{
    std::vector<Part> parts;
    for (std::size_t at = 0; at <= text.size(); ++at) {
        parts.push_back(readPart(text, at));
    }
    return parts;
}

bool hasKey(const Part& part, std::wstring_view key)
{
    return part.pair && equalIgnoringCase(part.pair->first, key);
}

/// Empty when there is none.
std::wstring valueOf(const std::vector<Part>& parts, std::wstring_view key)
{
    const auto found = std::find_if(parts.rbegin(), parts.rend(),
                                    [key](const Part& part) { return hasKey(part, key); });
    return found == parts.rend() ? std::wstring() : found->pair->second;
}

/// The value of the first of the keys that has one; keys are separated by "|".
std::wstring valueOfAny(const std::vector<Part>& parts, std::wstring_view keys)
{
    for (std::size_t begin = 0; begin <= keys.size(); ++begin) {
        const std::size_t end = std::min(keys.find(L'|', begin), keys.size());
        std::wstring value = valueOf(parts, trimmed(keys.substr(begin, end - begin)));
        if (!value.empty()) {
            return value;
        }
        begin = end;
    }
    return {};
}

void addPart(std::wstring& text, std::wstring_view part)
{
    if (!text.empty()) {
        text.push_back(L';');
    }
    text.append(part);
}

std::wstring odbcValue(const std::wstring& value)
{
    const bool isPlain = value.find(L';') == kNowhere && value.front() != L'{'
        && trimmed(value).size() == value.size();
    if (isPlain) {
        return value;
    }
    std::wstring braced = L"{";
    for (const wchar_t c : value) {
        braced.append(c == L'}' ? 2 : 1, c);
    }
    return braced + L"}";
}

/// Puts the values in. Nothing when one of them is absent.
std::optional<std::wstring> filled(std::wstring_view pattern, const std::vector<Part>& values)
{
    std::wstring result;
    std::size_t at = 0;
    while (at < pattern.size()) {
        const std::size_t begin = std::min(pattern.find(L'<', at), pattern.size());
        const std::size_t end = std::min(pattern.find(L'>', begin), pattern.size());
        if (end == pattern.size()) {
            break;
        }
        const std::wstring value = valueOfAny(values, pattern.substr(begin + 1, end - begin - 1));
        if (value.empty()) {
            return std::nullopt;
        }
        result.append(pattern.substr(at, begin - at)).append(value);
        at = end + 1;
    }
    return result.append(pattern.substr(at));
}

std::wstring filledRow(std::wstring_view row, const std::vector<Part>& values)
{
    std::wstring text;
    for (const Part& part : partsOf(row)) {
        if (!part.pair || part.pair->second.find(L'<') == kNowhere) {
            addPart(text, trimmed(part.whole));
        } else if (const auto value = filled(part.pair->second, values)) {
            addPart(text, part.pair->first + L"=" + odbcValue(*value));
        }
    }
    return text;
}

std::wstring withoutProvider(const std::vector<Part>& parts)
{
    std::wstring text;
    bool isFirst = true;
    for (const Part& part : parts) {
        if (!hasKey(part, kProviderKey)) {
            text.append(isFirst ? L"" : L";").append(part.whole);
            isFirst = false;
        }
    }
    return text;
}

bool fits(std::wstring_view pattern, std::wstring_view name)
{
    std::size_t p = 0;
    std::size_t n = 0;
    std::size_t star = kNowhere;
    std::size_t behindStar = 0; // the first character that the last star does not stand for
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == L'*') {
            star = p++;
            behindStar = n;
        } else if (p < pattern.size() && foldCase(pattern[p]) == foldCase(name[n])) {
            ++p;
            ++n;
        } else if (star != kNowhere && name[behindStar] != L'/') {
            p = star + 1;
            n = ++behindStar;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(L'*', p) == kNowhere;
}

/// As people align tables with tabs, they count here.
std::wstring_view withoutWhiteSpace(std::wstring_view text)
{
    constexpr const wchar_t* white = L" \t\r";
    const std::size_t first = std::min(text.find_first_not_of(white), text.size());
    return text.substr(first, text.find_last_not_of(white) + 1 - first);
}

std::wstring foundTableFile()
{
    std::wstring path(kLongestPath, L'\0');
    if (xx_findfile(kTableFile, path.data(), path.size()) != RTNORM) {
        return {};
    }
    path.resize(length(path.c_str()));
    return path;
}

} // namespace

ConnectionParts connectionParts(std::wstring_view text)
{
    ConnectionParts pairs;
    for (Part& part : partsOf(text)) {
        if (part.pair) {
            pairs.push_back(std::move(*part.pair));
        }
    }
    return pairs;
}

std::vector<ProviderRow> providerRows(std::wstring_view text)
{
    std::vector<ProviderRow> rows;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find(L'\n', begin), text.size());
        const std::wstring_view line = withoutWhiteSpace(text.substr(begin, end - begin));
        begin = end + 1;
        const std::size_t equals = line.find(L'=');
        if (line.starts_with(L';') || equals == kNowhere) {
            continue;
        }
        const std::wstring_view provider = withoutWhiteSpace(line.substr(0, equals));
        const std::wstring_view odbc = withoutWhiteSpace(line.substr(equals + 1));
        if (!provider.empty() && !odbc.empty()) {
            rows.push_back({std::wstring(provider), std::wstring(odbc)});
        }
    }
    return rows;
}

std::vector<ProviderRow> providerTable()
{
    std::vector<ProviderRow> rows;
    const std::wstring path = foundTableFile();
    if (const auto file = path.empty() ? nullptr : xx_openUnicode(path, OpenMode::text)) {
        rows = providerRows(file->decode(file->bytes()));
    }
    for (const auto& [provider, odbc] : kBuiltIn) {
        rows.push_back({provider, odbc});
    }
    return rows;
}

std::optional<std::wstring> odbcText(std::wstring_view text, const std::wstring& provider,
                                     const std::vector<ProviderRow>& table)
{
    const std::vector<Part> parts = partsOf(text);
    for (const wchar_t* const key : kOdbcKeys) {
        if (std::any_of(parts.begin(), parts.end(),
                        [key](const Part& part) { return hasKey(part, key); })) {
            return withoutProvider(parts);
        }
    }
    std::wstring name = valueOf(parts, kProviderKey);
    if (name.empty()) {
        name = provider;
    }
    if (const std::wstring extended = valueOf(parts, kExtendedKey); !extended.empty()) {
        name += L"/" + extended;
    }
    const auto row
        = std::find_if(table.begin(), table.end(), [&name](const ProviderRow& candidate) {
              return fits(candidate.provider, name);
          });
    if (row == table.end()) {
        return std::nullopt;
    }
    return filledRow(row->odbc, parts);
}

} // namespace corma
