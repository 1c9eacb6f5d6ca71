#include "console.h"

#include "text.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

namespace cfgctl {

ConsoleServices::ConsoleServices()
{
    corma::setServices(this);
}

ConsoleServices::~ConsoleServices()
{
    endLine();
    corma::setServices(nullptr);
}

void ConsoleServices::endLine()
{
    if (!m_isAtLineStart) {
        Services::print(L"\n");
        m_isAtLineStart = true;
    }
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

Listener::Listener(Pass pass)
    : m_pass(pass)
    , m_former(corma::setServices(this))
{
}

Listener::~Listener()
{
    corma::setServices(m_former);
}

std::wstring Listener::heard() const
{
    constexpr const wchar_t* kLineEnds = L"\r\n";
    const std::size_t begin = std::min(m_heard.find_first_not_of(kLineEnds), m_heard.size());
    const std::size_t end = m_heard.find_last_not_of(kLineEnds) + 1;
    std::wstring line = m_heard.substr(begin, end - begin);
    std::replace(line.begin(), line.end(), L'\n', L' ');
    return line;
}

void complain(const std::wstring& text)
{
    corma::services().print((L"\ncfgctl: " + text + L'\n').c_str());
}

void Listener::print(const wchar_t* text)
{
    m_heard += text;
    if (m_pass == Pass::on) {
        m_former->print(text);
    }
}

const wchar_t* Listener::moduleFile()
{
    return m_former->moduleFile();
}

} // namespace cfgctl
