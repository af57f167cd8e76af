// What a pass over the text of a board keeps of the words of an expression until it has seen them all.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "Editor/Files/SExpression.h"
#include "Interfaces/Types.h"

namespace Ketril::Editor {

struct PassWords {
  using Item = SExpressionItem;

  // A place as it stands, and where that is on the board.
  struct Place {
    TCoordPoint at;
    SExpressionWord x, y;
    bool IsThere() const { return !x.text.empty(); }
  };
  struct Measure {
    TCoord value = 0;
    SExpressionWord word;
    bool IsThere() const { return !word.text.empty(); }
  };
  // Of a pad's copper on a layer, and of a pad.
  struct CopperWords {
    SExpressionWord shape, anchor;
    Measure x_size, y_size, x_delta, y_delta;
  };
  // Of a part of a custom shape.
  struct PartWords {
    Place start, mid, end;
    std::vector<TCoordPoint> points;
    TCoord width = 0;  // of the pen
    double angle = 0;
    bool filled = false;
  };
  struct PadWords {
    SExpressionWord type;
    TCoord hole = 0;
    std::uint32_t drill_end = 0;
    bool has_offset = false;
    CopperWords copper;
  };
  struct FootprintWords {
    Item attributes;
    std::uint32_t attributes_end = 0;  // behind the last one
    SExpressionWord no_bom;
    bool is_tie = false;
  };
  struct ZoneWords {
    std::size_t outlines = 0;
    SExpressionWord net_name;
    bool net_changed = false;
    bool is_stroked = true;  // fills have a pen of the zone's least thickness
  };
  // A list of points, `(pts (xy ...) ...)`, with arcs in it as chords.
  struct Outline {
    std::vector<TCoordPoint> points;
    std::vector<Place> places;  // all that make it; kept for rewriting
    bool is_plain = true;       // each place is a point
    std::uint32_t begin = 0, end = 0;
  };
  // What the words of an object say of a flag of it, at several places as it may be.
  struct Said {
    bool yes = false;
    SExpressionWord no;            // the word that could say it
    std::string yes_word = "yes";  // in its place
  };
  // `(group "name" (uuid "...") (members "..." ...))`
  struct FileGroup {
    std::u16string name;
    std::string_view id;
    std::vector<std::string_view> members;
  };
};

}  // namespace Ketril::Editor
