#include "DLLs/Tools/Placement/Align.h"

#include <algorithm>
#include <cstdlib>
#include <map>

#include "DLLs/Tools/Frame/PrimitivesFactory.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

namespace {

void MoveEdgeTo(TNode& node, TCoord TNode::*edge, TCoord place) {
  const TCoord by = WrapToCoord(std::int64_t{place} - node.*edge);
  const bool along_x = edge == &TNode::LowX || edge == &TNode::HighX;
  node.MoveBy(along_x ? by : 0, along_x ? 0 : by);
}

bool ComesBefore(const TNode& a, const TNode& b, TNodeSortMethod method) {
  switch (method) {
    case eSortMinX:
      return a.LowX < b.LowX;
    case eSortMaxX:
      return a.HighX > b.HighX;
    case eSortMinY:
      return a.LowY < b.LowY;
    case eSortMaxY:
      return a.HighY > b.HighY;
    default:
      return a.Height() > b.Height();
  }
}

// What is done for a method; a method that is not here does nothing.
struct TWork {
  TArrangerMethod Method;
  bool Sorts;
  TNodeSortMethod Sort;
  void (TNodeArranger::*Arrange)();  // null: only to the grid
};
constexpr TWork kWorks[] = {
    {eArrangeMoveToGrid, true, eSortMinX, nullptr},
    {eArrangeLeft, true, eSortMinX, &TNodeArranger::AlignLeftNew},
    {eArrangeRight, true, eSortMaxX, &TNodeArranger::AlignRightNew},
    {eArrangeHorCenter, true, eSortMinX, &TNodeArranger::Center},
    {eArrangeExpandX, true, eSortMinX, &TNodeArranger::Expand},
    {eArrangeContractX, true, eSortMinX, &TNodeArranger::Contract},
    {eArrangeSpreadX, true, eSortMinX, &TNodeArranger::Spread},
    {eArrangeTop, true, eSortMaxY, &TNodeArranger::AlignTopNew},
    {eArrangeBottom, true, eSortMinY, &TNodeArranger::AlignBottomNew},
    {eArrangeVertCenter, true, eSortMinY, &TNodeArranger::Center},
    {eArrangeExpandY, true, eSortMinY, &TNodeArranger::Expand},
    {eArrangeContractY, true, eSortMinY, &TNodeArranger::Contract},
    {eArrangeSpreadY, true, eSortMinY, &TNodeArranger::Spread},
    {eArrangeLeftSideBySide, false, eSortMinX, &TNodeArranger::AlignLeft},
    {eArrangeRightSideBySide, false, eSortMinX, &TNodeArranger::AlignRight},
    {eArrangeTopSideBySide, false, eSortMinX, &TNodeArranger::AlignTop},
    {eArrangeBottomSideBySide, false, eSortMinX, &TNodeArranger::AlignBottom},
};

// What the user may point at to centre on: arcs, pads, vias, tracks, texts, fills, connections, nets,
// components, polygons, regions, bodies, dimensions, coordinates, from-tos, pairs, embedded objects and
// boards, split planes.
constexpr TObjectSet kCenterObjects(7766014);

}  // namespace

TNodeArranger::TNodeArranger(TBoard* ABoard, IPCBGraphicalViewInterface* APCBView_Graphical,
                             TArrangerMethod AMethod)
    : Method(AMethod), Board(ABoard), PCBView_Graphical(APCBView_Graphical) {}

TNodeArranger::~TNodeArranger() noexcept(false) {
  std::exception_ptr first;
  for (const auto& node : Nodes) {
    try {
      node->Release();
    } catch (...) {
      if (!first) first = std::current_exception();
    }
  }
  Nodes.clear();
  if (first && std::uncaught_exceptions() == exceptions_) std::rethrow_exception(first);
}

void TNodeArranger::Adopt(std::unique_ptr<TNode> node) {
  node->Arranger = this;
  Nodes.push_back(std::move(node));
}

