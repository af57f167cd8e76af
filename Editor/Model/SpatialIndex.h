// Finds the objects of a board by area: an R-tree over bounding rectangles (Guttman 1984, packed loading and
// R* insertion of Boost.Geometry), built at the first search and kept current from then on.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Editor/Model/Primitive.h"

namespace Ketril::Editor {

class Warehouse;

// Told of every object that comes, goes or changes, it only notes that; the next search brings the tree up to
// date. Nets, classes, rules and the like have no place and are left out.
class SpatialIndex {
 public:
  explicit SpatialIndex(const Warehouse& objects);
  ~SpatialIndex();

  // Objects whose bounds touch the area, borders included, oldest first. The corners may be any two opposite
  // ones. Logarithmic in the board, linear in what is found.
  std::vector<Primitive*> Find(const TCoordRect& area);

  // After the object came onto the board or changed; `Touch` of a group counts for its members as well, and
  // of a member for its group.
  void Add(const Primitive& primitive);
  void Touch(const Primitive& primitive);
  // While the object still has the number that it had on the board.
  void Remove(const Primitive& primitive);
  // After objects came back to old places: the next search builds the tree anew.
  void Rebuild();
  // Brings the tree up to date: as long as nothing on the board changes after it, several threads may search
  // at once.
  void Update();

  // Ascends with each of the calls above: what was computed from the board's objects is good while it stays.
  std::uint64_t Revision() const { return revision_; }
  // The same but for tracks, arcs, pads and vias: for what was computed from areas, rules, classes and nets.
  std::uint64_t AreaRevision() const { return area_revision_; }

 private:
  struct Tree;
  void Note(const Primitive& primitive);

  const Warehouse& objects_;
  std::unique_ptr<Tree> tree_;  // empty until the first search
  std::uint64_t revision_ = 0, area_revision_ = 0;
};

// True for the kinds that have a place on the board.
bool HasPlace(TObjectId kind);
// The same area with its corners in order.
TCoordRect Ordered(const TCoordRect& area);
// True when the two ordered areas have a point in common.
bool Meet(const TCoordRect& a, const TCoordRect& b);

}  // namespace Ketril::Editor
