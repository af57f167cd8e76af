// Adds teardrops to a board and takes them off again.
//
// A teardrop is copper that widens a track or an arc where it meets a pad, a via, a wider track or a junction
// of tracks. Each is one copper region with the outline of TTeardropContourMaker, marked by its `TearDrop`
// flag; one that belongs to a pad has `MiscFlag1` too, to a via `MiscFlag2`. Removing takes whatever has the
// flag: regions, and the tracks and arcs of the older builder.
//
// A pass walks the board as it is at its start and only queues what is to go and what is to come; the flush
// takes away first, then puts on.
#pragma once

#include <array>
#include <vector>

#include "DLLs/Tools/Frame/Primitives.h"
#include "DLLs/Tools/Frame/Progress.h"
#include "DLLs/Tools/Teardrops/PCBTeardropOptionsModel.h"
#include "DLLs/Tools/Teardrops/TeardropTJunctionNodeList.h"
#include "DLLs/Tools/Teardrops/TeardropTouch.h"

namespace Ketril::Tools {

// Serves one command. Every operation raises EHostError when the host fails.
class TTeardropBuilder {
 public:
  // The board's wrapper outlives the builder; the parameters may be null. Asks the board for a report of
  // clearance violations.
  TTeardropBuilder(TBoard* ABoard, IParameterList* Parameters);
  TTeardropBuilder(const TTeardropBuilder&) = delete;
  TTeardropBuilder& operator=(const TTeardropBuilder&) = delete;

  // The whole command: options from the parameters, or from the store and the dialog, which can be cancelled;
  // then the pass, with progress and ESC; what breaks a rule comes off again unless that is forced; a report.
  void Execute();
  // The options of the store.
  TTeardropOptionsEx GetTeardropOptions();

  // These queue what is to go; FlushFilletList brings it about.
  //
  // Every teardrop that touches an object of the kinds: with TeardropFlag_Selected only selected ones.
  void RemoveDropsOnSelected(TObjectSet Filter);
  void RemoveDropsFromTouchingObjects(TPrimitive* APrimitive);
  void RemoveDropsFromComponent(TPrimitive* APrimitive);        // those on its pads
  void RemoveDropsFromConnectedTracks(TPrimitive* APrimitive);  // those on the tracks that touch it

  // Takes off every teardrop region that has a violation, and flushes.
  void RemoveDropsViolation();
  // Shows or hides the teardrops of a net; null: nothing.
  void ShowDropsForNet(TGroup* ANet, bool AShow);
  // Marks the document as changed, also when nothing was queued.
  void FlushFilletList();

  bool SilentMode = false;  // RemoveDropsOnSelected shows no progress and cannot be cancelled
  TTeardropOptionsEx FOptions = DefaultTeardropOptions();

 private:
  bool EditOptions();
  TObjectSet ObjectsFilter() const;
  bool Has(std::int32_t flag) const { return (FOptions.Flags & flag) != 0; }
  bool IsServed(const TPrimitive* P) const;
  bool IsPadServed(const TPrimitive* P) const;
  template <class Visit>
  void ForEachObject(TObjectSet filter, Visit visit);
  std::int32_t CountObjects();

  void AddPass(TProgress& progress);
  void RemovePass(TObjectSet filter, TProgress* progress);
  void NotifyRuleCheck();

  void AddDropsForObject(TPrimitive* P);
  bool IsPartner(TPrimitive* P, TPrimitive* T, bool& is_filed);
  void AddDropsAtTrack(TPrimitive* P, TPrimitive* T, bool may_hold_drops);
  void AddDropForPair(TPad* P, TPrimitive* T, TTeardropObject kind, TPrimitive* owner);
  void MakeTeardropRegion(const Ref<IPCB_Contour>& contour, TPrimitive* T, TPrimitive* owner);

  void RemoveDropsBetweenObjects(TPrimitive* P, TPrimitive* T);
  void QueueDropRemoval(TPrimitive* D);

  void AddJunctionDrops();
  void RemoveJunctionDrops(const TTeardropTJunctionNode& node);

  void ReportFile();

  TBoard* FBoard;
  Ref<IParameterList> FParameters;
  std::array<std::vector<TPrimitive*>, 2> FilletList;  // to take off the board, and to put on it
  TTeardropTJunctionNodeList FTJunctionNodes;
  Ref<IPCB_ViolationReport> FViolationReport;
  std::int32_t ReportPadVisited = 0;
  std::int32_t ReportViaVisited = 0;
  std::int32_t ReportPadFailed = 0;
  std::int32_t ReportViaFailed = 0;
  bool FTearDropAborted = false;
};

}  // namespace Ketril::Tools
