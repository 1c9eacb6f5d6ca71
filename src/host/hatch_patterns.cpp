#include "host/hatch_patterns.h"

#include "host/host.h"
#include "host/support_path.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <set>

namespace corma::host {

bool HatchPattern::isSolid() const
{
    return equalIgnoringCase(name, L"SOLID");
}

// --- reading -------------------------------------------------------------------------------------

namespace {

constexpr std::size_t kNumbersBeforeDashes = 5;
constexpr wchar_t kByteOrderMark = 0xFEFF;

/// Takes the lines of one file in their order.
class PatternReader
{
public:
    void take(std::wstring_view line)
    {
        ++m_line;
        if (line.size() > PatternFile::kLongestLine) {
            skip(L"a line of at most 1000 characters");
            return;
        }
        const std::wstring_view text = trimmed(takeUntil(line, L';'));
        if (text.starts_with(L'*')) {
            begin(text.substr(1));
        } else if (!text.empty()) {
            addFamily(text);
        }
    }

    PatternFile finish()
    {
        dropEmptyPattern();
        return std::move(m_file);
    }

private:
    void skip(std::wstring expected) { skip(m_line, std::move(expected)); }

    void skip(std::size_t line, std::wstring expected)
    {
        if (m_file.defects.size() < PatternFile::kMostDefects) {
            m_file.defects.push_back({line, std::move(expected)});
        }
    }

    // Lines that were skipped have been told of; without any there is nothing else that tells.
    void dropEmptyPattern()
    {
        if (!m_isOpen || !m_file.patterns.back().families.empty()) {
            return;
        }
        m_file.patterns.pop_back();
        if (!m_hasSkipped) {
            skip(m_nameLine, L"lines below the name of a pattern");
        }
    }

    void begin(std::wstring_view header)
    {
        dropEmptyPattern();
        m_nameLine = m_line;
        m_hasSkipped = false;
        m_isInPattern = true;
        const std::wstring_view name = trimmed(takeUntil(header, L','));
        m_isOpen = !name.empty() && name.size() <= PatternFile::kLongestName;
        if (!m_isOpen) {
            skip(L"a name of 1 to 255 characters");
            return;
        }
        m_file.patterns.push_back({std::wstring(name), std::wstring(trimmed(header)), {}});
    }

    void addFamily(std::wstring_view text)
    {
        if (!m_isInPattern) {
            skip(L"the name of a pattern");
        }
        if (!m_isOpen) {
            return; // the line of the name has been told of
        }
        auto& families = m_file.patterns.back().families;
        std::wstring expected;
        HatchLines family;
        if (families.size() == PatternFile::kMostFamilies) {
            expected = L"at most 1000 lines in a pattern";
        } else {
            expected = read(text, family);
        }
        if (expected.empty()) {
            families.push_back(std::move(family));
            return;
        }
        m_hasSkipped = true;
        skip(std::move(expected));
    }

    // What was expected instead; empty when all is well.
    static std::wstring read(std::wstring_view text, HatchLines& family)
    {
        std::vector<double> numbers;
        bool isMore = true;
        while (isMore) {
            isMore = text.find(L',') != std::wstring_view::npos;
            const auto number = numberIn(takeUntil(text, L','));
            if (!number || !(std::abs(*number) <= PatternFile::kLargest)) {
                return L"numbers with \",\" between";
            }
            numbers.push_back(*number);
        }
        if (numbers.size() < kNumbersBeforeDashes) {
            return L"an angle, x, y and the step to the next line";
        }
        if (numbers.size() > kNumbersBeforeDashes + PatternFile::kMostDashes) {
            return L"at most 12 dashes";
        }
        family = {numbers[0], numbers[1], numbers[2],
                  numbers[3], numbers[4], {numbers.begin() + kNumbersBeforeDashes, numbers.end()}};
        return shapeExpected(family);
    }

    static std::wstring shapeExpected(const HatchLines& family)
    {
        if (std::abs(family.across) < PatternFile::kSmallest) {
            return L"a distance between the lines";
        }
        const auto& dashes = family.dashes;
        const bool hasLength
            = std::any_of(dashes.begin(), dashes.end(), [](double dash) { return dash != 0.0; });
        return dashes.empty() || hasLength ? L"" : L"dashes with a length";
    }

