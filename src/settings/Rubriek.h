#pragma once

#include "settings/InstellingenArray.h"

#include <string>

class AcDbDictionary;

/// A Rubriek is a category of settings: a chapter of a configuration file, or the part above its
/// first chapter, which is called "Algemeen".
class Rubriek
{
public:
    /// A null name becomes "Algemeen".
    explicit Rubriek(const wchar_t* name);

    /// The same with all entries of a drawing's dictionary, which must be open for read.
    Rubriek(const wchar_t* name, const AcDbDictionary& dictionary);

    /// From UTF-8.
    explicit Rubriek(std::string_view name);

    Rubriek(const Rubriek&) = delete;
    Rubriek& operator=(const Rubriek&) = delete;
    ~Rubriek() = default;

    [[nodiscard]] InstellingenArray& settings() { return m_settings; }

    [[nodiscard]] const InstellingenArray& settings() const { return m_settings; }

    [[nodiscard]] std::wstring name() const { return m_name.wide(); }

    [[nodiscard]] std::string_view packedName() const { return m_name.bytes(); }

    /// What the tree that shows the category knows it by.
    [[nodiscard]] void* treeItem() const { return m_treeItem; }

    void setTreeItem(void* item) { m_treeItem = item; }

    /// Takes the values that a drawing holds for the category, in the order of its dictionary, open
    /// for read. Idents that are new become settings of the drawing alone. What is no record with a
    /// text is passed over; a record that cannot be opened ends it.
    void loadDictionary(const AcDbDictionary& dictionary);

    std::wstring description; // one line

private:
    void addLocal(const wchar_t* ident, const std::wstring& value);

    corma::PackedText m_name;
    InstellingenArray m_settings {this};
    void* m_treeItem = nullptr;
};
