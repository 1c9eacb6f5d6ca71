#include "host/dwg/group_fields.h"

#include <numbers>

namespace corma::host::dwg {

namespace {

constexpr double kHalfTurn = 180.0; // degrees

} // namespace

std::wstring withoutNumber(std::wstring_view name)
{
    if (name.starts_with(L'*')) {
        while (name.back() >= L'0' && name.back() <= L'9') {
            name.remove_suffix(1);
        }
    }
    return std::wstring(name);
}

double degreesFrom(double radians)
{
    return radians * kHalfTurn / std::numbers::pi;
}

double radiansFrom(double degrees)
{
    return degrees * std::numbers::pi / kHalfTurn;
}

// --- FieldsToGroups ------------------------------------------------------------------------------

void FieldsToGroups::point(int code, const Point& value)
{
    real(code, value.x);
    real(code + kCoordinateStep, value.y);
    real(code + 2 * kCoordinateStep, value.z);
}

void FieldsToGroups::point2(int code, const Point2& value)
{
    real(code, value.x);
    real(code + kCoordinateStep, value.y);
}

void FieldsToGroups::named(int code, const Ref& value, TableKind /*table*/, std::wstring_view usual)
{
    std::wstring name
        = value.target == Handle::none ? std::wstring() : m_names->nameOf(value.target);
    if (!name.empty() && foldedName(name) != foldedName(usual)) {
        m_groups->add(Group(code, GroupValue(std::move(name))));
    }
}

// --- FieldsFromGroups ----------------------------------------------------------------------------

void FieldsFromGroups::fail(std::wstring_view problem)
{
    if (m_problem.empty()) {
        m_problem = problem;
    }
}

void FieldsFromGroups::marker(const wchar_t* name)
{
    const GroupRange body = m_groups->body();
    std::size_t from = m_marker == name ? m_range.end : body.begin;
    m_marker = name;
    while (from < body.end
           && ((*m_groups)[from].code != code::subclass || !(*m_groups)[from].isText(name))) {
        ++from;
    }
    m_range = {from, from};
    if (from == body.end) {
        return;
    }
    m_range = {from + 1, from + 1};
    while (m_range.end < body.end && (*m_groups)[m_range.end].code != code::subclass) {
        ++m_range.end;
    }
}

bool FieldsFromGroups::embedded()
{
    m_marker.clear();
    m_range = {m_groups->body().end, m_groups->body().end};
    while (m_range.end < m_groups->size() && (*m_groups)[m_range.end].code < code::firstExtended) {
        ++m_range.end;
    }
    return m_range.begin < m_range.end;
}

void FieldsFromGroups::angle(int code, double& value, double usual)
{
    const auto at = m_groups->find(code, m_range);
    if (!at) {
        value = value == usual ? value : usual;
        return;
    }
    const double degrees = (*m_groups)[*at].real();
    if (!isSameNumber(degreesFrom(value), degrees)) { // it need not come back as the same number
        value = radiansFrom(degrees);
    }
}

void FieldsFromGroups::point2(int code, Point2& value)
{
    value.x = m_groups->real(code, m_range);
    value.y = m_groups->real(code + kCoordinateStep, m_range);
}

bool FieldsFromGroups::isNamed(int code, const Ref& value, std::wstring_view usual) const
{
    const std::wstring current
        = value.target == Handle::none ? std::wstring() : m_names->nameOf(value.target);
    if (current.empty()) {
        return value.isFromFile && !m_groups->find(code, m_range);
    }
    return foldedName(current) == foldedName(m_groups->text(code, m_range, usual));
}

void FieldsFromGroups::named(int code, Ref& value, TableKind table, std::wstring_view usual)
{
    if (isNamed(code, value, usual)) {
        return;
    }
    const std::wstring_view name = m_groups->text(code, m_range, usual);
    const Handle found = name.empty() ? Handle::none : m_names->find(table, name);
    if (found == Handle::none && !name.empty()) {
        std::wstring problem = L"it names \"";
        problem += name;
        fail(problem + L"\", which the drawing does not have");
    }
    value.set(found);
}

} // namespace corma::host::dwg
