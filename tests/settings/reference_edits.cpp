#include "settings/reference_edits.h"

#include <functional>
#include <vector>

namespace corma::testing {

namespace {

struct Line
{
    std::string text; // without its end
    std::string end; // empty for a last line that has none
};

using Lines = std::vector<Line>;

constexpr std::string_view kHead = "Algemeen";

Lines linesWithEnds(std::string_view text)
{
    Lines lines;
    Line line;
    for (const char c : text) {
        if (c != '\n') {
            line.text += c;
            continue;
        }
        line.end = "\n";
        if (line.text.ends_with('\r')) {
            line.text.pop_back();
            line.end = "\r\n";
        }
        lines.push_back(line);
        line = {};
    }
    if (!line.text.empty()) {
        lines.push_back(line);
    }
    return lines;
}

std::string joined(const Lines& lines)
{
    std::string text;
    for (const Line& line : lines) {
        text += line.text + line.end;
    }
    return text;
}

// Every line that is copied ends in a line end.
Line copyOf(const Line& line, std::string_view lineEnd)
{
    return {line.text, line.end.empty() ? std::string(lineEnd) : line.end};
}

std::string chapterOf(const std::string& header)
{
    const std::size_t bracket = header.find(']');
    return bracket == std::string::npos ? "" : header.substr(1, bracket - 1);
}

bool isHeader(const Line& line)
{
    return line.text.starts_with('[');
}

std::string entryOf(const SettingLine& setting, std::string_view lineEnd)
{
    std::string entry = std::string(setting.ident) + "=";
    char before = 0;
    for (const char c : setting.value) {
        if (c == '\n' && before != '\r') {
            entry += lineEnd;
        } else {
            entry += c;
        }
        before = c;
    }
    return entry;
}

struct FirstPass
{
    Lines lines;
    bool isWritten = false;
    bool isChapterFound = false;
};

FirstPass firstPass(const Lines& lines, std::string_view lineEnd, const SettingLine& setting,
                    Adding adding)
{
    FirstPass pass;
    const std::string entry = entryOf(setting, lineEnd);
    const std::string pattern = std::string(setting.ident) + "=";
    bool isIn = setting.category == kHead;
    pass.isChapterFound = isIn;
    for (const Line& line : lines) {
        if (line.text.starts_with(pattern) && isIn && !pass.isWritten) {
            pass.lines.push_back(copyOf({entry, line.end}, lineEnd));
            pass.isWritten = true;
            continue;
        }
        if (isHeader(line)) {
            if (!pass.isWritten && isIn && adding == Adding::yes) {
                pass.lines.push_back({entry, std::string(lineEnd)});
                pass.isWritten = true;
            }
            isIn = chapterOf(line.text) == setting.category;
            pass.isChapterFound = pass.isChapterFound || isIn;
        }
        pass.lines.push_back(copyOf(line, lineEnd));
    }
    if (!pass.isChapterFound && adding == Adding::yes) {
        pass.lines.push_back({"[" + std::string(setting.category) + "]", std::string(lineEnd)});
        pass.lines.push_back({entry, ""});
        pass.isWritten = true;
    }
    return pass;
}

Lines secondPass(const Lines& lines, std::string_view lineEnd, const SettingLine& setting)
{
    const Line entry {entryOf(setting, lineEnd), std::string(lineEnd)};
    Lines copied;
    std::string chapter(kHead);
    bool isWritten = false;
    for (const Line& line : lines) {
        if (isHeader(line)) {
            chapter = chapterOf(line.text);
        }
        copied.push_back(line);
        if (!isWritten && chapter == setting.category) {
            copied.push_back(entry);
            isWritten = true;
        }
    }
    if (lines.empty()) {
        copied.push_back(entry);
    }
    return copied;
}

// The text without the first line that is meant. The test is asked with the chapter in which the
// line stands; that of a header is the one before it.
std::optional<std::string>
withoutFirst(std::string_view text, std::string_view lineEnd,
             const std::function<bool(const Line& line, const std::string& chapter)>& isMeant)
{
    Lines copied;
    std::string chapter(kHead);
    bool isRemoved = false;
    for (const Line& line : linesWithEnds(text)) {
        if (!isRemoved && isMeant(line, chapter)) {
            isRemoved = true;
            continue;
        }
        if (isHeader(line)) {
            chapter = chapterOf(line.text);
        }
        copied.push_back(copyOf(line, lineEnd));
    }
    return isRemoved ? std::optional(joined(copied)) : std::nullopt;
}

} // namespace

std::string plainlyWritten(std::string_view text, std::string_view lineEnd,
                           const SettingLine& setting, Adding adding)
{
    const FirstPass first = firstPass(linesWithEnds(text), lineEnd, setting, adding);
    const bool isDone = first.isWritten || adding == Adding::no;
    return joined(isDone ? first.lines : secondPass(first.lines, lineEnd, setting));
}

std::optional<std::string> plainlyRemoved(std::string_view text, std::string_view lineEnd,
                                          std::string_view category, std::string_view name)
{
    return withoutFirst(text, lineEnd, [&](const Line& line, const std::string& chapter) {
        return line.text.starts_with(name) && chapter == category;
    });
}

std::optional<std::string> plainlyWithoutHeader(std::string_view text, std::string_view lineEnd,
                                                std::string_view category)
{
    const std::string header = "[" + std::string(category);
    return withoutFirst(text, lineEnd, [&](const Line& line, const std::string& /*chapter*/) {
        return line.text.starts_with(header);
    });
}

} // namespace corma::testing
