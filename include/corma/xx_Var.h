#pragma once

// data/ - the library's general result container: an ordered list of named, typed values for
// functions that return a number of things whose type is known only at run time. An element is one
// value (a setting, an attribute) or a whole column (a database result, one value for each row).

#include <corma/export.h>
#include <corma/host.h>

#include <cstdint>

/// A name with a vector of values that all have the same type. It begins with a host result node
/// whose `resval.rstring` is the name, so that a record can be read as such a node; `rbnext` is
/// null and `restype` is RTSTR once the record has a name, 0 in an empty record.
///
/// A record owns its name, its vector and its text values, all on the general heap; a copy of a
/// record has copies of its own. Appending first grows the vector by 10 slots when it is full; no
/// value beyond the 32760th is kept. Names and texts that are passed in are copied and may be null;
/// a null text is kept as a null value.
struct CORMA_EXPORT xx_Var : resbuf
{
    /// Most values that a record holds: what fits is counted in 16 bits, by tens.
    static constexpr int kMostValues = 32'760;

    /// An empty record: no name, no type, no values.
    xx_Var();

    /// A record of one value, of type RTREAL, RTLONG and RTSTR.
    xx_Var(const wchar_t* name, double value);
    xx_Var(const wchar_t* name, std::int32_t value);
    xx_Var(const wchar_t* name, const wchar_t* value);

    /// Deep copies: head, cursor, type and values. Values are copied when their type is RTREAL,
    /// RTSHORT, RTSTR, RT3DPOINT or RTLONG; those of another type are left behind.
    xx_Var(const xx_Var& other);
    xx_Var& operator=(const xx_Var& other);

    /// Takes over all that the other record has, which is an empty one then. Assigning a record to
    /// itself changes nothing.
    xx_Var(xx_Var&& other) noexcept;
    xx_Var& operator=(xx_Var&& other) noexcept;

    ~xx_Var();

    /// Append a value. An empty record takes over the name and becomes RTREAL, RTLONG, RTLONG and
    /// RTSTR. On a record of that type the name is only a check on the caller: one that differs
    /// from the record's name (case counts, null equals only null) is reported and the value is
    /// stored all the same. On a record of any other type the clash is reported and nothing is
    /// stored. addShort() serves records of type RTSHORT, which keep the low 16 bits, and RTLONG.
    void add(const wchar_t* name, double value);
    void addLong(const wchar_t* name, std::int32_t value);
    void addShort(const wchar_t* name, std::int32_t value);
    void addText(const wchar_t* name, const wchar_t* value);

    /// The name, owned by the record; null unless `restype` is RTSTR.
    [[nodiscard]] const wchar_t* name() const;

    /// The same for a record that may be null, which has no name.
    [[nodiscard]] static const wchar_t* name(const xx_Var* record);

    /// True when `cursor` is the index of a value.
    [[nodiscard]] bool cursorValid() const;

    /// The value at the cursor, owned by the record; null when there is none, when it is a null
    /// text, or when `type` is not RTSTR.
    [[nodiscard]] const wchar_t* currentText() const;

    unsigned short type = 0; // of all values: RTREAL, RTSHORT, RTSTR, RT3DPOINT, RTLONG; 0 for none
    ads_u_val* values = nullptr; // `capacity` slots, the unused ones zero; null before the first
    short count = 0; // values in use
    short capacity = 0; // slots allocated
    short cursor = 0; // index of the current value; the library copies it and never moves it
};

/// A growable array that owns its records. Each was made by `new` and stands in one array only.
/// Names are looked for without regard to case; null is a name of its own, that of nameless
/// records.
class CORMA_EXPORT xx_VarArray
{
public:
    xx_VarArray() = default;

    /// Deep copies, in the same order. Assignment deletes what the array held.
    xx_VarArray(const xx_VarArray& other);
    xx_VarArray& operator=(const xx_VarArray& other);

    ~xx_VarArray();

    /// Deletes all elements, the last one first. The slots stay allocated.
    void clear();

    /// The first element of that name, still owned by the array; null when there is none, which is
    /// told to the user when `report` is set.
    [[nodiscard]] xx_Var* find(const wchar_t* name, bool report) const;

    /// Deletes the first element of that name; the others keep their order. RTNORM, or RTCAN when
    /// there is none.
    int remove(const wchar_t* name);

    /// Overwrites the first element of the record's name where it stands, its name's spelling
    /// included; without one appends a copy. The caller keeps its record.
    void setCopy(const xx_Var& record);

    /// The same with a record that nobody else needs: its contents are taken over, which saves the
    /// copying.
    void setCopy(xx_Var&& record);

    /// Deletes the first element of the record's name, then appends the record, which the array
    /// now owns. Null is ignored.
    void setOwned(xx_Var* record);

    /// Appends the record, whatever its name; the array owns it now. Null is ignored.
    void append(xx_Var* record);

    /// The same before the element at `index`; an index that is no element's means at the end.
    void insertAt(int index, xx_Var* record);

    /// Elements in use.
    [[nodiscard]] int length() const { return m_logicalLength; }

    /// Elements that fit before the slots grow.
    [[nodiscard]] int physicalLength() const { return m_physicalLength; }

    /// The element at an index below length(), still owned by the array.
    [[nodiscard]] xx_Var* operator[](int index) const { return m_slots[index]; }

    /// The same; null for an index that is no element's.
    [[nodiscard]] xx_Var* at(int index) const;

private:
    [[nodiscard]] bool isIndex(int index) const { return 0 <= index && index < m_logicalLength; }

    [[nodiscard]] int indexOf(const wchar_t* name) const;
    xx_Var* detach(int index);
    bool makeRoom();

    xx_Var** m_slots = nullptr; // m_physicalLength pointers on the general heap
    std::int32_t m_physicalLength = 0;
    std::int32_t m_logicalLength = 0;
    std::int32_t m_growLength = 8; // least number of slots to grow by
};
