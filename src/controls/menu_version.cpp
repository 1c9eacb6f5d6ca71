#include "controls/menu_version.h"

#include "foundation/text_file.h"
#include "platform/text.h"

namespace corma {

namespace {

constexpr std::string_view kMarker = "_MENUVERSION";
constexpr int kSkipped = 2; // characters behind the marker

} // namespace

std::wstring menuVersionIn(std::string_view text)
{
    const std::size_t marker = text.find(kMarker);
    if (marker == std::string_view::npos) {
        return {};
    }
    std::string_view rest = text.substr(marker + kMarker.size());
    if (const std::size_t end = rest.find('\n'); end != std::string_view::npos) {
        rest = rest.substr(0, end);
        if (rest.ends_with('\r')) {
            rest.remove_suffix(1);
        }
    }
    for (int i = 0; i < kSkipped && !rest.empty(); ++i) {
        std::size_t next = 0;
        nextUtf8(rest, next);
        rest.remove_prefix(next);
    }
    return fromUtf8(rest.substr(0, rest.find('"')));
}

std::wstring menuVersionOf(std::wstring_view path)
{
    const auto file = xx_openUnicode(path, OpenMode::text);
    std::string converted;
    return file ? menuVersionIn(file->utf8(converted)) : std::wstring();
}

} // namespace corma
