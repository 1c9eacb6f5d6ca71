#include "settings/line_edits.h"

#include "inifile/Ident.h"
#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace corma {

namespace {

constexpr std::size_t kNowhere = std::string_view::npos;

const std::string& headChapter()
{
    static const std::string name = toUtf8(kHeadChapter);
    return name;
}

// Goes through the lines of a text.
class Lines
{
public:
    explicit Lines(std::string_view text)
        : m_text(text)
    {
    }

    bool next()
    {
        m_begin = m_end;
        if (m_begin >= m_text.size()) {
            return false;
        }
        const std::size_t feed = m_text.find('\n', m_begin);
        m_end = feed == kNowhere ? m_text.size() : feed + 1;
        return true;
    }

    /// Goes to the next line that begins with "[", without a look at each one before it.
    bool nextBracketed()
    {
        while (next()) {
            if (m_text[m_begin] == '[') {
                return true;
            }
            m_end = std::min(nextBracketAtLineBegin(), m_text.size());
        }
        return false;
    }

    [[nodiscard]] std::size_t begin() const { return m_begin; }

    [[nodiscard]] std::size_t end() const { return m_end; } ///< behind the line's end

    /// The line with its end.
    [[nodiscard]] std::string_view line() const { return m_text.substr(m_begin, m_end - m_begin); }

private:
    [[nodiscard]] std::size_t nextBracketAtLineBegin() const
    {
        std::size_t at = m_text.find('[', m_end);
        while (at != kNowhere && m_text[at - 1] != '\n') {
            at = m_text.find('[', at + 1);
        }
        return at;
    }

    std::string_view m_text;
    std::size_t m_begin = 0;
    std::size_t m_end = 0;
};

std::string_view endOf(std::string_view line)
{
    if (line.ends_with("\r\n")) {
        return "\r\n";
    }
    return line.ends_with('\n') ? "\n" : "";
}

std::string_view withoutEnd(std::string_view line)
{
    return line.substr(0, line.size() - endOf(line).size());
}

// The chapter that a line begins; nothing for a line that is no header. Without its bracket it is a
// header of no chapter.
std::optional<std::string_view> chapterIn(std::string_view line)
{
    if (!line.starts_with('[')) {
        return std::nullopt;
    }
    const std::size_t bracket = line.find(']');
    return bracket == kNowhere ? std::string_view() : line.substr(1, bracket - 1);
}

bool isEntryOf(std::string_view line, std::string_view ident)
{
    return line.size() > ident.size() && line[ident.size()] == '=' && line.starts_with(ident);
}

// The line of a setting, with the line ends of the file where the value has a line feed.
std::string lineOf(const SettingLine& setting, std::string_view lineEnd)
{
    std::string line;
    line.append(setting.ident).append("=");
    for (std::size_t at = 0; at < setting.value.size(); ++at) {
        const char c = setting.value[at];
        const bool isAlone = c == '\n' && (at == 0 || setting.value[at - 1] != '\r');
        if (isAlone) {
            line.append(lineEnd);
        } else {
            line.push_back(c);
        }
    }
    return line;
}

TextEdit editOf(std::string_view text, std::string_view lineEnd, std::size_t begin, std::size_t end)
{
    const bool isLastLineLeft = end < text.size() || begin == end;
    const bool hasEnd = text.empty() || text.ends_with('\n');
    return {begin, end, {}, isLastLineLeft && !hasEnd ? lineEnd : std::string_view()};
}

TextEdit insertion(std::string_view text, std::string_view lineEnd, std::size_t at,
                   std::string inserted)
{
    TextEdit edit = editOf(text, lineEnd, at, at);
    edit.inserted = std::move(inserted);
    return edit;
}

// In the line that the setting has.
TextEdit replacement(std::string_view text, std::string_view lineEnd, const Lines& lines,
                     const SettingLine& setting)
{
    TextEdit edit = editOf(text, lineEnd, lines.begin(), lines.end());
    const std::string_view end = endOf(lines.line());
    edit.inserted = lineOf(setting, lineEnd).append(end.empty() ? lineEnd : end);
    return edit;
}

// Where the scan for the place of a setting has come to.
struct Place
{
    bool isChapterFound = false;
    std::optional<TextEdit> edit {};
};

Place placeBetweenHeaders(std::string_view text, std::string_view lineEnd,
                          const SettingLine& setting, Adding adding)
{
    const bool isHead = setting.category == headChapter();
    Place place {isHead};
    Lines lines(text);
    for (bool isIn = isHead; isIn ? lines.next() : lines.nextBracketed();) {
        if (isIn && isEntryOf(lines.line(), setting.ident)) {
            place.edit = replacement(text, lineEnd, lines, setting);
            break;
        }
        const auto chapter = chapterIn(lines.line());
        if (!chapter) {
            continue;
        }
        if (isIn && adding == Adding::yes) {
            std::string line = lineOf(setting, lineEnd).append(lineEnd);
            place.edit = insertion(text, lineEnd, lines.begin(), std::move(line));
            break;
        }
        isIn = *chapter == setting.category;
        place.isChapterFound = place.isChapterFound || isIn;
    }
    return place;
}

// The chapter is there and ends with the file.
TextEdit editBehindFirstLineOfChapter(std::string_view text, std::string_view lineEnd,
                                      const SettingLine& setting)
{
    std::string line = lineOf(setting, lineEnd).append(lineEnd);
    std::string_view current = headChapter();
    for (Lines lines(text); lines.next();) {
        if (const auto chapter = chapterIn(lines.line())) {
            current = *chapter;
        }
        if (current == setting.category) {
            TextEdit edit = insertion(text, lineEnd, lines.end(), std::move(line));
            if (endOf(lines.line()).empty()) {
                edit.inserted.insert(0, lineEnd);
                edit.lastLineEnd = {};
            }
            return edit;
        }
    }
    return insertion(text, lineEnd, text.size(), std::move(line));
}

TextEdit editWithNewChapter(std::string_view text, std::string_view lineEnd,
                            const SettingLine& setting)
{
    TextEdit edit = editOf(text, lineEnd, text.size(), text.size());
    edit.inserted.append(edit.lastLineEnd).append("[").append(setting.category).append("]");
    edit.inserted.append(lineEnd).append(lineOf(setting, lineEnd));
    edit.lastLineEnd = {};
    return edit;
}

} // namespace

