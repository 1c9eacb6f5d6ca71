#include "data/declared_types.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace corma {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// What may follow a name and its type.
constexpr std::string_view kColumnConstraints[]
    = {"AS",  "CHECK", "COLLATE", "CONSTRAINT", "DEFAULT", "DEFERRABLE",
       "NOT", "NULL",  "PRIMARY", "REFERENCES", "UNIQUE"};

// What no column can be named without quotes.
constexpr std::string_view kTableConstraints[]
    = {"CHECK", "CONSTRAINT", "FOREIGN", "PRIMARY", "UNIQUE"};

bool isSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isWordCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || isDigit(c) || c == '_' || c == '$'
        || static_cast<unsigned char>(c) >= 0x80;
}

bool equalWords(std::string_view a, std::string_view b)
{
    const auto upper
        = [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return upper(x) == upper(y); });
}

struct Token
{
    enum class Kind
    {
        end, // also an open quote
        word,
        quoted,
        other // a number, or one character of any other kind
    };

    Kind kind = Kind::end;
    std::size_t begin = 0;
    std::size_t end = 0;
};

/// The tokens of a text, one at a time.
class Tokens
{
public:
    explicit Tokens(std::string_view text)
        : m_text(text)
    {
        next();
    }

    [[nodiscard]] const Token& token() const { return m_token; }

    [[nodiscard]] std::string_view text() const { return between(m_token.begin, m_token.end); }

    [[nodiscard]] std::string_view between(std::size_t begin, std::size_t end) const
    {
        return m_text.substr(begin, end - begin);
    }

    [[nodiscard]] bool is(char c) const
    {
        return m_token.kind == Token::Kind::other && text() == std::string_view(&c, 1);
    }

    [[nodiscard]] bool isWord(std::string_view word) const
    {
        return m_token.kind == Token::Kind::word && equalWords(text(), word);
    }

    template<std::size_t count>
    [[nodiscard]] bool isOneOf(const std::string_view (&words)[count]) const
    {
        return std::any_of(std::begin(words), std::end(words),
                           [this](std::string_view word) { return isWord(word); });
    }

    [[nodiscard]] bool isName() const
    {
        return m_token.kind == Token::Kind::word || m_token.kind == Token::Kind::quoted;
    }

    void next();

    /// Goes behind the token when it is that word. True when it was.
    bool pass(std::string_view word) { return nextIf(isWord(word)); }

    /// The same for any name.
    bool passName() { return nextIf(isName()); }

private:
    bool nextIf(bool condition)
    {
        if (condition) {
            next();
        }
        return condition;
    }

    [[nodiscard]] std::size_t behindComment(std::size_t at) const;
    [[nodiscard]] std::size_t behindSpace(std::size_t at) const;
    [[nodiscard]] std::optional<std::size_t> behindQuoted(std::size_t at) const;

    std::string_view m_text;
    Token m_token;
};

// `at` itself where no comment begins. An open one goes to the end.
std::size_t Tokens::behindComment(std::size_t at) const
{
    const std::string_view opening = m_text.substr(at, 2);
    std::size_t end = at;
    if (opening == "--") {
        end = m_text.find('\n', at);
    } else if (opening == "/*" && at + 2 < m_text.size()) {
        end = m_text.find("*/", at + 2);
        end = end == std::string_view::npos ? end : end + 2;
    }
    return std::min(end, m_text.size());
}

std::size_t Tokens::behindSpace(std::size_t at) const
{
    while (at < m_text.size()) {
        std::size_t end = behindComment(at);
        if (end == at && isSpace(m_text[at])) {
            end = at + 1;
        } else if (end == at && m_text.substr(at, kByteOrderMark.size()) == kByteOrderMark) {
            end = at + kByteOrderMark.size();
        }
        if (end == at) {
            break;
        }
        at = end;
    }
    return at;
}

// Nothing for a quote that stays open.
std::optional<std::size_t> Tokens::behindQuoted(std::size_t at) const
{
    const bool isBracket = m_text[at] == '[';
    const char closing = isBracket ? ']' : m_text[at];
    for (++at; (at = m_text.find(closing, at)) != std::string_view::npos; at += 2) {
        const bool isDoubled = !isBracket && m_text.substr(at + 1, 1) == m_text.substr(at, 1);
        if (!isDoubled) {
            return at + 1;
        }
    }
    return std::nullopt;
}

