// Spreading: equal steps between the groups of nodes, with runs of texts kept together.
#include <cstdlib>

#include "DLLs/Tools/Geometry/Rounding.h"
#include "DLLs/Tools/Placement/Align.h"

namespace Ketril::Tools {

namespace {

constexpr TCoord kLeastStep = 10000;

// A node in the list, along the axis that is worked on.
struct TPlace {
  Ref<IPCB_Text3> Text;  // empty for what is no text
  TCoord Gap = 0;        // the mean gap of its run of texts, 0 for none
};

Ref<IPCB_Text3> TextOf(const TNode& node) {
  if (!node.Primitive || node.Primitive->ObjectID() != eTextObject) return {};
  return Probe<IPCB_Text3>(node.Primitive->IPrimitive());
}

}  // namespace

struct TNodeArranger::TSpread {
  const std::vector<std::unique_ptr<TNode>>& Nodes;
  const bool AlongX;
  std::vector<TPlace> Places;

  TSpread(const std::vector<std::unique_ptr<TNode>>& nodes, bool along_x) : Nodes(nodes), AlongX(along_x) {
    for (const auto& node : Nodes) Places.push_back({TextOf(*node)});
    for (std::size_t i = 0; i < Nodes.size(); ++i) {
      if (Places[i].Text) Nodes[i]->NodeTextBr = On(Places[i].Text).Read(&IPCB_Text3::GetState_TextRectangle);
    }
    FindGaps();
  }

  TCoord Low(const TNode& node) const { return AlongX ? node.LowX : node.LowY; }
  bool FollowsText(std::size_t i) const { return i > 0 && Places[i].Text && Places[i - 1].Text; }

  // A run is a chain of texts, of which the first has no gap before it.
  void FindGaps() {
    std::int64_t total = 0;
    std::size_t count = 0;
    for (std::size_t i = 1; i <= Nodes.size(); ++i) {
      if (i < Nodes.size() && FollowsText(i)) {
        const TCoordRect &text = Nodes[i]->NodeTextBr, &before = Nodes[i - 1]->NodeTextBr;
        total += std::abs(AlongX ? std::int64_t{text.x1} - before.x2 : std::int64_t{text.y1} - before.y2);
        ++count;
      } else if (count > 0 && (i == Nodes.size() || !Places[i].Text)) {
        const TCoord gap = WrapToCoord(total / static_cast<std::int64_t>(count));
        for (std::size_t member = i - count; member < i; ++member) Places[member].Gap = gap;
        total = 0;
        count = 0;
      }
    }
  }

  void Place(std::size_t i, TCoord target) const {
    TNode& node = *Nodes[i];
    if (FollowsText(i) && Places[i].Gap != 0) {
      const TCoordRect &text = node.NodeTextBr, &before = Nodes[i - 1]->NodeTextBr;
      const TCoord low = WrapToCoord(std::int64_t{AlongX ? before.x2 : before.y2} + Places[i].Gap);
      return node.MoveTextBrTo(AlongX ? low : text.x1, AlongX ? text.y1 : low);
    }
    std::int64_t low = target;
    if (i > 0 && Places[i].Text) {
      const TCoordPoint reference = On(Places[i].Text).Read(&IPCB_Text3::GetState_TextReference);
      low += std::int64_t{Low(node)} - (AlongX ? reference.x : reference.y) + node.GetNodeClearance();
    }
    node.MoveTo(AlongX ? WrapToCoord(low) : node.LowX, AlongX ? node.LowY : WrapToCoord(low));
  }
};

void TNodeArranger::Spread() {
  if (Nodes.size() < 3) return;
  const std::vector<std::int32_t> groups = Groups();
  if (groups.back() == 0) return;
  const bool along_x = WorksOnX();
  const auto low = [&](const TNode& node) { return std::int64_t{along_x ? node.LowX : node.LowY}; };
  const std::int64_t first = low(*Nodes.front());
  const std::int64_t step = (low(*Nodes.back()) - first) / groups.back();
  if (step < kLeastStep) return;
  const TSpread spread(Nodes, along_x);
  for (std::size_t i = 0; i < Nodes.size(); ++i) spread.Place(i, WrapToCoord(first + groups[i] * step));
}

}  // namespace Ketril::Tools
