// What happened to a board during one command, so that it can be told and undone as one step.
#pragma once

#include <cstdint>
#include <unordered_set>
#include <vector>

#include "Editor/Model/Primitive.h"

namespace Ketril::Editor {

enum class ChangeKind : std::uint8_t { Added, Removed, Modified };
struct Change {
  ChangeKind kind;
  Ref<Primitive> object;
};

// Of each object that a command touches, the journal keeps how it was at first: its state, its place among
// the board's objects, the order of the net that it was in. The selection and the scratch marks are no part
// of it. Nothing is recorded before the first Begin, nor while an undo runs.
class Journal {
 public:
  explicit Journal(Board& board);
  ~Journal();

  void Begin();  // starts a command; what was recorded before is forgotten
  void End();    // ends it: nothing more is recorded, but it can still be told and undone
  bool IsRecording() const { return recording_; }

  // What the command did, net of what it took back itself, in the order in which it first touched the
  // objects. An object that was added and removed again is not there; one that was written is `Modified`,
  // also when the values are the same. The board counts as an object: its setup can be modified.
  std::vector<Change> Changes() const;
  // What the command added and took off again, as it was in between; some of it may never have been added.
  std::vector<Ref<Primitive>> Withdrawn() const;
  // The board as it was at Begin. Ends the command, and forgets it.
  void Undo();

  // Before any change of an object. Cheap after the first time. Passes over what is no part of the board, not
  // even as a member: it has not come yet, or was recorded when it left.
  void RecordBefore(Primitive& primitive);
  // Before an object comes onto the board or goes.
  void RecordPlace(Primitive& primitive);

 private:
  struct Record;
  struct NetOrder;
  void RecordNetOrder(Net* net);
  void RestorePlaces();
  void RestoreOwners();
  void Forget();

  Board& board_;
  bool recording_ = false;
  std::uint32_t mark_ = 0;         // `journal_mark` of the objects that are recorded
  bool document_changed_ = false;  // at Begin
  std::vector<Record> records_;
  std::vector<NetOrder> net_orders_;
  std::unordered_set<const Net*> ordered_nets_;
  std::vector<Ref<Primitive>> changed_in_file_;  // owners whose file mark the command was the first to set
};

}  // namespace Ketril::Editor
