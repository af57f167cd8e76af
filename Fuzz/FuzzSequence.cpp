// Series of exports on a small board, all from bytes: the board, which exports, with what, what the user
// answers, which host call fails, and what a message does that a running tool delivers. Whatever happens,
// nothing stays open, the board is sound, a saved board is the board, and an undo gives the board before.
//
// KETRIL_FUZZ_TELL=1 in the environment tells the board and the steps, to make a test of a finding.
#include <stdlib.h>

#include <memory>
#include <optional>

#include "DLLs/Tools/Frame/ObjectScope.h"
#include "DLLs/Tools/Frame/PCBServer.h"
#include "Editor/Files/BoardFile.h"
#include "Editor/Files/CompanionFiles.h"
#include "Editor/Files/SExpression.h"
#include "Editor/HostCall.h"
#include "Editor/Model/Copper.h"
#include "Editor/Rules/ClassRules.h"
#include "Fuzz/Sequence/RandomBoard.h"
#include "Fuzz/Sequence/RandomUser.h"
#include "Fuzz/Sequence/Steps.h"
#include "Fuzz/Support/Check.h"
#include "Fuzz/Support/Folder.h"
#include "Platform/Messages.h"
#include "Tests/Support/BoardFromText.h"
#include "Tests/Support/BoardInvariants.h"
#include "Tests/Support/DescribeBoard.h"
#include "Tests/Support/HostPairs.h"

namespace {

using namespace Ketril;
using namespace Ketril::Fuzz;
using Editor::Board;
using Editor::HostGate;

constexpr std::size_t kMostObjects = 24, kMostSteps = 8, kBytesPerStep = 20;

const bool tells = ::getenv("KETRIL_FUZZ_TELL") != nullptr;

// A board and the file beside it, as texts.
struct Saved {
  std::string board, extras;
};

// Nothing for a board that reaches farther than its format.
std::optional<Saved> Save(Board& board) {
  try {
    std::string text = Editor::WriteBoardText(board);  // first: it gives identifiers
    return Saved{std::move(text), Editor::ExtrasText(board)};
  } catch (const Editor::FileError& error) {
    Check(error.message.find("farther out") != std::string::npos, error.message.c_str());
    return std::nullopt;
  }
}

Ref<Board> Load(const Saved& saved) {
  const std::string path = Folder() / "board.kicad_pcb";
  Ref<Board> board = Editor::ReadBoardText(saved.board, path);
  if (!saved.extras.empty()) Editor::ReadExtras(*board, saved.extras);
  Editor::AddClassRules(*board);
  return board;
}

// How a board was, to be compared with how it is after an undo.
struct Picture {
  explicit Picture(Board& board) : objects(Tests::DescribeBoard(board)), saved(Save(board)) {}
  std::vector<std::string> objects;
  std::optional<Saved> saved;
};

void CheckUndo(Board& board, const Picture& before, std::int64_t lost) {
  board.journal.Undo();
  CheckNothing(Tests::BrokenInvariant(board, lost), "the board after an undo");
  const Picture after(board);
  CheckNothing(Tests::Differences(before.objects, after.objects), "undo gives the objects before");
  if (!before.saved || !after.saved) return;
  Check(before.saved->board == after.saved->board, "undo gives the file before");
  Check(before.saved->extras == after.saved->extras, "undo gives the file beside it before");
}

// For the length of a block everything is drawn: which teardrops are hidden is in no file.
class AllDrawn {
 public:
  explicit AllDrawn(Board& board) {
    board.objects.ForEach(TObjectSet::All(), [&](Editor::Primitive& object) {
      if (!object.Has(Editor::kFlag_EnableDraw)) hidden_.push_back(&object);
    });
    for (Editor::Primitive* object : hidden_) object->Set(Editor::kFlag_EnableDraw, true);
  }
  ~AllDrawn() {
    for (Editor::Primitive* object : hidden_) object->Set(Editor::kFlag_EnableDraw, false);
  }
  AllDrawn(const AllDrawn&) = delete;
  AllDrawn& operator=(const AllDrawn&) = delete;

 private:
  std::vector<Editor::Primitive*> hidden_;
};

// The three whole points by which the format tells an arc say badly where the centre is of one that is nearly
// a line, or nearly a circle.
bool HasWeakArc(const Board& board) {
  bool has = false;
  board.objects.ForEach({eArcObject}, [&](const Editor::Primitive& object) {
    const double sweep = Editor::As<Editor::Arc>(&object)->Sweep();
    has = has || sweep < 60 || (sweep > 350 && sweep < 360);
  });
  return has;
}

// The same board comes back, and says the same when it is saved again.
void CheckSaving(Board& board) {
  const std::optional<Saved> saved = Save(board);
  if (!saved) return;
  const Ref<Board> again = Load(*saved);
  CheckNothing(Tests::BrokenInvariant(*again), "a loaded board");
  if (!HasWeakArc(board)) {
    const AllDrawn drawn(board);
    CheckNothing(Tests::Differences(Tests::DescribeBoard(board, true), Tests::DescribeBoard(*again, true), 4),
                 "save and load give the same board");
  }
  const std::optional<Saved> twice = Save(*again);
  Check(twice && twice->board == saved->board, "a loaded board says what it was loaded from");
}

void Select(Board& board, Bytes& bytes) {
  const int mask = bytes.Take();
  if (mask == 0) return;
  int n = 0;
  board.objects.ForEach(TObjectSet::All(), [&](Editor::Primitive& object) {
    object.SetFlag(Editor::kFlag_Selected, mask == 255 || (mask >> n++ % 8 & 1) != 0);
  });
}

// A window whose next message runs a step within the step.
class Window {
 public:
  Window(Board& board, Bytes& bytes) : board_(board), bytes_(bytes) {
    if (bytes.Below(8) != 7) return;
    window_ = Platform::CreateWindow([this](const Platform::TMessage&) { Run(); });
    Platform::PostMessage({.Window = window_, .Kind = 1});
  }
  ~Window() {
    if (window_) Platform::DestroyWindow(window_);
    while (Platform::PeekMessage()) {
    }
  }
  bool Ran() const { return ran_; }
  bool KeepsFailures() const { return keeps_failures_; }

