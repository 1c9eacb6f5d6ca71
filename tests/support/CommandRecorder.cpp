#include "support/CommandRecorder.h"

#include "host/host.h"
#include "platform/text.h"

namespace corma::testing {

namespace {

std::string wordOf(const host::CommandArgument& argument)
{
    if (const auto* const text = std::get_if<std::wstring>(&argument)) {
        return toUtf8(*text);
    }
    if (const auto* const whole = std::get_if<long>(&argument)) {
        return std::to_string(*whole);
    }
    return std::to_string(std::get<double>(argument));
}

std::string echo()
{
    resbuf value {};
    if (acedGetVar(L"CMDECHO", &value) != RTNORM || value.restype != RTSHORT) {
        return "?:";
    }
    return value.resval.rint == 0 ? "" : std::to_string(value.resval.rint) + ':';
}

} // namespace

CommandRecorder::CommandRecorder()
    : m_former(host::setCommandRunner(this))
{
}

CommandRecorder::~CommandRecorder()
{
    host::setCommandRunner(m_former);
}

std::string CommandRecorder::sent() const
{
    return m_sent;
}

int CommandRecorder::run(const host::CommandArguments& arguments)
{
    m_sent += echo();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        m_sent += (i == 0 ? "" : "|") + wordOf(arguments[i]);
    }
    m_sent += '\n';
    return instead ? instead(arguments) : host::runCommand(arguments);
}

} // namespace corma::testing
