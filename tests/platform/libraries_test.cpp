#include "platform/platform.h"
#include "support/TempFolder.h"

#include <dlfcn.h>
#include <filesystem>
#include <gtest/gtest.h>

using corma::testing::TempFolder;

namespace corma::platform {
namespace {

// What loaded_library.cpp is built to.
constexpr const wchar_t* kLibrary = L"loaded_library.so";

// Keeps a library in the process.
class Loaded
{
public:
    explicit Loaded(const std::string& path)
        : m_handle(::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL))
    {
    }

    Loaded(const Loaded&) = delete;
    Loaded& operator=(const Loaded&) = delete;

    ~Loaded()
    {
        if (m_handle != nullptr) {
            ::dlclose(m_handle);
        }
    }

    [[nodiscard]] bool isGood() const { return m_handle != nullptr; }

private:
    void* m_handle;
};

int result(LibraryFunction function)
{
    return function == nullptr ? 0 : reinterpret_cast<int (*)()>(function)();
}

TEST(LoadedFunction, IsFoundInALibraryThatIsThereUnderItsExactSymbol)
{
    const Loaded library(CORMA_LOADED_LIBRARY);
    ASSERT_TRUE(library.isGood());
    EXPECT_EQ(result(loadedFunction(kLibrary, "fortyTwo")), 42);
    EXPECT_EQ(result(loadedFunction(kLibrary, "_Z10fortyThreev")), 43);
    EXPECT_EQ(loadedFunction(kLibrary, "FortyTwo"), nullptr);
    EXPECT_EQ(loadedFunction(kLibrary, "fortyThree"), nullptr);
    EXPECT_EQ(loadedFunction(kLibrary, ""), nullptr);
}

TEST(LoadedFunction, IsNotThatOfALibraryBehindTheOneAsked)
{
    const Loaded library(CORMA_LOADED_LIBRARY);
    ASSERT_TRUE(library.isGood());
    EXPECT_EQ(loadedFunction(kLibrary, "getpid"), nullptr);
    EXPECT_NE(loadedFunction(L"libc.so.6", "getpid"), nullptr);
}

TEST(LoadedFunction, IsFoundUnderTheNameThatTheLibraryHasElsewhere)
{
    const Loaded library(CORMA_LOADED_LIBRARY);
    ASSERT_TRUE(library.isGood());
    EXPECT_EQ(result(loadedFunction(L"loaded_library.dll", "fortyTwo")), 42);
    EXPECT_EQ(result(loadedFunction(L"loaded_library.DLL", "fortyTwo")), 42);
    EXPECT_EQ(loadedFunction(L"loaded_library", "fortyTwo"), nullptr);
    EXPECT_EQ(loadedFunction(L"loaded_library.exe", "fortyTwo"), nullptr);

    const TempFolder folder;
    const std::string copy = toNative(folder.path(L"libother.so"));
    std::filesystem::copy_file(CORMA_LOADED_LIBRARY, copy);
    const Loaded other(copy);
    ASSERT_TRUE(other.isGood());
    EXPECT_EQ(result(loadedFunction(L"other.dll", "fortyTwo")), 42);
}

TEST(LoadedFunction, NeverLoadsTheLibrary)
{
    ASSERT_TRUE(exists(fromNative(CORMA_LOADED_LIBRARY)));
    EXPECT_EQ(loadedFunction(kLibrary, "fortyTwo"), nullptr);
    EXPECT_EQ(loadedFunction(fromNative(CORMA_LOADED_LIBRARY), "fortyTwo"), nullptr);
    EXPECT_EQ(loadedLibrary(kLibrary), std::nullopt);
    EXPECT_EQ(loadedFunction(L"", "fortyTwo"), nullptr);
}

TEST(LoadedFunction, LeavesTheLibraryToThoseWhoLoadedIt)
{
    {
        const Loaded library(CORMA_LOADED_LIBRARY);
        EXPECT_NE(loadedFunction(kLibrary, "fortyTwo"), nullptr);
    }
    EXPECT_EQ(loadedLibrary(kLibrary), std::nullopt);
}

} // namespace
} // namespace corma::platform
