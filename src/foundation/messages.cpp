#include "foundation/messages.h"

#include "foundation/wide_text.h"
#include "host/host.h"
#include "platform/text.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr std::size_t kLongestReport = 255;
constexpr const wchar_t* kReportFormat = L"Error in file %s on line %d\n(%s, ec = %s)";

// The commands during which the command line cannot be seen.
constexpr const wchar_t* kHidingCommands = L"3dorbit,preview,plot";

// One alert is enough while messages cannot be printed.
bool& alertGiven()
{
    static bool given = false;
    return given;
}

std::wstring statusWord(int status)
{
    switch (status) {
    case RTCAN:
        return L"RTCAN";
    case RTERROR:
        return L"RTERROR";
    case RTNORM:
        return L"RTNORM";
    case RTKWORD:
        return L"RTKWORD";
    default:
        return std::to_wstring(status);
    }
}

bool commandLineIsHidden()
{
    resbuf names {};
    if (acedGetVar(L"CMDNAMES", &names) != RTNORM || names.restype != RTSTR) {
        return false;
    }
    const bool hidden = acutWcMatchEx(names.resval.rstring, kHidingCommands, true);
    std::free(names.resval.rstring);
    return hidden;
}

} // namespace

void xx_reportError(const wchar_t* sourceName, int line, const wchar_t* text, int status)
{
    std::wstring report = corma::formatted(
        kReportFormat, sourceName, line, text == nullptr ? L"" : text, statusWord(status).c_str());
    report.resize(std::min(report.size(), kLongestReport));
    corma::showUserMessage(std::move(report));
}

void xx_reportErrorCode(const wchar_t* sourceName, int line, int code, int status)
{
    xx_reportError(sourceName, line, corma::formatted(L"%d", code).c_str(), status);
}

void xx_showUserMessage(wchar_t* text)
{
    if (commandLineIsHidden()) {
        if (!alertGiven()) {
            acedAlert(text);
        }
        alertGiven() = true;
        return;
    }
    acutPrintf(L"\n");
    std::replace(text, text + corma::length(text), L'%', L'$');
    acutPrintf(text);
    alertGiven() = false;
}

void xx_printMessage(const wchar_t* format, const wchar_t* argument, int mode)
{
    const std::wstring text = corma::formatted(format, argument);
    if (mode == 0) {
        acutPrintf(L"\n");
        acutPrintf(L"%s", text.c_str());
    } else {
        acedAlert(text.c_str());
    }
}

void xx_printOrAlert(const wchar_t* text, int mode)
{
    if (mode == 0) {
        acutPrintf(L"\n");
        acutPrintf(L"%s", text);
        acutPrintf(L" ");
    } else if (mode == 1) {
        acedAlert(text);
    }
}

int xx_format(wchar_t* buffer, const wchar_t* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const std::wstring text = corma::formatWide(format, arguments);
    va_end(arguments);
    corma::copy(buffer, text.c_str());
    return static_cast<int>(corma::length(buffer));
}

int xx_formatN(wchar_t* buffer, std::size_t count, const wchar_t* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const std::wstring text = corma::formatWide(format, arguments);
    va_end(arguments);
    corma::copyBounded(buffer, count, text);
    return count == 0 ? 0 : static_cast<int>(corma::length(buffer));
}

namespace corma {

std::wstring formatted(const wchar_t* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    std::wstring text = formatWide(format, arguments);
    va_end(arguments);
    return text;
}

void showUserMessage(std::wstring text)
{
    xx_showUserMessage(text.data());
}

void resetAlertGiven()
{
    alertGiven() = false;
}

} // namespace corma
