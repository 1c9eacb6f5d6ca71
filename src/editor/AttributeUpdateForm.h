#pragma once

#include <corma/attributes.h>

#include <optional>
#include <string>
#include <vector>

namespace corma {

/// What an attribute update found, as rows to choose from: a row for each block record that is out
/// of date, and one for all references of a block, those that are out of date first. A row tells
/// which attributes are new or too many.
class AttributeUpdateForm
{
public:
    /// A row of the list, with the texts of its two columns.
    struct Row
    {
        std::wstring name; // of the block; how often it is inserted is told behind it
        std::wstring source; // path of the drawing file; for references the name of the block
        bool isReference = false;
        AcDbObjectId id; // of the record, or of the first reference of the block
        std::vector<std::wstring> newAttributes; // tags that only the source has
        std::vector<std::wstring> extraAttributes; // tags that the source has not
        bool isChecked = false; // it is to be brought up to date
    };

    struct Tag
    {
        std::wstring text;
        bool isNew = false; // else it is an extra one
    };

    using Index = std::optional<std::size_t>;

    /// Fills the rows; what cannot be opened has none. The first row is the current one. The update
    /// must live as long; it stays as it is until accept().
    explicit AttributeUpdateForm(AttributeUpdate& update);

    [[nodiscard]] const std::vector<Row>& rows() const { return m_rows; }

    /// The row whose tags are shown and which browse() is about; nothing when there are no rows.
    [[nodiscard]] Index current() const { return m_current; }

    /// The tags of the current row, the new ones first.
    [[nodiscard]] std::vector<Tag> tags() const;

    /// True while the button stands in the current row that asks for another source.
    [[nodiscard]] bool hasBrowseButton() const { return m_hasBrowseButton; }

    /// True when the current row may have another source: that of references.
    [[nodiscard]] bool canBrowse() const;

    /// A row is selected: it is the current one from now on, and has the button if it may have
    /// another source. Nothing, or a number that no row has: none is selected any more, so the
    /// button goes, and the current row stays.
    void select(Index row);

    /// Checks a row, or unchecks it. When that changes it, the button goes.
    void check(std::size_t row, bool isChecked);

    /// Takes the block of the current row out of a drawing file. This replaces its definition in
    /// the working drawing at once, whatever becomes of the update. The row is compared anew then,
    /// and checked when something differs. False when the row stays as it was: it is not one of
    /// references, or the drawing cannot be used, which the user is told.
    [[nodiscard]] bool browse(const std::wstring& file);

    /// Leaves in the update what is checked: the records, and the references that are out of date,
    /// in the order of the rows.
    void accept();

private:
    void addRecord(AcDbObjectId id);
    void addReferences();

    AttributeUpdate& m_update;
    std::vector<Row> m_rows;
    Index m_current;
    bool m_hasBrowseButton = false;
};

} // namespace corma
