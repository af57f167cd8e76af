#include "Ketril/ToolCalls.h"

#include <algorithm>
#include <charconv>

#include "Editor/Model/Board.h"
#include "Ketril/Exit.h"
#include "Ketril/PlacementDialogs.h"
#include "Platform/Text.h"

namespace Ketril::Command {

namespace {

constexpr struct {
  const char* word;
  TObjectId kind;
} kGroupKinds[] = {{"component", eComponentObject},
                   {"zone", ePolyObject},
                   {"dimension", eDimensionObject},
                   {"coordinate", eCoordinateObject}};

constexpr struct {
  const char* word;
  TTextAutoposition position;
} kTextPositions[] = {
    {"top-left", eAutoPos_TopLeft},         {"top", eAutoPos_TopCenter},
    {"top-right", eAutoPos_TopRight},       {"left", eAutoPos_CenterLeft},
    {"center", eAutoPos_CenterCenter},      {"right", eAutoPos_CenterRight},
    {"bottom-left", eAutoPos_BottomLeft},   {"bottom", eAutoPos_BottomCenter},
    {"bottom-right", eAutoPos_BottomRight},
};

Ref<IPCBGraphicalViewInterface> ViewOf(IPCB_Board* board) {
  Ref<IServerDocumentView> view;
  if (Failed(board->GetState_View(view))) return {};
  return Probe<IPCBGraphicalViewInterface>(view);
}

// A parameter that the verb cannot do without.
std::u16string Required(IParameterList* parameters, const char16_t* name) {
  std::u16string value;
  if (!parameters || !parameters->GetParameter(name, value))
    throw Failure(kExit_Usage, "-D " + Platform::ToUtf8(name) + "=... is missing");
  return value;
}

std::int32_t RequiredNumber(IParameterList* parameters, const char16_t* name) {
  const std::string text = Platform::ToUtf8(Required(parameters, name));
  std::int32_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size())
    throw Failure(kExit_Usage, "-D " + Platform::ToUtf8(name) + "=" + text + ": expected a whole number");
  return value;
}

}  // namespace

void CallWithBoard(const ToolsLibrary& library, const char* export_name, IPCB_Board* board, IParameterList*) {
  library.Find<void(IPCB_Board*)>(export_name)(board);
}

void CallWithParameters(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                        IParameterList* parameters) {
  library.Find<void(IPCB_Board*, IParameterList*)>(export_name)(board, parameters);
}

void CallWithView(const ToolsLibrary& library, const char* export_name, IPCB_Board* board, IParameterList*) {
  library.Find<void(IPCB_Board*, IPCBGraphicalViewInterface*)>(export_name)(board, ViewOf(board).Get());
}

void CallWithDocumentView(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                          IParameterList* parameters) {
  Ref<IServerDocumentView> view;
  if (Failed(board->GetState_View(view))) view = nullptr;
  library.Find<void(IPCB_Board*, IServerDocumentView*, IParameterList*)>(export_name)(board, view.Get(),
                                                                                      parameters);
}

void CallWithViewAndParameters(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                               IParameterList* parameters) {
  library.Find<void(IPCB_Board*, IPCBGraphicalViewInterface*, IParameterList*)>(export_name)(
      board, ViewOf(board).Get(), parameters);
}

void CallOnSelected(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                    IParameterList*) {
  std::vector<Ref<IPCB_Primitive>> objects;
  Ref<IPCB_Primitive> object;
  for (std::int32_t i = 0; !Failed(board->GetState_SelectedObject(i, object)) && object; ++i)
    objects.push_back(object);
  if (objects.empty())
    throw Failure(kExit_Usage, "no object is selected: expected --select, as --select 'pad and net:GND'");
  const auto tool = library.Find<void(IPCB_Board*, IPCB_Primitive*)>(export_name);
  for (const Ref<IPCB_Primitive>& selected : objects) tool(board, selected.Get());
}

void ShowTearDropsForNet(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                         IParameterList* parameters) {
  const std::u16string name = Required(parameters, u"Net");
  std::u16string show;
  const bool hides =
      parameters->GetParameter(u"Show", show) && !Platform::EqualsIgnoringAsciiCase(show, u"True");
  const auto* model = dynamic_cast<const Editor::Board*>(board);
  Editor::Net* const net = model ? model->FindNet(name) : nullptr;
  if (!net) throw Failure(kExit_Usage, "the board has no net \"" + Platform::ToUtf8(name) + "\"");
  library.Find<void(IPCB_Board*, IPCB_Net*, bool)>(export_name)(board, net, !hides);
}

void RunArrange(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                IParameterList* parameters) {
  const std::int32_t method = RequiredNumber(parameters, u"Method");
  if (method < eArrangeRectangle || method > eArrangeBottomSideBySide)
    throw Failure(kExit_Usage, "-D Method: expected a number from 0 to 19");
  library.Find<void(IPCB_Board*, IPCBGraphicalViewInterface*, TArrangerMethod)>(export_name)(
      board, ViewOf(board).Get(), static_cast<TArrangerMethod>(method));
}

