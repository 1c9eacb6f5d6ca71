#pragma once

#include "host/acdb_object.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include <corma/xx_Inifile.h>

#include <cstdlib>
#include <gtest/gtest.h>
#include <string>

namespace corma::testing {

/// A file under test: methods that take and give texts without buffers.
class Ini
{
public:
    explicit Ini(const std::wstring& path, int scrambled = 0, IniBuffer* buffer = nullptr)
        : m_path(path)
        , file(m_path.data(), scrambled, buffer)
    {
    }

    int status(std::wstring idents, int size = 3000, int report = 0)
    {
        value.assign(static_cast<std::size_t>(std::abs(size)), L'#');
        const int result = file.getString(idents.data(), value.data(), size, report);
        value = value.c_str();
        EXPECT_EQ(host::openObjectCount(), 0); // a lookup leaves nothing of the drawing open
        return result;
    }

    static constexpr const wchar_t* kNone = L"(none)";

    /// The value, or kNone.
    std::wstring get(const std::wstring& idents, int size = 3000)
    {
        return status(idents, size) == 5100 ? value : kNone;
    }

private:
    std::wstring m_path;

public:
    xx_Inifile file;
    std::wstring value; // what the last call left in its buffer
};

class InifileTest : public ::testing::Test
{
protected:
    void TearDown() override { EXPECT_EQ(host::openObjectCount(), 0); }

    RecordingServices services;
    TempFolder folder;
};

} // namespace corma::testing
