// The values of the model: those of the configuration file, and a project file's on top of them.

#include "foundation/text_file.h"
#include "inifile/Ident.h"
#include "platform/platform.h"
#include "settings/RubriekenArray.h"
#include "settings/load.h"
#include "settings/messages.h"
#include "settings/model_lines.h"
#include "settings/texts.h"

#include <utility>

using corma::Defects;
using corma::ModelEntry;
using corma::ModelLines;

namespace {

std::unique_ptr<Instelling> settingOf(ModelEntry entry, Rubriek& category, corma::TextArena& texts)
{
    auto setting = std::make_unique<Instelling>(texts.pack(entry.ident), texts.pack(entry.value));
    setting->setCategory(&category);
    return setting;
}

// Takes the lines of a configuration file into a model.
class ValueLoader
{
public:
    ValueLoader(RubriekenArray& model, corma::TextArena& texts, Defects& defects)
        : m_model(model)
        , m_texts(texts)
        , m_defects(defects)
    {
        addCategory(corma::toPacked(corma::kHeadChapter));
    }

    // A header makes a category even where there is one of its name: settings go to the later one
    // from then on (test: AChapterThatStandsTwiceAppearsTwice).
    void take(std::string_view line, int number)
    {
        if (corma::isIgnored(line)) {
            return;
        }
        if (line.front() == '[') {
            if (const auto chapter = corma::chapterOf(line, number, m_defects)) {
                addCategory(*chapter);
            }
        } else if (const auto entry = corma::splitEntry(line)) {
            m_current->settings().addSetting(settingOf(*entry, *m_current, m_texts));
        } else {
            m_defects.addSkipped(L'=', line, number);
        }
    }

private:
    void addCategory(std::string_view name)
    {
        auto category = std::make_unique<Rubriek>(name);
        m_current = category.get();
        m_model.addCategory(std::move(category));
    }

    RubriekenArray& m_model;
    corma::TextArena& m_texts;
    Defects& m_defects;
    Rubriek* m_current = nullptr;
};

// Takes the lines of a project file into a model.
class ProjectLoader
{
public:
    ProjectLoader(RubriekenArray& model, corma::TextArena& texts, Defects& defects)
        : m_model(model)
        , m_texts(texts)
        , m_defects(defects)
    {
        enter(corma::toPacked(corma::kHeadChapter));
    }

    // Unlike in a configuration file a leading blank makes no comment.
    void take(std::string_view line, int number)
    {
        if (line.empty() || line.front() == ';') {
            return;
        }
        if (line.front() == '[') {
            if (const auto chapter = corma::chapterOf(line, number, m_defects)) {
                enter(*chapter);
            }
        } else if (const auto entry = corma::splitEntry(line)) {
            set(*entry);
        } else {
            m_defects.addSkipped(L'=', line, number);
        }
    }

private:
    void enter(std::string_view chapter)
    {
        if (!m_model.hasPacked(chapter)) {
            m_model.addCategory(std::make_unique<Rubriek>(chapter));
        }
        m_current = m_model.findPacked(chapter);
    }

    void set(ModelEntry entry)
    {
        if (Instelling* const known = m_current->settings().findPacked(entry.ident)) {
            known->setProjectValue(m_texts.pack(entry.value));
            return;
        }
        auto setting = settingOf(entry, *m_current, m_texts);
        setting->setIsProject(true);
        m_current->settings().addSetting(std::move(setting));
    }

    RubriekenArray& m_model;
    corma::TextArena& m_texts;
    Defects& m_defects;
    Rubriek* m_current = nullptr;
};

} // namespace

RubriekenArray::RubriekenArray(const FileNameSet& fileNames)
{
    loadIniFile(fileNames.globalFolder + fileNames.fileName);
    if (!fileNames.definitionsName.empty()) {
        loadDefinitions(fileNames);
    }
    if (!fileNames.descriptionsName.empty()) {
        loadDescriptions(fileNames);
    }
}

RubriekenArray::RubriekenArray(const corma::TextFile* stream)
{
    if (stream == nullptr) {
        corma::showMessage(corma::text(corma::row::kFileNotFound), corma::MessageIcon::stop);
        return;
    }
    Defects defects(L"ini");
    ValueLoader loader(*this, m_texts, defects);
    std::string converted;
    ModelLines lines(stream->utf8(converted));
    bool wasCut = false;
    for (std::string_view line; lines.next(line);) {
        const std::string normal = corma::normaliseLine(line, &wasCut);
        if (wasCut && !corma::isIgnored(normal)) {
            defects.addCut(lines.number());
        }
        loader.take(normal, lines.number());
    }
    defects.tell();
}

void RubriekenArray::loadIniFile(const std::wstring& path)
{
    const auto file = xx_openUnicode(path, corma::OpenMode::text);
    if (!file) {
        corma::tellCannotOpen(path);
        return;
    }
    Defects defects(L"ini");
    ValueLoader loader(*this, m_texts, defects);
    m_categories.front()->description = corma::text(corma::row::kGeneralSettings);
    std::string converted;
    ModelLines lines(file->utf8(converted));
    for (std::string_view line; lines.next(line);) {
        loader.take(line, lines.number());
    }
    defects.tell();
}

bool RubriekenArray::loadProjectFile(const std::wstring& path)
{
    projectMode = true;
    const bool isThere = corma::platform::ensureFile(path);
    const auto file = isThere ? xx_openUnicode(path, corma::OpenMode::text) : nullptr;
    if (!file) {
        return false;
    }
    Defects defects(L"ipr");
    ProjectLoader loader(*this, m_texts, defects);
    std::string converted;
    ModelLines lines(file->utf8(converted));
    for (std::string_view piece; lines.nextPiece(piece, corma::kLongestProjectLine);) {
        loader.take(corma::normaliseLine(piece), lines.number());
    }
    defects.tell();
    return true;
}
