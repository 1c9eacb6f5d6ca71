#pragma once

// Dictionaries of a drawing, and the records of free form that hang in them.

#include "host/acdb_object.h"

#include <memory>
#include <string>
#include <unordered_map>
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
/// An entry whose object is erased counts as absent.
class AcDbDictionary : public AcDbObject
{
    CORMA_HOST_CLASS(AcDbDictionary)

public:
    AcDbDictionary();
    ~AcDbDictionary() override;

    /// The object under a name, open. eKeyNotFound when there is none; then `entry` is null.
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObject*& entry, AcDb::OpenMode mode) const;
    Acad::ErrorStatus getAt(const ACHAR* name, AcDbObjectId& id) const;
    bool has(const ACHAR* name) const;
    bool has(AcDbObjectId id) const;
    [[nodiscard]] unsigned int numEntries() const;

    /// Puts a new object into the drawing, under a name, in place of one that is there. The object
    /// belongs to the drawing then and is open for write; the caller closes it. On failure it stays
    /// the caller's. eInvalidKey for an empty name, eNotOpenForWrite, eAlreadyInDb, and
    /// eInvalidDwgVersion in a drawing that has no place for it.
    Acad::ErrorStatus setAt(const ACHAR* name, AcDbObject* value, AcDbObjectId& id);

    /// Takes an entry out. The object is not erased, but is no longer anyone's: it is not saved
    /// unless it is put into another dictionary. eKeyNotFound, eNotOpenForWrite.
    Acad::ErrorStatus remove(const ACHAR* name);
    Acad::ErrorStatus remove(const ACHAR* name, AcDbObjectId& formerId);
    Acad::ErrorStatus remove(AcDbObjectId id);

    /// A walk over the entries, by name or in the order in which they were entered. The caller
    /// deletes it before the dictionary is closed.
    AcDbDictionaryIterator* newIterator(AcRx::DictIterType type = AcRx::kDictSorted) const;

    [[nodiscard]] bool isTreatElementsAsHard() const;

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

    [[nodiscard]] const Entry* entryAt(const ACHAR* name) const;
    [[nodiscard]] AcDbStub* stubOf(const Entry& entry) const; // null for an erased one

    std::vector<Entry> m_entries; // in order; removed ones stay until they are many
    std::unordered_map<std::wstring, std::size_t> m_index; // folded name to position
    std::size_t m_behindEntries = 0; // position in the other groups where the entries belong
};

class AcDbDictionaryWithDefault : public AcDbDictionary
{
    CORMA_HOST_CLASS(AcDbDictionaryWithDefault)
};

class AcDbDictionaryIterator
{
public:
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

    /// The values as a new list that the caller frees by acutRelRb(); null when there are none. A
    /// type is a group code; a point is one node, ids of objects are in rlname. Always eOk for a
    /// record that is open.
    Acad::ErrorStatus rbChain(resbuf** list) const;

    /// Makes a list the values. eInvalidResBuf for a type that a record cannot hold; the values
    /// then stay as they were.
    Acad::ErrorStatus setFromRbChain(const resbuf& list);
};
