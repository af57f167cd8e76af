// The exports, each with what it is called with taken from bytes.
#pragma once

#include <filesystem>
#include <span>

#include "Editor/Model/Board.h"
#include "Fuzz/Support/Bytes.h"

namespace Ketril::Fuzz {

struct Stage {
  Editor::Board& board;
  Bytes& bytes;
  const std::filesystem::path& folder;  // for the files that are read and written
};

struct Step {
  const char* name;
  void (*run)(Stage& stage);
  bool keeps_failures = false;  // tells those of the host to the user, as the others do not
};

std::span<const Step> Steps();

}  // namespace Ketril::Fuzz
