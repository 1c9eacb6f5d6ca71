#pragma once

#include <corma/host.h>

#include <string>

namespace cfgctl {

/// Sends what the library says to standard error, each message on lines of its own. In force from
/// its construction to its end; then standard error is at the start of a line.
class ConsoleServices : public corma::Services
{
public:
    ConsoleServices();
    ConsoleServices(const ConsoleServices&) = delete;
    ConsoleServices& operator=(const ConsoleServices&) = delete;
    ~ConsoleServices() override;

    /// The folder that stands for the host module's.
    void setModuleFolder(const std::wstring& folder);

    void print(const wchar_t* text) override;
    const wchar_t* moduleFile() override;

private:
    std::wstring m_moduleFile; // empty: the program
    bool m_isAtLineStart = true;
};

} // namespace cfgctl
