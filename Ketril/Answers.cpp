#include "Ketril/Answers.h"

#include <algorithm>
#include <fstream>
#include <istream>
#include <optional>
#include <ostream>

#include "Editor/Model/Rooms.h"
#include "Editor/Selection/Selection.h"
#include "Ketril/Exit.h"
#include "Ketril/Interrupts.h"
#include "Ketril/PlacementDialogs.h"
#include "Ketril/ReportDialog.h"
#include "Ketril/TeardropDialog.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

using Platform::TDialogAnswer;

constexpr std::u16string_view kAbortQuestion = u"Confirm Abort Process";
constexpr const char* kLegacyTeardrop = "LegacyTeardrop_";

std::optional<bool> YesOrNo(std::u16string_view word) {
  const std::u16string_view trimmed = Platform::Trim(word);
  for (const auto* yes : {u"yes", u"y"}) {
    if (Platform::EqualsIgnoringAsciiCase(trimmed, yes)) return true;
  }
  for (const auto* no : {u"no", u"n"}) {
    if (Platform::EqualsIgnoringAsciiCase(trimmed, no)) return false;
  }
  return std::nullopt;
}

}  // namespace

Answers::Answers(bool always_yes, std::istream* terminal_in, std::ostream& terminal_out)
    : always_yes_(always_yes), in_(terminal_in), out_(terminal_out) {}

void Answers::ReadFile(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw Failure(kExit_Usage, path + ": the answers file cannot be read");
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    const std::u16string text = Platform::ToUtf16(line);
    const std::u16string_view trimmed = Platform::Trim(text);
    if (trimmed.empty() || trimmed.front() == u'#') continue;
    // The answer is behind the last sign: a question may hold one.
    const std::size_t sign = trimmed.rfind(u'=');
    const bool is_field = sign != std::u16string_view::npos && trimmed.starts_with(u"TeardropParam_");
    if (is_field) {
      const auto part = [](std::u16string_view text) { return Platform::ToUtf8(Platform::Trim(text)); };
      teardrops_.emplace_back(part(trimmed.substr(0, sign)), part(trimmed.substr(sign + 1)));
      TTeardropOptionsEx tried;
      if (SetTeardropField(tried, teardrops_.back().first, teardrops_.back().second)) continue;
      throw Failure(kExit_Usage,
                    path + ":" + std::to_string(number) + ": no option of teardrops has that name and value");
    }
    const auto side = [&](bool left) {
      return Platform::Trim(left ? trimmed.substr(0, sign) : trimmed.substr(sign + 1));
    };
    if (sign != std::u16string_view::npos) {
      const std::u16string key(side(true));
      if (AddField(Platform::ToUtf8(key), Platform::ToUtf8(side(false)))) continue;
      if (key.starts_with(u"Select ") || key.starts_with(u"Choose ") || key.starts_with(u"Enter ") ||
          key.starts_with(u"Which ")) {
        words_.emplace_back(key, Platform::ToUtf8(side(false)));
        continue;
      }
    }
    const auto answer = sign == std::u16string_view::npos ? std::nullopt : YesOrNo(trimmed.substr(sign + 1));
    if (!answer) {
      throw Failure(kExit_Usage,
                    path + ":" + std::to_string(number) + ": expected `question = yes` or `question = no`");
    }
    lines_.emplace_back(Platform::Trim(trimmed.substr(0, sign)), *answer);
  }
}

TDialogAnswer Answers::Answer(const std::u16string& text, Platform::TDialogKind kind,
                              Platform::TDialogButtons buttons) {
  std::string shown = Platform::ToUtf8(text);
  std::replace(shown.begin(), shown.end(), '\r', '\n');
  if (buttons == Platform::TDialogButtons::Ok) {
    out_ << Platform::ToUtf8(Platform::DialogCaption(kind)) << ": " << shown << "\n";
    return TDialogAnswer::Ok;
  }
  const TDialogAnswer answer = YesOrNoAnswer(text);
  if (text == kAbortQuestion) {
    aborted_ =
        answer == TDialogAnswer::Yes || (answer == TDialogAnswer::Cancelled && EscapeOnInterrupt::Pressed());
    return aborted_ ? TDialogAnswer::Yes : answer;
  }
  if (answer == TDialogAnswer::Cancelled) unanswered_.push_back(shown);
  return answer;
}

