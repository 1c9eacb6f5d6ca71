#include "editor/FixedTexts.h"

#include "settings/texts.h"

namespace corma {

FixedTexts FixedTexts::now()
{
    return {
        .newOne = text(row::kNew),
        .search = text(row::kSearch),
        .stopSearch = text(row::kStopSearch),
        .saveGlobally = text(row::kSaveGlobally),
        .saveInProject = text(row::kSaveInProject),
        .global = text(row::kGlobal),
        .project = text(row::kProject),
        .type = text(row::kType),
        .newValue = text(row::kNewValue),
        .specifyName = text(row::kSpecifyName),
        .copyOf = text(row::kCopyOf),
        .cancel = text(row::kCancel),
        .browse = text(row::kBrowse),
        .help = text(row::kHelp),
    };
}

} // namespace corma