TextEdit editOfNothing(std::string_view text, std::string_view lineEnd)
{
    return editOf(text, lineEnd, text.size(), text.size());
}

TextEdit editToWrite(std::string_view text, std::string_view lineEnd, const SettingLine& setting,
                     Adding adding)
{
    Place place = placeBetweenHeaders(text, lineEnd, setting, adding);
    if (place.edit) {
        return *std::move(place.edit);
    }
    if (adding == Adding::no) {
        return editOfNothing(text, lineEnd);
    }
    return place.isChapterFound ? editBehindFirstLineOfChapter(text, lineEnd, setting)
                                : editWithNewChapter(text, lineEnd, setting);
}

std::optional<TextEdit> editToRemove(std::string_view text, std::string_view lineEnd,
                                     std::string_view category, std::string_view name)
{
    bool isIn = category == headChapter();
    for (Lines lines(text); isIn ? lines.next() : lines.nextBracketed();) {
        // A header is still in the chapter before it, as when a line is written: an empty name
        // does not take the header of its own chapter.
        if (isIn && withoutEnd(lines.line()).starts_with(name)) {
            return editOf(text, lineEnd, lines.begin(), lines.end());
        }
        if (const auto chapter = chapterIn(lines.line())) {
            isIn = *chapter == category;
        }
    }
    return std::nullopt;
}

std::optional<TextEdit> editToRemoveHeader(std::string_view text, std::string_view lineEnd,
                                           std::string_view category)
{
    for (Lines lines(text); lines.nextBracketed();) {
        if (withoutEnd(lines.line()).substr(1).starts_with(category)) {
            return editOf(text, lineEnd, lines.begin(), lines.end());
        }
    }
    return std::nullopt;
}

} // namespace corma
