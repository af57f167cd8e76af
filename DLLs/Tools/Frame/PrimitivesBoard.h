// The wrapper of the board: what is set up on it, how it is walked, and its views.
#pragma once

#include <map>
#include <vector>

#include "DLLs/Tools/Frame/FunctionRef.h"
#include "DLLs/Tools/Frame/PrimitivesBase.h"
#include "Interfaces/Rules.h"

namespace Ketril::Tools {

class TBoardOutline;

// Called with the wrapper of each object of a walk; a plain procedure, a lambda or a function object.
using TPrimMethod = FunctionRef<void(TPrimitive*)>;

// What the editor shows of a board.
class TViewManager {
 public:
  explicit TViewManager(TBoard* owner) : FOwnerBoard(owner) {}
  // Redraws the place of one object.
  void GraphicallyInvalidatePrimitive(TPrimitive* primitive);
  void UpdateWindows();
  void SetCurrentMode(TDisplay mode);

 private:
  TBoard* FOwnerBoard;
};

// There may be many wrappers of one board in a scope. Coordinates and grids are in units, areas in square
// units. The wrappers that operations hand out belong to the object scope, the lists to the caller.
class TBoard : public TWrapper<TBoard, TPrimitive> {
 public:
  using TWrapper::TWrapper;

  Ref<IPCB_Board3> IBoard() const { return CheckedCast<IPCB_Board3>(FPrimitive); }
  TViewManager* ViewManager() { return &FViewManager; }

  KETRIL_FORWARD(bool, ElectricalGridEnabled, IBoard, ElectricalGridEnabled)
  bool ElectricalGridEnabled_FlagValue() const { return ElectricalGridEnabled(); }
  KETRIL_FORWARD(TUnit, DisplayUnit, IBoard, DisplayUnit)
  TUnit GetState_DisplayUnit() const { return DisplayUnit(); }
  void SetState_DisplayUnit(TUnit unit) { SetDisplayUnit(unit); }
  KETRIL_FORWARD(TCoord, OriginX, IBoard, OriginX)
  KETRIL_FORWARD(TCoord, OriginY, IBoard, OriginY)
  KETRIL_FORWARD_READ(std::int32_t, BoardID, IBoard, BoardID)
  KETRIL_FORWARD(double, ComponentGridSize, IBoard, ComponentGridSize)
  KETRIL_FORWARD(double, ComponentGridSizeX, IBoard, ComponentGridSizeX)
  KETRIL_FORWARD(double, ComponentGridSizeY, IBoard, ComponentGridSizeY)
  KETRIL_FORWARD_READ(bool, IsLibrary, IBoard, IsLibrary)
  KETRIL_FORWARD_READ(std::u16string, FileName, IBoard, FileName)  // the path of the document
  KETRIL_FORWARD_READ(TCoord, BoardMinimumX, IBoard, BoardMinimumX)
  KETRIL_FORWARD_READ(TCoord, BoardMaximumX, IBoard, BoardMaximumX)
  KETRIL_FORWARD_READ(TCoord, BoardMinimumY, IBoard, BoardMinimumY)
  KETRIL_FORWARD_READ(TCoord, BoardMaximumY, IBoard, BoardMaximumY)
  Ref<IPCBGraphicalViewInterface> GraphicalView() const;
  KETRIL_FORWARD(Ref<IPCBGraphicalViewStateInterface>, GraphicalViewState, IBoard, GraphicalViewState)
  KETRIL_FORWARD_READ(Ref<IPCB_AdvancedPlacerOptions>, GetState_AdvancedPlacerOptions, IBoard,
                      AdvancedPlacerOptions)
  KETRIL_FORWARD_READ(Ref<IUIManager>, GetUIManager, IBoard, UIManager)

  KETRIL_FORWARD_READ(Ref<IPCB_LayerStack>, LayerStack, IBoard, LayerStack)
  // Empty for a layer that the stack does not know.
  Ref<IPCB_LayerObject> GetLayerObject(TV7_Layer layer) const;
  Ref<IPCB_LayerObject> LayerObjects(TV7_Layer layer) const { return GetLayerObject(layer); }

  // The outline in a new wrapper; null when the board has none.
  TBoardOutline* BoardOutline() const;
  // The bounding rectangle of the outline. False without one, and the arguments stay as they are.
  virtual bool GetBoardOutlineRectangle(TCoord& x1, TCoord& y1, TCoord& x2, TCoord& y2) const;
  // The box of the matching objects, measured by the host. False when there is none, and the arguments stay
  // as they are. An empty layer set means all layers.
  bool GetState_BoundingRectangleBoard(TCoord& low_x, TCoord& low_y, TCoord& high_x, TCoord& high_y,
                                       TObjectSet objects, TLayerPartitionSet layers,
                                       bool only_selected) const;
  bool GetState_BoundingRectangleBoard(TCoord& low_x, TCoord& low_y, TCoord& high_x, TCoord& high_y,
                                       TObjectSet objects, const Ref<IPCB_LayerSet>& layers,
                                       bool only_selected) const;

