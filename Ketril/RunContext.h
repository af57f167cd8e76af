// What the verbs share: reading the board and the command line's words. Each raises Failure.
#pragma once

#include <string>

#include "Editor/Model/Board.h"
#include "Editor/Selection/Selection.h"
#include "Interfaces/ParameterList.h"
#include "Ketril/Commands.h"

namespace Ketril::Command {

// Warnings about the file go to standard error. The board lives as long as the process.
Ref<Editor::Board> Open(const std::string& path);
Editor::Selection ParseSelection(const std::string& text, Editor::LengthUnit unit);
void WriteOut(const std::string& path, const std::string& text);
// What -D gave, and the file operand as FileName, as the tools take it; empty without any.
Ref<IParameterList> ParametersOf(const Options& options);

}  // namespace Ketril::Command
