#include "inifile/IdentIndex.h"

#include "inifile/words.h"

#include <algorithm>
#include <limits>

namespace corma {

namespace {

std::uint64_t mix(std::uint64_t hash, std::uint64_t word)
{
    hash = (hash ^ word) * 0x9E3779B97F4A7C15U;
    return hash ^ (hash >> 29U);
}

// The hash of a folded text. At least 7 readable bytes must stand behind it.
std::uint64_t hashFolded(std::string_view folded, std::uint64_t seed)
{
    std::uint64_t hash = mix(seed, folded.size());
    const char* at = folded.data();
    std::size_t left = folded.size();
    for (; left >= 8; left -= 8, at += 8) {
        hash = mix(hash, loadWord(at));
    }
    return left == 0 ? hash : mix(hash, firstBytes(loadWord(at), left));
}

// The same for a text of the file, which is folded on the way; the file's padding makes the bytes
// behind it readable.
std::uint64_t hashOf(std::string_view text, std::uint64_t seed, const TextFile& file)
{
    std::uint64_t hash = mix(seed, text.size());
    std::uint64_t seen = 0;
    const char* at = text.data();
    std::size_t left = text.size();
    for (; left >= 8; left -= 8, at += 8) {
        const std::uint64_t word = loadWord(at);
        seen |= word;
        hash = mix(hash, lowerWord(word));
    }
    if (left != 0) {
        const std::uint64_t word = firstBytes(loadWord(at), left);
        seen |= word;
        hash = mix(hash, lowerWord(word));
    }
    if ((seen & kHighBits) == 0) {
        return hash;
    }
    std::string folded = foldedForm(text, file);
    const std::size_t size = folded.size();
    folded.append(8, '\0');
    return hashFolded(std::string_view(folded).substr(0, size), seed);
}

std::uint32_t tagOf(std::uint64_t hash)
{
    return static_cast<std::uint32_t>(mix(hash, hash >> 32U) >> 32U);
}

constexpr std::uint64_t kChapterSeed = 0x51;

// Distinct for each chapter and never that of the chapter table.
std::uint64_t entrySeed(std::uint32_t chapter)
{
    return mix(kChapterSeed, std::uint64_t {chapter} + 1);
}

// Finds the first entry of a name in the first chapter whose header fits.
class OneIdent
{
public:
    OneIdent(const TextFile& file, const IdentKey& key)
        : m_file(file)
        , m_key(key)
        , m_isInChapter(key.prefix.bytes().empty())
    {
    }

    [[nodiscard]] bool wantsEntries() const { return m_isInChapter; }

    bool header(std::string_view text, Line /*line*/)
    {
        if (m_isInChapter) {
            return false; // the next header ends the chapter, and no later one counts
        }
        m_isInChapter = equalsFolded(prefixOf(text), m_key.prefix, m_file);
        return true;
    }

    bool entry(Line line)
    {
        const auto value = m_isInChapter ? valueIn(line, m_key.name, m_file) : std::nullopt;
        if (value) {
            m_found = {*value, static_cast<std::size_t>(line.begin - m_file.bytes().data())};
        }
        return !m_found;
    }

    [[nodiscard]] std::optional<FoundEntry> found() const { return m_found; }

private:
    const TextFile& m_file;
    const IdentKey& m_key;
    bool m_isInChapter;
    std::optional<FoundEntry> m_found;
};

// From `begin` at least to the end of the line or piece that begins there, and to no more than a
// few bytes: a line without an end is not read as a whole for each of its pieces.
Line lineFrom(const char* begin, const TextFile& file)
{
    constexpr std::size_t kMostBytes = 4 * kLongestLine;
    const char* const end = file.bytes().data() + file.bytes().size();
    return {begin, begin + std::min(static_cast<std::size_t>(end - begin), kMostBytes)};
}

// The part of a value that stands in the same piece as the begin of its line.
std::string_view withinPiece(const char* lineBegin, std::string_view value, const TextFile& file)
{
    const char* const end = value.data() + value.size();
    if (static_cast<std::size_t>(end - lineBegin) <= kLongestLine) {
        return value;
    }
    return {value.data(), pieceEnd(lineBegin, end, kLongestLine, file)};
}

std::size_t mostLines(const TextFile& file)
{
    const std::string_view text = file.bytes();
    const auto feeds = std::count(text.begin(), text.end(), '\n');
    return static_cast<std::size_t>(feeds) + text.size() / kLongestLine + 1;
}

class CountingSink
{
public:
    bool header(std::string_view /*text*/, Line /*line*/)
    {
        ++count;
        return true;
    }

    [[nodiscard]] bool wantsEntries() const { return false; }

    bool entry(Line /*line*/) { return true; }

    std::size_t count = 0;
};

std::size_t countHeaders(const TextFile& file)
{
    CountingSink sink;
    scan(file, kLongestLine, sink);
    return sink.count;
}

} // namespace

std::optional<FoundEntry> findByScan(const TextFile& file, const IdentKey& key)
{
    OneIdent sink(file, key);
    scan(file, kLongestLine, sink);
    return sink.found();
}

// Enters what the scan sees. A chapter whose header came before is never looked at by a lookup, so
// its entries are left out.
class IndexBuilder
{
public:
    IndexBuilder(const TextFile& file, IdentIndex& index)
        : m_file(file)
        , m_index(index)
    {
        m_index.m_chapters.push_back({});
    }

    // What stands in a chapter that no lookup reaches need not be seen.
    [[nodiscard]] bool wantsEntries() const { return m_isOpen; }

