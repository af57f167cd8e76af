// The board: what is on it, its stack of layers, its setup, and what keeps these findable and undoable.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "Editor/Client/Progress.h"
#include "Editor/Client/UIManager.h"
#include "Editor/Client/Views.h"
#include "Editor/Model/Copper.h"
#include "Editor/Model/Groups.h"
#include "Editor/Model/Iterators.h"
#include "Editor/Model/Journal.h"
#include "Editor/Model/Records.h"
#include "Editor/Model/Rooms.h"
#include "Editor/Model/SpatialIndex.h"
#include "Editor/Model/Warehouse.h"
#include "Interfaces/Picks.h"

namespace Ketril::Editor {

class ClearanceChecker;
class ViaUnions;

// A layer of the board file: its number there, its name in the items, the name that the user gave it.
struct BoardLayer {
  TV7_Layer id;
  std::int32_t file_number = 0;
  std::string file_name;     // "F.Cu"; in the oldest version copper may have a name of the user's
  std::u16string user_name;  // shown to people
  std::string kind;          // "signal", "power", "mixed", "jumper", "user"
};

// The board's values that the tools and the objects read; lengths in units.
struct BoardSetup {
  TCoordPoint origin;      // of the user's coordinates
  double grid_x = 250000;  // of components: 25 mil
  double grid_y = 250000;
  bool electrical_grid = true;
  TUnit display_unit = eMetric;
  TCoord thickness = 0;
  TCoord solder_mask_margin = 0;
  TCoord paste_margin = 0;
  double paste_ratio = 0;
  TCoord clearance = 78740;       // 0.2 mm, where no net class says otherwise
  TCoord hole_clearance = 98425;  // 0.25 mm, of copper from holes, where no project says otherwise
  TCoord track_width = 98425;
};

// The text that the board was read from, kept whole: a save copies from it what nobody changed.
struct BoardText {
  std::string text;
  std::string path;    // UTF-8, empty for a board that was never saved
  std::string extras;  // the text of the file beside it (Editor/Files/CompanionFiles.h)
  std::int32_t version = 20221018;
  std::u16string title;
};

// Lives as long as somebody holds it. When it dies, objects that are still held stay as they are, on no
// board.
class Board final
    : public PrimitiveObject<Board, Primitive, IPCB_Board3, IPCB_BoardMeasure, IPCB_BoardMessages,
                             IPCB_BoardRooms, IPCB_BoardUnions, IPCB_BoardReports, IPCB_BoardPicks> {
 public:
  static constexpr TObjectId kKind = eBoardObject;
  struct Data {};
  Data data;  // a board is not copied

  BoardText file;
  BoardSetup setup;
  std::vector<BoardLayer> layers;  // of the file: copper from top to bottom, then the others
  bool is_library = false;
  bool document_changed = false;

  Warehouse objects;
  SpatialIndex index{objects};
  Journal journal{*this};
  const Ref<View> view{MakeHost<View>(this)};
  const Ref<Progress> progress{MakeHost<Progress>()};

  Board();

  // Puts an object, with its members, onto the board or takes it off, as the interface does, through the
  // journal. An object that is taken off leaves its group; the members that go with a group stay members.
  // `Load` is for readers: no journal, no document mark.
  void Add(Primitive* primitive);
  void Remove(Primitive* primitive);
  void Load(Primitive* primitive);
  // Takes the members of a group off the board; they stay members.
  void RemoveMembers(Primitive& group);

  // An object may be tried on a board without being on it: it knows the board, but the board does not have
  // it. An object that dies meanwhile, or is tried elsewhere, says so.
  void TryOn(Primitive& primitive);
  void StopTrying(Primitive& primitive);

  Net* FindNet(const std::u16string& name) const;  // null when there is none
  const BoardLayer* FindLayer(TV7_Layer id) const;
  const BoardLayer* FindLayer(std::string_view file_name) const;
  // Copper layers from top to bottom.
  std::vector<TV7_Layer> CopperLayers() const;
  // The net class of a net: the first that names it, else "Default"; null when there is no class.
  const ObjectClass* ClassOf(const Net* net) const;
  // Rings chained from the lines on the layer of the board's edge; empty when there are none.
  Ref<BoardOutline> Outline() const;
  // The box around the outline, or, without one, around all objects; a point at 0, 0 on an empty board.
  TCoordRect Extents() const;

  // The selected objects, oldest first. Whoever sets or clears the selection of objects on the board says so.
  const std::vector<Primitive*>& Selected() const;
  void SelectionChanged() { selection_known_ = false; }

  std::int64_t LiveIterators() const { return iterators_->live; }
  const std::shared_ptr<IteratorLedger>& Iterators() const { return iterators_; }

  TCoordRect Bounds() const override { return Extents(); }
  TCoordPoint Reference() const override { return setup.origin; }
  std::unique_ptr<Snapshot> Save() const override;
  void Restore(const Snapshot& snapshot) override;
  Ref<Primitive> Copy() const override { return {}; }
  std::u16string Identifier() const override { return file.title; }

  KETRIL_HOST_METHOD(IPCB_Primitive, Replicate, (Ref<IPCB_Primitive>&), Status::Failure)

  KETRIL_HOST_METHOD(IPCB_Board, BoardIterator_Create, (Ref<IPCB_BoardIterator> & iterator),
                     (void)(iterator = MakeBoardIterator(*this)))
  KETRIL_HOST_METHOD(IPCB_Board, BoardIterator_Destroy, (IPCB_BoardIterator * iterator),
                     HandBackIterator(iterator, *this))
  KETRIL_HOST_METHOD(IPCB_Board, SpatialIterator_Create, (Ref<IPCB_SpatialIterator> & iterator),
                     (void)(iterator = MakeSpatialIterator(*this)))
  KETRIL_HOST_METHOD(IPCB_Board, SpatialIterator_Destroy, (IPCB_SpatialIterator * iterator),
                     HandBackIterator(iterator, *this))
  Status RegisterWithPrimaryWarehouse(IPCB_Primitive* primitive) noexcept override;
  Status CancelPrimaryWarehouseRegistration(IPCB_Primitive* primitive) noexcept override;
  Status GetPrimitiveCount(TObjectSet kinds, IPCB_LayerSet* layer_set, TIterationMethod method,
                           std::int32_t& count) noexcept override;
  Status GetState_BoundingRectangleBoard(TObjectSet kinds, IPCB_LayerSet* layer_set, bool only_selected,
                                         TCoordRect& rectangle, bool& found) noexcept override;
  KETRIL_HOST_READ(IPCB_Board, std::int32_t, SelectedObjectsCount,
                   static_cast<std::int32_t>(Selected().size()))
  Status GetState_SelectedObject(std::int32_t index, Ref<IPCB_Primitive>& primitive) noexcept override;
  Status DeselectAll() noexcept override;

  Status GraphicallyInvalidatePrimitive(IPCB_Primitive* primitive) noexcept override;
  KETRIL_HOST_METHOD(IPCB_Board, UpdateWindows, (), view->Update())
  KETRIL_HOST_METHOD(IPCB_Board, SetCurrentMode, (TDisplay mode), view->SetMode(mode))
  KETRIL_HOST_READ(IPCB_Board, Ref<IServerDocumentView>, View, view)
  KETRIL_HOST_PAIR(IPCB_Board, Ref<IPCBGraphicalViewStateInterface>, GraphicalViewState, view_state_,
                   (void)(view_state_ = value))
  KETRIL_HOST_READ(IPCB_Board, Ref<IPCB_Progress>, Progress, progress)

  Status GetState_FileName(std::u16string& value) noexcept override;
  KETRIL_HOST_READ(IPCB_Board, std::int32_t, BoardID, id_)
  KETRIL_HOST_READ(IPCB_Board, bool, IsLibrary, is_library)
  KETRIL_HOST_METHOD(IPCB_Board, SetState_DocumentHasChanged, (), (void)(document_changed = true))
  KETRIL_HOST_READ(IPCB_Board, Ref<IPCB_BoardOutline>, BoardOutline, Outline())
  KETRIL_HOST_READ(IPCB_Board, TCoord, BoardMinimumX, Extents().x1)
  KETRIL_HOST_READ(IPCB_Board, TCoord, BoardMaximumX, Extents().x2)
  KETRIL_HOST_READ(IPCB_Board, TCoord, BoardMinimumY, Extents().y1)
  KETRIL_HOST_READ(IPCB_Board, TCoord, BoardMaximumY, Extents().y2)

  KETRIL_HOST_PROPERTY(IPCB_Board2, TUnit, DisplayUnit, setup.display_unit)
  KETRIL_HOST_PROPERTY(IPCB_Board2, TCoord, OriginX, setup.origin.x)
  KETRIL_HOST_PROPERTY(IPCB_Board2, TCoord, OriginY, setup.origin.y)
  KETRIL_HOST_PROPERTY(IPCB_Board2, bool, ElectricalGridEnabled, setup.electrical_grid)
  KETRIL_HOST_PAIR(IPCB_Board2, double, ComponentGridSize, setup.grid_x,
                   Write([&] { setup.grid_x = setup.grid_y = value; }))
  KETRIL_HOST_PROPERTY(IPCB_Board2, double, ComponentGridSizeX, setup.grid_x)
  KETRIL_HOST_PROPERTY(IPCB_Board2, double, ComponentGridSizeY, setup.grid_y)
  Status GetState_LayerStack(Ref<IPCB_LayerStack>& value) noexcept override;
  Status ProcessLayers(IPCB_LayerProcessInterface* callback) override;

  KETRIL_HOST_READ(IPCB_Board2, Ref<IUIManager>, UIManager, dialogs_)
  // The stitchings and shieldings: in Editor/Vias.
  ViaUnions& Unions() { return *via_unions_; }
  const ViaUnions& Unions() const { return *via_unions_; }
  Status GetViaStitchOptions(Ref<IPCB_ViaStitchFloodOptions>& options) noexcept override;
  Status CreateViaStitching(IPCB_ViaStitchFloodOptions* options,
                            Ref<IPCB_SmartUnionObject>& stitching) noexcept override;
  Status GetViaShieldingOptions(Ref<IPCB_ViaShieldingOptions>& options) noexcept override;
  Status CreateViaShielding(IPCB_ViaShieldingOptions* options,
                            Ref<IPCB_ViaShieldingSU>& shielding) noexcept override;
  Status BuildViaStitching(IPCB_SmartUnionObject* stitching, bool& built) noexcept override;
  Status BuildViaShielding(IPCB_ViaShieldingSU* shielding, bool& built) noexcept override;
  Status AssignUnionIndex(IPCB_SmartUnionObject* object, std::int32_t& index) noexcept override;
  Status RegisterPrimitive(IPCB_SmartUnionObject* object) noexcept override;
  Status RegisterShielding(IPCB_ViaShieldingSU* shielding) noexcept override;
  Status RemoveViaStitching() noexcept override;
  Status RemoveViaShielding() noexcept override;
  Status RemoveViaShieldingByIndex(std::int32_t index) noexcept override;
  Status GetSmartUnionCount(std::int32_t& value) noexcept override;
  Status GetSmartUnion(std::int32_t index, Ref<IPCB_SmartUnionObject>& object) noexcept override;
  KETRIL_HOST_METHOD(IPCB_Board2, RefreshBoard, (), view->Update())
  Status RefreshBoardFor(IPCB_SmartUnionObject* object) noexcept override;
  Status InvalidatePrimitive(IPCB_SmartUnionObject* object) noexcept override;

  Status GetState_RuleByName(const std::u16string& name, Ref<IPCB_Primitive>& rule) noexcept override;
  Status GetState_RulesOfKind(TRuleKind rule_kind, Ref<IPCB_RuleList>& rules) noexcept override;
  Status CreateViolationReport(TRuleKindSet kinds, Ref<IPCB_ViolationReport>& report) noexcept override;
  Status CheckPrimitive(IPCB_Primitive* primitive, IPCB_ViolationReport* report) noexcept override;
  Status SendMessage(std::int32_t source, std::int32_t destination, std::int32_t code,
                     void* data) noexcept override;
  // Checks clearances on the board as it is; good until the board changes.
  ClearanceChecker& Clearances();
  KETRIL_HOST_READ(IPCB_Board3, Ref<IPCB_AdvancedPlacerOptions>, AdvancedPlacerOptions, placer_options_)

  KETRIL_HOST_METHOD(IPCB_BoardRooms, CreateGroup, (Ref<IPCB_Group2> & group),
                     void(group = MakeHost<LooseGroup>()))
  KETRIL_HOST_METHOD(IPCB_BoardRooms, GetState_RoomContents,
                     (bool only_selected, bool by_scope, IPCB_ConfinementConstraint* room,
                      IInterfaceList* components, IInterfaceList* others, IInterfaceList* free_objects,
                      IInterfaceList* unions, bool unions_apart, bool),
                     TellRoomContents(*this, room, by_scope, only_selected, unions_apart, components, others,
                                      free_objects, unions))
  KETRIL_HOST_READ(IPCB_BoardRooms, Ref<IPCB_RoomArrangeOptions>, RoomArrangeOptions, room_options_)

  KETRIL_HOST_METHOD(IPCB_BoardUnions, AddToUnion, (std::int32_t union_index, IPCB_Primitive* object),
                     PutIntoUnion(union_index, FromInterface(object)))
  // The user is who the installed client says.
  Status ChooseLocation(const std::u16string& prompt, TCoordPoint& place, bool& chosen) noexcept override;
  Status GetState_ObjectAtCursor(TObjectSet kinds, Ref<IPCB_Primitive>& primitive) noexcept override;
  Status ChooseObjectAt(TCoordPoint place, TObjectSet kinds, IPCB_LayerSet* layer_set,
                        Ref<IPCB_Primitive>& primitive) noexcept override;
  // Those of the file, and the multi-layer.
  Status GetState_LayerIterator(Ref<IPCB_LayerIterator>& value) noexcept override;
  Status EditBoardReportOptions(TBoardReportOptionSet& options, bool& accepted) noexcept override;

  Status GetState_Area(double& value) noexcept override;
  Status GetState_CopperBodyList(Ref<IPCB_CopperBodyList>& value) noexcept override;
  // As of when the bodies were listed; without a list, as of now.
  Status GetState_LayerArea(IPCB_CopperBodyList* bodies, TV7_Layer layer, double& area) noexcept override;

 private:
  friend class Journal;
  std::shared_ptr<ClearanceChecker> clearances_;
  std::uint64_t clearances_revision_ = 0;
  ~Board() override;
  struct SavedBoard;
  Status PutIntoUnion(std::int32_t union_index, Primitive* object);
  void RemoveWithMembers(Primitive& primitive);
  // Without journal and mark, the object alone.
  void Enter(Primitive& primitive);
  void Leave(Primitive& primitive);

  const std::int32_t id_;
  std::shared_ptr<IteratorLedger> iterators_;
  Ref<IPCBGraphicalViewStateInterface> view_state_{MakeHost<ViewState>()};
  Ref<IPCB_AdvancedPlacerOptions> placer_options_;
  const Ref<IUIManager> dialogs_{MakeHost<UIManager>()};
  const Ref<IPCB_RoomArrangeOptions> room_options_{MakeHost<Editor::RoomArrangeOptions>()};
  std::unordered_set<Primitive*> tried_;
  const std::unique_ptr<ViaUnions> via_unions_;
  mutable std::vector<Primitive*> selected_;
  mutable bool selection_known_ = false;
  mutable Ref<BoardOutline> outline_;
  mutable std::uint64_t outline_revision_ = ~std::uint64_t{0};  // of the index, when it was chained
};

}  // namespace Ketril::Editor