TDialogAnswer Answers::YesOrNoAnswer(const std::u16string& text) {
  if (always_yes_) return TDialogAnswer::Yes;
  for (const auto& [pattern, yes] : lines_) {
    if (Editor::MatchesPattern(text, pattern)) return yes ? TDialogAnswer::Yes : TDialogAnswer::No;
  }
  std::string line;
  while (in_ && out_ << Platform::ToUtf8(text) << " [yes/no] " << std::flush && std::getline(*in_, line)) {
    if (const auto answer = YesOrNo(Platform::ToUtf16(line)))
      return *answer ? TDialogAnswer::Yes : TDialogAnswer::No;
  }
  return TDialogAnswer::Cancelled;
}

TCoordPoint Answers::PlaceOrFailure(const std::string& text) const {
  const auto place = read_place_(text);
  if (!place)
    throw Failure(kExit_Usage, "\"" + text + "\" is no place: expected X,Y or a component, room or zone");
  return *place;
}

void Answers::SetPlaces(PlaceReader read, const std::vector<std::string>& picks) {
  read_place_ = std::move(read);
  for (const std::string& pick : picks) picks_.emplace_back(PlaceOrFailure(pick), pick);
  for (const auto& [prompt, text] : words_) {
    if (!prompt.starts_with(u"Enter ") && !prompt.starts_with(u"Which ")) PlaceOrFailure(text);
  }
}

void Answers::SetCursor(const std::string& text) {
  cursor_ = PlaceOrFailure(text);
}

std::optional<TCoordPoint> Answers::Pick(const std::u16string& prompt) {
  const auto taken = [&](TCoordPoint place, const std::string& text) {
    picked_ = true;
    pick_ = text;
    return place;
  };
  if (used_picks_ < picks_.size()) {
    const auto& [place, text] = picks_[used_picks_++];
    return taken(place, text);
  }
  if (pick_source_) return aborted_ ? std::nullopt : pick_source_();
  for (auto word = words_.begin(); word != words_.end(); ++word) {
    if (!Editor::MatchesPattern(prompt, word->first)) continue;
    const std::string text = word->second;
    words_.erase(word);
    if (const auto place = read_place_(text)) return taken(*place, text);
    break;
  }
  const std::string shown = Platform::ToUtf8(prompt);
  std::string line;
  while (in_ && out_ << shown << " [X,Y or a name, nothing cancels] " << std::flush &&
         std::getline(*in_, line)) {
    if (line.empty()) return std::nullopt;
    if (const auto place = read_place_(line)) return taken(*place, line);
  }
  if (!picked_) unanswered_.push_back(shown);
  return std::nullopt;
}

std::optional<std::size_t> Answers::ChooseObject(const std::vector<Editor::Primitive*>& objects) {
  std::string question = "Which object";
  for (std::size_t i = 0; i < objects.size(); ++i)
    question +=
        (i == 0 ? ": " : ", ") + std::to_string(i + 1) + " " + Platform::ToUtf8(objects[i]->Describe());
  const auto choice = [&](const std::string& word) -> std::optional<std::size_t> {
    const std::u16string name = Platform::ToUtf16(word);
    for (std::size_t i = 0; i < objects.size(); ++i) {
      if (Platform::EqualsIgnoringAsciiCase(objects[i]->Identifier(), name)) return i;
    }
    for (std::size_t i = 0; i < objects.size(); ++i) {
      if (word == std::to_string(i + 1)) return i;
    }
    return std::nullopt;
  };
  if (const auto named = choice(pick_)) return named;
  for (auto word = words_.begin(); word != words_.end(); ++word) {
    if (!Editor::MatchesPattern(u"Which object", word->first)) continue;
    const std::string text = word->second;
    words_.erase(word);
    if (const auto chosen = choice(text)) return chosen;
    break;
  }
  if (always_yes_) return 0;
  std::string line;
  while (in_ && out_ << question << " [a number or a name, nothing cancels] " << std::flush &&
         std::getline(*in_, line)) {
    if (line.empty()) return std::nullopt;
    if (const auto chosen = choice(line)) return chosen;
  }
  unanswered_.push_back(question);
  return std::nullopt;
}

