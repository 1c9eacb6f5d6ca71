#pragma once

#include "editor/NameChoice.h"
#include "editor/SettingDialogTest.h"

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace corma::testing {

/// Tests of the forms for values that tell how something is drawn. The setting A has the type and
/// the value that a test gives it; the drawing has more layers, linetypes and text styles than a
/// new one.
class VisualFormTest : public SettingDialogTest
{
protected:
    /// The letter of the type in definitions.
    explicit VisualFormTest(std::string type)
        : m_type(std::move(type))
    {
    }

    /// Makes house/house.dxf the current drawing, with the layers 0 (white), Gevel (green) and MUUR
    /// (blue), the linetypes ByBlock, ByLayer, Continuous and DASHED, and the text styles Standard
    /// and Smal.
    void drawHouse() const;

    /// Opens the desk on the value, which stands in the configuration file; in UTF-8.
    void give(const std::string& value, Levels levels = Levels::global, int language = 9);

    /// The names in the tables of the drawing, a blank between and "|" between the tables.
    static std::string tables();

    /// The configuration file, the project files that there are, and the drawing after it was saved
    /// and read again. Ends the desk.
    std::string places();

    /// The fields behind the four visual ones, so many, as the rule tells them once more: a value
    /// with too few separators begins anew at each that it lacks.
    static std::vector<std::wstring> ownFields(const std::wstring& value, std::size_t count);

    /// A value of up to so many pieces with "," between, drawn from those given.
    static std::wstring randomValue(std::mt19937& random, const std::vector<std::wstring>& pieces,
                                    std::size_t most);

    /// "typed TEXT", "chosen NUMBER" or "none".
    static std::string described(const NameChoice& choice);

    std::string attributes; // of the definition of A, such as "readonly=true"

private:
    std::string m_type;
};

/// The same with one form at a time.
template<class Form> class VisualFormTestOf : public VisualFormTest
{
protected:
    using VisualFormTest::VisualFormTest;

    void TearDown() override
    {
        m_form.reset();
        VisualFormTest::TearDown();
    }

    Form& show(const std::string& value, Levels levels = Levels::global, int language = 9)
    {
        m_form.reset();
        give(value, levels, language);
        return showAgain();
    }

    /// The form on the desk as it is.
    Form& showAgain()
    {
        m_form = std::make_unique<Form>(desk());
        return *m_form;
    }

    /// The form on a value that was handed in.
    Form& showHanded(const std::wstring& value, std::size_t mostCharacters)
    {
        m_form = std::make_unique<Form>(desk(), value, mostCharacters);
        return *m_form;
    }

    /// All places; the form is gone then.
    std::string places()
    {
        m_form.reset();
        return VisualFormTest::places();
    }

private:
    std::unique_ptr<Form> m_form;
};

} // namespace corma::testing
