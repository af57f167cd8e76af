// What the arrangers work on: the rectangle of an object, which a method moves, and the move of the object
// that follows from it.
#pragma once

#include <memory>

#include "DLLs/Tools/Placement/Utilities.h"

namespace Ketril::Tools {

class TNodeArranger;

// Stands for one object. The rectangle is that of the object's selection, grown by the clearance to keep from
// it. Coordinates wrap as 32-bit arithmetic does. Operations that reach the board raise EHostError.
class TNode {
 public:
  // Builds a node of the class for an object, which is not owned. The arranger may be null.
  template <class Node = TNode>
  static std::unique_ptr<Node> Create(TPrimitive* APrimitive, TNodeArranger* AOwner) {
    auto node = std::make_unique<Node>(APrimitive, AOwner);
    static_cast<TNode&>(*node).Build();
    return node;
  }
  // Only notes the two: see `Create`.
  TNode(TPrimitive* APrimitive, TNodeArranger* AOwner) : Primitive(APrimitive), Arranger(AOwner) {}
  TNode(const TNode&) = delete;
  TNode& operator=(const TNode&) = delete;
  virtual ~TNode() = default;

  TCoord Width() const;  // at least 0 and at most the largest coordinate
  TCoord Height() const;
  void MoveBy(TCoord dx, TCoord dy);  // with `NodeTextBr`
  // The low corner of the rectangle, or of `NodeTextBr`, comes to lie there.
  void MoveTo(TCoord ALowX, TCoord ALowY);
  void MoveTextBrTo(TCoord ALowX, TCoord ALowY);
  // True when the extents along y (along x) have more in common than an end; an extent of no length shares
  // with a longer one that it lies on, ends included, but not with one like itself.
  bool OnSameChanelX(const TNode& ANode) const;
  bool OnSameChanelY(const TNode& ANode) const;

  virtual TCoord GetNodeClearance();
  virtual void ExpandByClearance();
  // Moves the object to where the rectangle is now.
  virtual void ApplyPosition();
  // Moves the object towards zero to the next multiples of the component grid.
  virtual void MoveToGrid();
  // The last call, which may raise, as the destructor may not.
  virtual void Release() {}

  TPrimitive* Primitive;
  TCoord LowX = 0, LowY = 0, HighX = 0, HighY = 0;
  TNodeArranger* Arranger;
  TCoordRect NodeTextBr;  // of a text's letters, while texts are spread

 protected:
  virtual void Build();
};

// Stands for a component that is found through a selected member: the rectangle is the member's, the
// component moves. Nothing moves when the member has left its component meanwhile.
class TComponentPrimitiveNode : public TNode {
 public:
  using TNode::TNode;
  TCoord GetNodeClearance() override;
  void ApplyPosition() override;
  void MoveToGrid() override;
};

// The multiple of a grid next to a coordinate towards zero.
TCoord TruncateToGrid(TCoord coordinate, double grid);

}  // namespace Ketril::Tools
