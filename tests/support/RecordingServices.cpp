#include "support/RecordingServices.h"

#include "foundation/messages.h"
#include "host/variables.h"
#include <corma/texts.h>

namespace corma::testing {

namespace {

void resetGlobalState()
{
    closeDocument();
    forgetModuleFolder();
    host::resetVariables();
    resetAlertGiven();
    setTextLanguage(kEnglish);
}

} // namespace

RecordingServices::RecordingServices()
    : m_former(setServices(this))
{
    resetGlobalState();
}

RecordingServices::~RecordingServices()
{
    resetGlobalState();
    setServices(m_former);
}

void RecordingServices::print(const wchar_t* text)
{
    printed.emplace_back(text);
}

void RecordingServices::alert(const wchar_t* text)
{
    alerts.emplace_back(text);
}

MessageAnswer RecordingServices::messageBox(const wchar_t* text, const wchar_t* /*title*/,
                                            MessageIcon /*icon*/, MessageButtons /*buttons*/)
{
    boxes.emplace_back(text);
    return answer;
}

void RecordingServices::fail(const wchar_t* text)
{
    failures.emplace_back(text);
}

bool RecordingServices::chooseHatchPattern(const HatchPatternQuestion& question,
                                           std::wstring& chosen)
{
    hatchQuestions.push_back(question.pattern
                             + std::wstring(question.showCustom ? L"+custom" : L""));
    if (!hatchPattern) {
        return false;
    }
    chosen = *hatchPattern;
    return true;
}

bool RecordingServices::showHelp(const wchar_t* file)
{
    helpFiles.emplace_back(file);
    return *file != 0;
}

const wchar_t* RecordingServices::moduleFile()
{
    return module.c_str();
}

const wchar_t* RecordingServices::environment(const wchar_t* name)
{
    const auto found = variables.find(name);
    return found == variables.end() ? nullptr : found->second.c_str();
}

std::wstring RecordingServices::allPrinted() const
{
    std::wstring all;
    for (const auto& text : printed) {
        all += text;
    }
    return all;
}

} // namespace corma::testing
