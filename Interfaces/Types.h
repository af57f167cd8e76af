// Values that cross the boundary: coordinates, rectangles and the enumerations of objects.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace Ketril {

// A coordinate or a length: signed 32 bits, 10000 units to the mil (1 unit = 2.54 nm). X grows to the right,
// y grows upwards. Angles are degrees, counter-clockwise, 0 along +x.
using TCoord = std::int32_t;
using TPCBCoord = TCoord;

struct TCoordPoint {
  TCoord x = 0;
  TCoord y = 0;
  friend constexpr bool operator==(const TCoordPoint&, const TCoordPoint&) = default;
};
static_assert(sizeof(TCoordPoint) == 8);

// A rectangle of four coordinates that are known by several names: (x1, y1) is the lower left corner when the
// rectangle is ordered, (x2, y2) the upper right one.
struct TCoordRect {
  TCoord x1 = 0;
  TCoord y1 = 0;
  TCoord x2 = 0;
  TCoord y2 = 0;

  constexpr TCoord& left() { return x1; }
  constexpr TCoord& bottom() { return y1; }
  constexpr TCoord& right() { return x2; }
  constexpr TCoord& top() { return y2; }
  constexpr TCoord left() const { return x1; }
  constexpr TCoord bottom() const { return y1; }
  constexpr TCoord right() const { return x2; }
  constexpr TCoord top() const { return y2; }
  constexpr TCoord& lx() { return x1; }
  constexpr TCoord& ly() { return y1; }
  constexpr TCoord& hx() { return x2; }
  constexpr TCoord& hy() { return y2; }
  constexpr TCoord lx() const { return x1; }
  constexpr TCoord ly() const { return y1; }
  constexpr TCoord hx() const { return x2; }
  constexpr TCoord hy() const { return y2; }
  constexpr TCoordPoint Location1() const { return {x1, y1}; }
  constexpr TCoordPoint Location2() const { return {x2, y2}; }
  constexpr TCoordPoint BottomLeft() const { return Location1(); }
  constexpr TCoordPoint TopRight() const { return Location2(); }
  friend constexpr bool operator==(const TCoordRect&, const TCoordRect&) = default;
};
static_assert(sizeof(TCoordRect) == 16 && offsetof(TCoordRect, x2) == 8);

// The kind of an object of the board.
enum TObjectId : std::uint8_t {
  eNoObject,
  eArcObject,
  ePadObject,
  eViaObject,
  eTrackObject,
  eTextObject,
  eFillObject,
  eConnectionObject,
  eNetObject,
  eComponentObject,
  ePolyObject,
  eRegionObject,
  eComponentBodyObject,
  eDimensionObject,
  eCoordinateObject,
  eClassObject,
  eRuleObject,
  eFromToObject,
  eDifferentialPairObject,
  eViolationObject,
  eEmbeddedObject,
  eEmbeddedBoardObject,
  eSplitPlaneObject,
  eTraceObject,
  eSpareViaObject,
  eBoardObject,
  eBoardOutlineObject,
};
constexpr int kObjectIdCount = eBoardOutlineObject + 1;

// A set of `TObjectId`: bit n is the value n.
class TObjectSet {
 public:
  constexpr TObjectSet() = default;
  constexpr explicit TObjectSet(std::uint32_t bits) : bits_(bits) {}
  constexpr TObjectSet(std::initializer_list<TObjectId> ids) {
    for (const TObjectId id : ids) bits_ |= 1u << id;
  }
  static constexpr TObjectSet All() { return TObjectSet((1u << kObjectIdCount) - 1); }
  constexpr bool Contains(TObjectId id) const { return (bits_ >> id & 1u) != 0; }
  constexpr std::uint32_t Bits() const { return bits_; }
  friend constexpr bool operator==(TObjectSet, TObjectSet) = default;

 private:
  std::uint32_t bits_ = 0;
};
static_assert(sizeof(TObjectSet) == 4);
static_assert(TObjectSet{eComponentObject}.Bits() == 512 && TObjectSet{eNetObject}.Bits() == 256);

