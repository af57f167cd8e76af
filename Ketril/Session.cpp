#include "Ketril/Session.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "Editor/Client/Progress.h"
#include "Editor/Files/FileStyle.h"
#include "Ketril/Reports.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

std::filesystem::path OptionsFolder() {
  if (const char* folder = std::getenv("XDG_CONFIG_HOME"); folder && *folder)
    return std::filesystem::path(folder) / "ketril";
  if (const char* home = std::getenv("HOME"); home && *home)
    return std::filesystem::path(home) / ".config" / "ketril";
  return {};
}

void ShowProgress(const Editor::ProgressState& state) {
  if (!state.running) {
    std::fputs("\r\033[K", stderr);
    return;
  }
  if (state.maximum <= 0) return;
  // A line for each percent, not for each object: a terminal is slow.
  const std::int64_t percent = std::int64_t{100} * std::min(state.position, state.maximum) / state.maximum;
  if (state.position != state.maximum && percent == std::int64_t{100} * (state.position - 1) / state.maximum)
    return;
  std::fprintf(stderr, "\r\033[K%s %3d%%", Platform::ToUtf8(state.caption).c_str(),
               static_cast<int>(percent));
}

void ListenToPlacement(Editor::ClientSetup& setup, PlacementLog& log) {
  setup.record_placement = [&log](const Editor::PlacementLine& line) { log.lines.push_back(line); };
  setup.messages.add = [](const Editor::PanelMessage& message) {
    std::fprintf(stderr, "%s %s: %s\n", Platform::ToUtf8(message.message_class).c_str(),
                 Platform::ToUtf8(message.source).c_str(), Platform::ToUtf8(message.text).c_str());
  };
  // The panel is shown when lines were skipped and the rest was done.
  setup.messages.show = [&log] { log.failed = false; };
}

void TellWritten(const std::filesystem::path& file) {
  std::fprintf(stderr, "written: %s\n", file.string().c_str());
}

// Questions and messages. An error tells that a placement came to nothing.
void AnswerQuestions(Editor::ClientSetup& setup, Answers& answers, PlacementLog& log) {
  setup.confirm = [&answers](const std::u16string& text) -> std::optional<bool> {
    switch (answers.Answer(text, Platform::TDialogKind::Confirmation, Platform::TDialogButtons::YesNo)) {
      case Platform::TDialogAnswer::Yes:
        return true;
      case Platform::TDialogAnswer::No:
        return false;
      default:
        return std::nullopt;
    }
  };
  setup.show_message = [&answers, &log](const std::u16string& text, Platform::TDialogKind kind) {
    log.failed |= kind == Platform::TDialogKind::Error;
    answers.Answer(text, kind, Platform::TDialogButtons::Ok);
  };
}

// Places and objects that a person would click on.
void AnswerPicks(Editor::ClientSetup& setup, Answers& answers) {
  setup.cursor = answers.Cursor();
  setup.choose_location = [&answers](const std::u16string& prompt) { return answers.Pick(prompt); };
  setup.choose_rectangle = [&answers](const std::u16string& first_prompt,
                                      const std::u16string& second_prompt) -> std::optional<TCoordRect> {
    const auto first = answers.Pick(first_prompt);
    const auto second = first ? answers.Pick(second_prompt) : std::nullopt;
    if (!second) return std::nullopt;
    return TCoordRect{first->x, first->y, second->x, second->y};
  };
  setup.choose_object = [&answers](const std::vector<Editor::Primitive*>& objects) {
    return answers.ChooseObject(objects);
  };
}

// False, with a word to the user, for a board whose file has none for pads without copper.
bool CanLoseCopper(const Editor::Board* board) {
  if (!board || Editor::FileVersion(board->file.version).QuotesAll()) return true;
  std::fprintf(stderr,
               "ketril: a board file of version %d cannot say that a pad lacks copper on a layer: save it in "
               "a newer one first\n",
               static_cast<int>(board->file.version));
  return false;
}

void AnswerDialogs(Editor::ClientSetup& setup, Answers& answers, const Editor::Board* board) {
  setup.teardrop_dialog = [&answers](TTeardropOptionsEx& options) {
    return answers.EditTeardropOptions(options);
  };
  setup.legacy_teardrop_dialog = [&answers](TTearDropOptions& options) {
    return answers.LegacyTeardropDialog(options);
  };
  setup.dialogs.alignment = [&answers](Editor::AlignmentAnswer& answer) {
    return answers.AlignmentDialog(answer);
  };
  setup.dialogs.room_arrange = [&answers](IPCB_RoomArrangeOptions& options) {
    return answers.RoomArrangeDialog(options);
  };
  setup.dialogs.via_stitching = [&answers](Editor::Board& on, Editor::StitchSettings& settings) {
    return answers.StitchingDialog(on, settings);
  };
  setup.dialogs.via_shielding = [&answers](Editor::Board& on, Editor::ShieldSettings& settings) {
    return answers.ShieldingDialog(on, settings);
  };
  setup.dialogs.unused_pads = [&answers, board](TUnusedPadsOptions& options) {
    return CanLoseCopper(board) && answers.UnusedPadsDialog(options);
  };
  setup.dialogs.board_report = [&answers](TBoardReportOptionSet& options) {
    return answers.BoardReportDialog(options);
  };
}

Ref<Editor::Client> NewClient(Answers& answers, Editor::Board* board, FileDisplay show,
                              std::optional<std::int32_t> shove_passes, PlacementLog& log) {
  Editor::ClientSetup setup;
  setup.shove_passes = shove_passes;
  setup.options_folder = OptionsFolder();
  setup.installation_folder = InstallationFolder();
  setup.current_board = board;
  if (board) setup.current_view = board->view;
  setup.open_document = std::move(show);
  setup.notify = [](const std::u16string& title, const std::u16string& text, const std::u16string&,
                    const std::u16string&) {
    std::fprintf(stderr, "%s %s\n", Platform::ToUtf8(title).c_str(), Platform::ToUtf8(text).c_str());
  };
  AnswerQuestions(setup, answers, log);
  AnswerPicks(setup, answers);
  AnswerDialogs(setup, answers, board);
  ListenToPlacement(setup, log);
  return Editor::MakeHost<Editor::Client>(std::move(setup));
}

}  // namespace

Session::Session(Answers& answers, Editor::Board* board, bool files_stay,
                 std::optional<std::int32_t> shove_passes, FileDisplay show)
    : installation_(NewClient(answers, board,
                              show         ? std::move(show)
                              : files_stay ? TellWritten
                                           : FileDisplay(),
                              shove_passes, placement_)) {
  Platform::SetDialogProvider(
      [&answers](const std::u16string& text, Platform::TDialogKind kind, Platform::TDialogButtons buttons) {
        return answers.Answer(text, kind, buttons);
      });
  Platform::SetStringEditProvider([&answers](const std::u16string& caption, std::u16string& text) {
    return answers.EditText(caption, text);
  });
  if (isatty(STDERR_FILENO)) Editor::SetProgressSink(ShowProgress);
}

Session::~Session() {
  Editor::SetProgressSink(nullptr);
  Platform::SetStringEditProvider(nullptr);
  Platform::SetDialogProvider(nullptr);
}

}  // namespace Ketril::Command
