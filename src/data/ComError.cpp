#include "data/ComError.h"

#include "foundation/messages.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr std::size_t kLongestMessage = 256;

// The codes by which an interface tells errors of its own.
constexpr std::uint32_t kInterfaceErrorsBegin = 0x80040200;
constexpr std::uint32_t kInterfaceErrorsEnd = 0x80050000;

struct SystemText
{
    std::uint32_t code;
    const wchar_t* text;
};

// What the system where these codes are at home says of them.
constexpr SystemText kSystemTexts[] = {
    {0x80004001, L"Not implemented"},
    {0x80004003, L"Invalid pointer"},
    {corma::kUnspecified, L"Unspecified error"},
    {corma::kClassNotRegistered, L"Class not registered"},
    {0x80070005, L"Access is denied."},
    {0x8007000E, L"Not enough storage is available to complete this operation."},
    {0x80070057, L"The parameter is incorrect."},
};

void show(std::wstring text)
{
    text.resize(std::min(text.size(), kLongestMessage));
    corma::showUserMessage(std::move(text));
}

} // namespace

std::wstring corma::meaningOf(std::uint32_t code)
{
    const auto* const found
        = std::find_if(std::begin(kSystemTexts), std::end(kSystemTexts),
                       [code](const SystemText& row) { return row.code == code; });
    if (found != std::end(kSystemTexts)) {
        return found->text;
    }
    if (code >= kInterfaceErrorsBegin && code < kInterfaceErrorsEnd) {
        return formatted(L"IDispatch error #%d", static_cast<int>(code - kInterfaceErrorsBegin));
    }
    return formatted(L"Unknown error 0x%0lX", static_cast<unsigned long>(code));
}

void xx_dump_com_error(const corma::ComError& error)
{
    using corma::formatted;
    show(L"\nxx_dump_com_error!\n");
    show(formatted(L"\tCode = %08lx\n", static_cast<unsigned long>(error.code)));
    show(formatted(L"\tCode meaning = %s\n", corma::meaningOf(error.code).c_str()));
    show(formatted(L"\tSource = %s\n", error.source.c_str()));
    show(formatted(L"\tDescription = %s\n", error.description.c_str()));
}
