#include "commands.h"
#include "text.h"
#include <corma/drawing_contents.h>

namespace cfgctl {

namespace {

Json namesAsJson(const std::vector<std::wstring>& names)
{
    Json all = Json::array();
    for (const std::wstring& name : names) {
        all.push_back(toJson(name));
    }
    return all;
}

Json referencesAsJson(const std::vector<corma::DrawingReference>& references)
{
    Json all = Json::array();
    for (const auto& reference : references) {
        all.push_back({{"handle", toJson(reference.handle)},
                       {"block", toJson(reference.block)},
                       {"space", toJson(reference.space)}});
    }
    return all;
}

// A new key, which the object is known not to have: looking for it is what makes large objects
// slow.
Json& append(Json& object, const std::wstring& key, Json value)
{
    return object.get_ref<Json::object_t&>().emplace_back(toBytes(key), std::move(value)).second;
}

Json settingsAsJson(const std::vector<corma::DrawingFile>& files)
{
    Json all = Json::object();
    for (const auto& file : files) {
        Json& chapters = append(all, file.name, Json::object());
        for (const auto& chapter : file.chapters) {
            Json& values = append(chapters, chapter.name, Json::object());
            for (const auto& setting : chapter.settings) {
                append(values, setting.ident, toJson(setting.value));
            }
        }
    }
    return all;
}

Json contentsAsJson(const corma::DrawingContents& contents)
{
    Json document;
    document["version"] = toJson(contents.version);
    document["blocks"] = namesAsJson(contents.blocks);
    document["layers"] = namesAsJson(contents.layers);
    document["linetypes"] = namesAsJson(contents.linetypes);
    document["textStyles"] = namesAsJson(contents.textStyles);
    document["references"] = referencesAsJson(contents.references);
    document["settings"] = settingsAsJson(contents.settings);
    return document;
}

std::string indented(const std::string& lines)
{
    std::string text;
    for (std::size_t at = 0; at < lines.size();) {
        const std::size_t end = lines.find('\n', at) + 1;
        text += "  " + lines.substr(at, end - at);
        at = end;
    }
    return text;
}

std::string nameLines(const char* heading, const std::vector<std::wstring>& names)
{
    return heading + ("\n" + indented(plainLines(namesAsJson(names))));
}

std::string referenceLines(const std::vector<corma::DrawingReference>& references)
{
    std::vector<std::vector<std::wstring>> rows;
    rows.reserve(references.size());
    for (const auto& reference : references) {
        rows.push_back({reference.handle, reference.block.empty() ? L"(no block)" : reference.block,
                        L"in " + reference.space});
    }
    return "references\n" + indented(alignedLines(rows));
}

// A setting as it would stand in its file.
std::string settingLines(const std::vector<corma::DrawingFile>& files)
{
    std::string lines;
    for (const auto& file : files) {
        lines += toBytes(file.name) + '\n';
        for (const auto& chapter : file.chapters) {
            lines += "  [" + toBytes(chapter.name) + "]\n";
            for (const auto& setting : chapter.settings) {
                lines += "    " + toBytes(setting.ident) + '=' + toBytes(setting.value) + '\n';
            }
        }
    }
    return "settings\n" + indented(lines);
}

std::string asLines(const corma::DrawingContents& contents)
{
    return "version " + toBytes(contents.version) + '\n' + nameLines("blocks", contents.blocks)
        + nameLines("layers", contents.layers) + nameLines("linetypes", contents.linetypes)
        + nameLines("text styles", contents.textStyles) + referenceLines(contents.references)
        + settingLines(contents.settings);
}

class Drawing : public Command
{
public:
    void declare(Syntax& /*syntax*/) override { }

    Answer run(const Options& /*options*/) override
    {
        const auto contents = corma::contentsOf();
        if (!contents) {
            throw UsageError("no drawing to show; pass one with --drawing FILE");
        }
        return {RTNORM, contentsAsJson(*contents), asLines(*contents)};
    }
};

} // namespace

std::unique_ptr<Command> makeDrawing()
{
    return std::make_unique<Drawing>();
}

} // namespace cfgctl
