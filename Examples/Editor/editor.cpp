// A small editor with the board tools in it. It opens a board and does what standard input says, line by
// line:
//
//   select EXPRESSION             such as: component and name:R*
//   tear-drops [NAME=VALUE...]    such as: TeardropParam_FlagsEx=1000; without values the dialog is asked
//   pads-to-vias                  of the selected free pads
//   align-left                    the selected components
//   undo                          the last tool
//   draw FILE.svg                 with what the last tool changed shown brightly
//   save FILE.kicad_pcb
#include <dlfcn.h>

#include <fstream>
#include <iostream>
#include <set>
#include <sstream>

#include "Editor/Client/Client.h"
#include "Editor/Client/Parameters.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Picture/Picture.h"
#include "Editor/Selection/Selection.h"
#include "Interfaces/Tools.h"
#include "Platform/Text.h"

using namespace Ketril;

// The library, loaded as any editor loads it. It stays: objects that it made may be held somewhere.
class ToolsLibrary {
 public:
  ToolsLibrary() : handle_(dlopen(TOOLS_LIBRARY, RTLD_NOW)) {
    if (!handle_) throw std::runtime_error(dlerror());
  }
  // Interfaces/Tools.h has the types of the exports.
  template <class Tool>
  Tool* Find(const char* name) const {
    void* symbol = dlsym(handle_, name);
    if (!symbol) throw std::runtime_error(dlerror());
    return reinterpret_cast<Tool*>(symbol);
  }

 private:
  void* handle_;
};

// What the tools ask their user, here on the terminal. Each entry that is left out has an answer by default.
Editor::ClientSetup TerminalClient(Editor::Board& board) {
  Editor::ClientSetup setup;
  setup.current_board = &board;
  setup.current_view = board.view;
  setup.confirm = [](const std::u16string& question) -> std::optional<bool> {
    std::cout << Platform::ToUtf8(question) << " (y/n) " << std::flush;
    std::string answer;
    return std::getline(std::cin, answer) && answer == "y";
  };
  setup.show_message = [](const std::u16string& text, Platform::TDialogKind) {
    std::cout << Platform::ToUtf8(text) << "\n";
  };
  setup.teardrop_dialog = [](TTeardropOptionsEx&) { return true; };  // OK, with the options as they stand
  return setup;
}

class SmallEditor {
 public:
  explicit SmallEditor(const std::string& path)
      : board_(Editor::ReadBoard(path)),
        client_(Editor::MakeHost<Editor::Client>(TerminalClient(*board_.Get()))) {}

  void Do(const std::string& line) {
    std::istringstream words(line);
    std::string verb, rest;
    words >> verb >> std::ws;
    std::getline(words, rest);
    if (verb == "select") {
      std::cout << Editor::Selection(rest).Apply(*board_.Get()) << " objects selected\n";
    } else if (verb == "tear-drops") {
      Run<decltype(Tools_TearDrops)>("Tools_TearDrops", Named(rest).Get());
    } else if (verb == "pads-to-vias") {
      Run<decltype(Tools_ReplaceSelectedPadsWithVias)>("Tools_ReplaceSelectedPadsWithVias");
    } else if (verb == "align-left") {
      Run<decltype(Tools_AutoPlaceAlignLeft)>("Tools_AutoPlaceAlignLeft", board_->view.Get());
    } else if (verb == "undo") {
      board_->journal.Undo();
    } else if (verb == "draw") {
      std::ofstream(rest) << Picture();
    } else if (verb == "save") {
      Editor::SaveBoard(*board_.Get(), rest);
    } else if (!verb.empty()) {
      throw std::runtime_error("no such command");
    }
  }

 private:
  // One tool is one step of the undo. A tool that fails leaves what it did so far; here that is undone.
  template <class Tool, class... Arguments>
  void Run(const char* name, Arguments... arguments) {
    Tool* const tool = tools_.Find<Tool>(name);
    board_->journal.Begin();
    try {
      tool(board_.Get(), arguments...);
    } catch (...) {
      board_->journal.Undo();
      throw;
    }
    board_->journal.End();
    std::size_t count[3] = {};
    for (const Editor::Change& change : board_->journal.Changes()) ++count[static_cast<int>(change.kind)];
    std::cout << count[0] << " added, " << count[1] << " removed, " << count[2] << " changed\n";
  }

  // "A=1 B=2" as a list of parameters.
  static Ref<Editor::Parameters> Named(const std::string& text) {
    const auto list = Editor::MakeHost<Editor::Parameters>();
    std::istringstream words(text);
    for (std::string name, value; std::getline(words >> std::ws, name, '=') && words >> value;)
      list->AddParameter(Platform::ToUtf16(name), Platform::ToUtf16(value));
    return list;
  }

  std::string Picture() {
    std::set<const Editor::Primitive*> changed;
    for (const Editor::Change& change : board_->journal.Changes()) changed.insert(change.object.Get());
    Editor::PictureOptions options;
    if (!changed.empty())
      options.highlight = [&](const Editor::Primitive& object, const Editor::Board&) {
        return changed.contains(&object);
      };
    return Editor::DrawSvg(*board_.Get(), options);
  }

  const ToolsLibrary tools_;
  const Ref<Editor::Board> board_;
  const Editor::ClientInstallation client_;
};

int main(int argc, char** argv) try {
  if (argc != 2) throw std::runtime_error("usage: editor BOARD.kicad_pcb");
  SmallEditor editor(argv[1]);
  int failures = 0;
  for (std::string line; std::getline(std::cin, line);) {
    try {
      editor.Do(line);
    } catch (const std::exception& error) {
      std::cerr << line << ": " << error.what() << "\n";
      ++failures;
    }
  }
  return failures ? 1 : 0;
} catch (const std::exception& error) {
  std::cerr << error.what() << "\n";
  return 1;
}
