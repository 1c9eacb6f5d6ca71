#pragma once

#include "host/dwg/fields.h"
#include "host/dwg/group_fields.h"

#include <memory>

namespace corma::host::dwg {

/// The fields of a record behind those that every record has.
class Body
{
public:
    Body() = default;
    Body(const Body&) = delete;
    Body& operator=(const Body&) = delete;
    virtual ~Body() = default;

    virtual void read(FieldsFromBits& io) = 0;
    virtual void write(FieldsToBits& io) const = 0;
    virtual void toGroups(FieldsToGroups& io) const = 0;
    virtual void fromGroups(FieldsFromGroups& io) = 0;
};

using MakeBody = std::unique_ptr<Body> (*)();

/// The body of a type that is described by a struct: `bits(io)` and `groups(io)`, both templates
/// over the direction.
template<class Fields> class BodyOf : public Body
{
public:
    void read(FieldsFromBits& io) override { m_fields.bits(io); }

    void write(FieldsToBits& io) const override
    {
        const_cast<Fields&>(m_fields).bits(io); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    }

    void toGroups(FieldsToGroups& io) const override
    {
        const_cast<Fields&>(m_fields).groups(io); // NOLINT(cppcoreguidelines-pro-type-const-cast)
    }

    void fromGroups(FieldsFromGroups& io) override { m_fields.groups(io); }

private:
    Fields m_fields; // a direction that only looks at them takes them as const
};

template<class Fields> std::unique_ptr<Body> makeBody()
{
    return std::make_unique<BodyOf<Fields>>();
}

/// The body of a type that is not understood: its bits as they are. The handles in it are known,
/// as they stand in a stream of their own.
class OpaqueBody : public Body
{
public:
    void read(FieldsFromBits& io) override;
    void write(FieldsToBits& io) const override;
    void toGroups(FieldsToGroups& io) const override;
    void fromGroups(FieldsFromGroups& io) override;

private:
    BitWriter m_data; // the texts with it
    std::vector<Ref> m_handles;
};

} // namespace corma::host::dwg
