#include "foundation/decoded_text.h"
#include "fuzz_support.h"
#include "settings/line_edits.h"
#include "settings/reference_edits.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace corma;
using fuzzing::require;

constexpr char kSeparator = 0x1E;

// What the input is parted into: chapter, ident, value and the file.
struct Input
{
    explicit Input(std::string_view data)
    {
        for (std::string_view* const part : {&chapter, &ident, &value}) {
            const std::size_t end = std::min(data.find(kSeparator), data.size());
            *part = data.substr(0, end);
            data.remove_prefix(std::min(end + 1, data.size()));
        }
        file = data;
    }

    std::string_view chapter;
    std::string_view ident;
    std::string_view value;
    std::string_view file;
};

// The name of a chapter or a setting that comes from a file has no line end.
bool canBeName(std::string_view text)
{
    return text.find('\n') == std::string_view::npos;
}

std::string applied(const TextEdit& edit, std::string_view text)
{
    std::string result;
    for (const std::string_view piece : edit.appliedTo(text)) {
        result += piece;
    }
    return result;
}

// Only what is between begin and end goes, and only what is inserted comes, but for a line end
// behind a last line that had none.
void checkUntouched(const TextEdit& edit, std::string_view text, const std::string& result)
{
    require(edit.begin <= edit.end && edit.end <= text.size());
    require(edit.lastLineEnd.empty() || !text.ends_with('\n'));
    const std::string_view head = text.substr(0, edit.begin);
    const std::string tail = std::string(text.substr(edit.end)).append(edit.lastLineEnd);
    require(result.starts_with(head) && result.ends_with(tail));
    require(result.size() == head.size() + edit.inserted.size() + tail.size());
}

// What is written can be read again as the same text.
void checkDecodes(const DecodedText& file, const std::string& result)
{
    const std::array<std::string_view, 1> pieces {result};
    const auto encoded = file.encoded(pieces);
    if (!encoded.defect.empty()) {
        return;
    }
    const std::string bytes
        = encoded.isAsGiven ? std::string(file.mark()).append(result) : encoded.bytes;
    if (file.mark().empty() && markOf(bytes) != Mark::none) {
        return; // a name may begin like a mark
    }
    const DecodedText again(bytes);
    require(again.defect().empty());
    require(again.mark() == file.mark());
    require(again.text() == result);
}

void checkWrite(const DecodedText& file, const SettingLine& setting, Adding adding)
{
    const std::string_view text = file.text();
    const std::string_view lineEnd = lineEndOf(text);
    const TextEdit edit = editToWrite(text, lineEnd, setting, adding);
    const std::string result = applied(edit, text);
    checkUntouched(edit, text, result);
    checkDecodes(file, result);
    require(result == testing::plainlyWritten(text, lineEnd, setting, adding));
    // A line feed in a value makes further lines, which the next write leaves; a carriage return
    // behind it becomes part of the line's end.
    const bool isLine
        = setting.value.find('\n') == std::string_view::npos && !setting.value.ends_with('\r');
    if (edit.begin < edit.end && isLine) {
        const TextEdit again = editToWrite(result, lineEnd, setting, adding);
        require(applied(again, result) == result);
    }
}

void checkRemoval(std::string_view text, const std::optional<TextEdit>& edit,
                  const std::optional<std::string>& expected)
{
    require(edit.has_value() == expected.has_value());
    if (edit) {
        const std::string result = applied(*edit, text);
        checkUntouched(*edit, text, result);
        require(result == *expected);
    }
}

} // namespace

/// The input is a chapter, an ident, a value and the bytes of a file, with a byte 1E between.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Input input({reinterpret_cast<const char*>(data), size});
    const DecodedText file(input.file);
    if (!file.defect().empty() || !canBeName(input.chapter) || !canBeName(input.ident)) {
        return 0;
    }
    const DecodedText chapter(input.chapter);
    const DecodedText ident(input.ident);
    const DecodedText value(input.value);
    if (!chapter.defect().empty() || !ident.defect().empty() || !value.defect().empty()
        || !canBeName(chapter.text()) || !canBeName(ident.text())) {
        return 0;
    }
    const SettingLine setting {chapter.text(), ident.text(), value.text()};
    for (const Adding adding : {Adding::no, Adding::yes}) {
        checkWrite(file, setting, adding);
    }
    const std::string_view text = file.text();
    const std::string_view lineEnd = lineEndOf(text);
    checkRemoval(text, editToRemove(text, lineEnd, setting.category, setting.ident),
                 testing::plainlyRemoved(text, lineEnd, setting.category, setting.ident));
    checkRemoval(text, editToRemoveHeader(text, lineEnd, setting.category),
                 testing::plainlyWithoutHeader(text, lineEnd, setting.category));
    return 0;
}
