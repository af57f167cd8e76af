#include "Ketril/RunContext.h"

#include <iostream>
#include <vector>

#include "Editor/Client/Parameters.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Files/SExpression.h"
#include "Ketril/Exit.h"
#include "Platform/TempFiles.h"
#include "Platform/Text.h"

namespace Ketril::Command {

using Editor::Board;

Ref<Board> Open(const std::string& path) {
  try {
    Editor::FileWarnings warnings;
    Ref<Board> board = Editor::ReadBoard(path, &warnings);
    for (const std::string& warning : warnings) std::cerr << "ketril: warning: " << warning << "\n";
    // Left to the end of the process: to take a board of a million objects apart would only delay it.
    static std::vector<Ref<Board>>& kept = *new std::vector<Ref<Board>>();
    kept.push_back(board);
    return board;
  } catch (const Editor::FileError& error) {
    throw Failure(kExit_Unreadable, error.what());
  }
}

Editor::Selection ParseSelection(const std::string& text, Editor::LengthUnit unit) {
  try {
    return Editor::Selection(text, unit);
  } catch (const Editor::SelectionError& error) {
    throw Failure(kExit_Usage, error.what());
  }
}

void WriteOut(const std::string& path, const std::string& text) {
  try {
    Platform::TReplacementFile file(path);
    file.Write(text);
    file.Commit();
  } catch (const std::exception& error) {
    throw Failure(kExit_Failed, error.what());
  }
}

Ref<IParameterList> ParametersOf(const Options& options) {
  if (options.parameters.empty() && options.file.empty()) return {};
  const Ref<Editor::Parameters> list = Editor::MakeHost<Editor::Parameters>();
  if (!options.file.empty()) list->AddParameter(u"FileName", Platform::ToUtf16(options.file));
  for (const std::string& text : options.parameters) {
    const std::size_t equals = text.find('=');
    if (equals == 0 || equals == text.npos)
      throw Failure(kExit_Usage, "-D " + text + ": expected NAME=VALUE");
    list->AddParameter(Platform::ToUtf16(text.substr(0, equals)), Platform::ToUtf16(text.substr(equals + 1)));
  }
  return Ref<IParameterList>(list.Get());
}

}  // namespace Ketril::Command
