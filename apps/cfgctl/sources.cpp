#include "sources.h"

#include "text.h"

namespace cfgctl {

namespace {

std::wstring wordFor(corma::Source source)
{
    return toWide(corma::nameOf(source));
}

// "file:line", as other programs write a place in a file.
std::wstring placeOf(const corma::SourceAsked& asked)
{
    if (asked.file.empty()) {
        return L"(no file)";
    }
    return asked.line == 0 ? asked.file : asked.file + L':' + std::to_wstring(asked.line);
}

void addTreeLines(const corma::IncludedFile& tree, std::size_t depth, std::string& lines)
{
    lines += std::string(2 * depth, ' ') + toBytes(tree.path);
    if (!tree.found) {
        lines += tree.path.empty() ? "(not found)" : " (cannot be opened)";
    }
    lines += '\n';
    for (const auto& child : tree.included) {
        if (child) {
            addTreeLines(*child, depth + 1, lines);
        } else {
            lines += std::string(2 * depth + 2, ' ') + "(skipped: in the tree already)\n";
        }
    }
}

} // namespace

Json sourcesAsJson(const std::vector<corma::SourceAsked>& sources)
{
    Json all = Json::array();
    for (const auto& asked : sources) {
        Json one;
        one["source"] = corma::nameOf(asked.source);
        one["file"] = toJson(asked.file);
        one["found"] = asked.found;
        if (asked.line != 0) {
            one["line"] = asked.line;
        }
        all.push_back(std::move(one));
    }
    return all;
}

std::string sourcesAsLines(const std::vector<corma::SourceAsked>& sources)
{
    std::vector<std::vector<std::wstring>> rows;
    rows.reserve(sources.size());
    for (const auto& asked : sources) {
        rows.push_back(
            {L"  " + wordFor(asked.source), placeOf(asked), asked.found ? L"found" : L"not there"});
    }
    return alignedLines(rows);
}

Json levelsAsJson(const std::vector<corma::LevelValue>& levels)
{
    Json all = Json::array();
    for (const auto& level : levels) {
        const auto& where = level.where;
        Json one;
        one["source"] = corma::nameOf(where.source);
        one["file"] = toJson(where.file);
        one["found"] = where.found;
        one["value"] = where.found ? toJson(level.value) : Json();
        one["line"] = where.line == 0 ? Json() : Json(where.line);
        one["inForce"] = level.inForce;
        all.push_back(std::move(one));
    }
    return all;
}

std::string levelsAsLines(const std::vector<corma::LevelValue>& levels)
{
    std::vector<std::vector<std::wstring>> rows;
    rows.reserve(levels.size());
    for (const auto& level : levels) {
        const std::wstring mark = level.inForce ? L"* " : L"  ";
        rows.push_back({mark + wordFor(level.where.source),
                        level.where.found ? level.value : L"(not there)", placeOf(level.where)});
    }
    return alignedLines(rows);
}

Json treeAsJson(const corma::IncludedFile& tree)
{
    Json one;
    one["file"] = toJson(tree.path);
    one["found"] = tree.found;
    one["count"] = tree.included.size();
    one["included"] = Json::array();
    for (const auto& child : tree.included) {
        one["included"].push_back(child ? treeAsJson(*child) : Json());
    }
    return one;
}

std::string treeAsLines(const corma::IncludedFile& tree)
{
    std::string lines;
    addTreeLines(tree, 0, lines);
    return lines;
}

} // namespace cfgctl
