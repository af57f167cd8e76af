// What the user points at on a board.
#include "Editor/Client/Client.h"
#include "Editor/Model/Board.h"
#include "Editor/Model/HitTest.h"

namespace Ketril::Editor {

namespace {

std::vector<Primitive*> ObjectsAt(Board& board, TCoordPoint place, TObjectSet kinds, IPCB_LayerSet* layers) {
  HitOptions options;
  options.kinds = kinds;
  options.layers = LayerFilter(layers);
  if (kinds.Contains(eComponentObject)) options.method = eProcessComponent;
  return HitObjects(board, place, options);
}

}  // namespace

Status Board::ChooseLocation(const std::u16string& prompt, TCoordPoint& place, bool& chosen) noexcept {
  return HostCall("IPCB_BoardPicks.ChooseLocation", [&] {
    const ClientSetup* const setup = InstalledSetup();
    const auto picked = setup && setup->choose_location ? setup->choose_location(prompt) : std::nullopt;
    chosen = picked.has_value();
    if (chosen) place = *picked;
  });
}

Status Board::GetState_ObjectAtCursor(TObjectSet kinds, Ref<IPCB_Primitive>& primitive) noexcept {
  return HostCall("IPCB_BoardPicks.GetState_ObjectAtCursor", [&] {
    primitive = nullptr;
    const ClientSetup* const setup = InstalledSetup();
    if (!setup || !setup->cursor) return;
    const std::vector<Primitive*> hits = ObjectsAt(*this, *setup->cursor, kinds, nullptr);
    if (!hits.empty()) primitive = hits.front()->AsInterface();
  });
}

Status Board::ChooseObjectAt(TCoordPoint place, TObjectSet kinds, IPCB_LayerSet* layer_set,
                             Ref<IPCB_Primitive>& primitive) noexcept {
  return HostCall("IPCB_BoardPicks.ChooseObjectAt", [&] {
    primitive = nullptr;
    const std::vector<Primitive*> hits = ObjectsAt(*this, place, kinds, layer_set);
    std::optional<std::size_t> choice;
    if (hits.size() == 1) choice = 0;
    const ClientSetup* const setup = InstalledSetup();
    if (hits.size() > 1 && setup && setup->choose_object) choice = setup->choose_object(hits);
    if (choice && *choice < hits.size()) primitive = hits[*choice]->AsInterface();
  });
}

}  // namespace Ketril::Editor
