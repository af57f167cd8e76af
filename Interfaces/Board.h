// The board: its objects and how they are walked, its setup, its views and its progress.
#pragma once

#include "Interfaces/Groups.h"
#include "Interfaces/Placement.h"
#include "Interfaces/Rules.h"
#include "Interfaces/Vias.h"

namespace Ketril {

// Walks objects. Filters are set first; `First` starts and gives the first object, `Next` each further one,
// empty at the end. The order is stable during a run. A walk sees what was there at its `First`: it skips
// what has since left and does not see what has since come, so objects may be added and removed meanwhile.
class IPCB_AbstractIterator : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_AbstractIterator"};
  virtual Status FilterAll() noexcept = 0;  // all objects, all layers
  virtual Status FilterAllLayers() noexcept = 0;
  virtual Status FilterObjects(TObjectSet objects) noexcept = 0;
  // An empty reference and an empty set both pass all layers.
  virtual Status FilterLayers(IPCB_LayerSet* layers) noexcept = 0;
  virtual Status FilterArea(TCoord x1, TCoord y1, TCoord x2, TCoord y2) noexcept = 0;
  virtual Status First(Ref<IPCB_Primitive>& primitive) noexcept = 0;
  virtual Status Next(Ref<IPCB_Primitive>& primitive) noexcept = 0;
};

class IPCB_BoardIterator : public IPCB_AbstractIterator {
 public:
  using Base = IPCB_AbstractIterator;
  static constexpr InterfaceId Id{"IPCB_BoardIterator"};
  virtual Status FilterMethod(TIterationMethod method) noexcept = 0;
};

// Gives the objects whose bounding rectangle touches the area.
class IPCB_SpatialIterator : public IPCB_AbstractIterator {
 public:
  using Base = IPCB_AbstractIterator;
  static constexpr InterfaceId Id{"IPCB_SpatialIterator"};
};

class IPCB_GroupIterator : public IPCB_AbstractIterator {
 public:
  using Base = IPCB_AbstractIterator;
  static constexpr InterfaceId Id{"IPCB_GroupIterator"};
};

// The visible progress of a long run. `maximum` 0 means that the length is not known.
class IPCB_Progress : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_Progress"};
  virtual Status Start(const std::u16string& caption, bool can_cancel) noexcept = 0;
  virtual Status SetMaximum(std::int32_t maximum) noexcept = 0;
  virtual Status Step() noexcept = 0;
  virtual Status End() noexcept = 0;
};

class IPCB_AdvancedPlacerOptions : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_AdvancedPlacerOptions"};
  KETRIL_PROPERTY(TCoord, PlaceLargeClear);
  KETRIL_PROPERTY(TCoord, PlaceSmallClear);
};

// Says of an object at a place whether a hit test may give it.
class IPCB_HitFilter : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_HitFilter"};
  virtual Status Accepts(IPCB_Primitive* primitive, bool& accepted) noexcept = 0;
};

class IServerDocument;

// A window on a document, and on a board in particular.
class IServerDocumentView : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IServerDocumentView"};
  KETRIL_READ(std::u16string, ViewName);
  KETRIL_READ(Ref<IServerDocument>, OwnerDocument);  // empty for a board that has no file
};
class IPCBGraphicalViewInterface : public IServerDocumentView {
 public:
  using Base = IServerDocumentView;
  static constexpr InterfaceId Id{"IPCBGraphicalViewInterface"};
  virtual Status UpdateWindows() noexcept = 0;
  virtual Status SetCurrentMode(TDisplay mode) noexcept = 0;
  // The object at a place; empty when there is none. `layers` may be empty: all. `eProcessFree` passes over
  // members of components; with `eProcessComponent` a component stands for its members, but for one that is
  // selected while its component is not. Of several objects the one with the smallest box is given. With
  // `only_selected` others are passed over, and so is what `filter`, which may be empty, does not accept.
  virtual Status HitTest(TCoordPoint point, TObjectSet objects, IPCB_LayerSet* layers,
                         TIterationMethod method, IPCB_HitFilter* filter, bool only_selected,
                         Ref<IPCB_Primitive>& primitive) noexcept = 0;
};
class IPCBGraphicalViewStateInterface : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCBGraphicalViewStateInterface"};
  KETRIL_PROPERTY(TV7_Layer, CurrentLayer);
};

class IPCB_Board;

