#include "reader_checks.h"

#include "fuzz_support.h"
#include "platform/text.h"
#include <corma/xx_Inifile.h>
#include <corma/xx_Var.h>

#include <algorithm>
#include <optional>

namespace corma::fuzzing {

namespace {

constexpr std::size_t kLongestLine = 3000;
constexpr int kLongestValue = 4000; // characters, the terminator counted; longer than any line

// The lines as the format has them, each cut at its first control character: written down as it is
// told, without regard to time or memory.
std::vector<std::wstring> linesOf(std::wstring_view text)
{
    std::vector<std::wstring> lines;
    while (!text.empty()) {
        const std::size_t feed = std::min(text.find(L'\n'), text.size());
        std::wstring_view line = text.substr(0, feed);
        text.remove_prefix(std::min(feed + 1, text.size()));
        if (line.ends_with(L'\r')) {
            line.remove_suffix(1);
        }
        do {
            std::wstring piece(line.substr(0, kLongestLine));
            line.remove_prefix(piece.size());
            piece.resize(static_cast<std::size_t>(
                std::find_if(piece.begin(), piece.end(), [](wchar_t c) { return c < 32; })
                - piece.begin()));
            lines.push_back(piece);
        } while (!line.empty());
    }
    return lines;
}

bool isHeader(std::wstring_view line)
{
    return line.size() > 1 && line.starts_with(L'[') && line.ends_with(L']');
}

bool counts(std::wstring_view line)
{
    return !line.empty() && !line.starts_with(L' ');
}

std::wstring_view prefixOf(std::wstring_view text)
{
    const std::size_t close = text.starts_with(L'[') ? text.find(L']') : std::wstring_view::npos;
    return close == std::wstring_view::npos ? std::wstring_view() : text.substr(0, close + 1);
}

// What the ident's value is by a plain reading.
std::optional<std::wstring> valueIn(const std::vector<std::wstring>& lines, std::wstring_view ident)
{
    const std::wstring_view prefix = prefixOf(ident);
    const std::wstring_view name = ident.substr(prefix.size());
    bool isIn = prefix.size() < 3;
    for (const std::wstring_view line : lines) {
        if (counts(line) && isHeader(line)) {
            if (isIn) {
                return std::nullopt;
            }
            isIn = equalIgnoringCase(prefixOf(line), prefix);
        } else if (counts(line) && isIn) {
            const std::size_t equals = line.find(L'=');
            if (equals != std::wstring_view::npos
                && equalIgnoringCase(line.substr(0, equals), name)) {
                return std::wstring(line.substr(equals + 1));
            }
        }
    }
    return std::nullopt;
}

void checkTyped(xx_Inifile& file, wchar_t* ident)
{
    int whole = 0;
    bool truth = false;
    double real = 0;
    double reals[3] = {};
    int wholes[2] = {};
    int count = 2;
    resbuf* list = nullptr;
    file.getInt(ident, &whole, 0);
    file.getBool(ident, &truth, 0);
    file.getDouble(ident, &real, 0);
    file.getDoubleArray(ident, reals, 3, 0);
    file.getIntArray(ident, wholes, &count, 0);
    require(count <= 2);
    file.getStringList(ident, &list, L',', 0);
    acutRelRb(list);
}

int entriesOf(xx_Inifile& file, std::wstring pattern)
{
    xx_VarArray found;
    file.getWcString(pattern.data(), &found, 0, 0);
    return found.length();
}

} // namespace

std::vector<std::wstring> identsIn(std::wstring_view text, unsigned choice)
{
    std::vector<std::wstring> chapters = {L"", L"[]"};
    std::vector<std::wstring> names = {L"", L"a"};
    for (const std::wstring& line : linesOf(text)) {
        if (isHeader(line)) {
            chapters.emplace_back(prefixOf(line));
        } else {
            names.push_back(line.substr(0, line.find(L'=')));
            names.push_back(line);
        }
    }
    std::vector<std::wstring> idents;
    for (unsigned i = 0; i < 6; ++i) {
        const std::wstring& chapter = chapters[(choice * 7 + i * 3) % chapters.size()];
        const std::wstring& name = names[(choice * 5 + i * 11) % names.size()];
        const std::wstring ident = chapter + name;
        idents.push_back(i % 4 == 3 ? upperCase(ident) : ident);
    }
    return idents;
}

void checkLookups(const OpenedText& file, const std::vector<std::wstring>& idents)
{
    const std::vector<std::wstring> lines = linesOf(file.text);
    for (const std::wstring& wanted : idents) {
        std::wstring ident = wanted;
        // A list of idents is another matter, and so is the list of included files.
        std::erase(ident, L',');
        const auto expected = valueIn(lines, ident);
        xx_Inifile opened(std::wstring(file.path).data(), file.scrambleNumber, nullptr);
        if (opened.getIncludedFiles() != 0) {
            continue;
        }
        std::wstring value(kLongestValue, L'\0');
        for (int i = 0; i < 3; ++i) {
            const int status = opened.getString(ident.data(), value.data(), kLongestValue, 0);
            const bool isFound = expected && !ident.empty();
            require(status == (isFound ? RTNORM : (ident.empty() ? RTCAN : RTERROR)));
            require(!isFound || *expected == value.c_str());
        }
        if (&wanted == &idents.front()) {
            checkTyped(opened, ident.data());
        }
    }
}

void checkWildcards(const OpenedText& file)
{
    xx_Inifile opened(std::wstring(file.path).data(), file.scrambleNumber, nullptr);
    const int head = entriesOf(opened, L"*");
    const int chapters = entriesOf(opened, L"[*]*");
    require(head >= 0 && chapters >= 0);
    require(entriesOf(opened, L"[*]*,*") >= 0);
    if (opened.getIncludedFiles() == 0 && file.text.empty()) {
        require(head == 0 && chapters == 0);
    }
}

} // namespace corma::fuzzing
