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

    /// What comes next begins a line, be it on standard output: a screen shows both.
    void endLine();

    void print(const wchar_t* text) override;
    const wchar_t* moduleFile() override;

private:
    std::wstring m_moduleFile; // empty: the program
    bool m_isAtLineStart = true;
};

/// Hears what the library says, for as long as it lives.
class Listener : public corma::Services
{
public:
    enum class Pass
    {
        on, // to the services that are in force before
        nothing
    };

    explicit Listener(Pass pass);
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;
    ~Listener() override;

    /// All messages as one line; empty when there was none.
    [[nodiscard]] std::wstring heard() const;

    void print(const wchar_t* text) override;
    const wchar_t* moduleFile() override;

private:
    Pass m_pass;
    Services* m_former;
    std::wstring m_heard;
};

/// Says why nothing was done where the library gives a status and no message.
void complain(const std::wstring& text);

} // namespace cfgctl
