#include "console.h"

#include "text.h"

#include <filesystem>
#include <string_view>

namespace cfgctl {

ConsoleServices::ConsoleServices()
{
    corma::setServices(this);
}

ConsoleServices::~ConsoleServices()
{
    if (!m_isAtLineStart) {
        Services::print(L"\n");
    }
    corma::setServices(nullptr);
}

void ConsoleServices::setModuleFolder(const std::wstring& folder)
{
    const auto absolute = std::filesystem::absolute(toBytes(folder));
    m_moduleFile = toWide((absolute / "cfgctl").native());
    corma::forgetModuleFolder();
}

void ConsoleServices::print(const wchar_t* text)
{
    if (m_isAtLineStart && *text == L'\n') {
        ++text;
    }
    const std::wstring_view rest(text);
    if (!rest.empty()) {
        m_isAtLineStart = rest.back() == L'\n';
        Services::print(text);
    }
}

const wchar_t* ConsoleServices::moduleFile()
{
    return m_moduleFile.empty() ? Services::moduleFile() : m_moduleFile.c_str();
}

} // namespace cfgctl
