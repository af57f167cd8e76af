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
  // What is not so of the others:
  bool leaves_edits_open = false;  // when a host call fails
  bool keeps_failures = false;     // tells them to the user
};

std::span<const Step> Steps();

}  // namespace Ketril::Fuzz
