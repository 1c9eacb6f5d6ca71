#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "host/host.h"
#include "inifile/scrambling.h"
#include "inifile/xx_Inifile_private.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <optional>

namespace {

constexpr const wchar_t* kNotWritten = L"File %s could not be opened";
constexpr const wchar_t* kDone = L"File scrambled into %s";
constexpr const wchar_t* kCannotHoldScrambled
    = L"File %s not scrambled: line %d has a character that Windows-1252 does not have";

// A text with line feeds in Windows-1252; or the line of the first character that has no byte
// there.
struct SingleBytes
{
    std::string bytes;
    std::optional<int> badLine;
};

SingleBytes singleBytesOf(const corma::TextFile& file)
{
    SingleBytes result;
    const std::string_view text = file.bytes();
    const bool isUtf8 = file.encoding() == corma::Encoding::utf8;
    int line = 1;
    for (std::size_t at = 0; at < text.size();) {
        if (text.substr(at).starts_with("\r\n")) {
            ++at;
        }
        if (!isUtf8 || static_cast<unsigned char>(text[at]) < 0x80) {
            line += text[at] == '\n' ? 1 : 0;
            result.bytes.push_back(text[at++]);
            continue;
        }
        const auto byte = corma::toWindows1252(static_cast<wchar_t>(corma::nextUtf8(text, at)));
        if (!byte) {
            result.badLine = line;
            break;
        }
        result.bytes.push_back(static_cast<char>(*byte));
    }
    return result;
}

int refuse(const std::wstring& message)
{
    xx_printMessage(L"%s", message.c_str(), 0);
    return RTERROR;
}

} // namespace

// Positions are counted in the copy, so that a source with bare line feeds comes out right, too.
int xx_Inifile::scramble(wchar_t* target, int key)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        if (priv == nullptr || !priv->file) {
            return RTCAN;
        }
        const std::wstring path
            = target == nullptr ? corma::scrambledName(filename, key) : std::wstring(target);
        const SingleBytes text = singleBytesOf(priv->file->text());
        if (text.badLine) {
            return refuse(corma::formatted(kCannotHoldScrambled, filename, *text.badLine));
        }
        if (!corma::platform::replaceFile(path, corma::scrambledForm(text.bytes, key))) {
            return refuse(corma::formatted(kNotWritten, path.c_str()));
        }
        xx_printMessage(kDone, path.c_str(), 0);
        return RTNORM;
    });
}
