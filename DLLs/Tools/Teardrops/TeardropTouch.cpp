#include "DLLs/Tools/Teardrops/TeardropTouch.h"

#include "DLLs/Tools/Frame/Primitives.h"
#include "DLLs/Tools/Geometry/RT_Geometry.h"
#include "DLLs/Tools/Teardrops/TeardropUtils.h"

namespace Ketril::Tools {

namespace {

constexpr TObjectSet kTouchingKinds = {eArcObject,           ePadObject,  eViaObject,          eTrackObject,
                                       eTextObject,          eFillObject, eConnectionObject,   eRegionObject,
                                       eComponentBodyObject, eRuleObject, eEmbeddedBoardObject};

bool Touch(const TPrimitive* a, const TPrimitive* b) {
  return On(a->IPrimitive3()).Read(&IPCB_Primitive3::GetState_Touches, b->IPrimitive().Get());
}

}  // namespace

TTouchList::~TTouchList() {
  for (std::int32_t i = 0; i < Count(); ++i) {
    if (TPrimitive* primitive = At(i)) primitive->Free();
  }
}

bool TTouchList::HasTearDrop() const {
  for (std::int32_t i = 0; i < Count(); ++i) {
    if (At(i)->TearDrop()) return true;
  }
  return false;
}

TPrimitive* TTouchList::Take(std::int32_t index) {
  TPrimitive* primitive = At(index);
  list_.AtPut(index, nullptr);
  return primitive;
}

void CollectTouchingPrimitives(TPrimitive* P, TTouchList& list) {
  const Ref<IPCB_Board> board = On(P->IPrimitive()).Read(&IPCB_Primitive::GetState_Board);
  if (!board) return;
  const TTemporary<TBoard> owner(TBoard::Create(board));
  const TV7_Layer layer = P->Layer();
  TSpatialIterator iterator(owner.get());
  const TCoordRect area = P->GetState_BoundingRectangle();
  if (layer == TV7_Layer(eV6_MultiLayer) || layer == TV7_Layer(eV6_KeepOutLayer)) {
    constexpr TLayerPartitionSet kLayers = {eV7_TopLayer, eMidLayers, eV7_BottomLayer, eV7_KeepOutLayer,
                                            eV7_MultiLayer};
    iterator.InitFilter(owner.get(), area.x1, area.y1, area.x2, area.y2, kLayers, kTouchingKinds);
  } else {
    const TV7_Layer layers[] = {eV6_KeepOutLayer, eV6_MultiLayer, layer};
    iterator.InitFilterA(owner.get(), area.x1, area.y1, area.x2, area.y2, layers, kTouchingKinds);
  }
  for (TPrimitive* found = iterator.First(); found; found = iterator.Next()) {
    if (dynamic_cast<TBoardRegion*>(found) || SamePrimitive(found, P) || !Touch(P, found)) {
      found->Free();
    } else {
      list.List().Insert(found);
    }
  }
}

bool IsPointTouching(TCoord X, TCoord Y, TPrimitive* primitive) {
  const TTemporary<TVia> dot(TVia::Create());
  dot->SetX(X);
  dot->SetY(Y);
  dot->SetMode(ePadMode_Simple);
  dot->SetLayer(primitive->Layer());
  dot->SetVNet(primitive->vNet());
  dot->SetHoleSize(1);
  dot->SetSize(3);
  dot->SetState_Board(primitive->OwnerBoard());
  const bool touches = Touch(dot.get(), primitive);
  dot->SetState_Board(nullptr);
  return touches;
}

bool IsPointOnTrackOrArc(TCoord X, TCoord Y, const TPrimitive* primitive) {
  if (const auto* track = dynamic_cast<const TTrack*>(primitive)) {
    return PointToSegmentDistance({double(X), double(Y)}, TrackToLine(track, 0)) < track->Width() / 2.0 + 100;
  }
  if (const auto* arc = dynamic_cast<const TArc*>(primitive)) {
    return IsPointOnArc(X, Y, ArcToThinArc(arc), arc->LineWidth() / 2.0 + 10);
  }
  return false;
}

}  // namespace Ketril::Tools