 private:
  void Run() {
    if (ran_) return;
    ran_ = true;
    const Step& step = bytes_.OneOf(Steps().data(), Steps().size());
    if (tells) std::fprintf(stderr, "  within it: %s\n", step.name);
    keeps_failures_ = step.keeps_failures;
    Stage stage{board_, bytes_, Folder()};
    step.run(stage);
  }

  Board& board_;
  Bytes& bytes_;
  std::uintptr_t window_ = 0;
  bool ran_ = false, keeps_failures_ = false;
};

// Gives how many iterators the host failed to take back.
std::int64_t Play(Board& board, Bytes& bytes) {
  const Step& step = bytes.OneOf(Steps().data(), Steps().size());
  Select(board, bytes);
  const int fault = bytes.Take();
  const std::int64_t first = fault < 128 ? 0 : 1 + (fault & 127) * (1 + bytes.Take());
  const std::int64_t second = fault < 192 ? 0 : 1 + bytes.Below(8);
  if (bytes.Below(16) == 15)
    Platform::PostMessage({.Kind = Platform::WM_KEYDOWN, .WParam = Platform::VK_ESCAPE});
  Window window(board, bytes);
  if (tells) {
    std::fprintf(stderr, "%s", step.name);
    if (first) std::fprintf(stderr, ", host call %d fails, and %d later", int(first), int(second));
    std::fprintf(stderr, "\n");
  }

  bool raised = false;
  HostGate::Arm(true, first, second);
  try {
    Stage stage{board, bytes, Folder()};
    step.run(stage);
  } catch (const std::exception& error) {
    raised = true;
    // Where the user is to point at something, there has to be a view.
    const bool no_view =
        std::string_view(error.what()).find("no IPCBGraphicalView") != std::string_view::npos;
    // A step within the step may have taken off the board what this one works on.
    const bool taken =
        window.Ran() && std::string_view(error.what()).find(": there is no IPCB_") != std::string_view::npos;
    if (!HostGate::HasFailed() && !no_view && !taken) Check(false, error.what());
  }
  HostGate::Disarm();
  const bool may_keep = step.keeps_failures || window.KeepsFailures();
  Check(raised || may_keep || !HostGate::HasFailed(), "a failure of the host reaches the caller");
  CheckNothing(Tests::UnclosedPair(HostGate::Record(), first, second ? first + second : first),
               "everything is closed");
  Check(Tools::ObjectScopeDepth == 0 && !Tools::PrimitiveRegistry && !Tools::LibraryRegistry &&
            !Tools::LayerObjectRegistry && !Tools::NetMap,
        "the registries are empty");
  Check(Platform::CurrentCursor() == Platform::TCursor::Arrow, "the cursor is the arrow");
  // What fails to be closed stays open.
  std::int64_t lost = 0;
  for (const std::int64_t number : {first, second ? first + second : 0}) {
    if (number == 0 || number > HostGate::Calls()) continue;
    const std::string& failed = HostGate::Record()[static_cast<std::size_t>(number - 1)];
    if (failed.ends_with("Iterator_Destroy")) ++lost;
    if (failed == "IPCB_Progress.End") Check(!Failed(board.progress->End()), "the progress ends");
  }
  return lost;
}

void PlayAll(Bytes input, Bytes& answers) {
  const int objects = input.Below(kMostObjects), rules = input.Below(4), how = input.Take();
  const std::string text = RandomBoardText(input.Slice(1 + kBytesPerObject * objects));
  if (tells) std::fprintf(stderr, "%s", text.c_str());
  Ref<Board> board = Tests::BoardFromText(text);
  constexpr std::int32_t kVersions[] = {20221018, 20171130, 20211014, 20240108, 20241229};
  board->file.version = kVersions[how % std::size(kVersions)];
  AddRandomRules(*board, input.Slice(8 * rules));
  const std::optional<Saved> saved = Save(*board);
  if (!saved) return;
  board = Load(*saved);
  CheckSaving(*board);

  std::optional<Picture> before;
  std::int64_t lost = 0;
  for (std::size_t step = 0; step < kMostSteps && !input.IsEmpty(); ++step) {
    if (!before) {
      before.emplace(*board);
      board->journal.Begin();
    }
    answers = input.Slice(kBytesPerStep);
    const bool undoes = answers.Below(3) != 2;
    lost += Play(*board, answers);
    CheckNothing(Tests::BrokenInvariant(*board, lost), "the board");
    CheckSaving(*board);
    if (undoes) {
      CheckUndo(*board, *before, lost);
      before.reset();
    }
  }
  if (before) CheckUndo(*board, *before, lost);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::int64_t alive = Editor::LiveObjects::Count();
  {
    Bytes answers;
    const Editor::ClientInstallation installation(Editor::MakeHost<Editor::Client>(RandomUser(answers)));
    PlayAll(Bytes(data, size), answers);
    Tools::ReleasePCBServer();
  }
  Check(Editor::LiveObjects::Count() == alive, "every object is given back");
  return 0;
}
