#pragma once

#include <QApplication>
#include <QTranslator>

#include <array>
#include <memory>
#include <optional>
#include <string>

namespace corma {

/// The Qt application of the process, for as long as the editor is shown. Where the process has
/// none, one lives as long as this object. Objects may be nested.
class EditorApplication
{
public:
    /// Qt's own texts, as those of its file dialogs, are in the language of that number as far as
    /// Qt has them. When nothing can be shown the user is told why, with `what` as that which
    /// cannot.
    explicit EditorApplication(int language, const wchar_t* what = L"CfgDesk");
    EditorApplication(const EditorApplication&) = delete;
    EditorApplication& operator=(const EditorApplication&) = delete;
    ~EditorApplication();

    /// True when windows can be shown.
    [[nodiscard]] bool isReady() const { return m_isReady; }

private:
    [[nodiscard]] static std::optional<std::wstring> problem();
    void makeApplication();
    void translate(int language);

    int m_argumentCount = 1; // as Qt keeps a reference to it
    std::array<char, 8> m_name {"cfgdesk"};
    std::array<char*, 2> m_arguments {m_name.data(), nullptr};
    std::string m_locale; // of the process, before Qt set another
    std::unique_ptr<QApplication> m_own;
    std::unique_ptr<QTranslator> m_translator; // made when there is an application
    bool m_isReady = false;
    bool m_quitsOnLastWindow = true; // what the process had asked for
};

} // namespace corma