bool Answers::EditText(const std::u16string& caption, std::u16string& text) {
  for (const auto& [pattern, word] : words_) {
    if (!Editor::MatchesPattern(caption, pattern)) continue;
    text = Platform::ToUtf16(word);
    return true;
  }
  const std::string shown = Platform::ToUtf8(caption);
  std::string line;
  if (in_ && out_ << shown << " [" << Platform::ToUtf8(text) << "] " << std::flush &&
      std::getline(*in_, line)) {
    if (!line.empty()) text = Platform::ToUtf16(line);
    return !line.empty();
  }
  unanswered_.push_back(shown);
  return false;
}

bool Answers::AddField(const std::string& name, const std::string& value) {
  for (const auto known : {StitchFields(), ShieldFields(), UnusedPadsFields(), LegacyTeardropFields()}) {
    if (std::ranges::find(known, name, &DialogField::name) == known.end()) continue;
    TTearDropOptions tried;
    if (name.starts_with(kLegacyTeardrop)) {
      if (const std::string wrong = SetLegacyTeardropField(tried, name, value); !wrong.empty())
        throw Failure(kExit_Usage, name + "=" + value + ": " + wrong);
    }
    fields_.emplace_back(name, value);
    return true;
  }
  if (!name.starts_with("Alignment_") && !name.starts_with("RoomArrange_") &&
      !name.starts_with("BoardReport_"))
    return false;
  Editor::AlignmentAnswer alignment;
  TBoardReportOptionSet report;
  const Ref<Editor::RoomArrangeOptions> rooms = Editor::MakeHost<Editor::RoomArrangeOptions>();
  if (!SetAlignmentField(alignment, name, value) && !SetRoomArrangeField(*rooms.Get(), name, value) &&
      !SetBoardReportField(report, name, value))
    throw Failure(kExit_Usage, name + "=" + value + ": no dialog has that name and value");
  fields_.emplace_back(name, value);
  return true;
}

bool Answers::AlignmentDialog(Editor::AlignmentAnswer& answer) {
  bool answered = always_yes_;
  for (const auto& [name, value] : fields_) answered |= SetAlignmentField(answer, name, value);
  if (answered) return true;
  if (in_) {
    return EditFields(
        "Alignment_Horizontal (left, right, center, spread), Alignment_Vertical (top, bottom, center, "
        "spread), "
        "Alignment_MoveToGrid (yes, no).",
        [&](const std::string& name, const std::string& value) {
          return SetAlignmentField(answer, name, value);
        },
        *in_, out_);
  }
  unanswered_.emplace_back("Alignment");
  return false;
}

bool Answers::RoomArrangeDialog(IPCB_RoomArrangeOptions& options) {
  bool answered = always_yes_;
  for (const auto& [name, value] : fields_) answered |= SetRoomArrangeField(options, name, value);
  if (answered) return true;
  if (in_) {
    return EditFields(
        "RoomArrange_RowCount, _ColCount, _OriginX, _OriginY, _AutoSpacing, _SpacingX, _SpacingY, "
        "_MoveToGrid, "
        "_SortName, _Ascending.",
        [&](const std::string& name, const std::string& value) {
          return SetRoomArrangeField(options, name, value);
        },
        *in_, out_);
  }
  unanswered_.emplace_back("Room arrangement");
  return false;
}

template <class Set>
bool Answers::FillDialog(const char* caption, const char* prefix, std::span<const DialogField> known,
                         Set set) {
  bool answered = always_yes_;
  for (const auto& [name, value] : fields_) {
    if (name.starts_with(prefix)) answered |= set(name, value).empty();
  }
  if (answered) return true;
  if (!in_) {
    unanswered_.emplace_back(caption);
    return false;
  }
  std::string title;
  for (const DialogField& field : known) {
    title += std::string(field.name) + "=" + (field.type ? field.type : "yes|no") + "  " + field.help + "\n";
  }
  return EditFields(
      title.c_str(),
      [&](const std::string& name, const std::string& value) { return set(name, value).empty(); }, *in_,
      out_);
}

