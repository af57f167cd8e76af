// Wrappers of tracks, arcs and connection lines. Lengths are in units, angles in degrees, counter-clockwise.
#pragma once

#include "DLLs/Tools/Frame/PrimitivesBase.h"

namespace Ketril::Tools {

class TTrack : public TWrapper<TTrack, TPrimitive> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Track> ITrack() const { return CheckedCast<IPCB_Track>(FPrimitive); }

  // The ends and the width too, where the target is a track.
  void CopyTo(TContainedObject* target, TCopyMode mode) const override;
  KETRIL_FORWARD_OVERRIDE(std::u16string, GetState_DescriptorString, ITrack, DescriptorString)

  KETRIL_FORWARD(TPCBCoord, Width, ITrack, Width)
  KETRIL_FORWARD_READ(TCoord, x1, ITrack, X1)
  KETRIL_FORWARD_READ(TCoord, y1, ITrack, Y1)
  KETRIL_FORWARD_READ(TCoord, x2, ITrack, X2)
  KETRIL_FORWARD_READ(TCoord, y2, ITrack, Y2)
  KETRIL_FORWARD_WRITE(TCoord, SetX1, ITrack, X1)
  KETRIL_FORWARD_WRITE(TCoord, SetY1, ITrack, Y1)
  KETRIL_FORWARD_WRITE(TCoord, SetX2, ITrack, X2)
  KETRIL_FORWARD_WRITE(TCoord, SetY2, ITrack, Y2)
};

// Runs counter-clockwise from (SX, SY) at `Angle1` to (EX, EY) at `Angle2`, about (X, Y).
class TArc : public TWrapper<TArc, TPrimitive> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Arc2> IArc() const { return CheckedCast<IPCB_Arc2>(FPrimitive); }

  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_X, IArc, XCenter)
  KETRIL_FORWARD_OVERRIDE(TCoord, GetState_Y, IArc, YCenter)
  KETRIL_FORWARD_OVERRIDE(std::u16string, GetState_DescriptorString, IArc, DescriptorString)
  void SetState_XSizeYSize() override { On(IArc()).Call(&IPCB_Arc2::SetState_XSizeYSize); }

  KETRIL_FORWARD_READ(TCoord, X, IArc, XCenter)
  KETRIL_FORWARD_READ(TCoord, Y, IArc, YCenter)
  KETRIL_FORWARD_WRITE(TCoord, SetX, IArc, XCenter)
  KETRIL_FORWARD_WRITE(TCoord, SetY, IArc, YCenter)
  KETRIL_FORWARD_READ(TCoord, SX, IArc, StartX)
  KETRIL_FORWARD_READ(TCoord, SY, IArc, StartY)
  KETRIL_FORWARD_READ(TCoord, EX, IArc, EndX)
  KETRIL_FORWARD_READ(TCoord, EY, IArc, EndY)
  KETRIL_FORWARD(TCoord, Radius, IArc, Radius)
  KETRIL_FORWARD(double, Angle1, IArc, Angle1)
  KETRIL_FORWARD(double, Angle2, IArc, Angle2)
  KETRIL_FORWARD(TCoord, LineWidth, IArc, LineWidth)
};

class TConnection : public TWrapper<TConnection, TPrimitive> {
 public:
  using TWrapper::TWrapper;
  Ref<IPCB_Connection> IConnection() const { return CheckedCast<IPCB_Connection>(FPrimitive); }

  KETRIL_FORWARD_READ(TCoord, x1, IConnection, X1)
  KETRIL_FORWARD_READ(TCoord, y1, IConnection, Y1)
  KETRIL_FORWARD_READ(TCoord, x2, IConnection, X2)
  KETRIL_FORWARD_READ(TCoord, y2, IConnection, Y2)
  KETRIL_FORWARD_WRITE(TCoord, SetX1, IConnection, X1)
  KETRIL_FORWARD_WRITE(TCoord, SetY1, IConnection, Y1)
  KETRIL_FORWARD_WRITE(TCoord, SetX2, IConnection, X2)
  KETRIL_FORWARD_WRITE(TCoord, SetY2, IConnection, Y2)
  KETRIL_FORWARD(TV7_Layer, Layer1, IConnection, Layer1)
  KETRIL_FORWARD(TV7_Layer, Layer2, IConnection, Layer2)
  KETRIL_FORWARD(TConnectionMode, Mode, IConnection, Mode)
};

}  // namespace Ketril::Tools
