// Footprint files: each is read or refused with a place in it; what was read has members that are its own,
// with boxes that can be asked for.
#include <cstdint>

#include "Editor/Files/FootprintFile.h"
#include "Editor/Files/SExpression.h"
#include "Fuzz/Support/Check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace Ketril;
  using Fuzz::Check;
  const std::string text(reinterpret_cast<const char*>(data), size);
  try {
    const Ref<Editor::LibComponent> footprint = Editor::ReadFootprintText(text, "fuzz");
    for (const Ref<Editor::Primitive>& member : footprint->Members()) {
      Check(member->Owner() == footprint.Get() && !member->on_board, "a member is the footprint's");
      (void)member->Bounds();
      (void)member->Describe();
    }
    (void)footprint->Bounds();
  } catch (const Editor::FileError& error) {
    Check(!error.message.empty(), "a failure has a reason");
    Check(error.line <= text.size() + 1 && error.column <= text.size() + 1, "a failure lies in the file");
  }
  return 0;
}