    PatternFile m_file;
    std::size_t m_line = 0;
    std::size_t m_nameLine = 0; // of the pattern in work
    bool m_isInPattern = false; // a name, good or not, was read
    bool m_isOpen = false; // the last of the patterns is in work
    bool m_hasSkipped = false; // lines of it
};

} // namespace

PatternFile parseHatchPatterns(std::wstring_view text)
{
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(1);
    }
    PatternReader reader;
    while (!text.empty()) {
        reader.take(takeUntil(text, L'\n'));
    }
    return reader.finish();
}

std::vector<std::wstring> hatchPatternNames(std::wstring_view text)
{
    if (text.starts_with(kByteOrderMark)) {
        text.remove_prefix(1);
    }
    std::vector<std::wstring> names;
    while (!text.empty()) {
        std::wstring_view line = takeUntil(text, L'\n');
        if (!line.starts_with(L'*')) {
            continue;
        }
        line.remove_prefix(1);
        if (line.ends_with(L'\r')) {
            line.remove_suffix(1);
        }
        names.emplace_back(takeUntil(line, L',').substr(0, kLongestListedName));
    }
    return names;
}

// --- what there is to choose ---------------------------------------------------------------------

namespace {

constexpr const wchar_t* kMetricFile = L"acadiso.pat";
constexpr const wchar_t* kImperialFile = L"acad.pat";
constexpr std::wstring_view kExtension = L".pat";

/// Patterns by their names, the first of each.
class PatternList
{
public:
    void add(const DefinitionFile& file)
    {
        PatternFile read = parseHatchPatterns(file.text);
        for (HatchPattern& pattern : read.patterns) {
            add(std::move(pattern));
        }
        report(file.path, read.defects);
    }

    void addNamesake(const DefinitionFile& file)
    {
        PatternFile read = parseHatchPatterns(file.text);
        const std::wstring name = platform::splitPath(file.path).base;
        const auto found
            = std::find_if(read.patterns.begin(), read.patterns.end(),
                           [&](const auto& each) { return equalIgnoringCase(each.name, name); });
        if (found != read.patterns.end()) {
            add(std::move(*found));
        } else if (read.defects.empty()) {
            read.defects.push_back({1, L"a pattern of the name " + name});
        }
        report(file.path, read.defects);
    }

    std::vector<HatchPattern> finish() { return std::move(m_patterns); }

private:
    void add(HatchPattern pattern)
    {
        if (m_names.insert(lowerCase(pattern.name)).second) {
            m_patterns.push_back(std::move(pattern));
        }
    }

    static void report(const std::wstring& path, const std::vector<PatternDefect>& defects)
    {
        if (defects.empty()) {
            return;
        }
        const std::wstring more = L" (and " + std::to_wstring(defects.size() - 1) + L" more)";
        acutPrintf(L"\nError in file %s on line %d: expected %s%s", path.c_str(),
                   static_cast<int>(defects.front().line), defects.front().expected.c_str(),
                   defects.size() > 1 ? more.c_str() : L"");
    }

    std::vector<HatchPattern> m_patterns;
    std::set<std::wstring> m_names; // folded
};

// The pattern files of a folder but the standard ones, in the order of their names.
std::vector<std::wstring> customFiles(const std::wstring& folder)
{
    std::vector<std::wstring> files;
    std::error_code failed;
    std::filesystem::directory_iterator entry(platform::locate(folder), failed);
    for (; !failed && entry != std::filesystem::directory_iterator(); entry.increment(failed)) {
        const std::wstring path = platform::fromNative(entry->path().native());
        const auto parts = platform::splitPath(path);
        const std::wstring name = parts.fileName();
        if (equalIgnoringCase(parts.extension, kExtension) && !equalIgnoringCase(name, kMetricFile)
            && !equalIgnoringCase(name, kImperialFile)) {
            files.push_back(path);
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace

const wchar_t* standardPatternFile()
{
    resbuf value {};
    const bool isImperial = acedGetVar(L"MEASUREMENT", &value) == RTNORM && value.resval.rint == 0;
    return isImperial ? kImperialFile : kMetricFile;
}

std::optional<DefinitionFile> patternFile(const std::wstring& name)
{
    return definitionFile(name, kOwnPatternFiles);
}

std::vector<HatchPattern> loadHatchPatterns(CustomPatterns custom)
{
    PatternList list;
    if (const auto file = patternFile(standardPatternFile())) {
        list.add(*file);
    }
    if (custom == CustomPatterns::hidden) {
        return list.finish();
    }
    for (const std::wstring& folder : supportFolders()) {
        for (const std::wstring& path : customFiles(folder)) {
            if (const auto file = readDefinitions(path)) {
                list.addNamesake(*file);
            }
        }
    }
    return list.finish();
}

} // namespace corma::host
