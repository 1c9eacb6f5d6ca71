#pragma once

// Connections and record sets of the databases that are not SQLite files, in the operations that
// their providers have. Here they run over ODBC; in a build without it no connection opens.

#include "data/ComError.h"
#include "data/Variant.h"

#include <memory>
#include <string>

namespace corma::ado {

/// Types of columns, by the numbers that providers give; the others come as texts.
enum Type
{
    smallInteger = 2,
    integer = 3,
    single = 4,
    real = 5, // a double
    date = 7,
    boolean = 11,
    bigInteger = 20,
    guid = 72,
    bytes = 128,
    narrow = 129,
    wide = 130,
    numeric = 131,
    day = 133,
    time = 134,
    timeStamp = 135,
    varyingNarrow = 200,
    longNarrow = 201,
    varyingWide = 202,
    longWide = 203,
    varyingBytes = 204,
    longBytes = 205,
    tinyInteger = 16
};

inline constexpr int kIsLong = 128; // among the attributes of a field

/// An open connection. What fails throws a ComError.
class Connection
{
public:
    Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection(); ///< closes it

    /// Who opens the connection, unless its text names another provider.
    void putProvider(const std::wstring& provider);

    /// User and password are in the text where the database wants them.
    void open(const std::wstring& text);

    /// True when the other side is gone, so that nothing more will come of it.
    [[nodiscard]] bool isLost() const;

    class Inside;

    [[nodiscard]] Inside& inside() const { return *m_inside; }

private:
    std::unique_ptr<Inside> m_inside;
};

/// The rows of a statement, one after the other. What fails throws a ComError.
class Recordset
{
public:
    /// The connection must be open for as long as the record set is; null is none.
    explicit Recordset(Connection* connection);
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;
    ~Recordset(); ///< closes it

    /// Runs a statement. One that gives no rows leaves the record set closed.
    void open(const std::wstring& sql);

    [[nodiscard]] int fieldCount() const;

    /// Of a field, by an index below their number.
    [[nodiscard]] const std::wstring& name(int field) const;
    [[nodiscard]] int type(int field) const;
    [[nodiscard]] int attributes(int field) const;

    /// No row is current any more.
    [[nodiscard]] bool isAtEnd() const;

    void moveNext();

    /// The value of the current row. Fields are read once, from the first to the last.
    Variant value(int field);

    /// The same, but of a long one its first bytes only.
    Variant chunk(int field, int bytes);

    [[nodiscard]] bool isOpen() const;

    void close();

    class Inside;

private:
    std::unique_ptr<Inside> m_inside;
};

} // namespace corma::ado