void TNodeArranger::Resort(TNodeSortMethod AMethod) {
  std::stable_sort(Nodes.begin(), Nodes.end(),
                   [&](const auto& a, const auto& b) { return ComesBefore(*a, *b, AMethod); });
}

void TNodeArranger::ApplyAll() {
  for (const auto& node : Nodes) node->ApplyPosition();
}

void TNodeArranger::Run() {
  if (Nodes.size() < 2) return;
  const auto* work =
      std::find_if(std::begin(kWorks), std::end(kWorks), [&](const TWork& w) { return w.Method == Method; });
  if (work == std::end(kWorks)) return;
  if (work->Sorts) Resort(work->Sort);
  if (work->Arrange) return (this->*work->Arrange)(), ApplyAll();
  for (const auto& node : Nodes) node->MoveToGrid();
}

bool TNodeArranger::WorksOnX() const {
  return Method == eArrangeHorCenter || Method == eArrangeExpandX || Method == eArrangeContractX ||
         Method == eArrangeSpreadX;
}

// --- aligning ---

// The nodes that were entered so far, by where they lie across the axis of the moves: that stays as it is.
class TNodeArranger::TChannels {
 public:
  TChannels(const std::vector<std::unique_ptr<TNode>>& nodes, bool along_x)
      : nodes_(nodes), along_x_(along_x) {
    for (const auto& node : nodes) widest_ = std::max(widest_, HighOf(*node) - LowOf(*node));
  }

  bool Share(const TNode& a, const TNode& b) const {
    return along_x_ ? a.OnSameChanelX(b) : a.OnSameChanelY(b);
  }
  void Enter(std::size_t i) { by_low_.emplace(LowOf(*nodes_[i]), i); }
  // The entered ones that share the node's channel, the last one first.
  std::vector<std::size_t> SharersOf(const TNode& node) const {
    std::vector<std::size_t> sharers;
    const auto end = by_low_.upper_bound(HighOf(node));
    for (auto it = by_low_.lower_bound(LowOf(node) - widest_); it != end; ++it) {
      if (Share(node, *nodes_[it->second])) sharers.push_back(it->second);
    }
    std::sort(sharers.rbegin(), sharers.rend());
    return sharers;
  }

 private:
  std::int64_t LowOf(const TNode& node) const {
    return along_x_ ? std::min(node.LowY, node.HighY) : std::min(node.LowX, node.HighX);
  }
  std::int64_t HighOf(const TNode& node) const {
    return along_x_ ? std::max(node.LowY, node.HighY) : std::max(node.LowX, node.HighX);
  }

  const std::vector<std::unique_ptr<TNode>>& nodes_;
  const bool along_x_;
  std::int64_t widest_ = 0;
  std::multimap<std::int64_t, std::size_t> by_low_;
};

// `update` gives a new edge value from the one so far and a node of the same channel; 0 is no value. Walking
// back from a node, each one that does not share its channel would take it along to its own edge; only where
// that ends counts, at the first of them, unless a value comes out.
template <class Update>
void TNodeArranger::Align(TEdge edge, bool start_at_first, Update update) {
  TChannels channels(Nodes, edge == &TNode::LowX || edge == &TNode::HighX);
  for (std::size_t i = 1; i < Nodes.size(); ++i) {
    TNode& node = *Nodes[i];
    channels.Enter(i - 1);
    TCoord value = start_at_first ? (*Nodes.front()).*edge : 0;
    for (const std::size_t sharer : channels.SharersOf(node)) value = update(value, *Nodes[sharer]);
    std::size_t apart = 0;
    while (apart < i && channels.Share(node, *Nodes[apart])) ++apart;
    if (apart < i) MoveEdgeTo(node, edge, (*Nodes[apart]).*edge);
    if (value != 0) MoveEdgeTo(node, edge, value);
  }
}

void TNodeArranger::AlignLeft() {
  Align(&TNode::LowX, false, [](TCoord e, const TNode& p) { return std::max(e, p.HighX); });
}

