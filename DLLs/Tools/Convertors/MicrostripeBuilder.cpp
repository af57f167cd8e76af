#include "DLLs/Tools/Convertors/MicrostripeBuilder.h"

#include <cmath>
#include <numbers>

#include "DLLs/Tools/Convertors/MicrostripeChain.h"
#include "DLLs/Tools/Frame/PrimitivesFactory.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/RunFinally.h"
#include "DLLs/Tools/Geometry/PolygonUtils.h"
#include "DLLs/Tools/Geometry/RT_GeometryBasics.h"
#include "DLLs/Tools/Geometry/Rounding.h"

namespace Ketril::Tools {

namespace {

GeoPointType Difference(TCoordPoint from, TCoordPoint to) {
  return {double(to.x) - from.x, double(to.y) - from.y};
}

// In hundredths of a degree a right angle is 9000 to 9099.
bool AreAtRightAngle(const TTrack* a, const TTrack* b) {
  const GeoPointType u = Difference({a->x1(), a->y1()}, {a->x2(), a->y2()});
  const GeoPointType v = Difference({b->x1(), b->y1()}, {b->x2(), b->y2()});
  const double angle = std::acos(DotProduct(u, v) / (PointLength(u) * PointLength(v)));
  return Round(angle * 18000 / std::numbers::pi) / 100 == 90;
}

// The quadrant of a direction, the axes with the one that lies counter-clockwise of +x and of +y.
int Quadrant(TCoordPoint from, TCoordPoint to) {
  const bool left = to.x < from.x, down = to.y < from.y;
  return left ? (down ? 3 : 2) : (down ? 4 : 1);
}

// Of a direction, in degrees off the x axis.
double AngleOffX(TCoordPoint from, TCoordPoint to) {
  const GeoPointType way = Difference(from, to);
  return std::acos(way.x / PointLength(way)) * 180 / std::numbers::pi;
}

// Where the left ends of both meet: is it the other one whose end is mirrored. Right ends are never below or
// to the left of left ones, so the angles tell: of a horizontal and a vertical track it is the horizontal
// one.
bool IsOtherMirrored(const TMicrostripe& a, const TMicrostripe& o) {
  const int quadrant_a = Quadrant(a.Left(), a.Right()), quadrant_o = Quadrant(a.Left(), o.Right());
  if (quadrant_a != 1) return false;
  return quadrant_o == 4 ||
         (quadrant_o == 1 && AngleOffX(a.Left(), a.Right()) != 0 && AngleOffX(a.Left(), o.Right()) != 90);
}

// Sets the closing segment once more.
void CloseOutline(TPolygonalShape* outline) {
  const std::int32_t count = outline->PointCount();
  if (count > 0) outline->SetState_Segments(count, outline->GetState_Segments(0));
}

bool IsFraction(double value) {
  return value >= 0 && value < 1;
}

// The objects of one net on their way.
class TMicrostripeRun {
 public:
  TMicrostripeRun(TBoard* board, const TMicrostripeSettings& settings) : FBoard(board), FSettings(settings) {
    FByEnd.reserve(20);
  }

  void Collect(const IInterfaceList& list) {
    for (const Ref<IPCB_Primitive>& object : list) {
      TPrimitive* const primitive = CreatePrimitiveWrapper(object);
      if (!primitive || primitive->ObjectID() != eTrackObject) continue;
      FAll.push_back(std::make_unique<TMicrostripe>(FBoard, CheckedCast<TTrack>(primitive)));
      TMicrostripe& microstripe = *FAll.back();
      MeetAt(microstripe.LeftEndUniqueString(), microstripe);
      MeetAt(microstripe.RightEndUniqueString(), microstripe);
      if (!microstripe.Has(Listed)) FRest.push_back(&microstripe);
    }
  }

  void Build() {
    MoveTouchingToChain(FRest, FChain);
    const std::vector<TMicrostripe*> order = FChain.InOrder();
    for (std::size_t i = 0; i < order.size();) i = BuildRun(order, i);
  }

  void RemoveConsumed() {
    for (TMicrostripe* microstripe : FChain.InOrder()) {
      if (microstripe->Has(Consumed))
        microstripe->Board()->CancelPrimaryWarehouseRegistration(microstripe->Track());
    }
  }

 private:
  // An end keeps the first track that came there; those that follow join with it.
  void MeetAt(const std::u16string& end, TMicrostripe& microstripe) {
    const auto [at, is_new] = FByEnd.try_emplace(end, &microstripe);
    if (is_new) return;
    TMicrostripe& other = *at->second;
    JoinMicrostripes(microstripe, other, FSettings.OutsideMiter, FSettings.InsideMiter);
    AddToChain(&microstripe, FChain);
    AddToChain(&other, FChain);
  }

  // From i on, as far as the layer stays; gives where it ended.
  std::size_t BuildRun(const std::vector<TMicrostripe*>& order, std::size_t i) {
    const TMicrostripe* last = order[i];
    const TV7_Layer layer = last->Track()->Layer();
    auto polygon = std::make_unique<TAbstractPolygon>();
    for (; i < order.size() && order[i]->Track()->Layer() == layer; ++i) {
      TMicrostripe& microstripe = *order[i];
      last = &microstripe;
      microstripe.TrimArcs();
      if (!microstripe.Has(LeftDone) && !microstripe.Has(RightDone)) continue;
      polygon = MergeIntoPolygon(FBoard, microstripe, std::move(polygon));
      microstripe.Set(Consumed);
    }
    CreateRegionFromPolygon(FBoard, layer, last->Track()->Net(), *polygon);
    return i;
  }

