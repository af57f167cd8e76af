#include "DLLs/Tools/Placement/SwapComponents.h"

#include <array>
#include <optional>

#include "DLLs/Tools/Frame/HostLink.h"
#include "DLLs/Tools/Frame/MessageDialogs.h"
#include "DLLs/Tools/Frame/PrimitivesIterators.h"
#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Placement/Utilities.h"

namespace Ketril::Tools {

namespace {

using TComponent = Ref<IPCB_Component>;
using TPair = std::array<TComponent, 2>;

// A text of the component and how it stood.
struct TTextPlace {
  Ref<IPCB_Text> Text;  // empty when there is none
  TCoord X = 0, Y = 0;
  double Rotation = 0;
  bool Mirrored = false;
  TTextAutoposition Autoposition = eAutoPos_Manual;
};

// How the component stood.
struct TComponentPlace {
  TV7_Layer Layer;
  double Rotation = 0;
  TCoord X = 0, Y = 0;
  bool Flipped = false;
  TTextPlace Name, Comment;
  std::int32_t Union = 0;
};

// Which of the two texts of a component.
struct TTextKind {
  Status (IPCB_Component::*Text)(Ref<IPCB_Text>&) noexcept;
  Status (IPCB_Component::*Autoposition)(TTextAutoposition&) noexcept;
  Status (IPCB_Component::*ChangeAutoposition)(TTextAutoposition) noexcept;
};
constexpr TTextKind kName{&IPCB_Component::GetState_NameText, &IPCB_Component::GetState_NameAutoposition,
                          &IPCB_Component::ChangeNameAutoposition};
constexpr TTextKind kComment{&IPCB_Component::GetState_CommentText,
                             &IPCB_Component::GetState_CommentAutoposition,
                             &IPCB_Component::ChangeCommentAutoposition};

TTextPlace ReadTextPlace(const TComponent& component, const TTextKind& kind) {
  TTextPlace place;
  place.Text = On(component).Read(kind.Text);
  if (place.Text) {
    const auto text = On(place.Text);
    place.X = text.Read(&IPCB_Text::GetState_AnchorX);
    place.Y = text.Read(&IPCB_Text::GetState_AnchorY);
    place.Rotation = text.Read(&IPCB_Text::GetState_Rotation);
    place.Mirrored = text.Read(&IPCB_Text::GetState_Mirrored);
  }
  place.Autoposition = On(component).Read(kind.Autoposition);
  return place;
}

TComponentPlace ReadPlace(const TComponent& component) {
  const auto host = On(component);
  TComponentPlace place;
  place.Layer = host.Read(&IPCB_Component::GetState_Layer);
  place.Rotation = host.Read(&IPCB_Component::GetState_Rotation);
  place.X = host.Read(&IPCB_Component::GetState_ReferenceX);
  place.Y = host.Read(&IPCB_Component::GetState_ReferenceY);
  place.Flipped = host.Read(&IPCB_Component::GetState_Flipped);
  place.Name = ReadTextPlace(component, kName);
  place.Comment = ReadTextPlace(component, kComment);
  place.Union = host.Read(&IPCB_Component::GetState_UnionIndex);
  return place;
}

// The layer change may turn a component, so its rotation is read again.
void Turn(const TComponent& component, double rotation) {
  const auto host = On(component);
  host.Call(&IPCB_Component::RotateBy, rotation - host.Read(&IPCB_Component::GetState_Rotation));
  host.Call(&IPCB_Component::SetState_Rotation, rotation);
}

void Move(const TComponent& component, const TComponentPlace& to) {
  const auto host = On(component);
  const TCoord x = host.Read(&IPCB_Component::GetState_ReferenceX);
  const TCoord y = host.Read(&IPCB_Component::GetState_ReferenceY);
  host.Call(&IPCB_Component::MoveByXY, WrapToCoord(std::int64_t{to.X} - x),
            WrapToCoord(std::int64_t{to.Y} - y));
}

// Of the parts of a component, not of itself.
void SetUnionIndex(const TComponent& component, std::int32_t index) {
  {
    const THostGroupIterator parts(component);
    Ref<IPCB_Primitive> part = On(parts.HostIterator()).Read(&IPCB_GroupIterator::First);
    for (; part; part = On(parts.HostIterator()).Read(&IPCB_GroupIterator::Next))
      On(part).Call(&IPCB_Primitive::SetState_UnionIndex, index);
  }
  for (const TTextKind& kind : {kName, kComment}) {
    const Ref<IPCB_Text> text = On(component).Read(kind.Text);
    if (text) On(text).Call(&IPCB_Text::SetState_UnionIndex, index);
  }
}

void JoinUnion(const Ref<IPCB_Board>& board, const TComponent& component, std::int32_t index) {
  if (const auto unions = Probe<IPCB_BoardUnions>(board))
    On(unions).Call(&IPCB_BoardUnions::AddToUnion, index, component.Get());
  SetUnionIndex(component, index);
}

void SwapUnions(const Ref<IPCB_Board>& board, const TPair& pair, std::int32_t first, std::int32_t second) {
  if (first <= 0 && second < 1) return;
  if (first > 0) SetUnionIndex(pair[0], 0);
  if (second > 0) SetUnionIndex(pair[1], 0);
  JoinUnion(board, pair[1], first);
  JoinUnion(board, pair[0], second);
}

void SwapTexts(const TPair& pair, const TTextPlace& first, const TTextPlace& second, const TTextKind& kind) {
  if (first.Text && second.Text) {
    const auto swap = [&](auto set, auto TTextPlace::*value) {
      On(first.Text).Call(set, second.*value);
      On(second.Text).Call(set, first.*value);
    };
    swap(&IPCB_Text::SetState_AnchorX, &TTextPlace::X);
    swap(&IPCB_Text::SetState_AnchorY, &TTextPlace::Y);
    swap(&IPCB_Text::SetState_Rotation, &TTextPlace::Rotation);
    swap(&IPCB_Text::SetState_Mirrored, &TTextPlace::Mirrored);
  }
  On(pair[0]).Call(kind.ChangeAutoposition, second.Autoposition);
  On(pair[1]).Call(kind.ChangeAutoposition, first.Autoposition);
}

void Exchange(const Ref<IPCB_Board>& board, const TPair& pair) {
  const TComponentPlace first = ReadPlace(pair[0]), second = ReadPlace(pair[1]);
  for (const TComponent& component : pair) On(component).Call(&IPCB_Component::SetState_Flipped, false);
  On(pair[0]).Call(&IPCB_Component::SetState_Layer, second.Layer);
  On(pair[1]).Call(&IPCB_Component::SetState_Layer, first.Layer);
  On(pair[0]).Call(&IPCB_Component::SetState_Flipped, second.Flipped);
  On(pair[1]).Call(&IPCB_Component::SetState_Flipped, first.Flipped);
  Turn(pair[0], second.Rotation);
  Turn(pair[1], first.Rotation);
  Move(pair[0], second);
  Move(pair[1], first);
  SwapUnions(board, pair, first.Union, second.Union);
  SwapTexts(pair, first.Name, second.Name, kName);
  SwapTexts(pair, first.Comment, second.Comment, kComment);
}

// The exchange as one edit of both. Each edit that began is ended, the first before the second.
void ExchangeInBracket(const Ref<IPCB_Board>& board, const TPair& pair) {
  bool second_began = false;
  On(pair[0]).Call(&IPCB_Component::BeginModify);
  const auto edit = [&] {
    On(pair[1]).Call(&IPCB_Component::BeginModify);
    second_began = true;
    Exchange(board, pair);
  };
  const auto end_first = [&] { On(pair[0]).Call(&IPCB_Component::EndModify); };
  const auto end_second = [&] {
    if (second_began) On(pair[1]).Call(&IPCB_Component::EndModify);
  };
  RunFinally([&] { RunFinally(edit, end_first); }, end_second);
}

// The two selected components; empty when something else is selected.
std::optional<TPair> SelectedPair(const Ref<IPCB_Board>& board) {
  if (On(board).Read(&IPCB_Board::GetState_SelectedObjectsCount) != 2) return std::nullopt;
  TPair pair;
  for (std::int32_t i = 0; i < 2; ++i) {
    pair[static_cast<std::size_t>(i)] =
        Probe<IPCB_Component>(On(board).Read(&IPCB_Board::GetState_SelectedObject, i));
  }
  if (!pair[0] || !pair[1]) return std::nullopt;
  return pair;
}

// Empty when the user cancels a pick.
std::optional<TPair> PickPair(const Ref<IPCBGraphicalViewInterface>& view) {
  TPair pair;
  for (std::size_t i = 0; i < 2;) {
    TCoordPoint point;
    if (!ChooseLocation(i == 0 ? u"Select first component" : u"Select second component", point.x, point.y))
      return std::nullopt;
    pair[i] = Probe<IPCB_Component>(HitTest(view, point, {eComponentObject}));
    if (!pair[i]) continue;
    On(pair[i]).Call(&IPCB_Component::SetState_Selected, true);
    ++i;
  }
  return pair;
}

bool IsMoveable(const TComponent& component) {
  return On(component).Read(&IPCB_Component::GetState_Moveable);
}

}  // namespace

void SwapComponents(const Ref<IPCB_Board>& ABoard, const Ref<IPCBGraphicalViewInterface>& AView) {
  std::optional<TPair> pair = SelectedPair(ABoard);
  const bool single = pair.has_value();
  if (!single) pair = PickPair(AView);
  for (; pair; pair = PickPair(AView)) {
    if (!IsMoveable((*pair)[0]) || !IsMoveable((*pair)[1])) {
      return ShowWarningDialog(
          u"One or more components are locked. The swap components command cannot be executed.");
    }
    ExchangeInBracket(ABoard, *pair);
    if (single) return;
    for (const TComponent& component : *pair) On(component).Call(&IPCB_Component::SetState_Selected, false);
  }
}

}  // namespace Ketril::Tools
