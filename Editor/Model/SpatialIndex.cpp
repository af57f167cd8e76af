#include "Editor/Model/SpatialIndex.h"

// Boost 1.74 includes headers of its own that it calls deprecated.
#define BOOST_ALLOW_DEPRECATED_HEADERS

#include <algorithm>
#include <boost/geometry.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/function_output_iterator.hpp>
#include <utility>

#include "Editor/Model/Groups.h"
#include "Editor/Model/Warehouse.h"

namespace Ketril::Editor {

namespace {

namespace bg = boost::geometry;

// Doubles hold every coordinate exactly, and no sum or product of them overflows.
using Corner = bg::model::point<double, 2, bg::cs::cartesian>;
using Box = bg::model::box<Corner>;
using Leaf = std::pair<Box, std::uint32_t>;  // the number is a place in Tree::entries
using RTree = bg::index::rtree<Leaf, bg::index::rstar<16>>;

Box ToBox(const TCoordRect& area) {
  return {Corner(area.x1, area.y1), Corner(area.x2, area.y2)};
}

}  // namespace

struct SpatialIndex::Tree {
  // An object by its number on the board, with the box that the tree knows it by.
  struct Entry {
    std::uint64_t order;
    const Primitive* object;  // null once it left
    TCoordRect box;
    bool in_tree;
  };
  // An object to look at again; with `members`, those that it holds as well.
  struct Note {
    std::uint64_t order;
    bool members;
    friend auto operator<=>(const Note&, const Note&) = default;
  };

  explicit Tree(const Warehouse& objects);
  Entry* Find(std::uint64_t order);
  void NoteChange(std::uint64_t order, bool members);
  void Settle(Entry& entry);
  void SortNotes();

