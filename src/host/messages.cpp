#include "host/host.h"
#include "host/result_list.h"
#include "platform/text.h"

int acutPrintf(const ACHAR* format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    const std::wstring text = corma::formatWide(format, arguments);
    va_end(arguments);
    corma::services().print(text.c_str());
    return RTNORM;
}

int acedAlert(const ACHAR* text)
{
    corma::services().alert(text);
    return RTNORM;
}

void acdbFail(const ACHAR* text)
{
    corma::services().fail(text);
}

int acedHelp(const ACHAR* file, const ACHAR* /*topic*/, int /*command*/)
{
    return corma::services().showHelp(file == nullptr ? L"" : file) ? RTNORM : RTERROR;
}

bool acedHatchPalletteDialog(const ACHAR* pattern, bool showCustom, ACHAR*& result)
{
    const corma::HatchPatternQuestion question {
        .pattern = pattern == nullptr ? L"" : pattern,
        .showCustom = showCustom,
    };
    std::wstring chosen;
    const bool isChosen = corma::services().chooseHatchPattern(question, chosen);
    result = corma::host::heapCopy(isChosen ? chosen : question.pattern);
    return isChosen;
}

const ACHAR* acedGetAppName()
{
    return corma::services().moduleFile();
}
