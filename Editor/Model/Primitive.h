// What every object of a board holds. The core is an interface of the editor's own, so that a reference that
// a tool hands in is probed for it, and one object answers both its public chain and this one.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Editor/HostObject.h"
#include "Editor/Model/PlaneMap.h"
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
constexpr std::uint32_t kScratchFlags =
    kFlag_Selected | kFlag_Misc1 | kFlag_Misc2 | kFlag_Misc3 | kFlag_PrimUsed;

// The part of every object that an edit may change and an undo restores.
struct PrimitiveState {
  TV7_Layer layer = eV6_TopLayer;
  std::uint32_t flags = kFlag_EnableDraw;
  std::int32_t union_index = 0;
};

// Openings in the masks: how far they reach beyond the copper. The values count in manual mode.
struct MaskData {
  TCoord solder = 0;
  TCoord paste = 0;
  TMaskExpansionMode solder_mode = eMaskExpansion_FromRule;
  TMaskExpansionMode paste_mode = eMaskExpansion_FromRule;
  friend bool operator==(const MaskData&, const MaskData&) = default;
};

// A saved copy of an object's state; what it holds is known to the class that made it.
class Snapshot {
 public:
  virtual ~Snapshot() = default;
};

// The core of an object. Data of the kinds is in their classes, public, as `data`: the editor's own code
// (files, picture, index) reads and fills it directly. What changes an object that is on a board does so in a
// `Write`; the functions that are said to change data only are for its inside, and for objects on no board.
class Primitive : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"Ketril::Editor::Primitive"};

  explicit Primitive(TObjectId kind);

  const TObjectId kind;
  bool on_board = false;      // listed in the board's warehouse
  bool file_changed = false;  // differs from the text at `source`, or its members do
  std::uint16_t index = 0;    // scratch, `vIndex`
  PrimitiveState state;
  std::uint32_t slot = 0;          // place in the warehouse's list of its kind
  std::uint32_t journal_mark = 0;  // the journal's: of the command for which it saved the state
  Board* board = nullptr;          // whose it is, or is tried on
  std::uint64_t order = 0;         // ascending in the order in which objects came onto the board
  SourceSpan source;               // its expression in the board file
  SourceSpan source_id;            // its identifier there, without quotes

  bool Has(std::uint32_t flag) const { return (state.flags & flag) != 0; }
  // Data only.
  void Set(std::uint32_t flag, bool on) { state.flags = on ? state.flags | flag : state.flags & ~flag; }

  Net* GetNet() const { return net_.Get(); }
  // The one way to join or leave a net; keeps the net's member list. Null leaves. Data only.
  void SetNet(Net* net);
  // The component, polygon, dimension or coordinate that it is a member of; null when free.
  Group* Owner() const { return owner_; }
  template <class T>
  T* OwnerAs() const;  // the owner when it is of that class, else null

  // The identifier that was given, else the file's, else a new random one, which stays.
  std::u16string UniqueId() const;
  void SetUniqueId(const std::u16string& id);  // data only

  // Called by the board when it lists the object and when it takes it off: set `board` and `on_board`, and
  // join or leave the list of the object's net. An object that is off the board keeps its net, unlisted.
  void EnterBoard(Board& board);
  void LeaveBoard();
  // Called by a board that dies, on what may outlive it.
  void LoseBoard() {
    board = nullptr;
    on_board = false;
  }

  // Called around every change. `BeforeWrite` saves the state for the board's journal once a command and
  // marks the object and its owners as changed; `AfterWrite` tells the spatial index about them.
  void BeforeWrite();
  void AfterWrite();
  template <class Edit>
  void Write(Edit&& edit) {
    BeforeWrite();
    edit();
    AfterWrite();
  }
  // The same for a change that reaches the members too.
  template <class Edit>
  void WriteWithMembers(Edit&& edit) {
    BeforeWriteWithMembers();
    edit();
    AfterWriteWithMembers();
  }
  void SetFlag(std::uint32_t flag, bool on);  // an edit, unless the flag is scratch
  // A bracket of edits that can be cancelled; the first begin counts, and the last end.
  void BeginEdit();
  void EndEdit();
  void CancelEdit();

  virtual IPCB_Primitive* AsInterface() = 0;
  virtual TCoordRect Bounds() const = 0;      // of copper or ink, with line widths
  virtual TCoordPoint Reference() const = 0;  // the reference point
  // These change data only, members included. An object without a place stays as it is.
  virtual void Transform(const PlaneMap&) {}
  virtual void MirrorLayers();  // to the layers that they are on a board that is turned over
  virtual void ChangeLayer(TV7_Layer layer);
  virtual void Move(TCoord dx, TCoord dy) { Transform(PlaneMap::Translation(dx, dy)); }
  virtual std::unique_ptr<Snapshot> Save() const = 0;
  virtual void Restore(const Snapshot& snapshot) = 0;
  virtual Ref<Primitive> Copy() const = 0;  // on no board, in no group, a new identity
  // A copy to stand by itself: of a member of a group without what only the group gives it.
  virtual Ref<Primitive> FreeCopy() const { return Copy(); }
  virtual std::u16string Identifier() const;  // "U1", "R3-2", "GND"
  std::int32_t CountViolations();             // of clearances, as the board is; stands with the rules
  std::u16string Describe() const;            // kind, identifier, place and layer, for a person
  virtual std::u16string PlaceText() const;   // "(100mil,200mil)"
  virtual std::u16string LayerText() const;   // "Top Layer"
  // Values of its openings; the objects that always have some hold them in their data.
  virtual const MaskData& Mask() const;
  virtual MaskData& EditMask();
  virtual bool OpensMask(TV7_Layer layer) const;
  // Objects of a group, in the order in which they joined; null for what is no group.
  virtual const std::vector<Ref<Primitive>>* MemberList() const { return nullptr; }

 protected:
  ~Primitive();

  struct SavedRare {
    std::u16string unique_id;
    MaskData mask;
  };
  // The core's part of a snapshot. Restoring leaves the scratch flags as they are.
  struct Saved {
    PrimitiveState state;
    Ref<Primitive> net;  // a Net, which is not known here
    bool file_changed = false;
    std::unique_ptr<SavedRare> rare;  // null when there was none
  };
  Saved SaveCore() const;
  void RestoreCore(const Saved& saved);
  void CopyCoreFrom(const Primitive& other);

  // The work behind the interface; what is only told stands in PrimitiveFacts.cpp.
  Ref<IPCB_Net> NetInterface() const;
  Status AssignNet(IPCB_Net* net);
  Ref<IPCB_Board> BoardInterface() const;
  Status AssignBoard(IPCB_Board* board);
  template <class Interface>
  Ref<Interface> OwnerInterface() const {
    return Ref<Interface>::Adopt(static_cast<Interface*>(QueryOwner(Interface::Id)));
  }
  // Notes a group that offers the interface as the owner, or clears an owner that offers it.
  Status AssignOwner(const InterfaceId& id, IPCB_Primitive* owner);
  void AssignUniqueId(const std::u16string& id);
  bool IsMoveable() const;  // neither it nor its owner is locked
  void MoveTo(TCoordPoint place);
  void MoveBy(std::int64_t dx, std::int64_t dy);
  void TurnBy(double degrees);  // about the reference point
  bool IsSaveableIn(TKetrilFileFormatVersion version) const;
  std::u16string DescribeInDetail() const;
  void SetMaskValue(TCoord MaskData::*field, TCoord value);
  void SetMaskMode(TMaskExpansionMode MaskData::*field, TMaskExpansionMode value);
  TCoord MaskExpansionOn(TV7_Layer layer) const;
  TCoord SolderMaskExpansion() const;
  virtual TCoord PasteMaskExpansion() const;
  virtual TCoord PlaneClearance() const;
  TCoord ReliefConductorWidth() const;
  TCoord ReliefGap() const;
  std::int32_t ReliefEntries() const;
  TCoord RoutingWidth() const;
  TCoord RoutingViaSize() const;
  // These stand with the copper, in Distance.cpp.
  Status TellTouch(IPCB_Primitive* other, bool& touches) const;
  Status TellGap(IPCB_Primitive* other, TCoord& gap) const;

 private:
  friend class Group;
  friend class Net;
  // What few objects have.
  struct Rare;
  Rare& EditRare() const;
  void Record();  // saves the state for the board's journal, where it records
  IInterface* QueryOwner(const InterfaceId& id) const;
  void BeforeWriteWithMembers();
  void AfterWriteWithMembers();

  static constexpr std::uint32_t kUnlisted = 0xffffffff;
  Ref<Net> net_;
  Group* owner_ = nullptr;
  mutable std::unique_ptr<Rare> rare_;
  std::uint32_t net_slot_ = kUnlisted;
};

// "0.2mm": with four decimals at most.
std::u16string LengthText(std::int64_t length, TUnit unit);
// "(100mil,200mil)", from the board's origin in the unit that it shows; `board` may be null.
std::u16string PointText(TCoordPoint point, const Board* board);
// A new random identifier, version 4 of RFC 4122.
std::u16string NewIdentifier();
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
// What a tool handed in; null for a foreign object. The caller's reference keeps it alive.
Primitive* FromInterface(IInterface* object);

}  // namespace Ketril::Editor
