#pragma once

#include "settings/SettingsTest.h"
#include "support/RefusedCalls.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace corma::testing {

/// Of a message box, in a word.
const char* nameOf(MessageIcon icon);

/// The names of the files below a folder, a blank between.
std::string filesIn(const TempFolder& folder);

/// Looks at a folder whenever a file takes another's name, which is how each write ends.
class WriteWatch : public RefusedCalls
{
public:
    explicit WriteWatch(const TempFolder& folder)
        : RefusedCalls(platform::SystemCall::rename, 0)
        , m_folder(folder)
    {
    }

    int before(platform::SystemCall call) override;

    int writes = 0;
    std::string files; // in the folder, just before the last one

private:
    const TempFolder& m_folder;
};

/// Tests of tool.ini in the folder cfg with the project folder house, and with a drawing that knows
/// them.
class LevelsTest : public SettingsTest
{
protected:
    void SetUp() override;

    [[nodiscard]] FileNameSet where() const;

    [[nodiscard]] std::string ini() const { return folder.read(L"cfg/tool.ini"); }

    [[nodiscard]] std::string ipr() const { return folder.read(L"house/tool.ipr"); }

    void writeIni(std::string_view text) const { folder.write(L"cfg/tool.ini", text); }

    void writeIpr(std::string_view text) const { folder.write(L"house/tool.ipr", text); }

    /// Makes the drawing house/house.dxf the current one.
    void newDrawing() const;

    /// Stores a value in the drawing.
    static void store(const wchar_t* chapter, const wchar_t* ident, const wchar_t* value);

    /// All that the drawing holds for tool.ini: an entry a line, a dictionary's behind its name and
    /// "/". "(none)" without a dictionary of the file.
    static std::string drawing();

    /// The model of tool.ini, with tool.ipr on top if it is there, and with the drawing on top if
    /// there is one; the head without its description.
    [[nodiscard]] std::unique_ptr<RubriekenArray> model(int language = 9) const;

    /// The texts of the message boxes since the last time, each behind the name of its icon.
    std::string told();
};

} // namespace corma::testing
