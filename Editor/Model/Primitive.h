// What every object of a board holds. The core is an interface of the editor's own, so that a reference that
// a tool hands in is probed for it, and one object answers both its public chain and this one.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "Editor/HostObject.h"
#include "Interfaces/Board.h"

namespace Ketril::Editor {

class Board;
class Group;
class Net;

// A place in the text of the board file, from `begin` up to but without `end`; empty for what is not there.
struct SourceSpan {
  std::uint32_t begin = 0;
  std::uint32_t end = 0;
  bool IsEmpty() const { return begin == end; }
};

// Bits of PrimitiveState::flags.
enum PrimitiveFlag : std::uint32_t {
  kFlag_Selected = 1u << 0,
  kFlag_Locked = 1u << 1,
  kFlag_KeepOut = 1u << 2,
  kFlag_PreRoute = 1u << 3,
  kFlag_UserRouted = 1u << 4,
  kFlag_TearDrop = 1u << 5,
  kFlag_EnableDraw = 1u << 6,
  kFlag_PrimUsed = 1u << 7,
  kFlag_Misc1 = 1u << 8,
  kFlag_Misc2 = 1u << 9,
  kFlag_Misc3 = 1u << 10,
  kFlag_PolygonOutline = 1u << 11,
  kFlag_Hidden = 1u << 12,
};
// Marks for one run of a tool and the selection: they change no board and are no part of an edit.
constexpr std::uint32_t kScratchFlags = kFlag_Selected | kFlag_Misc1 | kFlag_Misc2 | kFlag_Misc3 | kFlag_PrimUsed;

// The part of every object that an edit may change and an undo restores.
struct PrimitiveState {
  TV7_Layer layer = eV6_TopLayer;
  std::uint32_t flags = kFlag_EnableDraw;
  std::int32_t union_index = 0;
};

// A saved copy of an object's state; what it holds is known to the class that made it.
class Snapshot {
 public:
  virtual ~Snapshot() = default;
};

// The core of an object. Data of the kinds is in their classes, public, as `data`: the editor's own code
// (files, picture, index) reads and fills it directly. What changes an object that is on a board calls
// `BeforeWrite` first and `AfterWrite` last.
class Primitive : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"Ketril::Editor::Primitive"};

  explicit Primitive(TObjectId kind) : kind(kind) {}

  const TObjectId kind;
  PrimitiveState state;
  Board* board = nullptr;   // whose it is, or is tried on
  bool on_board = false;    // listed in the board's warehouse
  bool file_changed = false;  // differs from the text at `source`, or its members do
  std::uint16_t index = 0;  // scratch, `vIndex`
  std::uint32_t slot = 0;   // place in the warehouse's list of its kind
  std::uint64_t order = 0;  // ascending in the order in which objects came onto the board
  SourceSpan source;        // its expression in the board file
  SourceSpan source_id;     // its identifier there, without quotes

  bool Has(std::uint32_t flag) const { return (state.flags & flag) != 0; }
  void Set(std::uint32_t flag, bool on) { state.flags = on ? state.flags | flag : state.flags & ~flag; }

  Net* GetNet() const { return net_.Get(); }
  // The one way to join or leave a net; keeps the net's member list. Null leaves.
  void SetNet(Net* net);
  // The component, polygon, dimension or coordinate that it is a member of; null when free.
  Group* Owner() const { return owner_; }
  template <class T>
  T* OwnerAs() const;  // the owner when it is of that class, else null

  std::u16string UniqueId() const;
  void SetUniqueId(const std::u16string& id);

  // Called around every change. `BeforeWrite` saves the state for the board's journal once an edit and marks
  // the object as changed; `AfterWrite` tells the spatial index.
  void BeforeWrite();
  void AfterWrite();

  virtual IPCB_Primitive* AsInterface() = 0;
  virtual TCoordRect Bounds() const = 0;          // of copper or ink, with line widths
  virtual TCoordPoint Reference() const = 0;      // the reference point
  virtual void Move(TCoord dx, TCoord dy) = 0;    // data only, members included; no journal, no index
  virtual std::unique_ptr<Snapshot> Save() const = 0;
  virtual void Restore(const Snapshot& snapshot) = 0;
  virtual Ref<Primitive> Copy() const = 0;        // on no board, in no group, a new identity
  virtual std::u16string Identifier() const;      // "U1", "R3-2", "GND"

 protected:
  ~Primitive();

 private:
  friend class Group;
  friend class Net;
  Ref<Net> net_;
  std::uint32_t net_slot_ = 0;
  Group* owner_ = nullptr;
  std::unique_ptr<std::u16string> unique_id_;  // set when the file has none, or another was given
};

// "Track", "Via", …: the kind as people call it.
const char* KindName(TObjectId kind);

// The object as one of the editor's classes; null for another kind.
template <class T>
T* As(Primitive* primitive) {
  return primitive && T::kKind == primitive->kind ? static_cast<T*>(primitive) : nullptr;
}
template <class T>
const T* As(const Primitive* primitive) {
  return As<T>(const_cast<Primitive*>(primitive));
}

}  // namespace Ketril::Editor