// The editor's dialogs of one board's commands.
class IUIManager : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IUIManager"};
  // Which arranging along each axis, and whether to the grid afterwards; nothing of all that when the user
  // cancels: eArrangeNoChangeX, eArrangeNoChangeY and false.
  virtual Status AlignmentDialog(TArrangerMethod& horizontal, TArrangerMethod& vertical,
                                 bool& move_to_grid) noexcept = 0;
  // The dialog changes the options.
  virtual Status RoomArrangeDialog(IPCB_Board* board, IPCB_RoomArrangeOptions* options,
                                   bool& confirmed) noexcept = 0;
  // These change the options of the object, which is not on its board yet.
  virtual Status ViaStitchingDialog(IPCB_SmartUnionObject* stitching, IServerDocumentView* view,
                                    bool& confirmed) noexcept = 0;
  virtual Status ViaShieldingDialog(IPCB_ViaShieldingSU* shielding, IServerDocumentView* view,
                                    bool& confirmed) noexcept = 0;
  virtual Status UnusedPadsDialog(TUnusedPadsOptions& options, bool& confirmed) noexcept = 0;
};

class IPCB_Board : public IPCB_Primitive3 {
 public:
  using Base = IPCB_Primitive3;
  static constexpr InterfaceId Id{"IPCB_Board"};

  // Every iterator made is handed back.
  virtual Status BoardIterator_Create(Ref<IPCB_BoardIterator>& iterator) noexcept = 0;
  virtual Status BoardIterator_Destroy(IPCB_BoardIterator* iterator) noexcept = 0;
  virtual Status SpatialIterator_Create(Ref<IPCB_SpatialIterator>& iterator) noexcept = 0;
  virtual Status SpatialIterator_Destroy(IPCB_SpatialIterator* iterator) noexcept = 0;

  // The object is on or off the board from then on. Adding twice, or removing what is not there, does
  // nothing.
  virtual Status RegisterWithPrimaryWarehouse(IPCB_Primitive* primitive) noexcept = 0;
  virtual Status CancelPrimaryWarehouseRegistration(IPCB_Primitive* primitive) noexcept = 0;

  virtual Status GetPrimitiveCount(TObjectSet objects, IPCB_LayerSet* layers, TIterationMethod method,
                                   std::int32_t& count) noexcept = 0;
  // The box of the matching objects; `found` is false, and the box untouched, when there is none.
  virtual Status GetState_BoundingRectangleBoard(TObjectSet objects, IPCB_LayerSet* layers,
                                                 bool only_selected, TCoordRect& rectangle,
                                                 bool& found) noexcept = 0;
  KETRIL_READ(std::int32_t, SelectedObjectsCount);
  // In the order in which the objects came onto the board; empty beyond the end.
  virtual Status GetState_SelectedObject(std::int32_t index, Ref<IPCB_Primitive>& primitive) noexcept = 0;
  virtual Status DeselectAll() noexcept = 0;

  virtual Status GraphicallyInvalidatePrimitive(IPCB_Primitive* primitive) noexcept = 0;
  virtual Status UpdateWindows() noexcept = 0;
  virtual Status SetCurrentMode(TDisplay mode) noexcept = 0;
  KETRIL_READ(Ref<IServerDocumentView>, View);
  KETRIL_PROPERTY(Ref<IPCBGraphicalViewStateInterface>, GraphicalViewState);
  KETRIL_READ(Ref<IPCB_Progress>, Progress);

  KETRIL_READ(std::u16string, FileName);
  KETRIL_READ(std::int32_t, BoardID);
  KETRIL_READ(bool, IsLibrary);
  virtual Status SetState_DocumentHasChanged() noexcept = 0;

  KETRIL_READ(Ref<IPCB_BoardOutline>, BoardOutline);  // empty when the board has none
  KETRIL_READ(TCoord, BoardMinimumX);
  KETRIL_READ(TCoord, BoardMaximumX);
  KETRIL_READ(TCoord, BoardMinimumY);
  KETRIL_READ(TCoord, BoardMaximumY);
};

class IPCB_Board2 : public IPCB_Board {
 public:
  using Base = IPCB_Board;
  static constexpr InterfaceId Id{"IPCB_Board2"};
  KETRIL_PROPERTY(TUnit, DisplayUnit);
  KETRIL_PROPERTY(TCoord, OriginX);
  KETRIL_PROPERTY(TCoord, OriginY);
  KETRIL_PROPERTY(bool, ElectricalGridEnabled);
  KETRIL_PROPERTY(double, ComponentGridSize);
  KETRIL_PROPERTY(double, ComponentGridSizeX);
  KETRIL_PROPERTY(double, ComponentGridSizeY);
  KETRIL_READ(Ref<IPCB_LayerStack>, LayerStack);
  // Calls back once for each layer of the stack, from top to bottom.
  virtual Status ProcessLayers(IPCB_LayerProcessInterface* callback) = 0;
  KETRIL_READ(Ref<IUIManager>, UIManager);