void RunArrangeToRectangle(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                           IParameterList* parameters) {
  using Tool = void(IPCB_Board*, IPCBGraphicalViewInterface*, TCoord, TCoord, TCoord, TCoord);
  library.Find<Tool>(export_name)(board, ViewOf(board).Get(), RequiredNumber(parameters, u"Location1.x"),
                                  RequiredNumber(parameters, u"Location1.y"),
                                  RequiredNumber(parameters, u"Location2.x"),
                                  RequiredNumber(parameters, u"Location2.y"));
}

void RunArrangeToRoom(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                      IParameterList* parameters) {
  library.Find<void(IPCB_Board*, IPCBGraphicalViewInterface*, const std::u16string&)>(export_name)(
      board, ViewOf(board).Get(), Required(parameters, u"RoomName"));
}

void RunArrangeToRoomRule(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                          IParameterList* parameters) {
  const std::u16string name = Required(parameters, u"RoomName");
  Ref<IPCB_Primitive> rule;
  const auto rules = Probe<IPCB_Board3>(board);
  if (rules && Failed(rules->GetState_RuleByName(name, rule))) rule = nullptr;
  if (!library.Find<bool(IPCB_Board*, IPCBGraphicalViewInterface*, IPCB_Rule*)>(export_name)(
          board, ViewOf(board).Get(), Probe<IPCB_Rule>(rule).Get()))
    throw Failure(kExit_Failed, "there is no room \"" + Platform::ToUtf8(name) + "\"");
}

// The options are the board's, as the dialog's fields of the command line changed them.
void RunRoomArrange(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                    IParameterList* parameters) {
  Ref<IPCB_RoomArrangeOptions> options;
  const auto rooms = Probe<IPCB_BoardRooms>(board);
  if (rooms && Failed(rooms->GetState_RoomArrangeOptions(options))) options = nullptr;
  for (const char* name : {"RowCount", "ColCount", "OriginX", "OriginY", "AutoSpacing", "SpacingX",
                           "SpacingY", "MoveToGrid", "SortName", "Ascending"}) {
    const std::string field = std::string("RoomArrange_") + name;
    std::u16string value;
    if (options && parameters && parameters->GetParameter(Platform::ToUtf16(field), value))
      SetRoomArrangeField(*options.Get(), field, Platform::ToUtf8(value));
  }
  library.Find<void(IPCB_Board*, IPCBGraphicalViewInterface*, IPCB_RoomArrangeOptions*)>(export_name)(
      board, ViewOf(board).Get(), options.Get());
}

void PlaceFromFile(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                   IParameterList* parameters) {
  library.Find<void(IPCB_Board*, const std::u16string&)>(export_name)(board,
                                                                      Required(parameters, u"FileName"));
}

void AutopositionText(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                      IParameterList* parameters) {
  const auto position_of = [&](const char16_t* name) -> std::optional<TTextAutoposition> {
    std::u16string value;
    if (!parameters || !parameters->GetParameter(name, value)) return std::nullopt;
    const auto position = TextPositionOf(Platform::ToUtf8(value));
    if (!position)
      throw Failure(kExit_Usage,
                    "-D " + Platform::ToUtf8(name) + ": expected top-left, top, center and the like");
    return position;
  };
  const auto name = position_of(u"NamePosition"), comment = position_of(u"CommentPosition");
  if (!name && !comment)
    throw Failure(kExit_Usage, "expected a position for the designators, the comments or both");
  library.Find<void(IPCB_Board*, TTextAutoposition, TTextAutoposition, bool, bool)>(export_name)(
      board, name.value_or(eAutoPos_Manual), comment.value_or(eAutoPos_Manual), !name, !comment);
}

void UnGroupKinds(const ToolsLibrary& library, const char* export_name, IPCB_Board* board,
                  IParameterList* parameters) {
  std::u16string words, selected;
  if (!parameters || !parameters->GetParameter(u"Kinds", words) || words.empty())
    words = u"component,zone,dimension,coordinate";
  std::uint32_t kinds = 0;
  for (std::string rest = Platform::ToUtf8(words); !rest.empty();) {
    const std::size_t comma = std::min(rest.find(','), rest.size());
    const auto known = std::ranges::find_if(
        kGroupKinds, [&](const auto& kind) { return rest.compare(0, comma, kind.word) == 0; });
    if (known == std::end(kGroupKinds))
      throw Failure(kExit_Usage, "-D Kinds: \"" + rest.substr(0, comma) + "\" is no kind of group");
    kinds |= TObjectSet{known->kind}.Bits();
    rest.erase(0, comma + 1);
  }
  const bool by_pick = parameters && parameters->GetParameter(u"Selected", selected) && selected == u"False";
  library.Find<void(IPCB_Board*, bool, TObjectSet, const std::u16string&)>(export_name)(
      board, !by_pick, TObjectSet(kinds),
      by_pick ? u"Ungroup this object?" : u"Ungroup the selected objects?");
}

std::optional<TTextAutoposition> TextPositionOf(std::string_view word) {
  for (const auto& known : kTextPositions) {
    if (word == known.word) return known.position;
  }
  return std::nullopt;
}

std::vector<std::string> TextPositionWords() {
  std::vector<std::string> words;
  for (const auto& known : kTextPositions) words.emplace_back(known.word);
  return words;
}

std::vector<std::string> GroupKinds() {
  std::vector<std::string> words;
  for (const auto& known : kGroupKinds) words.emplace_back(known.word);
  return words;
}

}  // namespace Ketril::Command
