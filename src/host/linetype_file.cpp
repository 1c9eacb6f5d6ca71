#include "host/linetype_file.h"

#include "host/definition_text.h"
#include "host/host.h"
#include "host/own_definitions.h"
#include "platform/text.h"

namespace corma::host {

namespace {

constexpr std::size_t kMostDashes = 12; // of a linetype

void readPattern(std::wstring_view pattern, LinetypeDefinition& definition)
{
    takeUntil(pattern, L','); // the alignment; there is one only
    while (!pattern.empty()) {
        const auto dash = numberIn(takeUntil(pattern, L','));
        if (!dash || definition.dashes.size() == kMostDashes) {
            definition.isSimple = false;
            return;
        }
        definition.dashes.push_back(*dash);
    }
}

} // namespace

std::vector<LinetypeDefinition> parseLinetypes(std::wstring_view text)
{
    std::vector<LinetypeDefinition> found;
    bool wantsPattern = false;
    while (!text.empty()) {
        std::wstring_view line = trimmed(takeUntil(text, L'\n'));
        if (line.starts_with(L'*')) {
            line.remove_prefix(1);
            LinetypeDefinition definition;
            definition.name = trimmed(takeUntil(line, L','));
            definition.description = trimmed(line);
            found.push_back(std::move(definition));
            wantsPattern = true;
        } else if (wantsPattern && !line.empty() && foldCase(line.front()) == foldCase(L'A')) {
            readPattern(line, found.back());
            wantsPattern = false;
        }
    }
    return found;
}

std::optional<std::wstring> linetypeFile(const std::wstring& name)
{
    const auto file = definitionFile(name, kOwnLinetypeFiles);
    return file ? std::optional(file->text) : std::nullopt;
}

} // namespace corma::host

// --- loading -------------------------------------------------------------------------------------

namespace {

using namespace corma::host;

void fill(AcDbLinetypeTableRecord& record, const LinetypeDefinition& definition)
{
    constexpr int kDescription = 3;
    constexpr int kDashes = 73;
    constexpr int kLength = 40;
    constexpr int kDash = 49;
    constexpr int kDashKind = 74;
    record.setName(definition.name.c_str());
    Groups& groups = record.changeGroups();
    double length = 0.0;
    for (const double dash : definition.dashes) {
        length += dash < 0 ? -dash : dash;
    }
    groups.set(kDescription, groups.body(), definition.description);
    groups.set(kDashes, groups.body(), static_cast<std::int64_t>(definition.dashes.size()));
    groups.set(kLength, groups.body(), length);
    for (const double dash : definition.dashes) {
        groups.add(Group(kDash, dash));
        groups.add(Group(kDashKind, 0));
    }
}

Acad::ErrorStatus load(AcDbLinetypeTable& table, const LinetypeDefinition& definition)
{
    if (!definition.isSimple) {
        return Acad::eNotImplementedYet;
    }
    Acad::ErrorStatus status = table.isWriteEnabled() ? Acad::eOk : table.upgradeOpen();
    if (status != Acad::eOk) {
        return status;
    }
    auto record = std::make_unique<AcDbLinetypeTableRecord>();
    fill(*record, definition);
    status = table.add(record.get());
    if (status == Acad::eOk) {
        record.release()->close();
    }
    return status;
}

using Definitions = std::vector<LinetypeDefinition>;

// All that the drawing does not have yet.
Acad::ErrorStatus loadAll(AcDbLinetypeTable& table, const Definitions& definitions)
{
    for (const LinetypeDefinition& definition : definitions) {
        if (table.has(definition.name.c_str())) {
            continue;
        }
        const Acad::ErrorStatus status = load(table, definition);
        if (status != Acad::eOk) {
            return status;
        }
    }
    return Acad::eOk;
}

Acad::ErrorStatus loadOne(AcDbLinetypeTable& table, const Definitions& definitions,
                          std::wstring_view name)
{
    for (const LinetypeDefinition& definition : definitions) {
        if (corma::equalIgnoringCase(definition.name, name)) {
            return load(table, definition);
        }
    }
    return Acad::eUndefinedLineType;
}

} // namespace

Acad::ErrorStatus AcDbDatabase::loadLineTypeFile(const ACHAR* linetypeName, const ACHAR* fileName)
{
    if (linetypeName == nullptr || *linetypeName == 0 || fileName == nullptr || *fileName == 0) {
        return Acad::eInvalidInput;
    }
    Opened<AcDbLinetypeTable> table;
    const Acad::ErrorStatus status = getLinetypeTable(table.out(), AcDb::kForRead);
    if (status != Acad::eOk) {
        return status;
    }
    const bool wantsAll = std::wstring_view(linetypeName) == L"*";
    if (!wantsAll && table->has(linetypeName)) {
        return Acad::eDuplicateKey;
    }
    const auto content = linetypeFile(fileName);
    if (!content) {
        return Acad::eFileNotFound;
    }
    const Definitions definitions = parseLinetypes(*content);
    return wantsAll ? loadAll(*table, definitions) : loadOne(*table, definitions, linetypeName);
}
