#include "data/Query.h"

#include "foundation/messages.h"
#include <corma/xx_Var.h>

namespace corma {

bool isFull(int rows)
{
    if (rows < xx_Var::kMostValues) {
        return false;
    }
    showUserMessage(
        formatted(L"Only the first %d rows are kept; ask for the others by another statement",
                  xx_Var::kMostValues));
    return true;
}

void showLongText(const wchar_t* header, const std::wstring& text)
{
    constexpr std::size_t kLine = 79; // characters
    showUserMessage(
        formatted(L"\n======================== %s ===============================", header));
    for (std::size_t at = 0; at < text.size(); at += kLine) {
        showUserMessage(text.substr(at, kLine));
    }
}

} // namespace corma
