#include "data/odbc/connection_inside.h"
#include "platform/platform.h"

namespace corma::ado {

Connection::Connection()
    : m_inside(std::make_unique<Inside>())
{
}

Connection::~Connection() = default;

void Connection::putProvider(const std::wstring& provider)
{
    m_inside->provider = provider;
}

void Connection::open(const std::wstring& text)
{
    m_inside->session.reset();
    const odbc::Target target = odbc::targetOf(text, m_inside->provider);
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
