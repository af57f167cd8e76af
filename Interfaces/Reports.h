// What the editor and the report tools know of each other: where a report goes and in which form, and the
// choice of what the board information report tells.
#pragma once

#include "Interfaces/Workspace.h"

namespace Ketril {

using TColor = std::int32_t;  // 0x00bbggrr

// A picture that stands for the object in lists and menus.
class IAssociatedWithBitmap : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IAssociatedWithBitmap"};
  virtual Status GetBitmapFileMaskColor(TColor& color) noexcept = 0;
  virtual Status GetBitmapFile(std::u16string& file) noexcept = 0;
  virtual Status SetBitmapFileMaskColor(TColor color) noexcept = 0;
  virtual Status SetBitmapFile(const std::u16string& file) noexcept = 0;
};

// One form of a report: a style sheet, and what is done with the result.
class IReportOutputTransformation : public IAssociatedWithBitmap {
 public:
  using Base = IAssociatedWithBitmap;
  static constexpr InterfaceId Id{"IReportOutputTransformation"};
  virtual Status Import_FromOptionsReader(IOptionsReader* reader) noexcept = 0;
  virtual Status Export_ToOptionsWriter(IOptionsWriter* writer) noexcept = 0;
  virtual Status GetOutputName(std::u16string& name) noexcept = 0;
  virtual Status GetGenerate(bool& generate) noexcept = 0;  // is it written at all
  virtual Status GetShow(bool& show) noexcept = 0;          // is it opened for the user afterwards
  // The path of the style sheet; empty: the report is written as it is, as XML.
  virtual Status GetXSLTFilename(std::u16string& file) noexcept = 0;
  virtual Status GetReportName(std::u16string& name) noexcept = 0;
  virtual Status SetOutputName(const std::u16string& name) noexcept = 0;
  virtual Status SetGenerate(bool generate) noexcept = 0;
  virtual Status SetShow(bool show) noexcept = 0;
  virtual Status SetXSLTFilename(const std::u16string& file) noexcept = 0;
};

// All forms of one report.
class IReportOutputOptions : public IAssociatedWithBitmap {
 public:
  using Base = IAssociatedWithBitmap;
  static constexpr InterfaceId Id{"IReportOutputOptions"};
  virtual Status Import_FromOptionsReader(IOptionsReader* reader) noexcept = 0;
  virtual Status Export_ToOptionsWriter(IOptionsWriter* writer) noexcept = 0;
  // Fails for an index that is not there.
  virtual Status GetAvailableTransformations(std::int32_t index,
                                             Ref<IReportOutputTransformation>& transformation) noexcept = 0;
  virtual Status GetAvailableTransformationCount(std::int32_t& count) noexcept = 0;
  virtual Status GetReportName(std::u16string& name) noexcept = 0;
  virtual Status SetReportName(const std::u16string& name) noexcept = 0;
  virtual Status RemoveOutputTransformations() noexcept = 0;
  virtual Status AddOutputTransformation(Ref<IReportOutputTransformation>& transformation) noexcept = 0;
};

// What the board information report tells.
enum TBoardReportOption : std::uint8_t {
  eBoardReportOption_AppendFile,
  eBoardReportOption_BoardSpecs,
  eBoardReportOption_LayerInfo,
  eBoardReportOption_LayerPair,
  eBoardReportOption_NonPlatedHoles,
  eBoardReportOption_PlatedHoles,
  eBoardReportOption_NonPlatedSlots,
  eBoardReportOption_PlatedSlots,
  eBoardReportOption_NonPlatedSquareHoles,
  eBoardReportOption_PlatedSquareHoles,
  eBoardReportOption_AnnularRingsTopLayer,
  eBoardReportOption_AnnularRingsMidLayer1,
  eBoardReportOption_AnnularRingsBottomLayer,
  eBoardReportOption_PadSolderMask,
  eBoardReportOption_PadPasteMask,
  eBoardReportOption_PadPwrGndExpansion,
  eBoardReportOption_PadReliefConductorWidth,
  eBoardReportOption_PadReliefAirGap,
  eBoardReportOption_PadReliefEntries,
  eBoardReportOption_ViaSolderMask,
  eBoardReportOption_ViaPwrGndExpansion,
  eBoardReportOption_TrackWidth,
  eBoardReportOption_ArcWidth,
  eBoardReportOption_ArcRadius,
  eBoardReportOption_ArcAngles,
  eBoardReportOption_TextHeight,
  eBoardReportOption_TextWidth,
  eBoardReportOption_PolygonClearance,
  eBoardReportOption_NetWidth,
  eBoardReportOption_NetViaSize,
  eBoardReportOption_RoutingInfo,
  eBoardReportOption_SelectedObjects,  // only what is selected counts
  eBoardReportOption_CopperArea,
};
constexpr int kBoardReportOptionCount = eBoardReportOption_CopperArea + 1;
static_assert(kBoardReportOptionCount == 33);

