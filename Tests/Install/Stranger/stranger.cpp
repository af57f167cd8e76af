// Somebody's program: reads a board with the installed editor, selects its free pads, runs a tool that it
// finds by name, and tells how many vias more there are.
#include <dlfcn.h>

#include <cstdio>

#include "Editor/Client/Client.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Selection/Selection.h"
#include "Interfaces/Tools.h"

int main(int argc, char** argv) {
  using namespace Ketril;
  if (argc != 2) return 2;
  void* library = dlopen("libKetrilTools.so", RTLD_NOW);
  if (!library) {
    std::fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  const auto run = reinterpret_cast<decltype(&Tools_ReplaceSelectedPadsWithVias)>(
      dlsym(library, "Tools_ReplaceSelectedPadsWithVias"));
  const Editor::ClientInstallation client(Editor::MakeHost<Editor::Client>(Editor::ClientSetup{}));
  const auto board = Editor::ReadBoard(argv[1]);
  const auto before = board->objects.Count(eViaObject);
  Editor::Selection("pad and free").Apply(*board);
  run(board.Get());
  std::printf("%zu more vias\n", board->objects.Count(eViaObject) - before);
  return 0;
}
