#include "host/host.h"
#include "platform/text.h"

#include <cwchar>
#include <unicode/uchar.h>

// A pattern is walked where it stands; nothing is compiled or allocated, for one pattern is held
// against every line of a file. Within an alternative only the last `*` is ever taken back, which
// keeps the work below text length times pattern length.

namespace {

constexpr wchar_t kEscape = L'`';
constexpr const wchar_t* kSpecial = L"#@.?*[,~`";

enum class LetterCase
{
    heeded,
    ignored
};

/// One element of a pattern, that fits one character or, for `*`, any run of them.
struct Element
{
    enum class Kind
    {
        literal,
        digit,
        letter,
        other,
        any,
        run,
        set
    };

    Kind kind = Kind::literal;
    const wchar_t* first = nullptr; // the literal's character, or the set's first member
    const wchar_t* last = nullptr; // behind it: the set's closing bracket
    const wchar_t* next = nullptr; // the element that follows
};

bool isDigit(wchar_t c)
{
    return L'0' <= c && c <= L'9';
}

bool isLetter(wchar_t c)
{
    return u_isalpha(static_cast<UChar32>(c)) != 0;
}

bool isLetterOrDigit(wchar_t c)
{
    return u_isalnum(static_cast<UChar32>(c)) != 0;
}

/// The character that stands at a place, an escape before it skipped. Without anything to escape
/// a backquote stands for itself.
const wchar_t* skipEscape(const wchar_t* at)
{
    return *at == kEscape && at[1] != L'\0' ? at + 1 : at;
}

/// The last closing bracket that is not escaped, or null. An opening bracket before it begins a
/// set, one behind it stands for itself; so no bracket is ever looked for twice.
const wchar_t* findLastClosing(const wchar_t* pattern)
{
    const wchar_t* found = nullptr;
    for (const wchar_t* at = pattern; *at != L'\0'; ++at) {
        if (*at == L']') {
            found = at;
        }
        at = skipEscape(at);
    }
    return found;
}

Element::Kind kindOf(wchar_t c)
{
    switch (c) {
    case L'#':
        return Element::Kind::digit;
    case L'@':
        return Element::Kind::letter;
    case L'.':
        return Element::Kind::other;
    case L'?':
        return Element::Kind::any;
    case L'*':
        return Element::Kind::run;
    default:
        return Element::Kind::literal;
    }
}

class WildCard
{
public:
    WildCard(const wchar_t* pattern, LetterCase letterCase)
        : m_pattern(pattern)
        , m_lastClosing(findLastClosing(pattern))
        , m_letterCase(letterCase)
    {
    }

    [[nodiscard]] bool fits(const wchar_t* text) const
    {
        const wchar_t* at = m_pattern;
        for (;;) {
            const bool negated = *at == L'~';
            const wchar_t* const first = negated ? at + 1 : at;
            const wchar_t* const last = alternativeEnd(first);
            if (alternativeFits(text, first, last) != negated) {
                return true;
            }
            if (*last == L'\0') {
                return false;
            }
            at = last + 1;
        }
    }

private:
    [[nodiscard]] Element elementAt(const wchar_t* at) const
    {
        if (*at == L'[' && m_lastClosing != nullptr && at < m_lastClosing) {
            const wchar_t* last = at + 1;
            while (*last != L']') {
                last = skipEscape(last) + 1;
            }
            return {Element::Kind::set, at + 1, last, last + 1};
        }
        const wchar_t* const first = skipEscape(at);
        const auto kind = first == at ? kindOf(*at) : Element::Kind::literal;
        return {kind, first, first + 1, first + 1};
    }

    [[nodiscard]] const wchar_t* alternativeEnd(const wchar_t* at) const
    {
        while (*at != L'\0' && *at != L',') {
            at = elementAt(at).next;
        }
        return at;
    }

