#include "platform/platform.h"
#include "platform/text.h"
#include <corma/host.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace corma {

namespace {

Services& defaultServices()
{
    static Services instance;
    return instance;
}

// The services that a program installed; null means the default ones.
Services*& installed()
{
    static Services* services = nullptr;
    return services;
}

} // namespace

Services::~Services() = default;

void Services::print(const wchar_t* text)
{
    const std::string bytes = toUtf8(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stderr);
}

void Services::alert(const wchar_t* text)
{
    print(L"\n");
    print(text);
}

MessageAnswer Services::messageBox(const wchar_t* text, const wchar_t* /*title*/,
                                   MessageIcon /*icon*/, MessageButtons buttons)
{
    alert(text);
    switch (buttons) {
    case MessageButtons::okCancel:
    case MessageButtons::yesNoCancel:
        return MessageAnswer::cancel;
    case MessageButtons::yesNo:
        return MessageAnswer::no;
    case MessageButtons::ok:
        break;
    }
    return MessageAnswer::ok;
}

void Services::fail(const wchar_t* text)
{
    alert(text);
    print(L"\n");
    std::abort();
}

bool Services::chooseHatchPattern(const HatchPatternQuestion& /*question*/,
                                  std::wstring& /*chosen*/)
{
    return false;
}

bool Services::showHelp(const wchar_t* file)
{
    if (*file == 0) {
        print(L"\nThe help file was not found.");
        return false;
    }
    print(L"\nHelp: ");
    print(file);
    return true;
}

const wchar_t* Services::moduleFile()
{
    static const std::wstring program = platform::programFile();
    return program.c_str();
}

const wchar_t* Services::environment(const wchar_t* name)
{
    static std::wstring kept;
    const auto value = platform::environmentVariable(name);
    if (!value) {
        return nullptr;
    }
    kept = *value;
    return kept.c_str();
}

Services& services()
{
    return installed() == nullptr ? defaultServices() : *installed();
}

Services* setServices(Services* replacement)
{
    Services* former = installed();
    installed() = replacement;
    return former;
}

} // namespace corma
