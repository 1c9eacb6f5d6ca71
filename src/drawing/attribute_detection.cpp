// What differs from what is prescribed.

#include "drawing/attribute_update.h"
#include "drawing/xx_atblk.h"
#include "drawing/xx_entlay.h"
#include "drawing/xx_findblk.h"
#include "drawing/xx_get_bl_attributes.h"
#include "foundation/messages.h"
#include "host/host.h"

#include <memory>
#include <unordered_map>

using corma::host::Opened;

namespace {

constexpr const wchar_t* kMatchSource = L"xx_addblk2.cpp";

// Where a block whose name is wanted is reported.
constexpr int kOpenLine = 95;
constexpr int kNameLine = 100;

std::wstring nameOf(AcDbObjectId block)
{
    std::wstring name;
    const Opened<AcDbBlockTableRecord> record(block);
    if (!record) {
        xx_reportError(kMatchSource, kOpenLine, L"0", record.status());
    } else if (const Acad::ErrorStatus status = record->getName(name); status != Acad::eOk) {
        xx_reportError(kMatchSource, kNameLine, L"0", status);
    }
    return name;
}

/// Tells which references are of blocks whose names fit a pattern. Each block is asked once, unless
/// its name cannot be had, which is reported of every reference.
class MatchingBlocks
{
public:
    explicit MatchingBlocks(const wchar_t* pattern)
        : m_pattern(pattern)
    {
    }

    bool has(const AcDbBlockReference& reference)
    {
        const AcDbObjectId block = reference.blockTableRecord();
        if (const auto known = m_answers.find(block.stub()); known != m_answers.end()) {
            return known->second;
        }
        const std::wstring name = nameOf(block);
        if (name.empty()) {
            return false;
        }
        const bool matches = acutWcMatchEx(name.c_str(), m_pattern, true);
        m_answers.emplace(block.stub(), matches);
        return matches;
    }

private:
    const wchar_t* m_pattern;
    std::unordered_map<AcDbStub*, bool> m_answers;
};

int isMatchingReference(AcDbEntity* entity, void* blocks)
{
    const auto* const reference = AcDbBlockReference::cast(entity);
    return reference != nullptr && static_cast<MatchingBlocks*>(blocks)->has(*reference) ? 1 : 0;
}

/// The attribute definitions of blocks. Each block is read once, however many references it has.
class Definitions
{
public:
    struct Lists
    {
        bool isThere = false; // false for a block that cannot be opened
        xx_VarArray all;
        xx_VarArray constant;
    };

    const Lists& of(AcDbObjectId block)
    {
        const auto [place, isNew] = m_lists.try_emplace(block.stub());
        if (isNew) {
            place->second = std::make_unique<Lists>();
            read(block, *place->second);
        }
        return *place->second;
    }

private:
    static void read(AcDbObjectId block, Lists& lists)
    {
        const Opened<AcDbBlockTableRecord> record(block);
        lists.isThere = static_cast<bool>(record);
        if (record) {
            xx_get_attdefs(*record, lists.all, false);
            xx_get_attdefs(*record, lists.constant, true);
        }
    }

    std::unordered_map<AcDbStub*, std::unique_ptr<Lists>> m_lists;
};

bool isOutOfDate(const AcDbBlockReference& reference, Definitions& definitions)
{
    const Definitions::Lists& lists = definitions.of(reference.blockTableRecord());
    xx_VarArray found;
    if (!lists.isThere) {
        xx_get_bl_attributes(&reference, found); // which tells what is wrong with the block
        return false;
    }
    if (xx_get_own_attributes(reference, found) == RTNORM) {
        for (int i = 0; i < lists.constant.length(); ++i) {
            found.setCopy(*lists.constant[i]);
        }
    }
    return !xx_same_attributes(lists.all, found);
}

/// What a reference has to be held against.
struct Prescribed
{
    MatchingBlocks blocks;
    Definitions definitions {};
};

int isMatchingAndOutOfDate(AcDbEntity* entity, void* prescribed)
{
    const auto* const reference = AcDbBlockReference::cast(entity);
    auto& of = *static_cast<Prescribed*>(prescribed);
    return reference != nullptr && of.blocks.has(*reference)
            && isOutOfDate(*reference, of.definitions)
        ? 1
        : 0;
}

bool isOutOfDate(AcDbObjectId block)
{
    xx_VarArray definitions;
    std::wstring name;
    {
        const Opened<AcDbBlockTableRecord> record(block);
        if (!record) {
            return false;
        }
        xx_get_attdefs(*record, definitions, false);
        record->getName(name);
    }
    xx_VarArray inFile;
    return definitions.length() != 0 && xx_atblk(name.c_str(), nullptr, inFile) == RTNORM
        && !xx_same_attributes(definitions, inFile);
}

} // namespace

bool xx_block_matches(const AcDbBlockReference& reference, const wchar_t* pattern)
{
    return MatchingBlocks(pattern).has(reference);
}

int xx_block_refs_in_model_space(AcDbObjectIdArray& result, const wchar_t* pattern)
{
    MatchingBlocks blocks(pattern);
    EntityQuery query;
    query.filter = isMatchingReference;
    query.argument = &blocks;
    return xx_entlay(result, query);
}

bool xx_same_attributes(const xx_VarArray& definitions, const xx_VarArray& found)
{
    if (definitions.length() != found.length()) {
        return false;
    }
    for (int i = 0; i < definitions.length(); ++i) {
        if (found.find(definitions[i]->name(), false) == nullptr) {
            return false;
        }
    }
    return true;
}

AcDbObjectIdArray xx_find_out_of_date_refs(const wchar_t* pattern)
{
    Prescribed prescribed {.blocks = MatchingBlocks(pattern)};
    EntityQuery query;
    query.filter = isMatchingAndOutOfDate; // while the reference is open, which is dear
    query.argument = &prescribed;
    AcDbObjectIdArray result;
    xx_entlay(result, query);
    return result;
}

AcDbObjectIdArray xx_find_out_of_date_records(const wchar_t* pattern)
{
    AcDbObjectIdArray blocks;
    xx_block_records(blocks, pattern);
    AcDbObjectIdArray result;
    for (const AcDbObjectId block : blocks) {
        if (isOutOfDate(block)) {
            result.append(block);
        }
    }
    return result;
}
