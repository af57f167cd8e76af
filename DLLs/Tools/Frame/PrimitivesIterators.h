// How tools walk the board: iterators that wrap what the host's iterators give.
//
//   TBoardIterator iterator(board);
//   iterator.SetState_FilterObject({eTrackObject});
//   for (TPrimitive* p = iterator.First(); p; p = iterator.Next()) ...
//
// An iterator belongs to its maker and lives on the stack: the end of its block hands the host's iterator
// back, also after an exception. When handing back fails that raises EHostError, unless an exception is on
// its way already; so a function that gives an object back by value ends the walk in a block of its own,
// before its return.
//
// The wrappers belong to the object scope. The order is the host's and stable during a run.
#pragma once

#include <exception>
#include <span>

#include "DLLs/Tools/Frame/HostLink.h"
#include "Interfaces/Board.h"

namespace Ketril::Tools {

class TBoard;
class TGroup;
class TPrimitive;

// One of the host's iterators for the life of this object. With an empty owner there is none.
template <class Owner, class Iterator, auto MakeIterator, auto HandBack>
class THostIterator {
 public:
  explicit THostIterator(Ref<Owner> owner) : owner_(std::move(owner)) {
    if (owner_) On(owner_).Call(MakeIterator, iterator_);
  }
  THostIterator(const THostIterator&) = delete;
  THostIterator& operator=(const THostIterator&) = delete;
  ~THostIterator() noexcept(false) {
    if (!iterator_) return;
    const Status status = (owner_.Get()->*HandBack)(iterator_.Get());
    if (Failed(status) && std::uncaught_exceptions() == exceptions_)
      RaiseHostError(status, ClassName<Owner>(), "the end of a walk");
  }

  const Ref<Iterator>& HostIterator() const { return iterator_; }

 private:
  Ref<Owner> owner_;
  Ref<Iterator> iterator_;
  int exceptions_ = std::uncaught_exceptions();
};
using THostBoardIterator = THostIterator<IPCB_Board, IPCB_BoardIterator, &IPCB_Board::BoardIterator_Create,
                                         &IPCB_Board::BoardIterator_Destroy>;
using THostSpatialIterator =
    THostIterator<IPCB_Board, IPCB_SpatialIterator, &IPCB_Board::SpatialIterator_Create,
                  &IPCB_Board::SpatialIterator_Destroy>;
using THostGroupIterator = THostIterator<IPCB_Group, IPCB_GroupIterator, &IPCB_Group::GroupIterator_Create,
                                         &IPCB_Group::GroupIterator_Destroy>;

// What all iterators have. One that holds no host iterator gives nothing and passes over its filters.
class TAbstractIterator {
 public:
  explicit TAbstractIterator(Ref<IPCB_AbstractIterator> iterator) : FIterator(std::move(iterator)) {}
  TAbstractIterator(const TAbstractIterator&) = delete;
  TAbstractIterator& operator=(const TAbstractIterator&) = delete;
  static void* operator new(std::size_t) = delete;

  // The object in a new wrapper of its class; null at the end.
  TPrimitive* First();
  TPrimitive* Next();

  void SetState_FilterAll();  // all objects on all layers
  void SetState_FilterAllLayers();
  void SetState_FilterObject(TObjectSet objects);  // replaces the set of objects
  // An empty set passes all layers.
  void SetState_FilterLayers(TLayerPartitionSet layers);
  void SetState_FilterLayers(const Ref<IPCB_LayerSet>& layers);
  // Limits a spatial iterator to a rectangle.
  virtual void SetState_FilterArea(TCoord x1, TCoord y1, TCoord x2, TCoord y2);
  // Area, layers and objects, set in this order.
  void SetState_Filter(TCoord x1, TCoord y1, TCoord x2, TCoord y2, TLayerPartitionSet layers,
                       TObjectSet objects);
  void SetState_Filter(TCoord x1, TCoord y1, TCoord x2, TCoord y2, const TV6_LayerSet& layers,
                       TObjectSet objects);
  void SetState_Filter(TCoord x1, TCoord y1, TCoord x2, TCoord y2, const Ref<IPCB_LayerSet>& layers,
                       TObjectSet objects);
  void SetState_FilterA(TCoord x1, TCoord y1, TCoord x2, TCoord y2, std::span<const TV7_Layer> layers,
                        TObjectSet objects);

 protected:
  ~TAbstractIterator() = default;

  Ref<IPCB_AbstractIterator> FIterator;
};

// All objects of the board. Raises Exception when there is no host board.
class TBoardIterator : private THostBoardIterator, public TAbstractIterator {
 public:
  explicit TBoardIterator(TBoard* board);
  void SetState_FilterMethod(TIterationMethod method);
};

// The objects whose bounding rectangle touches an area. Raises Exception when there is no host board.
class TSpatialIterator : private THostSpatialIterator, public TAbstractIterator {
 public:
  explicit TSpatialIterator(TBoard* board);
  // All filters at once. `board` is the one that the iterator was made for.
  void InitFilter(TBoard* board, TCoord x1, TCoord y1, TCoord x2, TCoord y2, TLayerPartitionSet layers,
                  TObjectSet objects);
  void InitFilter(TBoard* board, TCoord x1, TCoord y1, TCoord x2, TCoord y2, const Ref<IPCB_LayerSet>& layers,
                  TObjectSet objects);
  void InitFilter(TBoard* board, TCoord x1, TCoord y1, TCoord x2, TCoord y2,
                  std::span<const TV7_Layer> layers, TObjectSet objects);
  void InitFilterA(TBoard* board, TCoord x1, TCoord y1, TCoord x2, TCoord y2,
                   std::span<const TV7_Layer> layers, TObjectSet objects);
};

// The members of a group. On a wrapper whose object is no group it gives nothing.
class TGroupIterator : private THostGroupIterator, public TAbstractIterator {
 public:
  explicit TGroupIterator(TGroup* group);
  // `group` is the one that the iterator was made for.
  void InitFilter(TGroup* group, TObjectSet objects);
};

}  // namespace Ketril::Tools
