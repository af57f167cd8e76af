// What the add pass does with each object: partners that touch it, old teardrops between the two, outlines,
// and the regions of those.
#include "DLLs/Tools/Frame/PCBServer.h"
#include "DLLs/Tools/Geometry/ContourPoints.h"
#include "DLLs/Tools/Geometry/RT_Geometry.h"
#include "DLLs/Tools/Teardrops/TeardropBuilder.h"
#include "DLLs/Tools/Teardrops/TeardropContourMaker.h"
#include "DLLs/Tools/Teardrops/TeardropPartners.h"
#include "DLLs/Tools/Teardrops/TeardropUtils.h"

namespace Ketril::Tools {

namespace {

// Whether a vertex of the area is in the place, or the place inside of it.
bool IsAtNode(const Ref<IPCB_GeometricPolygon>& area, GeoPointType place) {
  const std::int32_t count = area ? On(area).Read(&IPCB_GeometricPolygon::GetState_Count) : 0;
  int containing = 0;
  for (std::int32_t i = 0; i < count; ++i) {
    const Ref<IPCB_Contour> contour = On(area).Read(&IPCB_GeometricPolygon::GetState_Contour, i);
    const Pgpc_vertex_list ring = On(contour).Read(&IPCB_Contour::GetState_VertexList);
    for (std::int32_t k = 0; k < ring->num_vertices; ++k) {
      if (PointsNear({ring->vertex[k].x, ring->vertex[k].y}, place)) return true;
    }
    containing += ContourContainsPoint(*ring, place.x, place.y, true) ? 1 : 0;
  }
  return containing % 2 != 0;
}

bool HasOutline(const Ref<IPCB_Contour>& contour) {
  return contour && On(contour).Read(&IPCB_Contour::GetState_Count) > 2;
}

// Tracks that bend by little at each other give a junction whose corners all lie in the node: no copper.
bool HasArea(const Ref<IPCB_Contour>& contour) {
  return ContourAbsoluteArea(*On(contour).Read(&IPCB_Contour::GetState_VertexList)) > 0;
}

}  // namespace

void TTeardropBuilder::AddDropsForObject(TPrimitive* P) {
  TTouchList touching;
  CollectTouchingPrimitives(P, touching);
  const TObjectId kind = P->ObjectID();
  if (kind == ePadObject && !IsPadServed(P)) return;
  // A teardrop between two objects touches both: without one here, none can be between P and a partner.
  const bool may_hold_drops = touching.HasTearDrop();
  for (std::int32_t i = 0; i < touching.Count(); ++i) {
    TPrimitive* T = touching.At(i);
    bool is_filed = false;
    const bool is_partner = IsPartner(P, T, is_filed);
    if (is_filed) touching.Take(i);  // the junctions refer to it
    if (!is_partner) continue;
    if (kind == ePadObject) {
      if (may_hold_drops) RemoveDropsBetweenObjects(P, T);
      AddDropForPair(CheckedCast<TPad>(P), T, eTeardropObject_Pad, P);
    } else if (kind == eViaObject) {
      const TTemporary<TPad> pad = MakeViaPad(CheckedCast<TVia>(P), T->Layer(), FBoard);
      if (may_hold_drops) RemoveDropsBetweenObjects(P, T);
      AddDropForPair(pad.get(), T, eTeardropObject_Via, P);
    } else if (Has(TeardropFlag_Track)) {
      AddDropsAtTrack(P, T, may_hold_drops);
    }
  }
}

// Whether a teardrop may run along T into P. Tracks of one width get none between them: they are filed for
// the junctions.
bool TTeardropBuilder::IsPartner(TPrimitive* P, TPrimitive* T, bool& is_filed) {
  const TV7_Layer layer = T->Layer();
  if (!IsSignalLayer(layer) && layer != TV7_Layer(eV6_MultiLayer)) return false;
  if (On(T->IPrimitive()).Read(&IPCB_Primitive::GetState_Polygon) || T->IsKeepOut()) return false;
  const TObjectId kind = T->ObjectID();
  const std::int32_t width = TrackOrArcWidth(T), own_width = TrackOrArcWidth(P);
  if (kind == eTrackObject && width == own_width) {
    is_filed = Has(TeardropFlag_TJunction);
    if (is_filed) FTJunctionNodes.AddTouchingPair(P, T);
    return false;
  }
  if (T->TearDrop()) return false;
  if (kind == eTrackObject && P->ObjectID() == eTrackObject && own_width < width) return false;
  return kind == eTrackObject || kind == eArcObject;
}

void TTeardropBuilder::AddDropsAtTrack(TPrimitive* P, TPrimitive* T, bool may_hold_drops) {
  for (const GeoPointType point : FindCrossings(P, T)) {
    const TTemporary<TPad> pad = MakeVirtualPad(point, TrackOrArcWidth(P), P->Layer(), FBoard);
    pad->SetLayer(eV6_MultiLayer);
    if (may_hold_drops) RemoveDropsBetweenObjects(P, T);
    AddDropForPair(pad.get(), T, eTeardropObject_Track, nullptr);
  }
}

void TTeardropBuilder::AddDropForPair(TPad* P, TPrimitive* T, TTeardropObject kind, TPrimitive* owner) {
  const TV7_Layer layer = T->Layer();
  const TCoord size = P->StackSizeX(layer);
  if (P->StackShape(layer) != eRounded || size != P->StackSizeY(layer)) {
    const auto contours = TTeardropContourMaker::TrackToPadContours(T, P, layer, FOptions);
    for (const Ref<IPCB_Contour>& contour : contours.value_or(TContourList())) {
      if (HasOutline(contour)) MakeTeardropRegion(contour, T, owner);
    }
    return;
  }
  const CircleType circle = {double(P->GetState_X()), double(P->GetState_Y()), size / 2.0};
  const std::int32_t width = TrackOrArcWidth(T);
  if (width / 2.0 >= circle.Radius) return;
  const bool by_diameter = kind == eTeardropObject_Via || P->Layer() == TV7_Layer(eV6_MultiLayer);
  if (by_diameter && kind == eTeardropObject_Pad) kind = eTeardropObject_Via;
  const Ref<IPCB_Contour> contour = T->ObjectID() == eTrackObject
                                        ? TTeardropContourMaker::LineToCircleContour(
                                              TrackToLine(T, 0), width, circle, kind, FOptions, by_diameter)
                                        : TTeardropContourMaker::ArcToCircleContour(
                                              ArcToThinArc(T), width, circle, kind, FOptions, by_diameter);
  if (HasOutline(contour)) MakeTeardropRegion(contour, T, owner);
}

void TTeardropBuilder::MakeTeardropRegion(const Ref<IPCB_Contour>& contour, TPrimitive* T,
                                          TPrimitive* owner) {
  TPolyRegion* region = TPolyRegion::Create();
  region->SetTearDrop(true);
  region->SetVNet(T->vNet());
  region->SetLayer(T->Layer());
  region->SetSolderMaskExpansion(T->SolderMaskExpansion());
  region->SetSolderMaskExpansionMode(T->SolderMaskExpansionMode());
  region->SetPasteMaskExpansion(T->PasteMaskExpansion());
  region->SetPasteMaskExpansionMode(T->PasteMaskExpansionMode());
  const Ref<IPCB_GeometricPolygon> area = On(PCBServer()).Read(&IPCB_ServerInterface::CreateGeometricPolygon);
  const Ref<IPCB_Contour> outline = On(contour).Read(&IPCB_Contour::Replicate);
  On(area).Call(&IPCB_GeometricPolygon::AddContour, outline.Get(), false);
  region->SetRegionData(area.Get());
  region->SetMiscFlag1(owner && owner->ObjectID() == ePadObject);
  region->SetMiscFlag2(owner && owner->ObjectID() == eViaObject);
  FilletList[1].push_back(region);
}

void TTeardropBuilder::RemoveDropsBetweenObjects(TPrimitive* P, TPrimitive* T) {
  if (!SameLogicalNet(P, T)) return;
  ForEachDropBetween(P, T, [&](TTouchList& list, std::int32_t index) { QueueDropRemoval(list.Take(index)); });
}

void TTeardropBuilder::AddJunctionDrops() {
  FTJunctionNodes.ProcessList(FBoard);
  for (const auto& node : FTJunctionNodes) {
    RemoveJunctionDrops(*node);
    const Ref<IPCB_Contour> contour = TTeardropContourMaker::TrackJunctionContour(*node, FOptions);
    if (contour && HasArea(contour)) MakeTeardropRegion(contour, node->ReferencePrimitive(), nullptr);
  }
}

void TTeardropBuilder::RemoveJunctionDrops(const TTeardropTJunctionNode& node) {
  const GeoPointType place = {double(node.NodePoint().X), double(node.NodePoint().Y)};
  TTouchList touching;
  CollectTouchingPrimitives(node.ReferencePrimitive(), touching);
  for (std::int32_t i = 0; i < touching.Count(); ++i) {
    const auto* region = dynamic_cast<TPolyRegion*>(touching.At(i));
    if (!region || region->ObjectID() != eRegionObject || !region->TearDrop()) continue;
    if (IsAtNode(On(region->IPolyRegion()).Read(&IPCB_Region2::GetState_RegionData), place))
      QueueDropRemoval(touching.Take(i));
  }
}

}  // namespace Ketril::Tools
