// Names and numbers of layers in the board file, and the layers that they are here: copper from F.Cu (top)
// over In1.Cu ... In30.Cu (mid layers) to B.Cu (bottom), legend (SilkS), masks and pastes each with their own
// layer, and all others, the board's edge among them, on mechanical layers by a fixed table.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

// Of the board's edge, Edge.Cuts.
constexpr TV7_Layer kEdgeLayer = eV6_Mechanical1;

// The layer that a name means in every file; eV6_NoLayer for an unknown one.
TV7_Layer LayerOfName(std::string_view name);
// The name that every file knows; that of the comments for a layer that files do not have.
std::string NameOfLayer(TV7_Layer layer);
// The number of a layer in the layer table, by the numbering before or since version 20241009.
std::int32_t NumberOfLayer(TV7_Layer layer, bool new_numbering);

// The names of one board. In the oldest version copper goes by names that the user gave.
class LayerNames {
 public:
  LayerNames() = default;
  explicit LayerNames(const Board& board);
  void Add(const BoardLayer& layer);

  TV7_Layer Find(std::string_view name) const;  // eV6_NoLayer for an unknown one
  std::string NameOf(TV7_Layer layer) const;
  // Adds the layers that a word of a list names: one, or several by `*.Cu`, `*.Mask`, `F&B.Cu`.
  void Expand(std::string_view word, std::vector<TV7_Layer>& layers) const;
  const std::vector<TV7_Layer>& Copper() const { return copper_; }  // from top to bottom

 private:
  struct OwnName {
    std::string name;
    TV7_Layer layer;
  };
  std::vector<OwnName> own_names_;  // those that are not the layer's name in every file
  std::vector<TV7_Layer> copper_;
};

}  // namespace Ketril::Editor
