// Arranges objects relative to each other: lined up, centred, spread, moved apart or together.
//
// A method works on the rectangles of the nodes; at the end each node moves its object once. Methods only
// move along their axis and turn nothing.
#pragma once

#include <exception>
#include <memory>
#include <vector>

#include "DLLs/Tools/Placement/AlignNodes.h"
#include "Interfaces/Placement.h"

namespace Ketril::Tools {

// How a list of nodes is sorted. Nodes that compare equal have no order that may be relied on.
enum TNodeSortMethod : std::uint8_t {
  eSortMinX,   // ascending left edge
  eSortMaxX,   // descending right edge
  eSortMinY,   // ascending bottom edge
  eSortMaxY,   // descending top edge
  eSortWidth,  // descending height
};

// A list of nodes, which it owns: made, filled, run, freed. `ABoard` gives the grid; the view, which may be
// empty, is where `Center` finds what the user points at.
class TNodeArranger {
 public:
  TNodeArranger(TBoard* ABoard, IPCBGraphicalViewInterface* APCBView_Graphical, TArrangerMethod AMethod);
  TNodeArranger(const TNodeArranger&) = delete;
  TNodeArranger& operator=(const TNodeArranger&) = delete;
  // Frees the nodes. Raises what the first of them raises, unless an exception is on its way.
  virtual ~TNodeArranger() noexcept(false);

  // At the end of the list. `Adopt` takes a node that was built before.
  template <class Node>
  void Add(TPrimitive* primitive) {
    Nodes.push_back(TNode::Create<Node>(primitive, this));
  }
  void Adopt(std::unique_ptr<TNode> node);

  virtual void Resort(TNodeSortMethod AMethod);
  // Sorts, arranges by the method and moves the objects; nothing at all with fewer than two nodes. An
  // exception ends it: nodes that moved stay moved.
  virtual void Run();

  // The user points at an object of the list, the one that stays; the centres of the others come onto its
  // axis. Along x, or along y for eArrangeVertCenter.
  void Center();
  // The sorted list falls into groups of nodes that lie within one grid step of the group's first node. Each
  // group moves by its number, from 0, times a grid step, away from the first group or towards it.
  void Expand();
  void Contract();
  // Equal steps between the groups, from the first node to the last; runs of texts keep their mean gap.
  // Nothing with fewer than three nodes, one group, or steps of less than a mil.
  void Spread();
  // The first node stays. Each further one is put against the far side of those before it that share its
  // channel, or in line with the list's first node that does not.
  void AlignLeft();
  void AlignRight();
  void AlignTop();
  void AlignBottom();
  // To the outmost edge of the nodes before it, overlaps or not. An edge at 0 counts as none.
  void AlignLeftNew();
  void AlignRightNew();
  void AlignTopNew();
  void AlignBottomNew();

  std::vector<std::unique_ptr<TNode>> Nodes;
  TArrangerMethod Method;
  TBoard* Board;
  Ref<IPCBGraphicalViewInterface> PCBView_Graphical;

 protected:
  void ApplyAll();

 private:
  using TEdge = TCoord TNode::*;
  template <class Update>
  void Align(TEdge edge, bool start_at_first, Update update);
  class TChannels;
  bool WorksOnX() const;  // the method's axis
  TCoord GridStep() const;
  std::vector<std::int32_t> Groups() const;
  void MoveGroups(std::int32_t direction);

  struct TSpread;
  const int exceptions_ = std::uncaught_exceptions();
};

}  // namespace Ketril::Tools
