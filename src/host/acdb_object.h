#pragma once

// Objects of a drawing: their classes, how they are opened and closed.

#include "host/error_status.h"
#include "host/model/Group.h"
#include <corma/host.h>

#include <memory>
#include <string>
#include <utility>

class AcDbDatabase;
class AcDbHandle;
class AcDbStub;
class AcRxObject;

namespace corma::host {
class Store;
struct ObjectOpening;

/// Asks for an object that has no groups yet, those of a new one neither: it gets its record's.
struct WithoutGroups
{
};
} // namespace corma::host

namespace AcDb {

enum OpenMode
{
    kForRead = 0,
    kForWrite = 1,
    kForNotify = 2
};

} // namespace AcDb

/// A class of the host at run time.
class AcRxClass
{
public:
    constexpr AcRxClass(const ACHAR* name, const AcRxClass* parent)
        : m_name(name)
        , m_parent(parent)
    {
    }

    /// Such as "AcDbXrecord".
    [[nodiscard]] const ACHAR* name() const { return m_name; }

    [[nodiscard]] const AcRxClass* myParent() const { return m_parent; }

    /// True for the class itself, too.
    bool isDerivedFrom(const AcRxClass* other) const;

private:
    const ACHAR* m_name;
    const AcRxClass* m_parent;
};

// Gives a class its run-time description, and a cast that gives null for another class.
// NOLINTBEGIN(bugprone-macro-parentheses): names of classes cannot be in parentheses
#define CORMA_HOST_CLASS(Class)                                                                    \
public:                                                                                            \
    static AcRxClass* desc();                                                                      \
    [[nodiscard]] AcRxClass* isA() const override                                                  \
    {                                                                                              \
        return desc();                                                                             \
    }                                                                                              \
    static Class* cast(const AcRxObject* object)                                                   \
    {                                                                                              \
        return object != nullptr && object->isKindOf(desc())                                       \
            ? static_cast<Class*>(const_cast<AcRxObject*>(object))                                 \
            : nullptr;                                                                             \
    }

