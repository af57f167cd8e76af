#include "DLLs/Tools/Placement/AlignNodes.h"

#include <cmath>
#include <cstdlib>

#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

namespace {

TCoord Distance(TCoord a, TCoord b) {
  return SaturateToCoord(std::int64_t{std::abs(std::int64_t{a} - b)});
}

// An end of the second interval lies within the first.
bool HasEndWithin(TCoord low, TCoord high, TCoord other_low, TCoord other_high) {
  return (other_low >= low && other_low < high) || (other_high > low && other_high <= high);
}

bool Overlap(TCoord low, TCoord high, TCoord other_low, TCoord other_high) {
  return HasEndWithin(low, high, other_low, other_high) || HasEndWithin(other_low, other_high, low, high);
}

// How far a node was moved from its object, whose rectangle the node has grown by its clearance.
TCoordPoint MoveOf(TNode& node) {
  const TCoordRect now = node.Primitive->GetState_BoundingRectangleForSelection();
  const TCoord clearance = node.GetNodeClearance();
  return {Sum(Difference(node.LowX, now.x1), clearance), Sum(Difference(node.LowY, now.y1), clearance)};
}

void MoveToGridInBracket(TPrimitive* primitive) {
  const TBoard* board = BoardOf(primitive);
  const TCoord x = TruncateToGrid(primitive->GetState_X(), board->ComponentGridSizeX());
  const TCoord y = TruncateToGrid(primitive->GetState_Y(), board->ComponentGridSizeY());
  MoveInBracket(primitive, [&] { primitive->MoveToXY(x, y); });
}

}  // namespace

TCoord TruncateToGrid(TCoord coordinate, double grid) {
  return Round(std::trunc(coordinate / grid) * grid);
}

void TNode::Build() {
  const TCoordRect rectangle = Primitive->GetState_BoundingRectangleForSelection();
  LowX = rectangle.x1;
  LowY = rectangle.y1;
  HighX = rectangle.x2;
  HighY = rectangle.y2;
  ExpandByClearance();
}

TCoord TNode::Width() const {
  return Distance(HighX, LowX);
}

TCoord TNode::Height() const {
  return Distance(HighY, LowY);
}

void TNode::MoveBy(TCoord dx, TCoord dy) {
  for (TCoord* x : {&LowX, &HighX, &NodeTextBr.x1, &NodeTextBr.x2}) *x = Sum(*x, dx);
  for (TCoord* y : {&LowY, &HighY, &NodeTextBr.y1, &NodeTextBr.y2}) *y = Sum(*y, dy);
}

void TNode::MoveTo(TCoord ALowX, TCoord ALowY) {
  MoveBy(Difference(ALowX, LowX), Difference(ALowY, LowY));
}

void TNode::MoveTextBrTo(TCoord ALowX, TCoord ALowY) {
  MoveBy(Difference(ALowX, NodeTextBr.x1), Difference(ALowY, NodeTextBr.y1));
}

bool TNode::OnSameChanelX(const TNode& ANode) const {
  return Overlap(LowY, HighY, ANode.LowY, ANode.HighY);
}

bool TNode::OnSameChanelY(const TNode& ANode) const {
  return Overlap(LowX, HighX, ANode.LowX, ANode.HighX);
}

TCoord TNode::GetNodeClearance() {
  return GetClearance(Primitive);
}

void TNode::ExpandByClearance() {
  const TCoord clearance = GetNodeClearance();
  LowX = Difference(LowX, clearance);
  LowY = Difference(LowY, clearance);
  HighX = Sum(HighX, clearance);
  HighY = Sum(HighY, clearance);
}

void TNode::ApplyPosition() {
  const TCoordPoint by = MoveOf(*this);
  MoveInBracket(Primitive, [&] { Primitive->MoveByXY(by.x, by.y); });
}

void TNode::MoveToGrid() {
  MoveToGridInBracket(Primitive);
}

TCoord TComponentPrimitiveNode::GetNodeClearance() {
  return GetClearance(Primitive->vComponent());
}

void TComponentPrimitiveNode::ApplyPosition() {
  TGroup* const component = Primitive->vComponent();
  if (!component) return;
  const TCoordPoint by = MoveOf(*this);
  MoveInBracket(component, [&] {
    component->MoveToXY(Sum(component->GetState_X(), by.x), Sum(component->GetState_Y(), by.y));
  });
}

void TComponentPrimitiveNode::MoveToGrid() {
  if (TGroup* const component = Primitive->vComponent()) MoveToGridInBracket(component);
}

}  // namespace Ketril::Tools
