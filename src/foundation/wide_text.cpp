#include "foundation/wide_text.h"

#include "platform/text.h"

#include <algorithm>
#include <cstdlib>
#include <cwchar>

namespace corma {

namespace {

template<class Fold> int compareFolded(const wchar_t* a, const wchar_t* b, Fold fold)
{
    if (a == nullptr || b == nullptr) {
        return (a != nullptr ? 1 : 0) - (b != nullptr ? 1 : 0);
    }
    while (*a != 0 && fold(*a) == fold(*b)) {
        ++a;
        ++b;
    }
    const wchar_t x = fold(*a);
    const wchar_t y = fold(*b);
    return (x > y ? 1 : 0) - (x < y ? 1 : 0);
}

} // namespace

std::wstring_view view(const wchar_t* text)
{
    return text == nullptr ? std::wstring_view() : std::wstring_view(text);
}

std::size_t length(const wchar_t* text)
{
    return view(text).size();
}

int compare(const wchar_t* a, const wchar_t* b)
{
    return compareFolded(a, b, [](wchar_t c) { return c; });
}

int compareIgnoringCase(const wchar_t* a, const wchar_t* b)
{
    return compareFolded(a, b, [](wchar_t c) { return foldCase(c); });
}

void copy(wchar_t* target, const wchar_t* text)
{
    const auto source = view(text);
    *std::copy(source.begin(), source.end(), target) = 0;
}

void copyBounded(wchar_t* target, std::size_t capacity, std::wstring_view text)
{
    if (capacity == 0) {
        return;
    }
    const std::size_t count = std::min(text.size(), capacity - 1);
    *std::copy_n(text.data(), count, target) = 0;
}

wchar_t* duplicate(const wchar_t* text)
{
    if (text == nullptr) {
        return nullptr;
    }
    const std::size_t size = std::wcslen(text) + 1;
    auto* heap = static_cast<wchar_t*>(std::malloc(size * sizeof(wchar_t)));
    if (heap != nullptr) {
        std::copy_n(text, size, heap);
    }
    return heap;
}

const wchar_t* find(const wchar_t* text, wchar_t c)
{
    return text == nullptr ? nullptr : std::wcschr(text, c);
}

std::wstring_view trimmed(std::wstring_view text)
{
    const std::size_t first = text.find_first_not_of(L' ');
    if (first == std::wstring_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(L' ') - first + 1);
}

} // namespace corma
