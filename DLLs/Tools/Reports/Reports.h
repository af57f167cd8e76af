// The board information report: what is on a board, and how many of each size.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "DLLs/Tools/Frame/PrimitivesBoard.h"
#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/PrimitivesIterators.h"
#include "DLLs/Tools/Frame/PrimitivesLines.h"
#include "DLLs/Tools/Frame/PrimitivesStack.h"
#include "DLLs/Tools/Reports/PCBReport.h"
#include "Interfaces/ParameterList.h"

namespace Ketril::Tools {

// How many openings of a size the two sides have.
struct SizeCountRecord {
  std::int32_t TopCount = 0;
  std::int32_t BottomCount = 0;
};

// To the nearest whole number, a half to the even neighbour; what is beyond 32 bits becomes 2147483647 above
// and -2147483647 below, and so does what is no number.
std::int32_t ClampedRound(double value);

// Which parts it writes is told by the options, from the parameters by their names with the value True, or
// all of them by All; without any of these names from the options file and the board's dialog. Sizes come in
// ascending order. With `SelectedObjects` only selected objects count; a size that only others have keeps its
// row in the tables of holes, with a count of 0.
//
// A board with nothing to connect counts as routed to 100 %; of a board without an area every layer is 0 %.
// Polygons have no clearance of their own here, so that their list stays empty.
//
// It belongs to its maker and needs an open object scope. Everything raises EHostError when the host fails.
class TBoardReporter {
 public:
  // `parameters`, `options` and `filename` may be empty; `options` says in which forms the report is written.
  // Its name and folder follow from `filename`, else from the board's file.
  TBoardReporter(IParameterList* parameters, TBoard* board, std::u16string filename,
                 IReportOutputOptions* options);

  // Reads the options, and writes the report unless the user cancels.
  void Execute();

  void SetAllOptions(bool on);
  // False when none of the names is there.
  bool GetState_Parameter(IParameterList* parameters);
  void Import_FromIniFile();
  void Export_ToIniFile();
  bool Import_FromUser();

  // Writes the parts that the options ask for into a report, without its start and end.
  void WriteSections(TPCBReport& report);

  TBoardReportOptionSet Options;

 private:
  void Report();
  bool Has(TBoardReportOption option) const { return Options.Contains(option); }
  // Does the object count.
  bool Counts(const TPrimitive& primitive) const {
    return !Has(eBoardReportOption_SelectedObjects) || primitive.Selected();
  }
  // Calls `visit` with each object of the class, counted or not; the wrapper is freed afterwards.
  template <class T, class Visit>
  void ForEach(TObjectId kind, Visit visit) {
    TBoardIterator iterator(Board);
    iterator.SetState_FilterAll();
    iterator.SetState_FilterObject({kind});
    for (TPrimitive* P = iterator.First(); P; P = iterator.Next()) {
      const TTemporary<TPrimitive> owned(P);
      if (T* object = dynamic_cast<T*>(P)) visit(*object);
    }
  }
  std::int32_t CountPrimitives(TObjectSet objects, const Ref<IPCB_LayerSet>& layers);
  std::u16string NameOf(TV7_Layer layer) const;  // the user's, else the fixed one
  // Calls `visit` with each layer of the board.
  void ForEachBoardLayer(FunctionRef<void(TV7_Layer)> visit);

  void ReportBoardSpecs();
  void ReportRoutingInfo();
  void ReportLayerInfo();
  void ReportLayerPair();
  void ReportCopperArea();

  void ReportHoles(bool plated);
  void ReportSlots(bool plated);
  void ReportSquareHoles(bool plated);
  template <class TakesPart>
  void ReportRoundOrSquare(const std::u16string& title, bool with_vias, TakesPart takes_part);

  void ReportSizeList(const std::u16string& header, bool use_units);
  void ReportSolderSizeList(const std::u16string& header);
  template <class T, class Value>
  void ReportSizeListFrom(TObjectId kind, const char16_t* header, bool use_units, Value value);
  template <class T>
  void ReportSolderSizesFrom(TObjectId kind, const std::u16string& header);
  void ReportSizeListFromAnnularRings(TV7_Layer layer);
  void ReportSizeListFromPadSolderMask();
  void ReportSizeListFromPadPasteMask();
  void ReportSizeListFromPadPwrGndExpansion();
  void ReportSizeListFromPadReliefConductorWidth();
  void ReportSizeListFromPadReliefAirGap();
  void ReportSizeListFromPadReliefEntries();
  void ReportSizeListFromViaSolderMask();
  void ReportSizeListFromViaPwrGndExpansion();
  void ReportSizeListFromTrackWidth();
  void ReportSizeListFromArcWidth();
  void ReportSizeListFromArcRadius();
  void ReportSizeListFromArcAngles();
  void ReportSizeListFromTextHeight();
  void ReportSizeListFromTextWidth();
  void ReportSizeListFromPolygonClearance();
  void ReportSizeListFromNetWidth();
  void ReportSizeListFromNetViaSize();

  TPCBReport* FPCBReport = nullptr;  // the report being written
  std::u16string FFilename;
  Ref<IReportOutputOptions> FBoardInfoReportOptions;
  TBoard* Board;
  Ref<IParameterList> Parameters;
  std::map<std::int32_t, std::int32_t> FSizes;  // size and count
  std::map<std::int32_t, SizeCountRecord> FSolderSizes;
};

// The options of the tables.
inline constexpr TTableOptions kCountTable = ctSuppressTitle | ctWriteNumericTotals;

}  // namespace Ketril::Tools