void Tokens::next()
{
    using Kind = Token::Kind;
    const std::size_t begin = behindSpace(m_token.end);
    if (begin == m_text.size()) {
        m_token = {Kind::end, begin, begin};
        return;
    }
    const char first = m_text[begin];
    if (first == '"' || first == '\'' || first == '`' || first == '[') {
        const auto end = behindQuoted(begin);
        m_token = end ? Token {Kind::quoted, begin, *end}
                      : Token {Kind::end, m_text.size(), m_text.size()};
        return;
    }
    if (!isWordCharacter(first)) {
        m_token = {Kind::other, begin, begin + 1};
        return;
    }
    const auto* const end = std::find_if_not(m_text.begin() + begin, m_text.end(), isWordCharacter);
    m_token = {isDigit(first) || first == '$' ? Kind::other : Kind::word, begin,
               static_cast<std::size_t>(end - m_text.begin())};
}

/// What is between the quotes that a text begins with; the text itself without one.
std::string unquoted(std::string_view text)
{
    if (text.empty() || std::string_view("\"'`[").find(text.front()) == std::string_view::npos) {
        return std::string(text);
    }
    const char closing = text.front() == '[' ? ']' : text.front();
    std::string result;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == closing) {
            ++i;
            if (i == text.size() || text[i] != closing) {
                break;
            }
        }
        result.push_back(text[i]);
    }
    return result;
}

/// Goes behind what is in parentheses, or to the end when they stay open. Returns where it ends.
std::size_t passParentheses(Tokens& tokens)
{
    std::size_t depth = 0;
    std::size_t end = 0;
    do {
        if (tokens.is('(')) {
            ++depth;
        } else if (tokens.is(')')) {
            --depth;
        }
        end = tokens.token().end;
        tokens.next();
    } while (depth > 0 && tokens.token().kind != Token::Kind::end);
    return end;
}

bool passEnding(std::string_view& type, std::string_view word)
{
    if (type.size() < word.size() || !equalWords(type.substr(type.size() - word.size()), word)) {
        return false;
    }
    type.remove_suffix(word.size());
    while (!type.empty() && isSpace(type.back())) {
        type.remove_suffix(1);
    }
    return true;
}

// SQLite takes these words for a part of the type and then cuts them off by their letters, from a
// type that is long enough to have both.
std::string_view withoutGenerated(std::string_view type)
{
    constexpr std::size_t bothWords = 16;
    if (type.size() >= bothWords && passEnding(type, "ALWAYS")) {
        passEnding(type, "GENERATED");
    }
    return type;
}

std::string readType(Tokens& tokens)
{
    const std::size_t begin = tokens.token().begin;
    std::size_t end = begin;
    while (tokens.isName() && !tokens.isOneOf(kColumnConstraints)) {
        end = tokens.token().end;
        tokens.next();
    }
    if (end > begin && tokens.is('(')) {
        end = passParentheses(tokens);
    }
    return unquoted(withoutGenerated(tokens.between(begin, end)));
}

void passConstraints(Tokens& tokens)
{
    while (tokens.token().kind != Token::Kind::end && !tokens.is(',') && !tokens.is(')')) {
        if (tokens.is('(')) {
            passParentheses(tokens);
        } else {
            tokens.next();
        }
    }
}

/// Goes to what is behind the name of the table. False when the text is no CREATE TABLE.
bool passHead(Tokens& tokens)
{
    if (!tokens.pass("CREATE")) {
        return false;
    }
    if (!tokens.pass("TEMP")) {
        tokens.pass("TEMPORARY");
    }
    if (!tokens.pass("TABLE")) {
        return false;
    }
    if (tokens.pass("IF") && !(tokens.pass("NOT") && tokens.pass("EXISTS"))) {
        return false;
    }
    if (!tokens.passName()) {
        return false;
    }
    if (!tokens.is('.')) {
        return true;
    }
    tokens.next();
    return tokens.passName();
}

} // namespace

std::vector<DeclaredColumn> declaredColumns(std::string_view createStatement)
{
    Tokens tokens(createStatement);
    std::vector<DeclaredColumn> columns;
    if (!passHead(tokens) || !tokens.is('(')) {
        return columns;
    }
    do {
        tokens.next();
        if (!tokens.isName() || tokens.isOneOf(kTableConstraints)) {
            break;
        }
        std::string name = unquoted(tokens.text());
        tokens.next();
        columns.push_back({std::move(name), readType(tokens)});
        passConstraints(tokens);
    } while (tokens.is(','));
    return columns;
}

} // namespace corma
