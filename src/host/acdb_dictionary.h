#pragma once

// Dictionaries of a drawing, and the records of free form that hang in them.

#include "host/PositionIndex.h"
#include "host/acdb_object.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

class AcDbDictionaryIterator;

namespace AcRx {

enum DictIterType
{
    kDictSorted = 0,
    kDictCollated = 1
};

} // namespace AcRx

/// Objects under names. Names compare without regard to case and are kept as they were written.
/// An entry whose object is erased, or is not there, counts as absent; one that the file has
/// without an object stays there all the same.
class AcDbDictionary : public AcDbObject
{
    CORMA_HOST_CLASS(AcDbDictionary)

public:
    AcDbDictionary();
    ~AcDbDictionary() override;

    /// The object under a name, open. eKeyNotFound when there is none; then `entry` is null.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObject*& entry, AcDb::OpenMode mode) const;
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id) const;
    [[nodiscard]] bool has(const ACHAR* name) const;
    [[nodiscard]] bool has(AcDbObjectId id) const;
    [[nodiscard]] unsigned int numEntries() const;

    /// Puts a new object into the drawing, under a name. The object belongs to the drawing then and
    /// is open for write; the caller closes it. On failure it stays the caller's. An object of the
    /// drawing gets an entry only, and this dictionary for its owner if it has no other.
    ///
    /// What was under the name is erased if this dictionary owned it; eWasOpenForRead or
    /// eWasOpenForWrite when someone has it open. eInvalidKey for an empty name, eNotOpenForWrite,
    /// eNotApplicable when the dictionary is in no drawing, eWrongDatabase for an object of another
    /// drawing, eWasErased for an erased one or in an erased dictionary, eInvalidInput for the
    /// dictionary itself or one that it hangs in, and eInvalidDwgVersion, with a message, in a
    /// drawing that has no place for it.
    Acad::ErrorStatus setAt(const ACHAR* name, AcDbObject* value, AcDbObjectId& id);

    /// Takes an entry out. The object is not erased, but is no longer anyone's: it is not saved
    /// unless it is put into another dictionary. eKeyNotFound, eNotOpenForWrite.
    Acad::ErrorStatus remove(const ACHAR* name);
    Acad::ErrorStatus remove(const ACHAR* name, AcDbObjectId& formerId);
    Acad::ErrorStatus remove(AcDbObjectId id);

    /// A walk over the entries of now, by name or in the order in which they were entered; those
    /// that are erased or taken out meanwhile are passed over. The caller deletes it before the
    /// dictionary is closed.
    AcDbDictionaryIterator* newIterator(AcRx::DictIterType type = AcRx::kDictSorted) const;

    [[nodiscard]] bool isTreatElementsAsHard() const;

    /// eCannotBeErasedByCaller for the named objects dictionary.
    Acad::ErrorStatus erase(bool erasing = true) override;

    corma::host::Groups completeGroups() const override;

    bool staysInMemory() const override { return true; }

protected:
    void groupsWereRead() override;

private:
    friend class AcDbDictionaryIterator;

    struct Entry
    {
        corma::host::Group name;
        corma::host::Group object; // its handle; the code tells whether it is owned
        bool isRemoved = false;
    };

    [[nodiscard]] bool isNamed(std::size_t position, std::wstring_view name) const;
    [[nodiscard]] std::size_t positionOf(std::wstring_view name) const;
    [[nodiscard]] std::size_t positionOf(AcDbObjectId id) const;
    [[nodiscard]] AcDbStub* stubOf(const Entry& entry) const; // null for one that counts as absent
    [[nodiscard]] Acad::ErrorStatus checkNew(const ACHAR* name, const AcDbObject* value) const;
    [[nodiscard]] Acad::ErrorStatus makeRoom(std::wstring_view name, const AcDbObject& value);
    [[nodiscard]] bool hangsIn(const AcDbStub& other) const;
    void enter(std::wstring_view name, corma::host::Handle object);
    void takeOut(std::size_t position);
    void loosen(const Entry& entry);
    void index(std::size_t position);
    void forget(std::size_t position);
    void compact();

    std::vector<Entry> m_entries; // in order; removed ones stay until they are many
    corma::host::PositionIndex m_byName; // without regard to case
    corma::host::PositionIndex m_byObject; // by its handle
    std::size_t m_removed = 0;
    std::size_t m_behindEntries = 0; // groups of its own subclass that follow the entries
    mutable int m_iterators = 0; // positions are kept while there are any
};

class AcDbDictionaryWithDefault : public AcDbDictionary
{
    CORMA_HOST_CLASS(AcDbDictionaryWithDefault)
};

class AcDbDictionaryIterator
{
public:
    AcDbDictionaryIterator(const AcDbDictionaryIterator&) = delete;
    AcDbDictionaryIterator& operator=(const AcDbDictionaryIterator&) = delete;
    ~AcDbDictionaryIterator();

    [[nodiscard]] bool done() const;
    bool next(); // false when there is no further entry
    [[nodiscard]] const ACHAR* name() const; // good while the dictionary stays as it is
    [[nodiscard]] AcDbObjectId objectId() const;
    Acad::ErrorStatus getObject(AcDbObject*& object, AcDb::OpenMode mode) const;

private:
    friend class AcDbDictionary;
    AcDbDictionaryIterator(const AcDbDictionary& dictionary, AcRx::DictIterType type);

    const AcDbDictionary& m_dictionary;
    std::vector<std::size_t> m_positions;
    std::size_t m_at = 0;
};

/// A list of typed values.
class AcDbXrecord : public AcDbObject
{
    CORMA_HOST_CLASS(AcDbXrecord)

public:
    AcDbXrecord();

    explicit AcDbXrecord(corma::host::WithoutGroups /*none*/) { }

    /// The values as a new list that the caller frees by acutRelRb(); null when there are none. A
    /// type is a group code, of a point that of its x; ids of objects are in rlname, null for what
    /// is not in the drawing. Always eOk for a record that is open, but for eOutOfMemory.
    Acad::ErrorStatus rbChain(resbuf** list) const;

    /// Makes a list the values; those that stay the same in their places keep their bytes. Bytes
    /// are stored in chunks of 127, which come back as so many values. eInvalidResBuf for a type
    /// that a record cannot hold (0, 999, 1001 and what is no group code), a handle that is no
    /// hexadecimal number, a text or bytes that are null; eWrongDatabase for an object of another
    /// drawing; eNotOpenForWrite. The values then stay as they were.
    Acad::ErrorStatus setFromRbChain(const resbuf& list);

private:
    [[nodiscard]] corma::host::GroupRange data() const;
    Acad::ErrorStatus addGroups(const resbuf& node, std::optional<corma::host::GroupRange> former,
                                std::vector<corma::host::Group>& groups) const;
};