  TBoard* FBoard;
  TMicrostripeSettings FSettings;
  std::vector<std::unique_ptr<TMicrostripe>> FAll;
  std::unordered_map<std::u16string, TMicrostripe*> FByEnd;
  TMicrostripeChain FChain;
  std::vector<TMicrostripe*> FRest;
};

}  // namespace

void JoinMicrostripes(TMicrostripe& AThis, TMicrostripe& AOther, double AOutsideMiter, double AInsideMiter) {
  TMicrostripe &A = AThis, &O = AOther;
  A.BuildContour();
  O.BuildContour();
  if (!AreAtRightAngle(A.Track(), O.Track())) {
    CloseOutline(A.Outline());
    CloseOutline(O.Outline());
    return;
  }
  TMicrostripePoints points_a, points_o;
  A.CalcMicrostripe(AOutsideMiter, AInsideMiter, points_a);
  O.CalcMicrostripe(AOutsideMiter, AInsideMiter, points_o);
  const TCoordPoint left = A.Left(), right = A.Right();
  if (left == O.Left()) {
    const bool m = IsOtherMirrored(A, O);
    A.CreateLeftOfMicrostripe(points_a, !m);
    O.CreateLeftOfMicrostripe(points_o, m);
  } else if (left == O.Right()) {
    const bool m = Quadrant(left, right) == 1 && Quadrant(left, O.Left()) == 2;
    A.CreateLeftOfMicrostripe(points_a, m);
    O.CreateRightOfMicrostripe(points_o, m);
  } else if (right == O.Left()) {
    const bool m = !(Quadrant(right, left) == 4 && Quadrant(right, O.Right()) == 1);
    A.CreateRightOfMicrostripe(points_a, m);
    O.CreateLeftOfMicrostripe(points_o, m);
  } else if (right == O.Right()) {
    const int quadrant_o = Quadrant(right, O.Left());
    const bool m = Quadrant(right, left) == 2 && (quadrant_o == 4 || quadrant_o == 3);
    A.CreateRightOfMicrostripe(points_a, !m);
    O.CreateRightOfMicrostripe(points_o, m);
  }
}

std::unique_ptr<TAbstractPolygon> MergeIntoPolygon(TBoard* ABoard, const TMicrostripe& AMicrostripe,
                                                   std::unique_ptr<TAbstractPolygon> APolygon) {
  TAbstractPolygon outline;
  const TPolygonalShape* shape = AMicrostripe.Outline();
  const std::int32_t count = shape->PointCount();
  for (std::int32_t i = 0; count > 0 && i <= count; ++i) {
    const TPolySegment segment = shape->GetState_Segments(i);
    outline.AddPoint({segment.vx, segment.vy});
  }
  auto merged = std::make_unique<TAbstractPolygon>();
  if (!TPolygonUtils::UnionPoly(outline, *APolygon, *merged)) {
    CreateRegionFromPolygon(ABoard, AMicrostripe.Track()->Layer(), AMicrostripe.Track()->Net(), *APolygon);
    merged->AssignFromPoly(outline);
  }
  return merged;
}

void CreateRegionFromPolygon(TBoard* ABoard, TV7_Layer ALayer, TNet* ANet, const TAbstractPolygon& APolygon) {
  const std::int32_t count = APolygon.PointCount();
  if (count == 0) return;
  TPolyRegion* const region = TPolyRegion::Create();
  region->SetLayer(ALayer);
  region->SetNet(ANet);
  TPolygonalShape* const shape = region->Shape();
  shape->SetState_PointCount(0);
  for (std::int32_t i = 0; i <= count; ++i) {
    const TCoordPoint vertex = APolygon.GetPointByPos(i % count);
    TPolySegment segment;
    segment.vx = vertex.x;
    segment.vy = vertex.y;
    if (i < count) shape->IncrementPointCount();
    shape->SetState_Segments(i, segment);
  }
  region->RemoveRedundantVertices();
  region->SynchronizeGPCPolyFromShape(true);
  if (shape->PointCount() > 0) ABoard->RegisterWithPrimaryWarehouse(region);
}

void MakeMicrostripes(const Ref<IPCB_Board>& ABoard, const TMicrostripeSettings& ASettings,
                      const IInterfaceList* AList) {
  if (!AList || (!IsFraction(ASettings.OutsideMiter) && !IsFraction(ASettings.InsideMiter))) return;
  TMicrostripeRun run(TBoard::Create(ABoard), ASettings);
  const auto build = [&] {
    run.Collect(*AList);
    run.Build();
  };
  RunFinally(build, [&] { run.RemoveConsumed(); });
}

void MakeMicrostripe(const Ref<IPCB_Board>& ABoard, const TMicrostripeSettings* ASettings) {
  if (!ASettings) return;
  // The lists of the nets in the order in which their first objects come.
  std::vector<IInterfaceList> lists;
  std::unordered_map<const TNet*, std::size_t> list_of;
  const std::int32_t count = On(ABoard).Read(&IPCB_Board::GetState_SelectedObjectsCount);
  for (std::int32_t i = 0; i < count; ++i) {
    const Ref<IPCB_Primitive> object = On(ABoard).Read(&IPCB_Board::GetState_SelectedObject, i);
    const TPrimitive* const primitive = CreatePrimitiveWrapper(object);
    if (!primitive) continue;
    const auto [at, is_new] = list_of.try_emplace(primitive->Net(), lists.size());
    if (is_new) lists.emplace_back();
    lists[at->second].push_back(object);
  }
  for (IInterfaceList& list : lists) {
    MakeMicrostripes(ABoard, *ASettings, &list);
    list.clear();
  }
}

}  // namespace Ketril::Tools
