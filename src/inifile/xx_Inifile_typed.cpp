#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include "inifile/numbers.h"
#include "inifile/xx_Inifile_private.h"

#include <array>
#include <new>

namespace {

constexpr int kLongestTypedValue = 500; // characters, the terminator counted

constexpr const wchar_t* kTooManyDoubles = L"Array too small";
constexpr const wchar_t* kTooManyInts = L"Array too small !";
constexpr const wchar_t* kTooFew = L"Only %d of %d numbers found for %s in configuration";

// What a getter is asked.
struct Query
{
    xx_Inifile& file;
    wchar_t* ident;
    int report;
};

// A value as the typed getters read it.
struct Value
{
    explicit Value(const Query& query)
        : status(query.file.getString(query.ident, buffer.data(), kLongestTypedValue, query.report))
    {
    }

    [[nodiscard]] std::wstring_view text() const { return buffer.data(); }

    std::array<wchar_t, kLongestTypedValue> buffer {};
    int status;
};

template<class Number, class Convert>
int getNumber(const Query& query, Number* number, Convert convert)
{
    *number = Number {};
    const Value value(query);
    if (value.status != RTNORM) {
        return value.status;
    }
    if (value.text().empty()) {
        return RTERROR;
    }
    *number = convert(value.text());
    return RTNORM;
}

// Calls use(piece) for each piece between separators until one call gives false. Unlike the lists
// of idents these keep their empty pieces, and a text with nothing in it is one of them.
template<class Use> void forEachPiece(std::wstring_view text, wchar_t separator, Use use)
{
    for (bool more = true; more;) {
        const std::size_t end = text.find(separator);
        more = use(text.substr(0, end)) && end != std::wstring_view::npos;
        text.remove_prefix(more ? end + 1 : 0);
    }
}

// How an array of one type of number is read.
template<class Number> struct ArrayKind
{
    Number (*convert)(std::wstring_view);
    const wchar_t* tooMany;
};

constexpr ArrayKind<double> kDoubles {corma::toDouble, kTooManyDoubles};
constexpr ArrayKind<int> kInts {corma::toInt, kTooManyInts};

template<class Number> struct NumberArray
{
    Number* values;
    int capacity;
    int count = 0;
};

template<class Number>
int getNumbers(const Query& query, NumberArray<Number>& array, const ArrayKind<Number>& kind)
{
    const Value value(query);
    if (value.status != RTNORM) {
        return value.status;
    }
    bool isTooSmall = false;
    forEachPiece(value.text(), L',', [&](std::wstring_view piece) {
        isTooSmall = array.count >= array.capacity;
        if (!isTooSmall) {
            array.values[array.count++] = kind.convert(piece);
        }
        return !isTooSmall;
    });
    if (isTooSmall) {
        xx_reportError(corma::kInifileSource, __LINE__, kind.tooMany, array.count);
    }
    return RTNORM;
}

// An array of a fixed size is incomplete with fewer numbers, and so it is without any.
template<class Number>
int getAllNumbers(const Query& query, NumberArray<Number> array, const ArrayKind<Number>& kind)
{
    const int status = getNumbers(query, array, kind);
    if (array.count == array.capacity) {
        return status;
    }
    const std::wstring text = corma::formatted(kTooFew, array.count, array.capacity, query.ident);
    xx_reportError(corma::kInifileSource, __LINE__, text.c_str(), array.count);
    return RTCAN;
}

resbuf* newTextNode(std::wstring_view text)
{
    resbuf* node = acutNewRb(RTSTR);
    if (node == nullptr) {
        throw std::bad_alloc();
    }
    node->resval.rstring = corma::duplicate(std::wstring(text).c_str());
    return node;
}

} // namespace

int xx_Inifile::getInt(wchar_t* ident, int* value, int report)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        return getNumber(Query {*this, ident, report}, value,
                         [](std::wstring_view text) { return corma::toInt(text); });
    });
}

int xx_Inifile::getBool(wchar_t* ident, bool* value, int report)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        return getNumber(Query {*this, ident, report}, value,
                         [](std::wstring_view text) { return corma::toInt(text) != 0; });
    });
}

int xx_Inifile::getDouble(wchar_t* ident, double* value, int report)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        return getNumber(Query {*this, ident, report}, value, corma::toDouble);
    });
}

int xx_Inifile::getDoubleArray(wchar_t* ident, double* values, int* count, int report)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        NumberArray<double> array {values, *count};
        const int status = getNumbers({*this, ident, report}, array, kDoubles);
        *count = array.count;
        return status;
    });
}

int xx_Inifile::getDoubleArray(wchar_t* ident, double* values, int count, int report)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        return getAllNumbers({*this, ident, report}, {values, count}, kDoubles);
    });
}

int xx_Inifile::getIntArray(wchar_t* ident, int* values, int* count, int report)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        NumberArray<int> array {values, *count};
        const int status = getNumbers({*this, ident, report}, array, kInts);
        *count = array.count;
        return status;
    });
}

int xx_Inifile::getIntArray(wchar_t* ident, int* values, int count, int report)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        return getAllNumbers({*this, ident, report}, {values, count}, kInts);
    });
}

int xx_Inifile::getStringList(wchar_t* ident, resbuf** list, wchar_t separator, int report)
{
    *list = nullptr;
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR, [&] {
        const Value value(Query {*this, ident, report});
        resbuf** end = list;
        if (value.status == RTNORM) {
            forEachPiece(value.text(), separator, [&](std::wstring_view piece) {
                *end = newTextNode(piece);
                end = &(*end)->rbnext;
                return true;
            });
        }
        return value.status;
    });
}