enum TCopyMode : std::uint8_t { eFullCopy, eFieldCopy };
enum TPadMode : std::uint8_t { ePadMode_Simple, ePadMode_LocalStack, ePadMode_ExternalStack };
enum TShape : std::uint8_t {
  eNoShape,
  eRounded,
  eRectangular,
  eOctagonal,
  eCircleShape,
  eArcShape,
  eTerminator,
  eRoundRectShape,
  eRotatedRectShape,
  eRoundedRectangular,
};
enum TRegionKind : std::uint8_t {
  eRegionKind_Copper,
  eRegionKind_Cutout,
  eRegionKind_NamedRegion,
  eRegionKind_BoardCutout,
  eRegionKind_Cavity,
};
enum TComponentKind : std::uint8_t {
  eComponentKind_Standard,
  eComponentKind_Mechanical,
  eComponentKind_Graphical,
  eComponentKind_NetTie_BOM,
  eComponentKind_NetTie_NoBOM,
  eComponentKind_Standard_NoBOM,
  eComponentKind_Jumper,
};
enum TTextAutoposition : std::uint8_t {
  eAutoPos_Manual,
  eAutoPos_TopLeft,
  eAutoPos_CenterLeft,
  eAutoPos_BottomLeft,
  eAutoPos_TopCenter,
  eAutoPos_CenterCenter,
  eAutoPos_BottomCenter,
  eAutoPos_TopRight,
  eAutoPos_CenterRight,
  eAutoPos_BottomRight,
};
enum TChangeScope : std::uint8_t {
  eChangeNone,
  eChangeThisItem,
  eChangeAllPrimitives,
  eChangeAllFreePrimitives,
  eChangeComponentDesignators,
  eChangeComponentComments,
  eChangeLibraryAllComponents,
  eChangeCancelled,
};
// Which objects an iterator passes: all, those that belong to no group, components and what belongs to them.
enum TIterationMethod : std::uint8_t { eProcessAll, eProcessFree, eProcessComponent };
enum TUnit : std::uint8_t { eMetric, eImperial };
enum TDisplay : std::uint8_t { eOverWrite, eHide, eShow, eInvert, eHighLight };

// Values below are known to the editor and its files; the tools pass them through.
enum TExtendedHoleType : std::uint8_t { eRoundHole, eSquareHole, eSlotHole };
enum TMaskExpansionMode : std::uint8_t {
  eMaskExpansion_NoMask,
  eMaskExpansion_FromRule,
  eMaskExpansion_Manual
};
enum TConnectionMode : std::uint8_t { eRatsNestConnection, eBrokenNetMarker };
enum TClassMemberKind : std::uint8_t {
  eClassMemberKind_Net,
  eClassMemberKind_Component,
  eClassMemberKind_FromTo,
  eClassMemberKind_Pad,
  eClassMemberKind_Layer,
  eClassMemberKind_DesignChannel,  // one channel of a design that is repeated: its members are rooms
};
// A Boolean of an editor's command table: 0 is false.
using LongBool = std::int32_t;

// What ties the objects of a union together; a union object tells its kind.
enum TUnionKind : std::uint8_t {
  eUnionKind_None,
  eUnionKind_User,
  eUnionKind_ViaStitching,
  eUnionKind_ViaShielding,
  eUnionKind_Accordion,
};
static_assert(eUnionKind_Accordion == 4);

// The versions of the board file that the editor reads and writes.
enum class TKetrilFileFormatVersion : std::int32_t {
  V20171130 = 20171130,
  V20211014 = 20211014,
  V20221018 = 20221018,
  V20240108 = 20240108,
  V20241229 = 20241229,
};

// A segment of a region's outline, which begins in (vx, vy). An arc's centre, radius and angles describe the
// arc that begins there.
enum TPolySegmentType : std::uint8_t { ePolySegmentLine, ePolySegmentArc };
#pragma pack(push, 1)
struct TPolySegment {
  TPolySegmentType Kind = ePolySegmentLine;
  TCoord vx = 0;
  TCoord vy = 0;
  TCoord cx = 0;
  TCoord cy = 0;
  TCoord Radius = 0;
  double Angle1 = 0;
  double Angle2 = 0;
};
#pragma pack(pop)
static_assert(sizeof(TPolySegment) == 37);

}  // namespace Ketril
