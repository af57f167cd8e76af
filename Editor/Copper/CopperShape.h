// The exact shape of an object's copper on one layer, prepared for measuring: lines with a round pen and
// areas, never polygons in place of arcs.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <vector>

#include "Editor/Copper/Forms.h"

namespace Ketril::Editor {

// A box along the axes; empty at first.
struct Box {
  double x1 = std::numeric_limits<double>::infinity(), y1 = x1, x2 = -x1, y2 = -x1;

  void Add(Spot spot) { Add(Box{spot.x, spot.y, spot.x, spot.y}); }
  void Add(const Box& box) {
    x1 = std::min(x1, box.x1);
    y1 = std::min(y1, box.y1);
    x2 = std::max(x2, box.x2);
    y2 = std::max(y2, box.y2);
  }
};
double GapOf(const Box& a, const Box& b);  // 0 where they meet; infinite for an empty one

// Lines that a round pen draws along, or rings whose inside is filled as well: the places that are no further
// than `pen` from one of the lines or inside. Either segments or one arc.
class CopperPart {
 public:
  CopperPart(Segment line, double pen);
  CopperPart(const ArcLine& arc, double pen);
  explicit CopperPart(const Area& area);

  double Pen() const { return pen_; }
  bool IsFilled() const { return filled_; }
  const std::optional<ArcLine>& Arc() const { return arc_; }
  bool Surrounds(Spot spot) const;  // filled, and the spot is inside; on a line either answer
  // One place of each ring or line.
  const Spots& Starts() const { return starts_; }

  // The tree of boxes around the lines, without the pen: node n, from 1 on, has the children 2n and 2n + 1,
  // and from `LeafCount` on nodes are leaves.
  std::size_t LeafCount() const { return nodes_.size() / 2; }
  const Box& NodeBox(std::size_t node) const { return nodes_[node]; }
  // The segments of a leaf as a pair of pointers, none for an arc.
  std::pair<const Segment*, const Segment*> Leaf(std::size_t node) const;

 private:
  void AddRing(const Spots& ring, bool closed);
  void BuildTree();

  std::vector<Segment> segments_;
  std::size_t holes_from_ = 0;  // the segments from here on are of holes
  std::optional<ArcLine> arc_;
  Spots starts_;
  std::vector<Box> nodes_;
  double pen_ = 0;
  bool filled_ = false;
};

// The union of its parts; empty for no copper.
struct CopperShape {
  std::vector<CopperPart> parts;
};

CopperShape ShapeOf(const std::vector<Form>& forms);
// Of an object on a layer, as FormsOf tells it.
inline CopperShape CopperOn(const Primitive& primitive, TV7_Layer layer) {
  return ShapeOf(FormsOf(primitive, layer));
}

}  // namespace Ketril::Editor
