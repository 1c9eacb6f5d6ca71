#include "inifile/merge.h"

#include "platform/text.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace corma {

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;
constexpr std::size_t kLongestOwnLine = 3000; // characters
constexpr std::size_t kLongestDefaultLine = 2999;

bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 32;
}

std::string_view visible(std::string_view line)
{
    return line.substr(
        0,
        static_cast<std::size_t>(std::find_if(line.begin(), line.end(), isControl) - line.begin()));
}

bool isHeader(std::string_view line)
{
    return line.size() > 1 && line.front() == '[' && line.back() == ']';
}

std::optional<std::string_view> identOf(std::string_view line)
{
    const std::size_t equals = line.find('=');
    return equals == kNowhere ? std::nullopt : std::optional(line.substr(0, equals));
}

// The bytes of the first characters of a text, at most all.
std::size_t sizeOfFirst(std::size_t characters, std::string_view text)
{
    if (text.size() <= characters) {
        return text.size();
    }
    std::size_t at = 0;
    for (std::size_t i = 0; i < characters && at < text.size(); ++i) {
        nextUtf8(text, at);
    }
    return at;
}

// Calls take(line) for each line without its line feed; for one that is too long in pieces.
template<class Take> void forEachLine(std::string_view text, std::size_t longest, const Take& take)
{
    while (!text.empty()) {
        const std::size_t feed = text.find('\n');
        const std::string_view whole = text.substr(0, feed);
        std::string_view rest = whole;
        do {
            const std::size_t size = sizeOfFirst(longest, rest);
            take(rest.substr(0, size));
            rest.remove_prefix(size);
        } while (rest.find_first_not_of('\r') != kNowhere);
        text.remove_prefix(feed == kNowhere ? text.size() : feed + 1);
    }
}

} // namespace

// Of two chapters of one name only the first is found: the number of the other is no chapter's.
DefaultsMerge::DefaultsMerge(std::string_view own)
    : m_chapters(1)
{
    std::size_t chapter = 0;
    forEachLine(own, kLongestOwnLine, [&](std::string_view whole) {
        const std::string_view line = visible(whole);
        const std::size_t node = insert(line, m_last);
        if (isHeader(line)) {
            const auto [number, isNew] = m_chapterNumbers.number(line);
            chapter = isNew ? number : kNone;
            m_chapters.resize(std::max(m_chapters.size(), number + 1));
        } else if (const auto ident = chapter == kNone ? std::nullopt : identOf(line)) {
            m_entries.add(chapter, *ident, node);
        }
        if (chapter != kNone) {
            m_chapters[chapter].last = node;
        }
    });
}

// The node of the line, behind another one or, for kNone, at the front.
std::size_t DefaultsMerge::insert(std::string_view line, std::size_t behind)
{
    const std::size_t node = m_nodes.size();
    std::size_t& link = behind == kNone ? m_first : m_nodes[behind].next;
    const std::size_t next = std::exchange(link, node);
    m_nodes.push_back({line, next});
    if (behind == m_last) {
        m_last = node;
    }
    return node;
}

void DefaultsMerge::add(std::string_view defaults)
{
    forEachLine(defaults, kLongestDefaultLine, [&](std::string_view whole) {
        if (whole.starts_with(' ') || whole.starts_with('\0')) {
            return;
        }
        take(visible(whole));
        m_isAtFirstLine = false;
    });
}

void DefaultsMerge::take(std::string_view line)
{
    if (isHeader(line)) {
        m_currentHeader = line;
        m_insertionPoint = kNone;
    } else if (const auto ident = identOf(line)) {
        addEntry(line, *ident);
    }
}

void DefaultsMerge::addEntry(std::string_view line, std::string_view ident)
{
    const std::size_t chapter = chapterOfDefaults();
    const auto [known, isNew] = m_entries.add(chapter, ident, kNone);
    if (isNew) {
        const std::size_t behind = placeInChapter(chapter);
        const bool isLast = behind == m_chapters[chapter].last;
        *known = insert(line, behind);
        if (isLast) {
            m_chapters[chapter].last = *known;
        }
        ++m_added;
    }
    m_insertionPoint = *known;
}

// The chapter of the current header, which is added where it is missing.
std::size_t DefaultsMerge::chapterOfDefaults()
{
    if (m_currentHeader.empty()) {
        return 0;
    }
    const auto [number, isNew] = m_chapterNumbers.number(m_currentHeader);
    if (isNew) {
        m_chapters.push_back({insert(m_currentHeader, m_last)});
        ++m_added;
    }
    return number;
}

