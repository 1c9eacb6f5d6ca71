#include "attributes.h"

#include "WindowServices.h"
#include "current_drawing.h"
#include <corma/attribute_dialog.h>
#include <corma/host.h>

#include <algorithm>
#include <array>

namespace cfgdesk {

namespace {

constexpr int kFailed = 1;

struct Question
{
    int language;
    const wchar_t* text;
};

// clang-format off
constexpr std::array<Question, 7> kSaveQuestions = {{
    {corma::kEnglish, L"The definition of a block was replaced. Save the drawing all the same?"},
    {7,  L"Die Definition eines Blocks wurde ersetzt. Die Zeichnung trotzdem speichern?"},
    {10, L"Se ha sustituido la definición de un bloque. ¿Guardar el dibujo de todos modos?"},
    {12, L"La définition d'un bloc a été remplacée. Enregistrer le dessin quand même ?"},
    {19, L"De definitie van een blok is vervangen. De tekening toch opslaan?"},
    {21, L"Definicja bloku została zastąpiona. Zapisać mimo to rysunek?"},
    {25, L"Определение блока было заменено. Всё равно сохранить чертёж?"},
}};

// clang-format on

const wchar_t* saveQuestion()
{
    const auto* const found
        = std::find_if(kSaveQuestions.begin(), kSaveQuestions.end(), [](const Question& question) {
              return question.language == corma::textLanguage();
          });
    return (found == kSaveQuestions.end() ? kSaveQuestions.front() : *found).text;
}

/// Asks in the dialog, and remembers how that ended.
class RememberedDialog : public corma::AttributeUpdateChooser
{
public:
    bool choose(corma::AttributeUpdate& update) override
    {
        m_wasAsked = true;
        m_isAccepted = m_dialog.choose(update);
        return m_isAccepted;
    }

    [[nodiscard]] bool wasAsked() const { return m_wasAsked; }

    [[nodiscard]] bool isAccepted() const { return m_isAccepted; }

private:
    corma::AttributeDialog m_dialog;
    bool m_wasAsked = false;
    bool m_isAccepted = false;
};

// In the dialog a block can have been taken out of another drawing before it was cancelled.
bool wantsToSave()
{
    return corma::isDocumentModified()
        && corma::services().messageBox(saveQuestion(), L"CfgDesk", corma::MessageIcon::question,
                                        corma::MessageButtons::yesNo)
        == corma::MessageAnswer::yes;
}

} // namespace

int showAttributes(const Options& options, std::ostream& out)
{
    WindowServices services;
    corma::setTextLanguage(options.language);
    const CurrentDrawing drawing(options.file, "pass a DWG or DXF drawing");
    RememberedDialog dialog;
    const int status
        = corma::updateAttributes(options.records ? corma::AttributeUpdateMode::records
                                                  : corma::AttributeUpdateMode::references,
                                  options.pattern ? options.pattern->c_str() : nullptr, dialog);
    if (services.wasRefused()) {
        return kFailed;
    }
    bool isSaved = true;
    if (dialog.isAccepted() || wantsToSave()) {
        isSaved = drawing.saveIfChanged(out);
    }
    // Without the dialog no window may be possible, and what there is to tell stands on the
    // terminal.
    if (dialog.wasAsked()) {
        services.showRest();
    }
    return status == RTNORM && isSaved ? 0 : kFailed;
}

} // namespace cfgdesk
