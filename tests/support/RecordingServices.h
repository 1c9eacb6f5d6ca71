#pragma once

#include <corma/host.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace corma::testing {

/// Services that show nothing: they keep what the library sends and answer from what the test put
/// in. In force from construction to destruction, with every global state of the host and the
/// language of the texts as they are when a process starts.
struct RecordingServices : Services
{
    RecordingServices();
    RecordingServices(const RecordingServices&) = delete;
    RecordingServices& operator=(const RecordingServices&) = delete;
    ~RecordingServices() override;

    void print(const wchar_t* text) override;
    void alert(const wchar_t* text) override;
    MessageAnswer messageBox(const wchar_t* text, const wchar_t* title, MessageIcon icon,
                             MessageButtons buttons) override;
    void fail(const wchar_t* text) override;
    bool chooseHatchPattern(const HatchPatternQuestion& question, std::wstring& chosen) override;
    bool showHelp(const wchar_t* file) override;
    const wchar_t* moduleFile() override;
    const wchar_t* environment(const wchar_t* name) override;

    /// All that was printed, one piece behind the other.
    std::wstring allPrinted() const;

    std::vector<std::wstring> printed; // each text as it came
    std::vector<std::wstring> alerts;
    std::vector<std::wstring> boxes; // texts of message boxes
    std::vector<std::wstring> failures;
    std::vector<std::wstring> helpFiles; // that were to be shown
    std::vector<std::wstring> hatchQuestions; // the pattern, and "+custom" where those are shown
    MessageAnswer answer = MessageAnswer::ok; // to message boxes
    std::optional<std::wstring> hatchPattern; // that the user chooses; nothing when he cancels
    std::wstring module; // path of the module; empty for none
    std::map<std::wstring, std::wstring> variables; // the environment

private:
    Services* m_former;
};

} // namespace corma::testing
