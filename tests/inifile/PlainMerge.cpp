#include "inifile/PlainMerge.h"

#include <map>
#include <vector>

namespace corma::testing {

namespace {

bool isHeader(const std::string& line)
{
    return line.size() > 1 && line[0] == '[' && line[line.size() - 1] == ']';
}

// The lines of a text without their ends; of a last one without an end, too.
std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::string line;
    for (const char c : text) {
        if (c != '\n') {
            line += c;
            continue;
        }
        lines.push_back(line);
        line.clear();
    }
    if (!line.empty()) {
        lines.push_back(line);
    }
    for (std::string& one : lines) {
        one.erase(one.find_last_not_of('\r') + 1);
    }
    return lines;
}

// The same as a reader gets them who takes so many characters at once.
std::vector<std::string> linesRead(const std::string& text, std::size_t characters)
{
    std::vector<std::string> pieces;
    for (const std::string& line : linesOf(text)) {
        std::string piece;
        std::size_t count = 0;
        for (const char c : line) {
            const bool beginsCharacter = (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
            if (beginsCharacter && count == characters) {
                pieces.push_back(piece);
                piece.clear();
                count = 0;
            }
            count += beginsCharacter ? 1 : 0;
            piece += c;
        }
        pieces.push_back(piece);
    }
    return pieces;
}

std::string cut(const std::string& line)
{
    std::string visible;
    for (const char c : line) {
        if (static_cast<unsigned char>(c) < 32) {
            break;
        }
        visible += c;
    }
    return visible;
}

} // namespace

// --- defaults ------------------------------------------------------------------------------------

PlainUpdate::PlainUpdate(const std::string& own, const std::string& defaults)
    : m_insertionPoint(m_lines.before_begin())
{
    for (const std::string& line : linesRead(own, 3000)) {
        m_lines.insert_after(lastLine(), cut(line));
    }
    for (const std::string& line : linesRead(defaults, 2999)) {
        if (!line.empty() && (line[0] == ' ' || line[0] == '\0')) {
            continue;
        }
        take(cut(line));
        m_isAtFirstLine = false;
    }
}

PlainUpdate::Place PlainUpdate::lastLine()
{
    auto last = m_lines.before_begin();
    for (auto line = m_lines.begin(); line != m_lines.end(); ++line) {
        last = line;
    }
    return last;
}

void PlainUpdate::take(const std::string& line)
{
    if (isHeader(line)) {
        m_chapter = line;
        m_insertionPoint = m_lines.before_begin();
    } else if (line.find('=') != std::string::npos) {
        takeEntry(line);
    }
}

void PlainUpdate::takeEntry(const std::string& line)
{
    if (m_chapter.empty()) {
        takeEntryOfChapter(line, m_lines.before_begin());
        return;
    }
    for (auto own = m_lines.begin(); own != m_lines.end(); ++own) {
        if (*own == m_chapter) {
            takeEntryOfChapter(line, own);
            return;
        }
    }
    const auto header = m_lines.insert_after(lastLine(), m_chapter);
    m_insertionPoint = m_lines.insert_after(header, line);
    m_added += 2;
}

// The chapter's lines begin behind that place.
void PlainUpdate::takeEntryOfChapter(const std::string& line, Place before)
{
    const std::size_t n = line.find('=');
    auto last = before;
    for (auto own = std::next(before); own != m_lines.end() && !isHeader(*own); ++own) {
        if (own->size() > n && own->substr(0, n) == line.substr(0, n) && (*own)[n] == '=') {
            m_insertionPoint = own;
            return;
        }
        last = own;
    }
    if (m_insertionPoint != m_lines.before_begin()) {
        last = m_insertionPoint;
    } else if (m_isAtFirstLine) {
        last = m_lines.before_begin();
    }
    m_insertionPoint = m_lines.insert_after(last, line);
    ++m_added;
}

std::string PlainUpdate::text() const
{
    std::string all;
    const std::string* before = nullptr;
    for (const std::string& line : m_lines) {
        if (isHeader(line) && before != nullptr && !before->empty()) {
            all += "\n";
        }
        all += line + "\n";
        before = &line;
    }
    return all;
}

// --- new values ----------------------------------------------------------------------------------

namespace {

constexpr const char* kNoChapter = "[0000000000]";

struct KeyedFile
{
    std::map<std::string, std::string> values;
    std::vector<std::string> keys;
};

KeyedFile keyed(const std::string& text)
{
    KeyedFile file;
    std::string chapter = kNoChapter;
    for (const std::string& line : linesOf(text)) {
        const std::size_t equals = line.find('=');
        if (isHeader(line)) {
            chapter = line;
            file.values.emplace(line, "");
            file.keys.push_back(line);
        } else if (equals == std::string::npos || line[0] == ' ' || line[0] == '\t') {
            file.keys.push_back(line); // no entry, or one that is switched off
        } else {
            const std::string key = chapter + line.substr(0, equals);
            file.values.emplace(key, line.substr(equals + 1));
            file.keys.push_back(key);
        }
    }
    return file;
}

} // namespace

std::string plainLines(const std::string& text)
{
    std::string all;
    for (const std::string& line : linesOf(text)) {
        all += line + "\n";
    }
    return all;
}

std::string plainReplacement(const std::string& own, const std::string& newer)
{
    KeyedFile file = keyed(own);
    for (const auto& [key, value] : keyed(newer).values) {
        const auto known = file.values.find(key);
        if (known != file.values.end()) {
            known->second = value;
        }
    }
    std::string text;
    std::string current = kNoChapter;
    for (const std::string& key : file.keys) {
        const auto entry = file.values.find(key);
        if (entry == file.values.end()) {
            text += key + "\n";
            continue;
        }
        const std::size_t behindChapter = key.find(']') + 1;
        const std::string chapter = key.substr(0, behindChapter);
        if (chapter != current) {
            text += chapter + "\n";
            current = chapter;
        }
        if (key.size() > behindChapter) {
            text += key.substr(behindChapter) + "=" + entry->second + "\n";
        }
    }
    return text;
}

} // namespace corma::testing
