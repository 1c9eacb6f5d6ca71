#include "platform/platform.h"
#include "platform/text.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

namespace corma::platform {

namespace {

// Bytes that are no UTF-8 are kept as the lone surrogates U+DC80 to U+DCFF, which no text holds.
constexpr char32_t kByteEscape = 0xDC00;

bool isEscapedByte(char32_t c)
{
    return c >= kByteEscape + 0x80 && c <= kByteEscape + 0xFF;
}

bool nameExists(const NativePath& path)
{
    std::error_code failed;
    return std::filesystem::exists(std::filesystem::symlink_status(path, failed));
}

// The entry of the folder whose name differs from `name` only in case; the first in sorted order,
// so that the answer does not depend on how the folder is laid out.
std::optional<std::string> findInFolder(const NativePath& folder, std::string_view name)
{
    const std::wstring wanted = fromNative(name);
    std::optional<std::string> best;
    std::error_code failed;
    std::filesystem::directory_iterator entries(folder.empty() ? "." : folder, failed);
    for (; !failed && entries != std::filesystem::directory_iterator(); entries.increment(failed)) {
        const std::string entry = entries->path().filename().native();
        if ((!best || entry < *best) && equalIgnoringCase(fromNative(entry), wanted)) {
            best = entry;
        }
    }
    return best;
}

// The steps of a path text without empty ones, "." and "..".
std::vector<std::wstring_view> normalSteps(std::wstring_view path)
{
    std::vector<std::wstring_view> steps;
    while (!path.empty()) {
        const std::size_t end = std::min(path.find(kSeparator), path.size());
        const std::wstring_view step = path.substr(0, end);
        path.remove_prefix(std::min(end + 1, path.size()));
        if (step == L"..") {
            if (!steps.empty()) {
                steps.pop_back();
            }
        } else if (!step.empty() && step != L".") {
            steps.push_back(step);
        }
    }
    return steps;
}

} // namespace

std::wstring nativeSeparators(std::wstring_view path)
{
    std::wstring native(path);
    std::replace(native.begin(), native.end(), L'\\', kSeparator);
    return native;
}

bool isAbsolute(std::wstring_view path)
{
    return !path.empty() && isSeparator(path.front());
}

PathParts splitPath(std::wstring_view path)
{
    PathParts parts;
    const std::wstring native = nativeSeparators(path);
    const std::size_t name = native.rfind(kSeparator) + 1; // npos wraps to 0
    const std::size_t dot = std::min(native.rfind(L'.'), native.size());
    parts.folder = native.substr(0, name);
    parts.base = native.substr(name, dot >= name ? dot - name : std::wstring::npos);
    parts.extension = dot >= name ? native.substr(dot) : L"";
    return parts;
}

std::wstring joinPath(std::wstring_view folder, std::wstring_view name)
{
    std::wstring joined = isAbsolute(name) ? std::wstring() : nativeSeparators(folder);
    if (!joined.empty() && joined.back() != kSeparator) {
        joined.push_back(kSeparator);
    }
    return joined + nativeSeparators(name);
}

std::wstring fullPath(std::wstring_view path)
{
    const std::wstring absolute = joinPath(currentFolder(), path);
    std::wstring full;
    for (const std::wstring_view step : normalSteps(absolute)) {
        full.push_back(kSeparator);
        full.append(step);
    }
    const bool isFolder = !absolute.empty() && absolute.back() == kSeparator;
    return isFolder || full.empty() ? full + kSeparator : full;
}

NativePath toNative(std::wstring_view path)
{
    NativePath native;
    native.reserve(path.size());
    for (const wchar_t wide : path) {
        const auto c = static_cast<char32_t>(wide);
        if (isEscapedByte(c)) {
            native.push_back(static_cast<char>(c - kByteEscape));
        } else {
            appendUtf8(native, c);
        }
    }
    return native;
}

std::wstring fromNative(std::string_view text)
{
    std::wstring wide;
    wide.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t begin = at;
        const char32_t c = nextUtf8(text, at);
        const bool isBroken = c == 0xFFFD && at == begin + 1;
        const auto byte = static_cast<unsigned char>(text[begin]);
        wide.push_back(static_cast<wchar_t>(isBroken ? kByteEscape + byte : c));
    }
    return wide;
}

NativePath locate(std::wstring_view path)
{
    NativePath exact = toNative(nativeSeparators(path));
    if (nameExists(exact)) {
        return exact;
    }
    NativePath found;
    for (std::size_t at = 0; at < exact.size();) {
        const std::size_t end = std::min(exact.find('/', at), exact.size());
        const std::string step = exact.substr(at, end - at);
        at = end + 1;
        if (!step.empty() && !nameExists(found + step)) {
            const auto onDisk = findInFolder(found, step);
            if (!onDisk) {
                return exact;
            }
            found += *onDisk;
        } else {
            found += step;
        }
        if (end < exact.size()) {
            found += '/';
        }
    }
    return found;
}

} // namespace corma::platform
