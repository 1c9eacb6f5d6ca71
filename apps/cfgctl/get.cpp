#include "commands.h"
#include "kinds.h"
#include "sources.h"
#include <corma/lookup_trace.h>

namespace cfgctl {

namespace {

constexpr int kUsualSize = 3000; // characters

class Get : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("FILE", "Configuration file", m_file);
        syntax.argument("IDENTS", "Idents separated by \",\"; the first that is found wins",
                        m_idents);
        syntax.option("--as KIND",
                      "What the value is read as: string (the default), int, bool, double,\n"
                      "doubles:N or ints:N (at most N numbers), doubles=N or ints=N\n"
                      "(exactly N), list:C (texts separated by the character C)",
                      m_kind);
        syntax.option("--size N", "Size of the buffer for a string, in characters; usually 3000",
                      m_size);
        syntax.flag("--report", "Tell when nothing is found", m_report);
        syntax.flag("--trace", "Tell which sources were asked, in their order", m_trace);
    }

    Answer run(const Options& options) override
    {
        const Reader read = readerFor(m_kind, m_size);
        xx_Inifile file = openFile(m_file, options);
        const corma::LookupTrace trace(file);
        const Reading reading = read(file, m_idents, m_report ? 1 : 0);

        Answer answer {reading.status, {}, plainLines(reading.value)};
        answer.document["status"] = reading.status;
        answer.document["value"] = reading.value;
        if (m_trace) {
            answer.document["sources"] = sourcesAsJson(trace.asked());
            answer.lines += sourcesAsLines(trace.asked());
        }
        return answer;
    }

private:
    std::wstring m_file;
    std::wstring m_idents;
    std::wstring m_kind = L"string";
    int m_size = kUsualSize;
    bool m_report = false;
    bool m_trace = false;
};

} // namespace

std::unique_ptr<Command> makeGet()
{
    return std::make_unique<Get>();
}

} // namespace cfgctl
