#include "kinds.h"

#include "command.h"
#include "text.h"
#include <corma/xx_Inifile.h>

#include <array>
#include <cstdlib>
#include <memory>

namespace cfgctl {

namespace {

// Far more than a value can hold; it keeps a slip of the finger from asking for all memory.
constexpr int kMostNumbers = 1'000'000;

struct Free
{
    void operator()(void* memory) const { std::free(memory); }
};

struct FreeList
{
    void operator()(resbuf* list) const { acutRelRb(list); }
};

Reading reading(int status, Json value)
{
    return {status, status == RTNORM ? std::move(value) : Json()};
}

// The memory is not touched before it is used: a size may be far beyond what any value needs.
Reader stringReader(int size)
{
    return [size](xx_Inifile& file, std::wstring& idents, int report) {
        const auto count = static_cast<std::size_t>(std::abs(static_cast<long long>(size)));
        const std::unique_ptr<wchar_t, Free> value(
            static_cast<wchar_t*>(std::calloc(count + 1, sizeof(wchar_t))));
        if (!value) {
            throw UsageError("--size " + std::to_string(size)
                             + " is more than the memory holds; pass a smaller one");
        }
        const int status = file.getString(idents.data(), value.get(), size, report);
        return reading(status, toJson(value.get()));
    };
}

template<class Number, int (xx_Inifile::*get)(wchar_t*, Number*, int)>
Reading readNumber(xx_Inifile& file, std::wstring& ident, int report)
{
    Number number {};
    const int status = (file.*get)(ident.data(), &number, report);
    return reading(status, number);
}

// Capacity is `int*` for the getters that tell how many numbers they read, else `int`.
template<class Number, class Capacity>
using GetArray = int (xx_Inifile::*)(wchar_t*, Number*, Capacity, int);

template<class Number, GetArray<Number, int*> get> Reader upToReader(int most)
{
    return [most](xx_Inifile& file, std::wstring& ident, int report) {
        std::vector<Number> numbers(static_cast<std::size_t>(most));
        int count = most;
        const int status = (file.*get)(ident.data(), numbers.data(), &count, report);
        numbers.resize(static_cast<std::size_t>(count));
        return reading(status, numbers);
    };
}

template<class Number, GetArray<Number, int> get> Reader exactlyReader(int count)
{
    return [count](xx_Inifile& file, std::wstring& ident, int report) {
        std::vector<Number> numbers(static_cast<std::size_t>(count));
        const int status = (file.*get)(ident.data(), numbers.data(), count, report);
        return reading(status, numbers);
    };
}

Reader listReader(wchar_t separator)
{
    return [separator](xx_Inifile& file, std::wstring& ident, int report) {
        resbuf* first = nullptr;
        const int status = file.getStringList(ident.data(), &first, separator, report);
        const std::unique_ptr<resbuf, FreeList> list(first);
        Json texts = Json::array();
        for (const resbuf* node = first; node != nullptr; node = node->rbnext) {
            texts.push_back(toJson(node->resval.rstring));
        }
        return reading(status, std::move(texts));
    };
}

struct NumberKind
{
    std::wstring_view name;
    Reading (*read)(xx_Inifile& file, std::wstring& ident, int report);
};

constexpr std::array kNumberKinds = {
    NumberKind {L"int", readNumber<int, &xx_Inifile::getInt>},
    NumberKind {L"bool", readNumber<bool, &xx_Inifile::getBool>},
    NumberKind {L"double", readNumber<double, &xx_Inifile::getDouble>},
};

struct ArrayKind
{
    std::wstring_view prefix; // the count follows
    Reader (*makeReader)(int count);
};

constexpr std::array kArrayKinds = {
    ArrayKind {L"doubles:", upToReader<double, &xx_Inifile::getDoubleArray>},
    ArrayKind {L"doubles=", exactlyReader<double, &xx_Inifile::getDoubleArray>},
    ArrayKind {L"ints:", upToReader<int, &xx_Inifile::getIntArray>},
    ArrayKind {L"ints=", exactlyReader<int, &xx_Inifile::getIntArray>},
};

constexpr std::wstring_view kListPrefix = L"list:";

int countIn(std::wstring_view kind, std::wstring_view digits)
{
    int count = digits.empty() ? kMostNumbers + 1 : 0;
    for (const wchar_t digit : digits) {
        const bool isDigit = digit >= L'0' && digit <= L'9';
        count = isDigit && count <= kMostNumbers ? 10 * count + (digit - L'0') : kMostNumbers + 1;
    }
    if (count > kMostNumbers) {
        throw UsageError("--as " + toBytes(kind) + " needs a count; pass one of 0 to "
                         + std::to_string(kMostNumbers));
    }
    return count;
}

wchar_t separatorIn(std::wstring_view kind, std::wstring_view separator)
{
    if (separator.size() != 1) {
        throw UsageError("--as " + toBytes(kind)
                         + " needs one character as separator; pass one, such as list:;");
    }
    return separator.front();
}

} // namespace

Reader readerFor(std::wstring_view kind, int size)
{
    if (kind == L"string") {
        return stringReader(size);
    }
    for (const NumberKind& number : kNumberKinds) {
        if (kind == number.name) {
            return number.read;
        }
    }
    for (const ArrayKind& array : kArrayKinds) {
        if (kind.starts_with(array.prefix)) {
            return array.makeReader(countIn(kind, kind.substr(array.prefix.size())));
        }
    }
    if (kind.starts_with(kListPrefix)) {
        return listReader(separatorIn(kind, kind.substr(kListPrefix.size())));
    }
    throw UsageError("unknown kind " + quoted(kind)
                     + "; pass string, int, bool, double, doubles:N, ints:N, doubles=N, ints=N or "
                       "list:C to --as");
}

} // namespace cfgctl
