// Somebody's program: reads a board with the installed editor, finds an export of the installed tools by its
// name, runs it, and tells how many objects of each kind there are.
#include <dlfcn.h>

#include <cstdio>

#include "Editor/Files/BoardFile.h"
#include "Editor/Model/Board.h"
#include "Interfaces/Tools.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const auto board = Ketril::Editor::ReadBoard(argv[1]);
  void* library = dlopen("libKetrilTools.so", RTLD_NOW);
  if (!library) {
    std::fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  const auto run = reinterpret_cast<void (*)(Ketril::IPCB_Board*)>(dlsym(library, "Tools_ReplaceSelectedPadsWithVias"));
  if (!run) return 1;
  run(board.Get());
  std::printf("%zu tracks\n", board->objects.Count(Ketril::eTrackObject));
  return 0;
}