void TNodeArranger::AlignRight() {
  Align(&TNode::HighX, true, [](TCoord e, const TNode& p) { return std::min(e, p.LowX); });
}

void TNodeArranger::AlignTop() {
  Align(&TNode::HighY, true, [](TCoord e, const TNode& p) { return std::min(e, p.LowY); });
}

void TNodeArranger::AlignBottom() {
  Align(&TNode::LowY, false, [](TCoord e, const TNode& p) { return std::max(e, p.HighY); });
}

void TNodeArranger::AlignLeftNew() {
  Align(&TNode::LowX, false, [](TCoord e, const TNode& p) { return e == 0 || e > p.LowX ? p.LowX : e; });
}

void TNodeArranger::AlignRightNew() {
  Align(&TNode::HighX, true, [](TCoord e, const TNode& p) { return std::max(e, p.HighX); });
}

void TNodeArranger::AlignTopNew() {
  Align(&TNode::HighY, true, [](TCoord e, const TNode& p) { return std::max(e, p.HighY); });
}

void TNodeArranger::AlignBottomNew() {
  Align(&TNode::LowY, false, [](TCoord e, const TNode& p) { return e == 0 || e > p.LowY ? p.LowY : e; });
}

// --- centring ---

void TNodeArranger::Center() {
  TCoordPoint point;
  if (!ChooseLocation(u"Select a Primitive", point.x, point.y)) return;
  const Ref<IPCB_Primitive> hit = HitTest(PCBView_Graphical, point, kCenterObjects);
  if (!hit) return;
  const TPrimitive* const chosen = CreatePrimitiveWrapper(hit);
  const auto found = std::find_if(Nodes.rbegin(), Nodes.rend(),
                                  [&](const auto& node) { return SamePrimitive(node->Primitive, chosen); });
  if (found == Nodes.rend()) return;
  const TNode& reference = **found;
  // Half of a width and half of the other, each cut towards zero.
  const auto centred = [](TCoord low, TCoord high, TCoord own_low, TCoord own_high) {
    return WrapToCoord(low + (std::int64_t{high} - low) / 2 - (std::int64_t{own_high} - own_low) / 2);
  };
  for (const auto& node : Nodes) {
    if (node.get() == &reference) continue;
    if (WorksOnX())
      node->MoveTo(centred(reference.LowX, reference.HighX, node->LowX, node->HighX), node->LowY);
    else
      node->MoveTo(node->LowX, centred(reference.LowY, reference.HighY, node->LowY, node->HighY));
  }
}

// --- groups ---

TCoord TNodeArranger::GridStep() const {
  return Round(WorksOnX() ? Board->ComponentGridSizeX() : Board->ComponentGridSizeY());
}

// The number of each node's group.
std::vector<std::int32_t> TNodeArranger::Groups() const {
  const TEdge edge = WorksOnX() ? &TNode::LowX : &TNode::LowY;
  const TCoord step = GridStep();
  std::vector<std::int32_t> groups;
  std::int32_t group = -1;
  TCoord opened_at = 0;
  for (const auto& node : Nodes) {
    const TCoord place = (*node).*edge;
    if (group < 0 || std::abs(std::int64_t{place} - opened_at) > step) {
      ++group;
      opened_at = place;
    }
    groups.push_back(group);
  }
  return groups;
}

void TNodeArranger::MoveGroups(std::int32_t direction) {
  const std::vector<std::int32_t> groups = Groups();
  const std::int64_t step = GridStep();
  for (std::size_t i = 0; i < Nodes.size(); ++i) {
    const TCoord by = WrapToCoord(groups[i] * step * direction);
    Nodes[i]->MoveBy(WorksOnX() ? by : 0, WorksOnX() ? 0 : by);
  }
}

void TNodeArranger::Expand() {
  MoveGroups(1);
}

void TNodeArranger::Contract() {
  MoveGroups(-1);
}

}  // namespace Ketril::Tools
