// What happened to a board during one command, so that it can be told and undone as one step.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Editor/Model/Primitive.h"

namespace Ketril::Editor {

enum class ChangeKind : std::uint8_t { Added, Removed, Modified };
struct Change {
  ChangeKind kind;
  Ref<Primitive> object;
};

class Journal {
 public:
  void Begin();  // starts a command; what was recorded before is forgotten
  // What the command did, net of what it took back itself: an object added and removed again is in no list.
  std::vector<Change> Changes() const;
  void Undo();   // the board as it was at Begin
};

}  // namespace Ketril::Editor
