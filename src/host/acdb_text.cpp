#include "host/acdb_entity.h"
#include "host/model/Store.h"
#include "host/result_list.h"

#include <numbers>
#include <optional>
#include <vector>

CORMA_HOST_CLASS_BODY(AcDbText, AcDbEntity)

namespace {

using namespace corma::host;

constexpr const wchar_t* kTextMarker = L"AcDbText";
constexpr int kText = 1;
constexpr int kEarlierText = 3; // of one that is too long for a group
constexpr int kStyle = 7;
constexpr int kHeight = 40;

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

// Blanks for paragraph marks, which a single line would show. A doubled backslash is one that is
// meant as such.
std::wstring asOneLine(const std::wstring& text)
{
    std::wstring line;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isCode = text[i] == L'\\' && i + 1 < text.size();
        if (isCode && text[i + 1] == L'P') {
            line += L' ';
            ++i;
            continue;
        }
        line += text[i];
        if (isCode) {
            ++i;
            line += text[i];
        }
    }
    return line;
}

void setTextIn(Groups& groups, GroupRange lines, const std::wstring& text)
{
    while (const auto earlier = groups.find(kEarlierText, lines)) {
        groups.erase(*earlier);
        --lines.end;
    }
    groups.set(kText, lines, text);
}

// Puts several lines in the place of one group of text, parted as they are.
void copyTextIn(Groups& groups, GroupRange lines, const Groups& from, GroupRange fromLines)
{
    const std::size_t place = *groups.find(kText, lines);
    std::vector<Group> parts;
    for (std::size_t i = fromLines.begin; i < fromLines.end; ++i) {
        if (from[i].code == kEarlierText || from[i].code == kText) {
            parts.push_back(from[i]);
        }
    }
    groups.erase(place);
    groups.insert(place, std::move(parts));
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
    addPoint(code::position, AcGePoint3d::kOrigin);
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

void AcDbText::takeText(const AcDbText& other)
{
    Groups& groups = changeGroups();
    const auto to = severalLines(groups);
    const auto from = severalLines(other.m_groups);
    const std::wstring line(other.m_groups.text(kText, other.own()));
    if (!to) {
        groups.set(kText, own(), from ? asOneLine(textIn(other.m_groups, *from)) : line);
        return;
    }
    setTextIn(groups, *to, line);
    if (from) {
        copyTextIn(groups, *severalLines(groups), other.m_groups, *from);
    }
    groups.set(kText, own(), line);
}

AcGePoint3d AcDbText::position() const
{
    const Point point = m_groups.point(code::position, own());
    return {point.x, point.y, point.z};
}

Acad::ErrorStatus AcDbText::setPosition(const AcGePoint3d& position)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    changeGroups().setPoint(code::position, own(), {position.x, position.y, position.z});
    return Acad::eOk;
}

double AcDbText::height() const
{
    return m_groups.real(kHeight, own());
}

double AcDbText::rotation() const
{
    return m_groups.real(code::rotation, own()) * kRadians;
}

AcGeVector3d AcDbText::normal() const
{
    const Point normal = m_groups.point(code::normal, own(), {0.0, 0.0, 1.0});
    return {normal.x, normal.y, normal.z};
}

AcDbObjectId AcDbText::textStyle() const
{
    return stub() == nullptr ? AcDbObjectId()
                             : AcDbObjectId(stub()->store->findEntry(
                                 TableKind::textStyle, m_groups.text(kStyle, own(), L"Standard")));
}
