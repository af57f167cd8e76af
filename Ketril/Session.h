// The editor around one run of a tool: its client, where the tools find it, and what a person at a terminal
// sees and answers.
#pragma once

#include <filesystem>
#include <functional>

#include "Editor/Client/Client.h"
#include "Editor/Model/Board.h"
#include "Ketril/Answers.h"
#include "Ketril/PlacementSummary.h"

namespace Ketril::Command {

using FileDisplay = std::function<void(const std::filesystem::path& file)>;

// Installs the client, the answers to questions and, on a terminal, a progress bar; its end takes them away
// again. The options that tools keep are in "ketril/KETRIL.INI" of the user's folder of configurations.
// `answers` outlives it.
class Session {
 public:
  // `board` is the one that the user sees; it may be null and is not held. Files that tools open for the user
  // to read are named to them, unless those do not stay. A limit of the passes of a shove goes before the
  // stored one. `show` shows a file to the user; without it, its name is told.
  explicit Session(Answers& answers, Editor::Board* board = nullptr, bool files_stay = true,
                   std::optional<std::int32_t> shove_passes = {}, FileDisplay show = {});
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session();

  const PlacementLog& Placement() const { return placement_; }

 private:
  PlacementLog placement_;
  Editor::ClientInstallation installation_;
};

}  // namespace Ketril::Command