// The line behind which a new entry goes; kNone for the front of the file.
std::size_t DefaultsMerge::placeInChapter(std::size_t chapter) const
{
    if (m_insertionPoint != kNone) {
        return m_insertionPoint;
    }
    return m_isAtFirstLine ? kNone : m_chapters[chapter].last;
}

std::string DefaultsMerge::text(std::string_view lineEnd) const
{
    std::string all;
    std::string_view before;
    for (std::size_t node = m_first; node != kNone; node = m_nodes[node].next) {
        const std::string_view line = m_nodes[node].line;
        if (node != m_first && isHeader(line) && !before.empty()) {
            all.append(lineEnd);
        }
        all.append(line).append(lineEnd);
        before = line;
    }
    return all;
}

namespace {

// A line in its text.
struct TextLine
{
    std::string_view content;
    std::string_view whole; // with its end
};

template<class Take> void forEachWholeLine(std::string_view text, const Take& take)
{
    while (!text.empty()) {
        const std::size_t feed = text.find('\n');
        const std::size_t size = feed == kNowhere ? text.size() : feed + 1;
        TextLine line {text.substr(0, feed), text.substr(0, size)};
        // Each of them, also without a line feed: one that came along with a value would be one
        // more each time.
        while (line.content.ends_with('\r')) {
            line.content.remove_suffix(1);
        }
        text.remove_prefix(size);
        take(line);
    }
}

// The ident of a line that gives a value. A leading blank is the way to switch a line off: such a
// line neither gives nor takes one (test: ALineThatIsSwitchedOffStaysAsItIs).
std::optional<std::string_view> valuedIdentOf(std::string_view line)
{
    const bool isOff = line.starts_with(' ') || line.starts_with('\t');
    return isOff ? std::nullopt : identOf(line);
}

using Values = EntryTable<std::string_view>;

// The values of a file; of two for one ident the first.
Values valuesOf(std::string_view text, NumberedNames& chapters)
{
    Values values;
    std::size_t chapter = 0;
    forEachWholeLine(text, [&](const TextLine& line) {
        if (isHeader(line.content)) {
            chapter = chapters.number(line.content).first;
        } else if (const auto ident = valuedIdentOf(line.content)) {
            values.add(chapter, *ident, line.content.substr(ident->size() + 1));
        }
    });
    return values;
}

// The pieces of a changed text.
class PieceList
{
public:
    /// A part of the former text. Parts that touch become one piece.
    void keep(std::string_view part)
    {
        if (m_isKeeping && m_pieces.back().data() + m_pieces.back().size() == part.data()) {
            m_pieces.back() = {m_pieces.back().data(), m_pieces.back().size() + part.size()};
        } else {
            m_pieces.push_back(part);
        }
        m_isKeeping = true;
    }

    void add(std::string_view other)
    {
        m_pieces.push_back(other);
        m_isKeeping = false;
    }

    std::vector<std::string_view> take() { return std::move(m_pieces); }

private:
    std::vector<std::string_view> m_pieces;
    bool m_isKeeping = false;
};

} // namespace

std::vector<std::string_view> withNewValues(std::string_view own, std::string_view newer)
{
    NumberedNames chapters;
    const Values newValues = valuesOf(newer, chapters);
    Values values; // as each ident of the file gets it
    PieceList pieces;
    std::size_t chapter = 0;
    forEachWholeLine(own, [&](const TextLine& line) {
        if (isHeader(line.content)) {
            const std::size_t number = chapters.number(line.content).first;
            if (std::exchange(chapter, number) != number) {
                pieces.keep(line.whole);
            }
            return;
        }
        const auto ident = valuedIdentOf(line.content);
        if (!ident) {
            pieces.keep(line.whole);
            return;
        }
        const std::string_view ownValue = line.content.substr(ident->size() + 1);
        const std::string_view* const newValue = newValues.find(chapter, *ident);
        const std::string_view value
            = *values.add(chapter, *ident, newValue == nullptr ? ownValue : *newValue).first;
        if (value == ownValue) {
            pieces.keep(line.whole);
        } else {
            pieces.keep(line.whole.substr(0, ident->size() + 1));
            pieces.add(value);
            pieces.keep(line.whole.substr(line.content.size()));
        }
    });
    return pieces.take();
}

} // namespace corma
