// Who answers the tools' questions when there is no window to show them in: the command line's -y, then the
// answers file, then the person at the terminal. A question that nobody answers counts as cancelled, and is
// told.
//
// An answers file has a line for each question, `question = answer`; * in the question stands for any
// characters, the first line that fits holds, and lines that start with # are for people. "Confirm Abort
// Process" comes after Ctrl-C; when nobody answers it, Ctrl-C is the answer.
//
//   # clear the board in one go
//   Confirm Abort Process = no
//   This selection contains locked * = yes
//
// `Select ... = place` and `Choose ... = place` answer a pick each, once: a place as in the board file, x,y,
// or the name of a component, room or zone. `Which ... = name` chooses among several objects at such a place,
// by name or by the number that they are listed with, and `Enter ... = text` answers a text. Picks of the
// command line come first; where all are used up, a further pick is cancelled.
//
// Lines `Alignment_... = value`, `RoomArrange_... = value` and `BoardReport_... = yes|no` answer the dialogs
// of those names, as PlacementDialogs.h and ReportDialog.h tell, and `Stitch_...`, `Shield_...` and
// `UnusedPads_...` those of ViaDialogs.h, `LegacyTeardrop_...` that of TeardropDialog.h. A line
// `TeardropParam_... = number` answers the dialog of the teardrop options: those that are named change, and
// the dialog is accepted.
#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "Editor/Client/UIManager.h"
#include "Interfaces/Teardrops.h"
#include "Ketril/ViaDialogs.h"
#include "Platform/Dialogs.h"

namespace Ketril::Command {

// The place that a text means on the board at hand; empty when it means none.
using PlaceReader = std::function<std::optional<TCoordPoint>(const std::string& text)>;

class Answers {
 public:
  // `terminal_in` null: nobody is at the terminal. The streams outlive the object.
  Answers(bool always_yes, std::istream* terminal_in, std::ostream& terminal_out);

  // Raises Failure (usage) that names the file, the line and what is expected there.
  void ReadFile(const std::string& path);

  Platform::TDialogAnswer Answer(const std::u16string& text, Platform::TDialogKind kind,
                                 Platform::TDialogButtons buttons);

  // The dialog of the teardrop options; false when it is cancelled. -y accepts them as they are.
  bool EditTeardropOptions(TTeardropOptionsEx& options);

  // The dialog of the older builder. Fields fill one that asks for everything and no report, not the stored
  // choice.
  bool LegacyTeardropDialog(TTearDropOptions& options);

  // Picks are good from here on: those given, then those of the answers file. Raises Failure (usage) for one
  // that is no place.
  void SetPlaces(PlaceReader read, const std::vector<std::string>& picks);
  // Where picks come from, once those given are used up; nothing from it ends the picking.
  void SetPickSource(std::function<std::optional<TCoordPoint>()> source) { pick_source_ = std::move(source); }
  std::optional<TCoordPoint> Pick(const std::u16string& prompt);
  // Where the cursor is; as a pick.
  void SetCursor(const std::string& text);
  std::optional<TCoordPoint> Cursor() const { return cursor_; }
  // Of several objects at a place that was picked: the one whose name the pick was, else the one that the
  // answers file names, else with -y the first, else the one that is chosen at the terminal.
  std::optional<std::size_t> ChooseObject(const std::vector<Editor::Primitive*>& objects);
  bool EditText(const std::u16string& caption, std::u16string& text);
  // A value of a dialog. False when it belongs to none; raises Failure (usage) for a name or value that the
  // dialog does not have.
  bool AddField(const std::string& name, const std::string& value);
  bool AlignmentDialog(Editor::AlignmentAnswer& answer);
  bool RoomArrangeDialog(IPCB_RoomArrangeOptions& options);
  // Raises Failure (usage) for fields of the via dialogs that mean nothing on the board. Lengths that name no
  // unit are in `unit` from here on.
  void CheckViaFields(Editor::Board& board, Editor::LengthUnit unit);
  // Without a field or -y, asks at the terminal.
  bool StitchingDialog(Editor::Board& board, Editor::StitchSettings& settings);
  bool ShieldingDialog(Editor::Board& board, Editor::ShieldSettings& settings);
  bool UnusedPadsDialog(TUnusedPadsOptions& options);
  bool BoardReportDialog(TBoardReportOptionSet& options);

  // The user stopped the tool.
  bool Aborted() const { return aborted_; }
  // Questions that nobody answered, in the order in which they came.
  const std::vector<std::string>& Unanswered() const { return unanswered_; }

 private:
  Platform::TDialogAnswer YesOrNoAnswer(const std::u16string& text);
  // Fills a dialog: `set(name, value)` gives what is wrong, empty for nothing.
  TCoordPoint PlaceOrFailure(const std::string& text) const;
  template <class Set>
  bool FillDialog(const char* caption, const char* prefix, std::span<const DialogField> known, Set set);

  bool always_yes_;
  std::istream* in_;
  std::ostream& out_;
  std::vector<std::pair<std::u16string, bool>> lines_;          // question pattern, yes
  std::vector<std::pair<std::string, std::string>> teardrops_;  // names and values
  std::vector<std::pair<std::string, std::string>> fields_;     // of other dialogs
  std::vector<std::pair<std::u16string, std::string>> words_;   // prompt pattern, place or text
  PlaceReader read_place_;
  std::vector<std::pair<TCoordPoint, std::string>> picks_;
  std::size_t used_picks_ = 0;
  std::function<std::optional<TCoordPoint>()> pick_source_;
  bool picked_ = false;
  std::string pick_;  // the last one, as it was given
  std::optional<TCoordPoint> cursor_;
  bool aborted_ = false;
  Editor::LengthUnit unit_ = Editor::LengthUnit::Millimetre;
  std::vector<std::string> unanswered_;
};

}  // namespace Ketril::Command
