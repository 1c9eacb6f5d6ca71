#include "editor/AttributeUpdateForm.h"

#include "drawing/side_database.h"
#include "drawing/xx_atblk.h"
#include "drawing/xx_findblk.h"
#include "drawing/xx_get_bl_attributes.h"
#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include "platform/text.h"

#include <algorithm>
#include <unordered_map>

namespace corma {

using host::Opened;
using Row = AttributeUpdateForm::Row;

namespace {

constexpr const wchar_t* kAttributeUpdateSource = L"xx_attUpdateDlg.cpp";
constexpr int kReadCode = 300; // a drawing cannot be read, as xx_findblk() reports it
constexpr wchar_t kBehindFile = L'!';
constexpr wchar_t kAnew = L'$'; // the block is loaded though it is there
constexpr std::size_t kLongestFile = 260; // that xx_findblk() takes out of a text, in characters

// --- what differs --------------------------------------------------------------------------------

std::vector<std::wstring> namesOf(const xx_VarArray& attributes)
{
    std::vector<std::wstring> names;
    names.reserve(static_cast<std::size_t>(attributes.length()));
    for (int i = 0; i < attributes.length(); ++i) {
        names.emplace_back(view(attributes[i]->name()));
    }
    return names;
}

// What both lists have goes out of both.
void compare(xx_VarArray& source, xx_VarArray& object, Row& row)
{
    for (int i = source.length() - 1; i >= 0; --i) {
        const std::wstring name(view(source[i]->name()));
        if (object.remove(name.c_str()) == RTNORM) {
            source.remove(name.c_str());
        }
    }
    row.newAttributes = namesOf(source);
    row.extraAttributes = namesOf(object);
}

// --- names of blocks -----------------------------------------------------------------------------

std::wstring folded(std::wstring name)
{
    std::transform(name.begin(), name.end(), name.begin(), foldCase);
    return name;
}

// True for a name that, as a pattern, fits nothing but itself in either case. Block names may have
// characters that mean something in a pattern, such as "#" and ".".
bool isPlain(const std::wstring& name)
{
    constexpr wchar_t kBehindAscii = 0x80;
    return std::all_of(name.begin(), name.end(), [](wchar_t c) {
        return c >= kBehindAscii || (c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'Z')
            || (c >= L'a' && c <= L'z') || c == L'_' || c == L'-' || c == L'$' || c == L' ';
    });
}

// --- references ----------------------------------------------------------------------------------

/// Fills the rows of references. The rule: each time a block is met again in a pass, every row made
/// by then whose block name fits that of the block, taken as a pattern, is told the count of the
/// pass so far. Since later texts replace earlier ones, only the last text of each block in each
/// pass can stay, and the texts are written once, at the end: work for each reference would
/// otherwise grow with the number of blocks.
class ReferenceRows
{
public:
    explicit ReferenceRows(std::vector<Row>& rows)
        : m_rows(rows)
        , m_first(rows.size())
    {
    }

    /// A pass: a block has a row of its own in each.
    void add(const AcDbObjectIdArray& references, bool isChecked)
    {
        std::unordered_map<AcDbStub*, Seen> seen;
        for (const AcDbObjectId id : references) {
            ++m_time;
            const Opened<AcDbBlockReference> reference(id);
            if (!reference) {
                continue;
            }
            const AcDbObjectId block = reference->blockTableRecord();
            if (const auto known = seen.find(block.stub()); known != seen.end()) {
                ++known->second.count;
                known->second.time = m_time;
            } else if (addRow(*reference, block, isChecked)) {
                seen.emplace(block.stub(), Seen {.name = m_rows.back().source, .time = m_time});
            }
        }
        for (auto& [stub, block] : seen) {
            if (block.count > 1) {
                m_repeated.push_back(std::move(block));
            }
        }
    }

    void writeCounts()
    {
        std::sort(m_repeated.begin(), m_repeated.end(),
                  [](const Seen& a, const Seen& b) { return a.time > b.time; });
        std::unordered_map<std::wstring, const Seen*> latestByName;
        std::vector<const Seen*> patterns; // the latest first
        for (const Seen& block : m_repeated) {
            if (isPlain(block.name)) {
                latestByName.emplace(folded(block.name), &block);
            } else {
                patterns.push_back(&block);
            }
        }
        for (std::size_t i = m_first; i < m_rows.size(); ++i) {
            Row& row = m_rows[i];
            const auto named = latestByName.find(folded(row.source));
            const Seen* const last
                = latest(row, named == latestByName.end() ? nullptr : named->second, patterns);
            if (last != nullptr && last->time > m_made[i - m_first]) {
                row.name = last->name + L" (" + std::to_wstring(last->count) + L')';
            }
        }
    }

private:
    struct Seen
    {
        std::wstring name;
        int count = 1;
        std::size_t time = 0; // of the last one, in references
    };

    bool addRow(const AcDbBlockReference& reference, AcDbObjectId block, bool isChecked)
    {
        const Opened<AcDbBlockTableRecord> record(block);
        Row row;
        if (!record || record->isAnonymous() || record->getName(row.name) != Acad::eOk) {
            return false;
        }
        row.source = row.name;
        row.isReference = true;
        row.id = reference.objectId();
        row.isChecked = isChecked;
        xx_VarArray source;
        xx_VarArray object;
        xx_get_attdefs(*record, source, false);
        xx_get_bl_attributes(&reference, object);
        compare(source, object, row);
        m_rows.push_back(std::move(row));
        m_made.push_back(m_time);
        return true;
    }

