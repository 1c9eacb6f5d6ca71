#pragma once

// Small helpers over wide text that allow null: a null text counts as empty, except that it is
// below every text when two are compared and that its duplicate is null.

#include <cstddef>
#include <string_view>

namespace corma {

/// Characters before the terminator; 0 for null.
std::size_t length(const wchar_t* text);

/// Below, at or above zero as a sorts before, with or after b. Two nulls are equal, and a null is
/// below any text.
int compare(const wchar_t* a, const wchar_t* b);
int compareIgnoringCase(const wchar_t* a, const wchar_t* b);

/// Copies a text with its terminator; the target must be large enough. Null gives an empty text.
void copy(wchar_t* target, const wchar_t* text);

/// Copies at most capacity - 1 characters and always a terminator; nothing at capacity 0.
void copyBounded(wchar_t* target, std::size_t capacity, std::wstring_view text);

/// A heap copy that the caller frees with free(); null gives null.
wchar_t* duplicate(const wchar_t* text);

/// The first place of a character; null when it is absent.
const wchar_t* find(const wchar_t* text, wchar_t c);

/// The text without the blanks at both ends.
std::wstring_view trimmed(std::wstring_view text);

/// The view of a text that may be null.
std::wstring_view view(const wchar_t* text);

} // namespace corma
