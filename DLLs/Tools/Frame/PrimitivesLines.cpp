#include "DLLs/Tools/Frame/PrimitivesLines.h"

namespace Ketril::Tools {

void TTrack::CopyTo(TContainedObject* target, TCopyMode mode) const {
  TPrimitive::CopyTo(target, mode);
  auto* track = dynamic_cast<TTrack*>(target);
  if (!track) return;
  track->SetX1(x1());
  track->SetY1(y1());
  track->SetX2(x2());
  track->SetY2(y2());
  track->SetWidth(Width());
}

}  // namespace Ketril::Tools