  // An object is on the board, or off it, from then on.
  void RegisterWithPrimaryWarehouse(TPrimitive* primitive);
  void CancelPrimaryWarehouseRegistration(TPrimitive* primitive);
  void SetState_DocumentHasChanged();

  std::int32_t GetPrimitiveCount(TObjectSet objects, TLayerPartitionSet layers,
                                 TIterationMethod method) const;
  std::int32_t GetPrimitiveCount(TObjectSet objects, const Ref<IPCB_LayerSet>& layers,
                                 TIterationMethod method) const;

  // Calls `proc` with each matching object in host order; nothing when `proc` is empty. An empty layer set
  // means all layers. Objects may be added and removed meanwhile: the walk sees those of its start that are
  // still there.
  void xProcessItems(TPrimMethod proc, TObjectSet objects, TLayerPartitionSet layers,
                     TIterationMethod method);
  void xProcessItems(TPrimMethod proc, TObjectSet objects, const Ref<IPCB_LayerSet>& layers,
                     TIterationMethod method);
  void ProcessAllArcs(TPrimMethod proc) { ProcessAll(proc, eArcObject); }
  void ProcessAllComponents(TPrimMethod proc) { ProcessAll(proc, eComponentObject); }
  void ProcessAllConnections(TPrimMethod proc) { ProcessAll(proc, eConnectionObject); }
  void ProcessAllCoordinates(TPrimMethod proc) { ProcessAll(proc, eCoordinateObject); }
  void ProcessAllEmbeddedBoards(TPrimMethod proc) { ProcessAll(proc, eEmbeddedBoardObject); }
  void ProcessAllFills(TPrimMethod proc) { ProcessAll(proc, eFillObject); }
  void ProcessAllNets(TPrimMethod proc) { ProcessAll(proc, eNetObject); }
  void ProcessAllPads(TPrimMethod proc) { ProcessAll(proc, ePadObject); }
  void ProcessFreePads(TPrimMethod proc) { ProcessAll(proc, ePadObject, eProcessFree); }
  void ProcessAllPolygons(TPrimMethod proc) { ProcessAll(proc, ePolyObject); }
  void ProcessAllRegions(TPrimMethod proc) { ProcessAll(proc, eRegionObject); }
  // Rules stand on the multi-layer.
  void ProcessAllRules(TPrimMethod proc) {
    xProcessItems(proc, {eRuleObject}, TLayerPartitionSet{eV7_MultiLayer}, eProcessAll);
  }
  void ProcessAllSplitPlanes(TPrimMethod proc) { ProcessAll(proc, eSplitPlaneObject); }
  void ProcessAllTexts(TPrimMethod proc) { ProcessAll(proc, eTextObject); }
  void ProcessAllTracks(TPrimMethod proc) { ProcessAll(proc, eTrackObject); }
  void ProcessAllVias(TPrimMethod proc) { ProcessAll(proc, eViaObject); }

  // New wrappers of all nets, not those that `Net` hands out, ascending by name, compared by code unit.
  std::vector<TNet*> GetSortedNetList() const;
  // New wrappers of all components in a greedy walk from (0, 0): each one is the nearest to the one before
  // by |dx| + |dy| in 32 bits, the earliest of equally near ones. Costs the square of the count in host
  // calls.
  std::vector<TComp*> GetSpatialSortedComponents() const;
  // The component whose designator is `name`, without regard to the case of ASCII letters; null when there is
  // none.
  TComp* Getstate_ComponentByName(const std::u16string& name);

  // The rule of that name; null when there is none.
  TPrimitive* GetState_RuleByRuleName(const std::u16string& name) const;
  // The rules of a kind in the host's order. The list is this wrapper's own, the same at each call for a
  // kind, and filled anew at each call with new wrappers: read it once for a run.
  std::vector<TRule*>& GetState_SortedRules(TRuleKind kind);
  std::vector<TRule*>& SortedRules(TRuleKind kind) { return GetState_SortedRules(kind); }

  // 0, and an empty list, when the host does not measure.
  double GetState_Area() const;
  Ref<IPCB_CopperBodyList> GetState_CopperBodyList() const;
  double GetState_LayerArea(const Ref<IPCB_CopperBodyList>& bodies, TV7_Layer layer) const;

 private:
  void ProcessAll(TPrimMethod proc, TObjectId kind, TIterationMethod method = eProcessAll) {
    xProcessItems(proc, {kind}, Ref<IPCB_LayerSet>(), method);
  }

  std::map<TRuleKind, std::vector<TRule*>> FSortedRules;
  TViewManager FViewManager{this};
};

}  // namespace Ketril::Tools
