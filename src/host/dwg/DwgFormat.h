#pragma once

#include "host/dwg/Container.h"
#include "host/dwg/Record.h"
#include "host/dwg/StoreNames.h"
#include "host/model/DrawingFormat.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace corma::host::dwg {

/// A drawing as it stands in a DWG file. The record of a stub begins at its offset in the objects
/// of the container; that of a class has its position among the classes there.
class DwgFormat : public DrawingFormat
{
public:
    /// `places` has the places of blocks in their table: blocks without a name of their own, such
    /// as "*D", are told apart by them.
    using BlockPlaces = std::unordered_map<Handle, std::size_t>;
    DwgFormat(std::unique_ptr<Container> container, FileForm form, TypeTable types, Store& store,
              BlockPlaces places);

    [[nodiscard]] const Container& container() const { return *m_container; }

    [[nodiscard]] const FileForm& form() const { return m_form; }

    [[nodiscard]] const TypeTable& types() const { return m_types; }

    /// The record of a stub, with the length ahead and the checksum behind.
    [[nodiscard]] std::string_view bytesOf(const AcDbStub& stub) const;

    /// Nothing for a stub that has none, and for one that is damaged beyond its type.
    [[nodiscard]] std::optional<Record> recordOf(const AcDbStub& stub) const;

    using DrawingFormat::decode;
    void decode(const AcDbStub& stub, Groups& groups) const override;

    [[nodiscard]] std::optional<BitsForm> bitsForm() const override;

    [[nodiscard]] WriteResult write(const Store& store, const std::wstring& path) const override;

private:
    [[nodiscard]] bool isClass(const AcDbStub& stub) const;
    void numberName(Handle block, Groups& groups) const;
    void decodeHeader(Groups& groups) const;
    void addBlockFacts(const Record& block, Groups& groups) const;

    std::unique_ptr<Container> m_container;
    FileForm m_form;
    TypeTable m_types;
    Store* m_store;
    StoreNames m_names;
    BlockPlaces m_blockPlaces;
};

} // namespace corma::host::dwg