    static const Seen* latest(const Row& row, const Seen* named,
                              const std::vector<const Seen*>& patterns)
    {
        for (const Seen* const pattern : patterns) {
            if (named != nullptr && named->time > pattern->time) {
                break;
            }
            if (acutWcMatchEx(row.source.c_str(), pattern->name.c_str(), true)) {
                return pattern;
            }
        }
        return named;
    }

    std::vector<Row>& m_rows;
    std::size_t m_first; // row of this kind
    std::vector<std::size_t> m_made; // when each of them was made
    std::vector<Seen> m_repeated; // blocks that were met more than once in a pass
    std::size_t m_time = 0;
};

// --- another source ------------------------------------------------------------------------------

// The text for xx_findblk() ends the file at the first "!" and cuts it when it is long. Where that
// would be another file, the drawing is read here, and the text names a file for the form only.
AcDbObjectId blockOutOf(const std::wstring& file, const std::wstring& name, int& status)
{
    const std::wstring block = std::wstring {kBehindFile, kAnew} + name;
    if (file.size() <= kLongestFile && file.find(kBehindFile) == std::wstring::npos) {
        std::wstring text = file + block;
        return xx_findblk(text.data(), &status);
    }
    const SideDatabase side = readAsideByName(file);
    if (side.status != Acad::eOk) {
        xx_reportError(kAttributeUpdateSource, __LINE__, acadErrorStatusText(side.status),
                       kReadCode);
        status = RTCAN;
        return {};
    }
    std::wstring text = L"file" + block;
    return xx_findblk(text.data(), &status, nullptr, side.database.get());
}

} // namespace

AttributeUpdateForm::AttributeUpdateForm(AttributeUpdate& update)
    : m_update(update)
{
    for (const AcDbObjectId id : update.outOfDateRecords) {
        addRecord(id);
    }
    addReferences();
    if (!m_rows.empty()) {
        m_current = 0;
    }
}

// A record whose drawing file cannot be read any more has a row all the same.
void AttributeUpdateForm::addRecord(AcDbObjectId id)
{
    Row row;
    row.id = id;
    row.isChecked = true;
    xx_VarArray object;
    {
        const Opened<AcDbBlockTableRecord> record(id);
        if (!record || record->getName(row.name) != Acad::eOk) {
            return;
        }
        xx_get_attdefs(*record, object, false);
    }
    xx_VarArray source;
    xx_atblk(row.name.c_str(), &row.source, source);
    compare(source, object, row);
    m_rows.push_back(std::move(row));
}

void AttributeUpdateForm::addReferences()
{
    ReferenceRows references(m_rows);
    references.add(m_update.outOfDateRefs, true);
    references.add(m_update.upToDateRefs, false);
    references.writeCounts();
}

std::vector<AttributeUpdateForm::Tag> AttributeUpdateForm::tags() const
{
    std::vector<Tag> tags;
    if (!m_current) {
        return tags;
    }
    const Row& row = m_rows[*m_current];
    for (const std::wstring& tag : row.newAttributes) {
        tags.push_back({.text = tag, .isNew = true});
    }
    for (const std::wstring& tag : row.extraAttributes) {
        tags.push_back({.text = tag, .isNew = false});
    }
    return tags;
}

bool AttributeUpdateForm::canBrowse() const
{
    return m_current && m_rows[*m_current].isReference;
}

void AttributeUpdateForm::select(Index row)
{
    const bool isRow = row && *row < m_rows.size();
    if (isRow) {
        m_current = row;
    }
    m_hasBrowseButton = isRow && canBrowse();
}

void AttributeUpdateForm::check(std::size_t row, bool isChecked)
{
    if (m_rows[row].isChecked != isChecked) {
        m_rows[row].isChecked = isChecked;
        m_hasBrowseButton = false;
    }
}

bool AttributeUpdateForm::browse(const std::wstring& file)
{
    if (!canBrowse()) {
        return false;
    }
    Row& row = m_rows[*m_current];
    int status = RTNORM;
    const AcDbObjectId block = blockOutOf(file, row.source, status);
    if (status != RTNORM) {
        return false;
    }
    xx_VarArray source;
    {
        const Opened<AcDbBlockTableRecord> record(block);
        if (!record) {
            return false;
        }
        xx_get_attdefs(*record, source, false);
    }
    xx_VarArray object;
    xx_get_bl_attributes(row.id, object);
    compare(source, object, row);
    if (!row.newAttributes.empty() || !row.extraAttributes.empty()) {
        check(*m_current, true);
    }
    return true;
}

void AttributeUpdateForm::accept()
{
    m_update.outOfDateRecords.removeAll();
    m_update.outOfDateRefs.removeAll();
    for (const Row& row : m_rows) {
        if (row.isChecked) {
            (row.isReference ? m_update.outOfDateRefs : m_update.outOfDateRecords).append(row.id);
        }
    }
}

} // namespace corma
