#include "host/acdb_entity.h"
#include "host/model/Store.h"
#include "host/result_list.h"

#include <numbers>
#include <optional>

CORMA_HOST_CLASS_BODY(AcDbText, AcDbEntity)

namespace {

using namespace corma::host;

constexpr const wchar_t* kTextMarker = L"AcDbText";
constexpr int kText = 1;
constexpr int kEarlierText = 3; // of one that is too long for a group
constexpr int kStyle = 7;
constexpr int kPosition = 10;
constexpr int kHeight = 40;
constexpr int kRotation = 50;
constexpr int kNormal = 210;
constexpr double kRadians = std::numbers::pi / 180.0;

// Where an attribute of several lines has them; nothing for one line of text.
std::optional<GroupRange> severalLines(const Groups& groups)
{
    const auto begin = groups.find(code::embeddedObject, groups.all());
    if (!begin) {
        return std::nullopt;
    }
    GroupRange range {*begin, *begin};
    while (range.end < groups.size() && groups[range.end].code < code::firstExtended) {
        ++range.end;
    }
    return range;
}

std::wstring textIn(const Groups& groups, GroupRange lines)
{
    std::wstring text;
    for (std::size_t i = lines.begin; i < lines.end; ++i) {
        if (groups[i].code == kEarlierText || groups[i].code == kText) {
            text += groups[i].text();
        }
    }
    return text;
}

void setTextIn(Groups& groups, GroupRange lines, const std::wstring& text)
{
    while (const auto earlier = groups.find(kEarlierText, lines)) {
        groups.erase(*earlier);
        --lines.end;
    }
    groups.set(kText, lines, text);
}

} // namespace

AcDbText::AcDbText()
    : AcDbText(L"TEXT")
{
    add({{code::subclass, kTextMarker}});
}

AcDbText::AcDbText(const wchar_t* dxfType)
    : AcDbEntity(dxfType, kTextMarker)
{
    addPoint(kPosition, AcGePoint3d::kOrigin);
    add({{kHeight, 1.0}, {kText, L""}});
}

GroupRange AcDbText::own() const
{
    return m_groups.subclass(kTextMarker);
}

ACHAR* AcDbText::textString() const
{
    const auto lines = severalLines(m_groups);
    return lines ? heapCopy(textIn(m_groups, *lines)) : heapCopy(m_groups.text(kText, own()));
}

Acad::ErrorStatus AcDbText::setTextString(const ACHAR* text)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    const std::wstring wanted = text == nullptr ? L"" : text;
    Groups& groups = changeGroups();
    if (const auto lines = severalLines(groups)) {
        setTextIn(groups, *lines, wanted);
    } else {
        groups.set(kText, own(), wanted);
    }
    return Acad::eOk;
}

AcGePoint3d AcDbText::position() const
{
    const Point point = m_groups.point(kPosition, own());
    return {point.x, point.y, point.z};
}

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& position)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    changeGroups().setPoint(kPosition, own(), {position.x, position.y, position.z});
    return Acad::eOk;
}

double AcDbText::height() const
{
    return m_groups.real(kHeight, own());
}

double AcDbText::rotation() const
{
    return m_groups.real(kRotation, own()) * kRadians;
}

AcGeVector3d AcDbText::normal() const
{
    const Point normal = m_groups.point(kNormal, own(), {0.0, 0.0, 1.0});
    return {normal.x, normal.y, normal.z};
}

AcDbObjectId AcDbText::textStyle() const
{
    return stub() == nullptr ? AcDbObjectId()
                             : AcDbObjectId(stub()->store->findEntry(
                                 TableKind::textStyle, m_groups.text(kStyle, own(), L"Standard")));
}
