// Lines and arcs; pads and vias come with them.
#pragma once

#include "Editor/Model/Pad.h"
#include "Editor/Model/PrimitiveObject.h"
#include "Editor/Model/Via.h"

namespace Ketril::Editor {

// A straight line with round ends; on a copper layer a track, on another one a drawn line.
struct TrackData {
  TCoordPoint p1, p2;
  TCoord width = 100000;
  friend bool operator==(const TrackData&, const TrackData&) = default;
};

// An arc with round ends, counter-clockwise from angle1 to angle2 (degrees). Equal angles modulo 360 of a
// nonzero sweep, as 0 and 360, make a full circle.
struct ArcData {
  TCoordPoint center;
  TCoord radius = 0;
  double angle1 = 0;
  double angle2 = 0;
  TCoord width = 100000;
  friend bool operator==(const ArcData&, const ArcData&) = default;
};

// Its reference point is its first end.
class Track final : public PrimitiveObject<Track, Primitive, IPCB_Track> {
 public:
  static constexpr TObjectId kKind = eTrackObject;
  TrackData data;

  Track();
  TCoordRect Bounds() const override;
  TCoordPoint Reference() const override { return data.p1; }
  void Transform(const PlaneMap& map) override;
  std::u16string PlaceText() const override;
  double Length() const;  // between the ends

  KETRIL_HOST_PROPERTY(IPCB_Track, TCoord, X1, data.p1.x)
  KETRIL_HOST_PROPERTY(IPCB_Track, TCoord, Y1, data.p1.y)
  KETRIL_HOST_PROPERTY(IPCB_Track, TCoord, X2, data.p2.x)
  KETRIL_HOST_PROPERTY(IPCB_Track, TCoord, Y2, data.p2.y)
  KETRIL_HOST_PROPERTY(IPCB_Track, TCoord, Width, data.width)
};

class Arc final : public PrimitiveObject<Arc, Primitive, IPCB_Arc2> {
 public:
  static constexpr TObjectId kKind = eArcObject;
  ArcData data;

  Arc();
  TCoordRect Bounds() const override;
  TCoordPoint Reference() const override { return data.center; }
  void Transform(const PlaneMap& map) override;
  double Sweep() const;  // degrees, 0 to 360
  double Length() const;
  TCoordPoint PointAt(double degrees) const;  // on the middle of the line

  KETRIL_HOST_PROPERTY(IPCB_Arc, TCoord, XCenter, data.center.x)
  KETRIL_HOST_PROPERTY(IPCB_Arc, TCoord, YCenter, data.center.y)
  KETRIL_HOST_PROPERTY(IPCB_Arc, TCoord, Radius, data.radius)
  KETRIL_HOST_PROPERTY(IPCB_Arc, double, Angle1, data.angle1)
  KETRIL_HOST_PROPERTY(IPCB_Arc, double, Angle2, data.angle2)
  KETRIL_HOST_PROPERTY(IPCB_Arc, TCoord, LineWidth, data.width)
  KETRIL_HOST_READ(IPCB_Arc2, TCoord, StartX, PointAt(data.angle1).x)
  KETRIL_HOST_READ(IPCB_Arc2, TCoord, StartY, PointAt(data.angle1).y)
  KETRIL_HOST_READ(IPCB_Arc2, TCoord, EndX, PointAt(data.angle2).x)
  KETRIL_HOST_READ(IPCB_Arc2, TCoord, EndY, PointAt(data.angle2).y)
};

}  // namespace Ketril::Editor
