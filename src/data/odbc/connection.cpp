#include "data/odbc/connection_inside.h"
#include "platform/platform.h"

namespace corma::ado {

namespace {

/// A value as it stands in a connection text. Braces are for those that need them only: there are
/// drivers that take them for a part of it.
std::wstring quoted(const std::wstring& value)
{
    if (value.find_first_of(L";{}") == std::wstring::npos) {
        return value;
    }
    std::wstring whole = L"{";
    for (const wchar_t c : value) {
        whole.append(c == L'}' ? 2 : 1, c);
    }
    return whole + L'}';
}

} // namespace

Connection::Connection()
    : m_inside(std::make_unique<Inside>())
{
}

Connection::~Connection() = default;

void Connection::putProvider(const std::wstring& provider)
{
    m_inside->provider = provider;
}

void Connection::open(const std::wstring& text, const std::wstring& user,
                      const std::wstring& password)
{
    m_inside->session.reset();
    odbc::Target target = odbc::targetOf(text, m_inside->provider);
    // A key counts where it stands first, so what the text itself says goes before.
    if (!user.empty()) {
        target.text += L";UID=" + quoted(user);
    }
    if (!password.empty()) {
        target.text += L";PWD=" + quoted(password);
    }
    // The driver manager converts narrow text, such as the messages of drivers without wide
    // functions, by the locale that it finds at the beginning.
    const platform::Utf8Locale locale;
    m_inside->session = std::make_unique<odbc::Session>(target);
}

bool Connection::isLost() const
{
    return m_inside->session && m_inside->session->isLost();
}

} // namespace corma::ado
