#include "inifile/line.h"

#include "platform/text.h"

namespace corma {

const char* pieceEnd(const char* begin, const char* end, std::size_t longest, const TextFile& file)
{
    std::string_view text(begin, end);
    if (text.ends_with('\r')) {
        text.remove_suffix(1); // a line end of two characters counts as none
    }
    if (file.encoding() == Encoding::windows1252) {
        return text.size() <= longest ? end : begin + longest;
    }
    std::size_t at = 0;
    for (std::size_t count = 0; count < longest && at < text.size(); ++count) {
        nextUtf8(text, at);
    }
    return at == text.size() ? end : begin + at;
}

std::string foldedForm(std::string_view text, const TextFile& file)
{
    std::string folded;
    folded.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto c = static_cast<wchar_t>(nextCharacter(text, at, file.encoding()));
        appendUtf8(folded, static_cast<char32_t>(foldCase(c)));
    }
    return folded;
}

bool equalsFolded(std::string_view text, const FoldedText& key, const TextFile& file)
{
    if (key.isAscii()) {
        return text.size() == key.bytes().size() && equalsFoldedAscii(text.data(), key.bytes());
    }
    return foldedForm(text, file) == key.bytes();
}

} // namespace corma
