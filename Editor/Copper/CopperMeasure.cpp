#include "Editor/Copper/CopperMeasure.h"

#include <cmath>
#include <iterator>

#include "Editor/Copper/CoveredArea.h"
#include "Editor/Copper/Outline.h"

namespace Ketril::Editor {

namespace {

constexpr double kError = 200;

// What is drilled through the layer.
std::vector<Form> HolesOn(const Board& board, TV7_Layer layer) {
  std::vector<Form> holes;
  const auto add = [&](Hull hole) {
    if (!hole.discs.empty()) holes.push_back(std::move(hole));
  };
  board.objects.ForEach({ePadObject},
                        [&](const Primitive& pad) { add(HoleOf(static_cast<const Pad&>(pad))); });
  board.objects.ForEach({eViaObject}, [&](const Primitive& object) {
    const Via& via = static_cast<const Via&>(object);
    if (via.Spans(layer)) add(HoleOf(via));
  });
  return holes;
}

}  // namespace

double CopperArea(const Board& board, TV7_Layer layer) {
  constexpr TObjectSet kKinds = {eTrackObject, eArcObject,  ePadObject,   eViaObject,
                                 eFillObject,  eTextObject, eRegionObject};
  std::vector<Ring> copper, holes;
  const auto add = [](std::vector<Ring>& rings, const std::vector<Form>& forms) {
    if (!forms.empty()) std::ranges::move(Outline(forms, 0, kError), std::back_inserter(rings));
  };
  board.objects.ForEach(kKinds, [&](const Primitive& object) { add(copper, FormsOf(object, layer)); });
  for (const Form& hole : HolesOn(board, layer)) add(holes, {hole});
  return CoveredArea(copper, holes);
}

double BoardArea(const Board& board) {
  const Ref<BoardOutline> outline = board.Outline();
  return outline ? AreaOf(outline->data.rings) : 0;
}

Status Board::GetState_Area(double& value) noexcept {
  return HostCall("IPCB_BoardMeasure.GetState_Area", [&] { value = BoardArea(*this); });
}

Status Board::GetState_CopperBodyList(Ref<IPCB_CopperBodyList>& value) noexcept {
  return HostCall("IPCB_BoardMeasure.GetState_CopperBodyList",
                  [&] { value = MakeHost<CopperBodies>(*this); });
}

Status Board::GetState_LayerArea(IPCB_CopperBodyList* bodies, TV7_Layer layer, double& area) noexcept {
  return HostCall("IPCB_BoardMeasure.GetState_LayerArea", [&] {
    const auto own = Probe<LayerAreas>(bodies);
    if (bodies && !own) return Status::InvalidArgument;
    if (own) {
      const auto found = own->areas.find(layer);
      area = found == own->areas.end() ? 0 : found->second;
    } else {
      area = CopperArea(*this, layer);
    }
    return Status::Ok;
  });
}

CopperBodies::CopperBodies(const Board& board) {
  for (const TV7_Layer layer : board.CopperLayers()) areas[layer] = CopperArea(board, layer);
}

}  // namespace Ketril::Editor
