#include "host/host.h"
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

const ACHAR* acedGetAppName()
{
    return corma::services().moduleFile();
}
