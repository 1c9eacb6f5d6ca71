#include "data/odbc/values.h"

#include "data/odbc/pieces.h"
#include "data/odbc/sql_text.h"
#include "platform/text.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace corma::odbc {

namespace {

constexpr std::size_t kPiece = 4096; // units of a text that are asked for at once
constexpr std::size_t kWhole = std::numeric_limits<std::size_t>::max();

const Variant kNull {.tag = VT_NULL};

/// Asks for the field's data into a buffer. False when there is no (more) data.
bool getData(const FieldRef& field, SQLSMALLINT form, std::span<std::byte> buffer, SQLLEN& length)
{
    const SQLRETURN done
        = SQLGetData(field.statement, static_cast<SQLUSMALLINT>(field.index + 1), form,
                     buffer.data(), static_cast<SQLLEN>(buffer.size()), &length);
    if (done == SQL_NO_DATA) {
        return false;
    }
    field.session.check(done, {SQL_HANDLE_STMT, field.statement});
    return true;
}

/// A value of fixed size; nothing for NULL.
template<class Value> std::optional<Value> fixedValue(const FieldRef& field, SQLSMALLINT form)
{
    Value value {};
    SQLLEN length = 0;
    const bool found = getData(field, form, std::as_writable_bytes(std::span(&value, 1)), length);
    return found && length != SQL_NULL_DATA ? std::optional(value) : std::nullopt;
}

/// At most `most` units of a text in a form of ODBC; nothing for NULL.
template<class Unit>
std::optional<std::wstring> textIn(SQLSMALLINT form, const FieldRef& field, std::size_t most)
{
    std::vector<Unit> all;
    Piece piece {.isLast = false};
    while (!piece.isLast && all.size() < most) {
        const std::size_t before = all.size();
        all.resize(before + std::min(kPiece, most - before) + 1);
        const auto buffer = std::span(all).subspan(before);
        SQLLEN length = 0;
        piece = {};
        if (getData(field, form, std::as_writable_bytes(buffer), length)) {
            if (length == SQL_NULL_DATA) {
                return std::nullopt;
            }
            piece = pieceIn(std::span<const Unit>(buffer), length);
        }
        all.resize(before + piece.count);
    }
    const std::span<const Unit> read(all);
    return toText(piece.isLast ? read : withoutPart(read));
}

/// A whole text; nothing for NULL.
std::optional<std::wstring> text(const FieldRef& field)
{
    return field.session.isWide() ? textIn<SQLWCHAR>(SQL_C_WCHAR, field, kWhole)
                                  : textIn<char>(SQL_C_CHAR, field, kWhole);
}

/// What the first bytes of a text hold in the database.
std::optional<std::wstring> beginOfText(const FieldRef& field, Reading reading, std::size_t bytes)
{
    if (!field.session.isWide()) {
        return textIn<char>(SQL_C_CHAR, field, bytes);
    }
    const std::size_t size = reading == Reading::wideText ? sizeof(SQLWCHAR) : 1;
    return textIn<SQLWCHAR>(SQL_C_WCHAR, field, bytes / size);
}

Variant integerVariant(VariantTag tag, std::optional<std::int64_t> value)
{
    return value ? Variant {.tag = tag, .integer = *value} : kNull;
}

Variant realVariant(VariantTag tag, std::optional<double> value)
{
    return value ? Variant {.tag = tag, .real = *value} : kNull;
}

Variant textVariant(std::optional<std::wstring> value)
{
    return value ? Variant {.tag = VT_BSTR, .text = *std::move(value)} : kNull;
}

Variant dateVariant(const FieldRef& field)
{
    const auto date = fixedValue<SQL_DATE_STRUCT>(field, SQL_C_TYPE_DATE);
    return date ? Variant {.tag = VT_DATE, .real = dateValue(date->year, date->month, date->day)}
                : kNull;
}

double dayFraction(const SQL_TIMESTAMP_STRUCT& at)
{
    constexpr double kNanoseconds = 1e9;
    constexpr double kSecondsOfMinute = 60.0;
    constexpr double kSecondsOfHour = 3600.0;
    constexpr double kSecondsOfDay = 86400.0;
    const double seconds = at.hour * kSecondsOfHour + at.minute * kSecondsOfMinute + at.second
        + at.fraction / kNanoseconds;
    return seconds / kSecondsOfDay;
}

Variant timeStampVariant(const FieldRef& field)
{
    const auto at = fixedValue<SQL_TIMESTAMP_STRUCT>(field, SQL_C_TYPE_TIMESTAMP);
    if (!at) {
        return kNull;
    }
    const double day = dateValue(at->year, at->month, at->day);
    // Before day zero the fraction still counts from midnight: -1.25 is day -1, 6:00.
    const double time = dayFraction(*at);
    return {.tag = VT_DATE, .real = day < 0 ? day - time : day + time};
}

Variant guidVariant(const FieldRef& field)
{
    auto guid = text(field);
    if (guid && !guid->starts_with(L'{')) {
        guid = L'{' + *guid + L'}';
    }
    return textVariant(guid ? std::optional(upperCase(*guid)) : std::nullopt);
}

/// Bytes have no text, so none are fetched.
Variant bytesVariant(const FieldRef& field)
{
    std::byte first {};
    SQLLEN length = 0;
    const bool found = getData(field, SQL_C_BINARY, {&first, 1}, length);
    return found && length == SQL_NULL_DATA ? kNull : Variant {.tag = VT_ARRAY | VT_UI1};
}

} // namespace

Variant readValue(const FieldRef& field, Reading reading)
{
    switch (reading) {
    case Reading::shortInteger:
        return integerVariant(VT_I2, fixedValue<SQLSMALLINT>(field, SQL_C_SSHORT));
    case Reading::longInteger:
        return integerVariant(VT_I4, fixedValue<SQLINTEGER>(field, SQL_C_SLONG));
    case Reading::bigInteger:
        return integerVariant(VT_I8, fixedValue<SQLBIGINT>(field, SQL_C_SBIGINT));
    case Reading::single:
        return realVariant(VT_R4, fixedValue<SQLREAL>(field, SQL_C_FLOAT));
    case Reading::real:
        return realVariant(VT_R8, fixedValue<SQLDOUBLE>(field, SQL_C_DOUBLE));
    case Reading::boolean:
        return integerVariant(VT_BOOL, fixedValue<SQLCHAR>(field, SQL_C_BIT));
    case Reading::date:
        return dateVariant(field);
    case Reading::timeStamp:
        return timeStampVariant(field);
    case Reading::guid:
        return guidVariant(field);
    case Reading::bytes:
        return bytesVariant(field);
    case Reading::narrowText:
    case Reading::wideText:
        break;
    }
    return textVariant(text(field));
}

Variant readChunk(const FieldRef& field, Reading reading, int bytes)
{
    if (reading != Reading::narrowText && reading != Reading::wideText) {
        return readValue(field, reading);
    }
    const auto most = static_cast<std::size_t>(std::max(bytes, 0));
    return textVariant(beginOfText(field, reading, most));
}

} // namespace corma::odbc
