#include "foundation/at_boundary.h"

#include "foundation/messages.h"
#include "platform/text.h"

#include <exception>
#include <new>
#include <string>

namespace corma {

namespace {

std::wstring textOfCaught()
{
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return L"not enough memory";
    } catch (const std::exception& error) {
        return fromUtf8(error.what());
    } catch (...) {
        return L"unexpected failure";
    }
}

} // namespace

void reportCaught(const wchar_t* sourceName, int line) noexcept
{
    try {
        xx_reportError(sourceName, line, textOfCaught().c_str(), 0);
    } catch (...) { // NOLINT(bugprone-empty-catch): there is no one left to tell
    }
}

} // namespace corma
