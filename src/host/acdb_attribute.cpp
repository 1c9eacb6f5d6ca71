#include "host/acdb_entity.h"
#include "host/model/Store.h"
#include "host/result_list.h"
#include "host/transform.h"

CORMA_HOST_CLASS_BODY(AcDbAttributeDefinition, AcDbText)
CORMA_HOST_CLASS_BODY(AcDbAttribute, AcDbText)

namespace {

using namespace corma::host;

constexpr const wchar_t* kDefinitionMarker = L"AcDbAttributeDefinition";
constexpr const wchar_t* kAttributeMarker = L"AcDbAttribute";
constexpr int kTag = 2;
constexpr int kPrompt = 3;
constexpr int kVersion = 280; // ahead of the tag; behind the flags it locks the position

constexpr std::int64_t kInvisible = 1;
constexpr std::int64_t kConstant = 2;
constexpr std::int64_t kVerified = 4;
constexpr std::int64_t kPreset = 8;

// --- an attribute like its definition ------------------------------------------------------------

// What a record says of itself alone: type, handle, who hears of its changes, owner.
std::size_t headOf(const Groups& groups)
{
    std::size_t end = groups.empty() ? 0 : 1;
    bool inBraces = false;
    for (; end < groups.size(); ++end) {
        const Group& group = groups[end];
        if (group.code == code::braces) {
            inBraces = group.text().starts_with(L'{');
        } else if (!inBraces && group.code != code::handle && group.code != code::owner) {
            break;
        }
    }
    return end;
}

std::size_t extendedDataOf(const Groups& groups)
{
    std::size_t begin = groups.size();
    while (begin > 0 && groups[begin - 1].code >= code::firstExtended) {
        --begin;
    }
    return begin;
}

void append(Groups& to, const Groups& from, GroupRange range)
{
    for (std::size_t i = range.begin; i < range.end; ++i) {
        to.add(from[i]);
    }
}

// What an attribute calls by another name or number.
Group asOfAttribute(const Group& group, bool isOwn)
{
    constexpr int kLines = 71;
    constexpr std::int64_t kDefinitionOfLines = 4;
    constexpr std::int64_t kSeveralLines = 2;
    if (group.code == code::subclass && group.isText(kDefinitionMarker)) {
        return {code::subclass, kAttributeMarker};
    }
    if (isOwn && group.code == kLines && group.integer() == kDefinitionOfLines) {
        return {kLines, GroupValue(kSeveralLines)};
    }
    return {group.code, group.value};
}

// The prompt is the definition's alone, and the space is that of the reference. The bytes are those
// of the definition's drawing.
void appendDefinition(Groups& attribute, const Groups& definition)
{
    const GroupRange body = definition.body();
    const GroupRange own = definition.subclass(kDefinitionMarker);
    const bool hasMarkers = definition.find(code::subclass).has_value();
    const std::size_t end = extendedDataOf(definition);
    for (std::size_t i = headOf(definition); i < end; ++i) {
        const Group& group = definition[i];
        const bool isBody = i < body.end;
        const bool isPrompt = group.code == kPrompt && i >= own.begin && i < own.end;
        const bool isSpace
            = isBody && (group.code == code::paperSpace || group.code == code::layoutName);
        if (isPrompt || isSpace) {
            continue;
        }
        attribute.add(asOfAttribute(group, hasMarkers && i >= own.begin && i < own.end));
    }
}

void keepSpace(Groups& attribute, const Groups& former)
{
    const GroupRange entity = former.subclass(kEntityMarker);
    const auto layer = attribute.find(code::layer);
    for (const int spaceCode : {code::layoutName, code::paperSpace}) {
        if (const auto at = former.find(spaceCode, entity); at && layer) {
            attribute.insert(*layer, former[*at]);
        }
    }
}

} // namespace

// --- definitions ---------------------------------------------------------------------------------

AcDbAttributeDefinition::AcDbAttributeDefinition()
    : AcDbText(L"ATTDEF")
{
    add({{code::subclass, kDefinitionMarker},
         {kVersion, 0},
         {kPrompt, L""},
         {kTag, L""},
         {code::flags, 0},
         {kVersion, 0}});
}

GroupRange AcDbAttributeDefinition::own() const
{
    return m_groups.subclass(kDefinitionMarker);
}

bool AcDbAttributeDefinition::hasFlag(std::int64_t flag) const
{
    return (m_groups.integer(code::flags, own()) & flag) != 0;
}

ACHAR* AcDbAttributeDefinition::tag() const
{
    return heapCopy(m_groups.text(kTag, own()));
}

Acad::ErrorStatus AcDbAttributeDefinition::setTag(const ACHAR* tag)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    if (tag == nullptr || *tag == 0) {
        return Acad::eInvalidInput;
    }
    changeGroups().set(kTag, own(), std::wstring(tag));
    return Acad::eOk;
}

ACHAR* AcDbAttributeDefinition::prompt() const
{
    return heapCopy(m_groups.text(kPrompt, own()));
}

bool AcDbAttributeDefinition::isInvisible() const
{
    return hasFlag(kInvisible);
}

bool AcDbAttributeDefinition::isConstant() const
{
    return hasFlag(kConstant);
}

bool AcDbAttributeDefinition::isVerifiable() const
{
    return hasFlag(kVerified);
}

bool AcDbAttributeDefinition::isPreset() const
{
    return hasFlag(kPreset);
}

// --- attributes ----------------------------------------------------------------------------------

AcDbAttribute::AcDbAttribute()
    : AcDbText(L"ATTRIB")
{
    add({{code::subclass, kAttributeMarker},
         {kVersion, 0},
         {kTag, L""},
         {code::flags, 0},
         {kVersion, 0}});
}

GroupRange AcDbAttribute::own() const
{
    return m_groups.subclass(kAttributeMarker);
}

ACHAR* AcDbAttribute::tag() const
{
    return heapCopy(m_groups.text(kTag, own()));
}

Acad::ErrorStatus AcDbAttribute::setTag(const ACHAR* tag)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    if (tag == nullptr || *tag == 0) {
        return Acad::eInvalidInput;
    }
    changeGroups().set(kTag, own(), std::wstring(tag));
    return Acad::eOk;
}

bool AcDbAttribute::isInvisible() const
{
    return (m_groups.integer(code::flags, own()) & kInvisible) != 0;
}

Acad::ErrorStatus AcDbAttribute::setAttributeFromBlock(const AcDbAttributeDefinition* definition,
                                                       const AcGeMatrix3d& blockTransform)
{
    if (!isWriteEnabled()) {
        return Acad::eNotOpenForWrite;
    }
    if (definition == nullptr) {
        return Acad::eNullObjectPointer;
    }
    Groups prescribed;
    append(prescribed, m_groups, {0, headOf(m_groups)});
    appendDefinition(prescribed, definition->groups());
    const Acad::ErrorStatus status = transformPrescribed(prescribed, blockTransform);
    if (status != Acad::eOk) {
        return status;
    }
    keepSpace(prescribed, m_groups);
    append(prescribed, m_groups, {extendedDataOf(m_groups), m_groups.size()});
    changeGroups() = std::move(prescribed);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbAttribute::erase(bool erasing)
{
    const Acad::ErrorStatus status = AcDbText::erase(erasing);
    AcDbStub* const owner = stub() == nullptr ? nullptr : stub()->container;
    if (status == Acad::eOk && owner != nullptr) {
        if (auto* reference = AcDbBlockReference::cast(&owner->store->resident(*owner))) {
            reference->endAttributes();
        }
    }
    return status;
}
