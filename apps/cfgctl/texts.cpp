#include "commands.h"
#include "text.h"
#include <corma/texts.h>

namespace cfgctl {

namespace {

// A text as one line.
std::string onOneLine(std::string_view text)
{
    std::string line;
    for (const char c : text) {
        if (c == '\n') {
            line += "\\n";
        } else {
            line += c;
        }
    }
    return line;
}

class Texts : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argumentList("ROW", "Number of a row; all rows when none is named", m_rows);
    }

    Answer run(const Options& options) override
    {
        Answer answer;
        for (const int row : m_rows.empty() ? corma::textRows() : m_rows) {
            const std::string number = std::to_string(row);
            const std::string text = toBytes(corma::textOf(row, options.language));
            answer.document[number] = text;
            answer.lines += number + '\t' + onOneLine(text) + '\n';
        }
        return answer;
    }

private:
    std::vector<int> m_rows;
};

} // namespace

std::unique_ptr<Command> makeTexts()
{
    return std::make_unique<Texts>();
}

} // namespace cfgctl
