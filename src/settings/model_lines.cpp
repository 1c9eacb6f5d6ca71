#include "settings/model_lines.h"

#include "foundation/messages.h"
#include "inifile/words.h"
#include "settings/PackedText.h"
#include "settings/messages.h"
#include "settings/texts.h"

namespace corma {

namespace {

constexpr const wchar_t* kSkippedFormat = L"%s: \"%c\" (%s:%d) (%s)";
constexpr const wchar_t* kCutFormat = L"Line was too long and is cut (%s:%d)";
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kMostBytesOfCharacter = 4;

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

} // namespace

std::string_view cutAt(std::string_view text, std::size_t mostCharacters)
{
    if (text.size() <= mostCharacters) {
        return text;
    }
    std::size_t characters = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!isContinuation(text[at]) && characters++ == mostCharacters) {
            return text.substr(0, at);
        }
    }
    return text;
}

bool ModelLines::nextPiece(std::string_view& piece, std::size_t mostCharacters)
{
    // What lies behind this is no part of the piece: a very long line is not searched through for
    // each of its pieces.
    const std::string_view window
        = m_rest.substr(0, mostCharacters * kMostBytesOfCharacter + kLineEnd.size());
    if (window.size() < m_rest.size() && window.find('\n') == std::string_view::npos) {
        ++m_number;
        piece = cutAt(window, mostCharacters);
        m_rest.remove_prefix(piece.size());
        return true;
    }
    const std::string_view before = m_rest;
    if (!next(piece)) {
        return false;
    }
    const bool hasEnd = before.size() - m_rest.size() > piece.size();
    if (cutAt(piece, mostCharacters - (hasEnd ? 1 : 0)).size() < piece.size()) {
        piece = cutAt(piece, mostCharacters);
        m_rest = before.substr(piece.size());
    }
    return true;
}

std::string normaliseLine(std::string_view line, bool* wasCut)
{
    const bool keepsBlanks = line.starts_with(' ') || line.starts_with('\t');
    const std::size_t equals = line.find('=');
    std::size_t withoutBlanks = equals == std::string_view::npos ? line.size() : equals + 2;
    if (keepsBlanks) {
        withoutBlanks = 0;
    }
    std::string normal;
    normal.reserve(line.size());
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] != '\n' && !(line[at] == ' ' && at < withoutBlanks)) {
            normal.push_back(line[at]);
        }
    }
    const std::size_t kept = cutAt(normal, kLongestNormalisedLine).size();
    if (wasCut != nullptr) {
        *wasCut = kept < normal.size();
    }
    normal.resize(kept);
    return normal;
}

std::optional<ModelEntry> splitEntry(std::string_view line)
{
    const std::size_t equals = findNear(line, '=');
    if (equals == std::string_view::npos) {
        return std::nullopt;
    }
    return ModelEntry {line.substr(0, equals), line.substr(equals + 1)};
}

std::wstring skippedLineMessage(wchar_t missing, const wchar_t* kind, int number,
                                std::string_view line)
{
    if (line.starts_with('[')) {
        line.remove_prefix(1);
    }
    return formatted(kSkippedFormat, text(row::kLineSkipped).c_str(), missing, kind, number,
                     fromPacked(line).c_str());
}

void Defects::addSkipped(wchar_t missing, std::string_view line, int number)
{
    if (m_skipped.empty()) {
        m_skipped = skippedLineMessage(missing, m_kind, number, line);
    }
}

void Defects::addCut(int number)
{
    if (m_cut.empty()) {
        m_cut = formatted(kCutFormat, m_kind, number);
    }
}

void Defects::tell() const
{
    if (!m_cut.empty()) {
        xx_printMessage(L"%s", m_cut.c_str(), 0);
    }
    if (!m_skipped.empty()) {
        showMessage(m_skipped, MessageIcon::exclamation);
    }
}

std::optional<std::string_view> chapterOf(std::string_view header, int number, Defects& defects)
{
    const std::size_t end = header.find(']');
    if (end == std::string_view::npos) {
        defects.addSkipped(L']', header, number);
        return std::nullopt;
    }
    const std::string_view name = header.substr(1, end - 1);
    const std::string_view kept = cutAt(name, kLongestChapter);
    if (kept.size() < name.size()) {
        defects.addCut(number);
    }
    return kept;
}

} // namespace corma
