// The options of the teardrop tools, as they cross to the editor and its dialog.
#pragma once

#include <cstddef>
#include <cstdint>

namespace Ketril {

// What a teardrop widens a track towards.
enum TTeardropObject : std::uint8_t {
  eTeardropObject_Via,
  eTeardropObject_Pad,
  eTeardropObject_Track,  // a wider track
  eTeardropObject_TJunction,
};

// In the options percentages: of a via's diameter, of the track's width on pads and at junctions, of the
// wider track's width. `Length` is how far a teardrop runs along the track, `Width` how wide its foot is; a
// negative one does not limit it.
struct TTeardropObjectSize {
  double Length = 0;
  double Width = 0;
};
using TTeardropObjectSizePercentArray = TTeardropObjectSize[4];  // indexed by TTeardropObject

enum TTeardropFlag : std::int32_t {
  TeardropFlag_Force = 1,       // teardrops that violate a rule stay
  TeardropFlag_Selected = 2,    // only selected objects
  TeardropFlag_Report = 4,      // a report file after adding
  TeardropFlag_ScaleWidth = 8,  // a run that comes out shorter makes the foot narrower
  TeardropFlag_Straight = 16,   // straight flanks instead of curved ones
  TeardropFlag_Add = 32,        // add; otherwise remove
  TeardropFlag_Via = 64,        // vias and through-hole pads
  TeardropFlag_Pad = 128,       // surface pads
  TeardropFlag_Track = 256,     // tracks that leave a wider track
  TeardropFlag_TJunction = 512  // junctions of tracks of one width
};

struct TTeardropOptionsEx {
  std::int32_t Flags = 0;  // of TTeardropFlag
  TTeardropObjectSizePercentArray SizePercentArray;
};
static_assert(sizeof(TTeardropOptionsEx) == 72 && offsetof(TTeardropOptionsEx, SizePercentArray) == 8);
static_assert(sizeof(TTeardropObjectSize) == 16 && offsetof(TTeardropObjectSize, Width) == 8);

// Of the older builder, whose teardrops are tracks or arcs.
enum TTearDropStyle : std::uint8_t {
  eArcTearDrop,
  eTrackTearDrop,
  eFilletTearDrop,  // can be chosen and stored; no shape belongs to it, so nothing is placed
};
enum TTearDropAction : std::uint8_t { eAddTearDrop, eRemoveTearDrop };

struct TTearDropOptions {
  bool AllPads = true;  // which objects are visited
  bool AllVias = true;
  bool AllTracks = true;
  bool Selected = false;  // of these only selected ones
  TTearDropStyle Style = eArcTearDrop;
  TTearDropAction Action = eAddTearDrop;
  bool Report = true;  // a report file after adding
  bool Force = false;  // what violates a clearance is placed all the same
};
static_assert(sizeof(TTearDropOptions) == 8 && offsetof(TTearDropOptions, Style) == 4 &&
              offsetof(TTearDropOptions, Force) == 7);

}  // namespace Ketril