    bool header(std::string_view text, Line line)
    {
        endChapter(line.begin);
        const std::string_view prefix = prefixOf(text);
        const auto number = static_cast<std::uint32_t>(m_index.m_chapters.size());
        const auto isThere = [&](std::uint32_t other) { return isSamePrefix(other, prefix); };
        const std::uint32_t tag = tagOf(hashOf(prefix, kChapterSeed, m_file));
        m_isOpen = !m_index.m_chapterTable.find(tag, isThere);
        if (m_isOpen) {
            m_index.m_chapterTable.insert(tag, number, isThere);
            m_index.m_chapters.push_back({offset(line.begin), 0});
            m_seed = entrySeed(number);
        }
        return true;
    }

    bool entry(Line line)
    {
        const auto parts = m_isOpen ? entryOf(line) : std::nullopt;
        if (parts) {
            const std::uint32_t tag = tagOf(hashOf(parts->name, m_seed, m_file));
            m_index.m_entryTable.insert(tag, offset(line.begin),
                                        [&](std::uint32_t at) { return isSame(at, parts->name); });
        }
        return true;
    }

    void finish() { endChapter(m_file.bytes().data() + m_file.bytes().size()); }

private:
    std::uint32_t offset(const char* at) const
    {
        return static_cast<std::uint32_t>(at - m_file.bytes().data());
    }

    void endChapter(const char* end)
    {
        if (m_isOpen) {
            m_index.m_chapters.back().end = offset(end);
        }
    }

    [[nodiscard]] Line lineAt(std::uint32_t at) const
    {
        return lineFrom(m_file.bytes().data() + at, m_file);
    }

    [[nodiscard]] bool isSamePrefix(std::uint32_t chapter, std::string_view prefix) const
    {
        const Line line = lineAt(m_index.m_chapters[chapter].header);
        return isSameText(prefixOf(visible(line)), prefix);
    }

    // Among the entries of the chapter that is being read.
    [[nodiscard]] bool isSame(std::uint32_t at, std::string_view name) const
    {
        if (at < m_index.m_chapters.back().header) {
            return false;
        }
        const auto entry = entryOf(lineAt(at));
        return entry && isSameText(entry->name, name);
    }

    [[nodiscard]] bool isSameText(std::string_view a, std::string_view b) const
    {
        return a == b || foldedForm(a, m_file) == foldedForm(b, m_file);
    }

    const TextFile& m_file;
    IdentIndex& m_index;
    bool m_isOpen = true;
    std::uint64_t m_seed = entrySeed(0);
};

IdentIndex::Table::Table(std::size_t mostEntries)
    : m_slots(mostEntries + mostEntries / 2 + 1)
{
}

std::size_t IdentIndex::Table::slotFor(std::uint32_t tag) const
{
    return static_cast<std::size_t>((std::uint64_t {tag} * m_slots.size()) >> 32U);
}

template<class IsWanted>
std::optional<std::uint32_t> IdentIndex::Table::find(std::uint32_t tag, IsWanted isWanted) const
{
    for (std::size_t i = slotFor(tag); m_slots[i].valuePlus1 != 0;
         i = i + 1 == m_slots.size() ? 0 : i + 1) {
        const Slot slot = m_slots[i];
        if (slot.tag == tag && isWanted(slot.valuePlus1 - 1)) {
            return slot.valuePlus1 - 1;
        }
    }
    return std::nullopt;
}

template<class IsWanted>
void IdentIndex::Table::insert(std::uint32_t tag, std::uint32_t value, IsWanted isWanted)
{
    std::size_t i = slotFor(tag);
    while (m_slots[i].valuePlus1 != 0) {
        if (m_slots[i].tag == tag && isWanted(m_slots[i].valuePlus1 - 1)) {
            return;
        }
        i = i + 1 == m_slots.size() ? 0 : i + 1;
    }
    m_slots[i] = {tag, value + 1};
}

bool IdentIndex::isPossibleFor(const TextFile& file)
{
    return file.bytes().size() < std::numeric_limits<std::uint32_t>::max();
}

IdentIndex::IdentIndex(const TextFile& file)
    : m_chapterTable(countHeaders(file))
    , m_entryTable(mostLines(file))
{
    IndexBuilder builder(file, *this);
    scan(file, kLongestLine, builder);
    builder.finish();
}

std::optional<std::uint32_t> IdentIndex::findChapter(const TextFile& file,
                                                     const FoldedText& prefix) const
{
    if (prefix.bytes().empty()) {
        return 0;
    }
    const std::uint32_t tag = tagOf(hashFolded(prefix.bytes(), kChapterSeed));
    return m_chapterTable.find(tag, [&](std::uint32_t number) {
        const char* const header = file.bytes().data() + m_chapters[number].header;
        return equalsFolded(prefixOf(visible(lineFrom(header, file))), prefix, file);
    });
}

std::optional<FoundEntry> IdentIndex::find(const TextFile& file, const IdentKey& key) const
{
    const auto number = findChapter(file, key.prefix);
    if (!number) {
        return std::nullopt;
    }
    const char* const text = file.bytes().data();
    const Chapter range = m_chapters[*number];
    std::optional<std::string_view> value;
    const std::uint32_t tag = tagOf(hashFolded(key.name.bytes(), entrySeed(*number)));
    const auto at = m_entryTable.find(tag, [&](std::uint32_t entry) {
        if (entry < range.header || entry >= range.end) {
            return false;
        }
        value = valueIn(lineFrom(text + entry, file), key.name, file);
        return value.has_value();
    });
    if (!at) {
        return std::nullopt;
    }
    return FoundEntry {withinPiece(text + *at, *value, file), *at};
}

} // namespace corma