  // Via stitching and via shielding. The options are those that the next one starts with. A new object copies
  // the options; it is on no board, and nothing is built.
  virtual Status GetViaStitchOptions(Ref<IPCB_ViaStitchFloodOptions>& options) noexcept = 0;
  virtual Status CreateViaStitching(IPCB_ViaStitchFloodOptions* options,
                                    Ref<IPCB_SmartUnionObject>& stitching) noexcept = 0;
  virtual Status GetViaShieldingOptions(Ref<IPCB_ViaShieldingOptions>& options) noexcept = 0;
  virtual Status CreateViaShielding(IPCB_ViaShieldingOptions* options,
                                    Ref<IPCB_ViaShieldingSU>& shielding) noexcept = 0;
  // Places the vias; `built` is false when none fits.
  virtual Status BuildViaStitching(IPCB_SmartUnionObject* stitching, bool& built) noexcept = 0;
  virtual Status BuildViaShielding(IPCB_ViaShieldingSU* shielding, bool& built) noexcept = 0;
  // A new index, which the vias that were built carry from then on, and the reference via with them.
  virtual Status AssignUnionIndex(IPCB_SmartUnionObject* object, std::int32_t& index) noexcept = 0;
  virtual Status RegisterPrimitive(IPCB_SmartUnionObject* object) noexcept = 0;
  virtual Status RegisterShielding(IPCB_ViaShieldingSU* shielding) noexcept = 0;
  // Take stitchings or shieldings off with their vias: where any of them, or of their vias, is selected
  // these, otherwise all; or those of the index.
  virtual Status RemoveViaStitching() noexcept = 0;
  virtual Status RemoveViaShielding() noexcept = 0;
  virtual Status RemoveViaShieldingByIndex(std::int32_t index) noexcept = 0;
  virtual Status GetSmartUnionCount(std::int32_t& count) noexcept = 0;
  // Empty beyond the end.
  virtual Status GetSmartUnion(std::int32_t index, Ref<IPCB_SmartUnionObject>& object) noexcept = 0;
  // Redraws.
  virtual Status RefreshBoard() noexcept = 0;
  virtual Status RefreshBoardFor(IPCB_SmartUnionObject* object) noexcept = 0;
  virtual Status InvalidatePrimitive(IPCB_SmartUnionObject* object) noexcept = 0;
};

class IPCB_Board3 : public IPCB_Board2 {
 public:
  using Base = IPCB_Board2;
  static constexpr InterfaceId Id{"IPCB_Board3"};
  // Empty when no rule has that name.
  virtual Status GetState_RuleByName(const std::u16string& name, Ref<IPCB_Primitive>& rule) noexcept = 0;
  virtual Status GetState_RulesOfKind(TRuleKind kind, Ref<IPCB_RuleList>& rules) noexcept = 0;
  // An empty report of violations of these kinds of rules, for `CheckPrimitive` to fill.
  virtual Status CreateViolationReport(TRuleKindSet kinds, Ref<IPCB_ViolationReport>& report) noexcept = 0;
  // Checks an object, which need not be on the board, against the board; what is found joins the report.
  virtual Status CheckPrimitive(IPCB_Primitive* primitive, IPCB_ViolationReport* report) noexcept = 0;
  KETRIL_READ(Ref<IPCB_AdvancedPlacerOptions>, AdvancedPlacerOptions);
};

// Offered by a board that takes messages. Code 10 asks it to bring the violations of its objects up to date.
class IPCB_BoardMessages : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_BoardMessages"};
  virtual Status SendMessage(std::int32_t source, std::int32_t destination, std::int32_t code,
                             void* data) noexcept = 0;
};

// Offered by a board that keeps unions. Editors know it by this number.
class IPCB_BoardUnions : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{0x8FFBBF46B3BE49D1, 0x9FB8F05FAA33D0CE};
  // Makes the object, which is on the board, a part of the union of that index; 0 takes it out of its union.
  // Parts of the object are not touched.
  virtual Status AddToUnion(std::int32_t index, IPCB_Primitive* object) noexcept = 0;
};

// The copper of a board as bodies, measured once for several questions.
class IPCB_CopperBodyList : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_CopperBodyList"};
};

// Offered by a board that can measure its areas. Areas are in square units.
class IPCB_BoardMeasure : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IPCB_BoardMeasure"};
  KETRIL_READ(double, Area);
  KETRIL_READ(Ref<IPCB_CopperBodyList>, CopperBodyList);
  virtual Status GetState_LayerArea(IPCB_CopperBodyList* bodies, TV7_Layer layer, double& area) noexcept = 0;
};

}  // namespace Ketril
