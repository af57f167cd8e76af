// Whether a via may stand at a place, and what a run of many places came to.
#pragma once

#include <array>
#include <string>
#include <unordered_map>
#include <vector>

#include "Editor/Rules/Clearance.h"
#include "Editor/Vias/ViaOptions.h"

namespace Ketril::Editor {

// Why a place is no good; the first that holds counts.
enum class ViaRefusal : std::uint8_t {
  None,
  Outside,    // of the board's outline, or too near to it
  NoCopper,   // copper of the net does not cover the via
  OnPad,      // of the same net: solder would flow off
  Drilled,    // on a via of the same net, or its hole too near to another
  Clearance,  // too near to copper of another net, or its hole is
  Poured,     // the same, of poured areas and nothing else
  KeepOut,    // in an area that forbids vias
};
constexpr std::size_t kViaRefusals = 8;
const char* DescribeRefusal(ViaRefusal refusal);  // "too near to the board's edge"

// What a run did, for the person who asked for it.
struct ViaRun {
  std::size_t tried = 0;
  std::size_t placed = 0;
  std::array<std::size_t, kViaRefusals> refused{};  // by ViaRefusal
  double largest_gap = 0;                           // of a fence, along it, between centres; 0 for none
  std::u16string note;                              // why nothing could be tried, empty otherwise
};

// Tries the reference via of the settings on a board that does not change meanwhile. Places that it took
// count as vias for those that follow.
class ViaPlacer {
 public:
  ViaPlacer(Board& board, const ViaSettings& settings, ViaRun& run);
  ~ViaPlacer();
  ViaPlacer(const ViaPlacer&) = delete;
  ViaPlacer& operator=(const ViaPlacer&) = delete;

  // By everything but the copper that has to cover it.
  ViaRefusal Check(TCoordPoint place);
  // Counts the try; on success the place is taken. `refusal` is what somebody else found before.
  bool Try(TCoordPoint place, ViaRefusal refusal = ViaRefusal::None);
  // A look without a count and without taking it.
  bool Fits(TCoordPoint place) { return Check(place) == ViaRefusal::None; }

  const std::vector<TCoordPoint>& Places() const { return places_; }
  // Adds the vias of the places taken to the board.
  std::vector<Ref<Primitive>> Build();

 private:
  bool IsOutside(TCoordPoint place) const;
  ViaRefusal CheckNeighbours();
  bool IsTaken(TCoordPoint place) const;
  std::int64_t CellOf(std::int64_t x, std::int64_t y) const;

  Board& board_;
  const ViaSettings& settings_;
  ViaRun& run_;
  ClearanceChecker checker_;
  Ref<Via> trial_;
  CopperShape board_area_, board_edge_;  // empty without an outline
  TCoord reach_;                         // within which neighbours matter
  TCoord apart_;                         // between the centres of vias
  std::vector<TCoordPoint> places_;
  std::unordered_map<std::int64_t, std::vector<TCoordPoint>> taken_;  // by square of `apart_`
};

}  // namespace Ketril::Editor