  std::vector<Entry> entries;  // ascending by order, as objects come
  RTree tree;
  std::vector<Note> notes;
  std::size_t sorted_notes = 0;  // so many at the start are in order and different
  std::size_t left = 0;          // entries without an object
};

SpatialIndex::Tree::Tree(const Warehouse& objects) {
  entries.reserve(objects.Count());
  std::vector<Leaf> leaves;
  leaves.reserve(objects.Count());
  objects.ForEach(TObjectSet::All(), [&](const Primitive& object) {
    if (!HasPlace(object.kind)) return;
    const TCoordRect box = Ordered(object.Bounds());
    leaves.emplace_back(ToBox(box), static_cast<std::uint32_t>(entries.size()));
    entries.push_back({object.order, &object, box, true});
  });
  tree = RTree(leaves.begin(), leaves.end());
}

SpatialIndex::Tree::Entry* SpatialIndex::Tree::Find(std::uint64_t order) {
  const auto it =
      std::lower_bound(entries.begin(), entries.end(), order,
                       [](const Entry& entry, std::uint64_t value) { return entry.order < value; });
  return it != entries.end() && it->order == order ? &*it : nullptr;
}

void SpatialIndex::Tree::NoteChange(std::uint64_t order, bool members) {
  if (!notes.empty() && notes.back() == Note{order, members}) return;
  notes.push_back({order, members});
  // A tool that changes the same objects again and again, and never searches, adds no memory without end.
  if (notes.size() > 2 * sorted_notes + 1024) SortNotes();
}

void SpatialIndex::Tree::SortNotes() {
  std::sort(notes.begin(), notes.end());
  notes.erase(std::unique(notes.begin(), notes.end()), notes.end());
  sorted_notes = notes.size();
}

// Brings the tree up to date with one object.
void SpatialIndex::Tree::Settle(Entry& entry) {
  const TCoordRect box = entry.object ? Ordered(entry.object->Bounds()) : TCoordRect{};
  if (entry.in_tree && entry.object && box == entry.box) return;
  const auto place = static_cast<std::uint32_t>(&entry - entries.data());
  if (entry.in_tree) tree.remove(Leaf(ToBox(entry.box), place));
  entry.in_tree = entry.object != nullptr;
  entry.box = box;
  if (entry.in_tree) tree.insert(Leaf(ToBox(box), place));
}

SpatialIndex::SpatialIndex(const Warehouse& objects) : objects_(objects) {}
SpatialIndex::~SpatialIndex() = default;

void SpatialIndex::Note(const Primitive& primitive) {
  constexpr TObjectSet kSmall = {eTrackObject, eArcObject, ePadObject, eViaObject};
  ++revision_;
  if (!kSmall.Contains(primitive.kind)) ++area_revision_;
}

void SpatialIndex::Add(const Primitive& primitive) {
  Note(primitive);
  if (!tree_ || !HasPlace(primitive.kind)) return;
  tree_->entries.push_back({primitive.order, &primitive, {}, false});
  Touch(primitive);
}

void SpatialIndex::Touch(const Primitive& primitive) {
  Note(primitive);
  if (!tree_ || !primitive.on_board) return;
  tree_->NoteChange(primitive.order, primitive.MemberList() != nullptr);
  const Primitive* owner = primitive.Owner();
  if (owner && owner->on_board) tree_->NoteChange(owner->order, false);
}

void SpatialIndex::Remove(const Primitive& primitive) {
  Note(primitive);
  if (!tree_) return;
  Tree::Entry* entry = tree_->Find(primitive.order);
  if (!entry || entry->object != &primitive) return;
  entry->object = nullptr;
  ++tree_->left;
  tree_->NoteChange(primitive.order, false);
}

void SpatialIndex::Rebuild() {
  ++revision_;
  ++area_revision_;
  tree_.reset();
}

void SpatialIndex::Update() {
  if (tree_ && tree_->notes.empty()) return;
  if (tree_) {
    tree_->SortNotes();
    // Packing anew is faster than so many single changes, and forgets the entries of what left.
    const std::size_t entries = tree_->entries.size();
    if (entries > 256 && (tree_->notes.size() > entries / 8 || tree_->left > entries / 2)) tree_.reset();
  }
  if (!tree_) {
    tree_ = std::make_unique<Tree>(objects_);
    return;
  }
  for (const Tree::Note& note : std::exchange(tree_->notes, {})) {
    Tree::Entry* entry = tree_->Find(note.order);
    if (!entry) continue;
    if (note.members && entry->object) {
      for (const Ref<Primitive>& member : *entry->object->MemberList()) {
        Tree::Entry* member_entry = member->on_board ? tree_->Find(member->order) : nullptr;
        if (member_entry) tree_->Settle(*member_entry);
      }
    }
    tree_->Settle(*entry);
  }
  tree_->sorted_notes = 0;
}

std::vector<Primitive*> SpatialIndex::Find(const TCoordRect& area) {
  Update();
  std::vector<std::uint32_t> places;
  const Box box = ToBox(Ordered(area));
  tree_->tree.query(bg::index::intersects(box), boost::make_function_output_iterator([&](const Leaf& leaf) {
                      places.push_back(leaf.second);
                    }));
  std::sort(places.begin(), places.end());
  std::vector<Primitive*> found;
  found.reserve(places.size());
  for (const std::uint32_t place : places) {
    found.push_back(const_cast<Primitive*>(tree_->entries[place].object));
  }
  return found;
}

bool HasPlace(TObjectId kind) {
  constexpr TObjectSet kWithoutPlace{eNoObject,       eNetObject,    eClassObject,
                                     eRuleObject,     eFromToObject, eDifferentialPairObject,
                                     eEmbeddedObject, eBoardObject};
  return !kWithoutPlace.Contains(kind);
}

TCoordRect Ordered(const TCoordRect& area) {
  return {std::min(area.x1, area.x2), std::min(area.y1, area.y2), std::max(area.x1, area.x2),
          std::max(area.y1, area.y2)};
}

bool Meet(const TCoordRect& a, const TCoordRect& b) {
  return a.x1 <= b.x2 && b.x1 <= a.x2 && a.y1 <= b.y2 && b.y1 <= a.y2;
}

}  // namespace Ketril::Editor