namespace {

// As the person wrote it who gave the verb's option, which is a field of its dialog too.
std::string OptionOf(const std::string& name) {
  for (const auto known : {StitchFields(), ShieldFields(), UnusedPadsFields()}) {
    for (const DialogField& field : known) {
      if (name == field.name) return std::string(field.option) + " (" + name + ")";
    }
  }
  return name;
}

}  // namespace

void Answers::CheckViaFields(Editor::Board& board, Editor::LengthUnit unit) {
  unit_ = unit;
  Editor::StitchSettings stitch;
  Editor::ShieldSettings shield;
  TUnusedPadsOptions unused;
  stitch.reference = shield.reference = Editor::MakeHost<Editor::Via>();
  for (const auto& [name, value] : fields_) {
    std::string wrong;
    if (name.starts_with("Stitch_")) wrong = SetStitchField(board, stitch, unit, name, value);
    if (name.starts_with("Shield_")) wrong = SetShieldField(board, shield, unit, name, value);
    if (name.starts_with("UnusedPads_")) wrong = SetUnusedPadsField(unused, name, value);
    if (!wrong.empty()) throw Failure(kExit_Usage, OptionOf(name) + " " + value + ": " + wrong);
  }
}

bool Answers::StitchingDialog(Editor::Board& board, Editor::StitchSettings& settings) {
  if (!settings.reference->GetNet()) settings.reference->SetNet(NetByDefault(board, true));
  return FillDialog("Via stitching", "Stitch_", StitchFields(), [&](const auto& name, const auto& value) {
    return SetStitchField(board, settings, unit_, name, value);
  });
}

bool Answers::ShieldingDialog(Editor::Board& board, Editor::ShieldSettings& settings) {
  if (!settings.reference->GetNet()) settings.reference->SetNet(NetByDefault(board, false));
  return FillDialog("Via shielding", "Shield_", ShieldFields(), [&](const auto& name, const auto& value) {
    return SetShieldField(board, settings, unit_, name, value);
  });
}

bool Answers::UnusedPadsDialog(TUnusedPadsOptions& options) {
  options = {.ProcessVias = true, .ProcessPads = true};
  return FillDialog(
      "Unused pads", "UnusedPads_", UnusedPadsFields(),
      [&](const auto& name, const auto& value) { return SetUnusedPadsField(options, name, value); });
}

bool Answers::BoardReportDialog(TBoardReportOptionSet& options) {
  bool answered = always_yes_;
  for (const auto& [name, value] : fields_) answered |= SetBoardReportField(options, name, value);
  if (answered) return true;
  if (in_) {
    return EditFields(
        BoardReportFields(options).c_str(),
        [&](const std::string& name, const std::string& value) {
          return SetBoardReportField(options, name, value);
        },
        *in_, out_);
  }
  unanswered_.emplace_back("Board report options");
  return false;
}

bool Answers::LegacyTeardropDialog(TTearDropOptions& options) {
  if (std::ranges::any_of(fields_,
                          [](const auto& field) { return field.first.starts_with(kLegacyTeardrop); }))
    options = {.Report = false};
  return FillDialog(
      "Legacy teardrops", kLegacyTeardrop, LegacyTeardropFields(),
      [&](const auto& name, const auto& value) { return SetLegacyTeardropField(options, name, value); });
}

bool Answers::EditTeardropOptions(TTeardropOptionsEx& options) {
  for (const auto& [name, value] : teardrops_) SetTeardropField(options, name, value);
  if (always_yes_ || !teardrops_.empty()) return true;
  if (in_) return Command::EditTeardropOptions(options, *in_, out_);
  unanswered_.emplace_back("Teardrop options");
  return false;
}

}  // namespace Ketril::Command
