#include "data/FakeProviders.h"

#include "platform/text.h"

#include <stdexcept>
#include <utility>

namespace corma::testing {

namespace {

FakeProviders* g_current = nullptr;

} // namespace

FakeProviders::FakeProviders()
    : m_former(std::exchange(g_current, this))
{
}

FakeProviders::~FakeProviders()
{
    g_current = m_former;
}

FakeProviders& FakeProviders::current()
{
    if (g_current == nullptr) {
        throw std::logic_error("no providers");
    }
    return *g_current;
}

std::string FakeProviders::log()
{
    std::string lines;
    for (const std::wstring& event : m_log) {
        lines += (lines.empty() ? "" : "\n") + toUtf8(event);
    }
    m_log.clear();
    return lines;
}

} // namespace corma::testing

namespace corma::ado {

namespace {

using corma::testing::FakeProviders;
using corma::testing::FakeRows;

[[noreturn]] void fail(const std::wstring& description)
{
    throw ComError {.code = kUnspecified, .source = L"Fake", .description = description};
}

} // namespace

class Connection::Inside
{
public:
    std::wstring provider;
    std::wstring text;
    bool isOpen = false;
};

Connection::Connection()
    : m_inside(std::make_unique<Inside>())
{
}

Connection::~Connection()
{
    if (m_inside->isOpen) {
        FakeProviders::current().note(L"close " + m_inside->text);
    }
}

void Connection::putProvider(const std::wstring& provider)
{
    m_inside->provider = provider;
}

void Connection::open(const std::wstring& text)
{
    FakeProviders& providers = FakeProviders::current();
    providers.note(L"open " + m_inside->provider + L": " + text);
    if (providers.refuses) {
        fail(L"refused");
    }
    m_inside->text = text;
    m_inside->isOpen = true;
}

bool Connection::isLost() const
{
    return FakeProviders::current().isLost;
}

class Recordset::Inside
{
public:
    bool hasConnection = false;
    bool isOpen = false;
    FakeRows rows;
    std::size_t row = 0;
};

Recordset::Recordset(Connection* connection)
    : m_inside(std::make_unique<Inside>())
{
    m_inside->hasConnection = connection != nullptr && connection->inside().isOpen;
}

Recordset::~Recordset() = default;

void Recordset::open(const std::wstring& sql)
{
    FakeProviders& providers = FakeProviders::current();
    providers.note(L"run " + sql);
    const auto answer = providers.answers.find(sql);
    if (!m_inside->hasConnection || answer == providers.answers.end()) {
        fail(L"no such statement");
    }
    m_inside->rows = answer->second;
    m_inside->isOpen = !m_inside->rows.fields.empty();
}

int Recordset::fieldCount() const
{
    return static_cast<int>(m_inside->rows.fields.size());
}

const std::wstring& Recordset::name(int field) const
{
    return m_inside->rows.fields.at(static_cast<std::size_t>(field)).name;
}

int Recordset::type(int field) const
{
    return m_inside->rows.fields.at(static_cast<std::size_t>(field)).type;
}

int Recordset::attributes(int field) const
{
    return m_inside->rows.fields.at(static_cast<std::size_t>(field)).attributes;
}

bool Recordset::isAtEnd() const
{
    return m_inside->row >= m_inside->rows.rows.size();
}

void Recordset::moveNext()
{
    ++m_inside->row;
}

Variant Recordset::value(int field)
{
    if (static_cast<int>(m_inside->row) == m_inside->rows.failingRow) {
        fail(L"no such value");
    }
    return m_inside->rows.rows.at(m_inside->row).at(static_cast<std::size_t>(field));
}

Variant Recordset::chunk(int field, int bytes)
{
    FakeProviders::current().note(L"chunk " + name(field));
    Variant whole = value(field);
    whole.text.resize(std::min(whole.text.size(), static_cast<std::size_t>(bytes)));
    return whole;
}

bool Recordset::isOpen() const
{
    return m_inside->isOpen;
}

void Recordset::close()
{
    FakeProviders::current().note(L"end rows");
    m_inside->isOpen = false;
}

} // namespace corma::ado