#define CORMA_HOST_CLASS_BODY(Class, Parent)                                                       \
    AcRxClass* Class::desc()                                                                       \
    {                                                                                              \
        static AcRxClass description(L## #Class, Parent::desc());                                  \
        return &description;                                                                       \
    }

// NOLINTEND(bugprone-macro-parentheses)

class AcRxObject
{
public:
    AcRxObject() = default;
    AcRxObject(const AcRxObject&) = delete;
    AcRxObject& operator=(const AcRxObject&) = delete;
    virtual ~AcRxObject();

    static AcRxClass* desc();

    [[nodiscard]] virtual AcRxClass* isA() const { return desc(); }

    bool isKindOf(const AcRxClass* other) const { return isA()->isDerivedFrom(other); }
};

/// An object of a drawing. One that was just made is nobody's: it is open for write, and its maker
/// deletes it if it does not get into a drawing. One of a drawing is opened, used, and closed; it
/// must not be deleted, and the pointer is good until it is closed.
class AcDbObject : public AcRxObject
{
    CORMA_HOST_CLASS(AcDbObject)

public:
    ~AcDbObject() override;

    /// Null for an object that is in no drawing.
    [[nodiscard]] AcDbObjectId objectId() const;

    /// Null when the drawing does not tell the owner.
    [[nodiscard]] AcDbObjectId ownerId() const;
    void getAcDbHandle(AcDbHandle& handle) const;
    [[nodiscard]] AcDbDatabase* database() const;

    /// Ends one opening. Every opening needs one; the pointer is then not to be used.
    Acad::ErrorStatus close();

    /// Marks the object as erased, with what it owns, or takes the mark away. It must be open for
    /// write. eCannotBeErasedByCaller for what only tells where another object begins or ends.
    virtual Acad::ErrorStatus erase(bool erasing = true);
    [[nodiscard]] bool isErased() const;

    /// From read to write, when nobody else reads it.
    Acad::ErrorStatus upgradeOpen();
    Acad::ErrorStatus downgradeOpen();
    [[nodiscard]] bool isReadEnabled() const;
    [[nodiscard]] bool isWriteEnabled() const;
    [[nodiscard]] bool isNewObject() const; // in no drawing yet

    /// True once a setter changed the object since its drawing was read.
    [[nodiscard]] bool isModified() const;

    /// The record's name in DXF, such as "XRECORD".
    [[nodiscard]] std::wstring dxfName() const;

    // --- inside the host -----------------------------------------------------------------------

    /// What it is made of. Those of a dictionary do not have its entries; see completeGroups().
    [[nodiscard]] const corma::host::Groups& groups() const { return m_groups; }

    /// The same for changing; the object is then a changed one. It must be open for write.
    corma::host::Groups& changeGroups();

    /// The groups as they are to be written.
    [[nodiscard]] virtual corma::host::Groups completeGroups() const { return m_groups; }

    /// True for an object that is kept in memory when nobody has it open, as what it worked out of
    /// its groups is dear.
    [[nodiscard]] virtual bool staysInMemory() const { return false; }

    [[nodiscard]] AcDbStub* stub() const { return m_stub; }

    /// An object without groups, for a record of a drawing that has them.
    AcDbObject() = default;

protected:
    /// A new record of that type name, such as L"XRECORD", without a handle.
    explicit AcDbObject(const wchar_t* dxfType);

    /// Called once the object has its groups from a file.
    virtual void groupsWereRead() { }

    corma::host::Groups m_groups;

private:
    friend class corma::host::Store;
    friend struct corma::host::ObjectOpening;

    AcDbStub* m_stub = nullptr;
    unsigned short m_readers = 0;
    bool m_hasWriter = false;
};

/// Opens an object. On failure `object` is null and the status tells why: eNullObjectId,
/// eWasErased, eWasOpenForWrite (someone writes it), eWasOpenForRead (write was asked for while
/// someone reads it), eAtMaxReaders (256 read it).
Acad::ErrorStatus acdbOpenAcDbObject(AcDbObject*& object, AcDbObjectId id, AcDb::OpenMode mode,
                                     bool openErased = false);

/// The same for an object of a class; eNotThatKindOfClass for one of another class, which is then
/// not open.
template<class Object>
Acad::ErrorStatus acdbOpenObject(Object*& object, AcDbObjectId id,
                                 AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false)
{
    object = nullptr;
    AcDbObject* any = nullptr;
    const Acad::ErrorStatus status = acdbOpenAcDbObject(any, id, mode, openErased);
    if (status != Acad::eOk) {
        return status;
    }
    object = Object::cast(any);
    if (object == nullptr) {
        any->close();
        return Acad::eNotThatKindOfClass;
    }
    return Acad::eOk;
}

namespace corma::host {

/// How many openings there are that were not closed, over all drawings.
int openObjectCount();

/// Marks an object that has just got into a drawing as open for write: whoever put it there closes
/// it.
void openForWrite(AcDbObject& newObject);

/// An open object that is closed when the guard goes.
template<class Object> class Opened
{
public:
    Opened() = default;

    explicit Opened(Object* object)
        : m_object(object)
    {
    }

    explicit Opened(AcDbObjectId id, AcDb::OpenMode mode = AcDb::kForRead, bool openErased = false)
        : m_status(acdbOpenObject(m_object, id, mode, openErased))
    {
    }

    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;

    Opened(Opened&& other) noexcept
        : m_object(other.m_object)
        , m_status(other.m_status)
    {
        other.m_object = nullptr;
    }

    Opened& operator=(Opened&& other) noexcept
    {
        if (this != &other) {
            close();
            m_object = other.m_object;
            m_status = other.m_status;
            other.m_object = nullptr;
        }
        return *this;
    }

    ~Opened() { close(); }

    void close()
    {
        if (m_object != nullptr) {
            m_object->close();
            m_object = nullptr;
        }
    }

    /// Hands the object over; who takes it closes it.
    [[nodiscard]] Object* release() { return std::exchange(m_object, nullptr); }

    [[nodiscard]] Acad::ErrorStatus status() const { return m_status; }

    [[nodiscard]] Object* get() const { return m_object; }

    /// For the host's operations that hand an open object out through a reference.
    Object*& out()
    {
        close();
        return m_object;
    }

    Object* operator->() const { return m_object; }

    Object& operator*() const { return *m_object; }

    explicit operator bool() const { return m_object != nullptr; }

private:
    Object* m_object = nullptr;
    Acad::ErrorStatus m_status = Acad::eOk;
};

} // namespace corma::host
