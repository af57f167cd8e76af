// How a version of the board file says things, and the words of one board for what is written into it.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Editor/Files/LayerNames.h"
#include "Editor/Files/Units.h"

namespace Ketril::Editor {

// The versions that are read, and their names for people.
constexpr std::int32_t kOldestVersion = 20171130;
constexpr std::int32_t kNewestVersion = 20241229;
constexpr char kKnownVersions[] = "20171130, 20211014, 20221018, 20240108, 20241229 and those between";

// Since when the file has a form. Reading goes by the shape of the words; this is for what is written anew.
class FileVersion {
 public:
  explicit FileVersion(std::int32_t number) : number_(number) {}
  std::int32_t Number() const { return number_; }
  bool HasTrackArcs() const { return number_ >= 20200119; }
  bool HasZoneNames() const { return number_ >= 20200614; }
  bool QuotesAll() const { return number_ >= 20200628; }
  bool SaysFootprint() const { return number_ >= 20201115; }      // before: module
  bool HasUuids() const { return number_ >= 20200628; }           // before: short stamps, often none
  bool HasMidArcs() const { return number_ >= 20211014; }         // before: centre, start and angle
  bool HasBracedOverbars() const { return number_ >= 20210606; }  // ~{RESET}; before: ~RESET~
  bool HasStrokes() const { return number_ >= 20211229; }
  bool HasTeardrops() const { return number_ >= 20221018; }
  bool IsTabbed() const { return number_ >= 20231014; }  // lists for flags, uuid, properties as texts
  bool HasNetGraphics() const { return number_ >= 20241129; }
  bool HasPadstacks() const { return number_ >= 20241229; }
  bool HasNewLayerNumbers() const { return number_ >= 20241009; }
  bool SaysYesForFills() const { return number_ >= 20241129; }

 private:
  std::int32_t number_;
};

// A teardrop zone carries this name, where zones have names; in the oldest version, whose zones have none, it
// is known by a priority from here on. So are other regions with a net, from a lower one on.
constexpr std::string_view kTeardropName = "$teardrop_padvia$";
constexpr std::string_view kTeardropPrefix = "$teardrop_";
constexpr std::int32_t kTeardropPriority = 30000;
// A zone of this name, or of a priority from here on, is one of our regions, which the format has no other
// word for when it has a net.
constexpr std::string_view kRegionName = "$ketril_region$";
constexpr std::int32_t kRegionPriority = 20000;
// What components are placed by, as PlacementBy numbers it.
constexpr const char* kPlacementWords[] = {"sheetname", "component_class", "group"};
// A footprint of this library name is a pad that belongs to no component: the format has no pads but those of
// footprints. It holds one pad, at its own place.
constexpr std::string_view kFreePadName = "Ketril:FreePad";

// The words of one board.
class FileWords {
 public:
  explicit FileWords(Board& board);

  const FileVersion version;
  const LayerNames layers;

  static std::string Length(TCoord units) { return FormatMillimetres(ToNanometres(units)); }
  std::string Text(const std::u16string& text) const;
  std::string Name(std::string_view utf8) const;
  std::string Layer(TV7_Layer layer) const { return Name(layers.NameOf(layer)); }
  // A list of layers, with `*.Cu` for all copper and the like.
  std::string LayerList(const std::vector<TV7_Layer>& layers) const;
  std::string Place(TCoordPoint place, const Placement& placement) const;  // "x y"
  void AppendPlace(std::string& text, TCoordPoint place, const Placement& placement) const;
  // The net's number; one that has none yet gets the next free one. 0 for null.
  std::int32_t NetNumber(const Net* net);
  // The net's name in a zone. The programs of today turn overbars of old files into braces, but not those in
  // a zone, and then hold it for a net of its own: so in an old file it is written with braces already.
  std::string ZoneNetName(const Net* net) const;
  std::string NetWithName(Net* net);  // `(net 5 "GND")`
  // ` (uuid "...")` of the object, as this version has it. A random one when the object's own identifier has
  // not the form that the version wants: the object has that one from then on. Empty where none is needed.
  std::string Identifier(Primitive& primitive) const;
  // Gives the object's net its number and the object its identifier: what is written of it from then on
  // changes nothing in these words.
  void Prepare(Primitive& primitive);
  // The same as Identifier, for an expression that stands for no object of its own; empty where none is needed.
  std::string RandomIdentifier() const;
  std::string Fill(bool filled) const;  // the word of a drawn shape
  // True for an object that the file beside the board tells something of, so that it has to have one.
  static bool NeedsIdentifier(const Primitive& primitive);

  // `blanks`, and the expression, which comes on one line, laid out behind them as the version does.
  std::string LayOut(const std::string& expression, std::string_view blanks) const;

 private:
  std::unordered_map<const Net*, std::int32_t> numbers_;
  std::int32_t next_number_ = 1;
};

}  // namespace Ketril::Editor