    [[nodiscard]] bool alternativeFits(const wchar_t* text, const wchar_t* first,
                                       const wchar_t* last) const
    {
        const wchar_t* at = first;
        const wchar_t* afterRun = nullptr; // what follows the last `*`
        const wchar_t* runEnd = nullptr; // up to where that `*` takes the text
        while (*text != L'\0') {
            if (at != last) {
                const Element element = elementAt(at);
                if (element.kind == Element::Kind::run) {
                    if (element.next == last) {
                        return true;
                    }
                    at = afterRun = element.next;
                    runEnd = text;
                    continue;
                }
                if (elementFits(element, *text)) {
                    at = element.next;
                    ++text;
                    continue;
                }
            }
            if (afterRun == nullptr) {
                return false;
            }
            at = afterRun;
            text = ++runEnd;
        }
        while (at != last && *at == L'*') {
            ++at;
        }
        return at == last;
    }

    [[nodiscard]] bool elementFits(const Element& element, wchar_t c) const
    {
        switch (element.kind) {
        case Element::Kind::literal:
            return sameCharacter(*element.first, c);
        case Element::Kind::digit:
            return isDigit(c);
        case Element::Kind::letter:
            return isLetter(c);
        case Element::Kind::other:
            return !isLetterOrDigit(c);
        case Element::Kind::set:
            return setFits(element.first, element.last, c);
        case Element::Kind::any:
        case Element::Kind::run:
            break;
        }
        return true;
    }

    [[nodiscard]] bool setFits(const wchar_t* first, const wchar_t* last, wchar_t c) const
    {
        const bool negated = *first == L'~';
        const wchar_t* at = negated ? first + 1 : first;
        while (at != last) {
            const wchar_t* const low = skipEscape(at);
            at = low + 1;
            bool member = false;
            if (*at == L'-' && at + 1 != last) {
                const wchar_t* const high = skipEscape(at + 1);
                at = high + 1;
                member = inRange(*low, *high, c);
            } else {
                member = sameCharacter(*low, c);
            }
            if (member) {
                return !negated;
            }
        }
        return negated;
    }

    [[nodiscard]] bool sameCharacter(wchar_t a, wchar_t b) const
    {
        return a == b
            || (m_letterCase == LetterCase::ignored && corma::foldCase(a) == corma::foldCase(b));
    }

    /// The bounds are not folded, else `[A-z]` would lose the characters between the two alphabets
    /// when case is ignored. Instead either case of the character may lie in the range.
    [[nodiscard]] bool inRange(wchar_t low, wchar_t high, wchar_t c) const
    {
        const auto within = [&](wchar_t x) { return low <= x && x <= high; };
        if (within(c) || m_letterCase == LetterCase::heeded) {
            return within(c);
        }
        const wchar_t upper = corma::upperCase(c);
        return within(corma::foldCase(c)) || (within(upper) && sameCharacter(upper, c));
    }

    const wchar_t* m_pattern;
    const wchar_t* m_lastClosing;
    LetterCase m_letterCase;
};

bool isEqual(const wchar_t* a, const wchar_t* b, LetterCase letterCase)
{
    if (letterCase == LetterCase::heeded) {
        return std::wcscmp(a, b) == 0;
    }
    while (*a != L'\0' && corma::foldCase(*a) == corma::foldCase(*b)) {
        ++a;
        ++b;
    }
    return *a == *b;
}

bool fits(const wchar_t* text, const wchar_t* pattern, LetterCase letterCase)
{
    const wchar_t* const given = text != nullptr ? text : L"";
    const wchar_t* const wanted = pattern != nullptr ? pattern : L"";
    if (std::wcspbrk(wanted, kSpecial) == nullptr) {
        return isEqual(given, wanted, letterCase);
    }
    return WildCard(wanted, letterCase).fits(given);
}

} // namespace

int acutWcMatch(const ACHAR* text, const ACHAR* pattern)
{
    return fits(text, pattern, LetterCase::heeded) ? RTNORM : RTERROR;
}

bool acutWcMatchEx(const ACHAR* text, const ACHAR* pattern, bool ignoreCase)
{
    return fits(text, pattern, ignoreCase ? LetterCase::ignored : LetterCase::heeded);
}