// A set of `TBoardReportOption`: bit n is the value n.
class TBoardReportOptionSet {
 public:
  constexpr TBoardReportOptionSet() = default;
  constexpr explicit TBoardReportOptionSet(std::uint64_t bits) : bits_(bits) {}
  static constexpr TBoardReportOptionSet All() {
    return TBoardReportOptionSet((std::uint64_t{1} << kBoardReportOptionCount) - 1);
  }
  constexpr bool Contains(TBoardReportOption option) const { return (bits_ >> option & 1) != 0; }
  constexpr void Set(TBoardReportOption option, bool on) {
    const std::uint64_t bit = std::uint64_t{1} << option;
    bits_ = on ? bits_ | bit : bits_ & ~bit;
  }
  constexpr std::uint64_t Bits() const { return bits_; }
  friend constexpr bool operator==(TBoardReportOptionSet, TBoardReportOptionSet) = default;

 private:
  std::uint64_t bits_ = 0;
};
static_assert(sizeof(TBoardReportOptionSet) == 8);

// The option's name among the parameters of the tool, "BoardSpecs", and its caption in the dialog and in the
// options file, "Board Specifications".
struct TBoardReportOptionText {
  const char16_t* Name;
  const char16_t* Caption;
};
inline constexpr TBoardReportOptionText kBoardReportOptionTexts[kBoardReportOptionCount] = {
    {u"AppendFile", u"Append File"},
    {u"BoardSpecs", u"Board Specifications"},
    {u"LayerInfo", u"Layer Information"},
    {u"LayerPair", u"Drill Pair"},
    {u"NonPlatedHoles", u"Non-Plated Hole Size"},
    {u"PlatedHoles", u"Plated Hole Size"},
    {u"NonPlatedSlots", u"Non-Plated Slot Size"},
    {u"PlatedSlots", u"Plated Slot Size"},
    {u"NonPlatedSquareHoles", u"Non-Plated Square Holes Size"},
    {u"PlatedSquareHoles", u"Plated Square Holes Size"},
    {u"AnnularRingsTopLayer", u"Top Layer Annular Ring Size"},
    {u"AnnularRingsMidLayer1", u"Mid Layer Annular Ring Size"},
    {u"AnnularRingsBottomLayer", u"Bottom Layer Annular Ring Size"},
    {u"PadSolderMask", u"Pad Solder Mask"},
    {u"PadPasteMask", u"Pad Paste Mask"},
    {u"PadPwrGndExpansion", u"Pad Pwr/Gnd Expansion"},
    {u"PadReliefConductorWidth", u"Pad Relief Conductor Width"},
    {u"PadReliefAirGap", u"Pad Relief Air Gap"},
    {u"PadReliefEntries", u"Pad Relief Entries"},
    {u"ViaSolderMask", u"Via Solder Mask"},
    {u"ViaPwrGndExpansion", u"Via Pwr/Gnd Expansion"},
    {u"TrackWidth", u"Track Width"},
    {u"ArcWidth", u"Arc Line Width"},
    {u"ArcRadius", u"Arc Radius"},
    {u"ArcAngles", u"Arc Degrees"},
    {u"TextHeight", u"Text Height"},
    {u"TextWidth", u"Text Width"},
    {u"PolygonClearance", u"Polygon Clearance"},
    {u"NetWidth", u"Net Track Width"},
    {u"NetViaSize", u"Net Via Size"},
    {u"RoutingInfo", u"Routing Information"},
    {u"SelectedObjects", u"SelectedObjects"},
    {u"CopperArea", u"CopperArea"},
};

// Offered by a board beside its own chain, for the reports on it.
class IPCB_BoardReports : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_BoardReports"};
  // The layers that objects of the board can stand on.
  KETRIL_READ(Ref<IPCB_LayerIterator>, LayerIterator);
  // The dialog changes the options in place; `accepted` is false when the user cancels it.
  virtual Status EditBoardReportOptions(TBoardReportOptionSet& options, bool& accepted) noexcept = 0;
};

}  // namespace Ketril
