#pragma once

// The commands by theme; the table in commands.cpp names them.

#include "command.h"
#include <corma/xx_Inifile.h>

namespace cfgctl {

std::unique_ptr<Command> makeGet();
std::unique_ptr<Command> makeFind();
std::unique_ptr<Command> makeLevels();
std::unique_ptr<Command> makeIncludes();
std::unique_ptr<Command> makeWhere();
std::unique_ptr<Command> makeRecord();
std::unique_ptr<Command> makeModel();
std::unique_ptr<Command> makeRows();
std::unique_ptr<Command> makeSet();
std::unique_ptr<Command> makeFreeze();
std::unique_ptr<Command> makeApply();
std::unique_ptr<Command> makeRemove();
std::unique_ptr<Command> makeRemoveCategory();
std::unique_ptr<Command> makeUpdate();
std::unique_ptr<Command> makeReplace();
std::unique_ptr<Command> makeScramble();
std::unique_ptr<Command> makeDrawing();
std::unique_ptr<Command> makeBlock();
std::unique_ptr<Command> makeAttributes();
std::unique_ptr<Command> makeAttributeDefinitions();
std::unique_ptr<Command> makeAttributeUpdate();
std::unique_ptr<Command> makeAttributeSync();
std::unique_ptr<Command> makeCopy();
std::unique_ptr<Command> makeErase();
std::unique_ptr<Command> makeView();
std::unique_ptr<Command> makeSql();
std::unique_ptr<Command> makeTranslate();
std::unique_ptr<Command> makeTexts();

/// The file as the options want it opened. It may be one that was not found.
xx_Inifile openFile(std::wstring name, const Options& options);

} // namespace cfgctl
