#include "DLLs/Tools/Geometry/ClipperSweep.h"

#include <algorithm>

namespace Ketril::Tools {
namespace {

// 1 if the two stand the wrong way round at the upper end of the shorter one, 0 if they meet there.
int Disorder(const TClipEdge& left, const TClipEdge& right) {
  return IsSweptBefore(right.top, left.top) ? SideOf(left, right.top) : -SideOf(right, left.top);
}

// Whether `a` leaves a common point to the left of `b`.
bool IsSteeperLeft(const TClipEdge* a, const TClipEdge* b) {
  return Turn(*a, *b) < 0;
}

bool IsSteeper(const TClipEdge& a, const TClipEdge& b) {
  return std::fabs(a.Dx()) * b.Dy() < std::fabs(b.Dx()) * a.Dy();
}

TClipPoint AtLevel(const TClipEdge& edge, double level) {
  if (edge.Dy() == 0) return {edge.top.x, level};
  return {edge.bottom.x + RoundToGrid((level - edge.bottom.y) / edge.Dy() * edge.Dx()), level};
}

double ClampToSpan(double x, const TClipEdge& edge) {
  return edge.Dx() < 0 ? std::clamp(x, edge.top.x, edge.bottom.x) : std::clamp(x, edge.bottom.x, edge.top.x);
}

}  // namespace

TClipSweep::TClipSweep(std::uint8_t inside, std::span<const TClipMinimum> minima, TClipChains& chains,
                       std::pmr::memory_resource* memory)
    : inside_(inside),
      minima_(minima),
      chains_(chains),
      status_(2 * minima.size(), memory),
      queue_(memory),
      upward_(memory),
      ends_(memory),
      ends_below_(memory) {
  queue_.Reserve(16);
  upward_.reserve(8);
  ends_.reserve(8);
  ends_below_.reserve(8);
}

void TClipSweep::Run() {
  while (true) {
    const bool has_minimum = next_minimum_ < minima_.size();
    if (queue_.Empty() && !has_minimum) return;
    if (queue_.Empty() || (has_minimum && IsSweptBefore(minima_[next_minimum_].point, queue_.Top().key))) {
      now_ = place_ = minima_[next_minimum_].point;
      Meet();
      continue;
    }
    now_ = queue_.Top().key;
    place_ = queue_.Top().Place();
    if (!PassVertex()) Meet();
  }
}

void TClipSweep::PushEnd(TClipEdge& edge) {
  queue_.Push({edge.top, edge.top.x, &edge, nullptr});
}

// Sees to it that two new neighbours are dealt with where they meet.
void TClipSweep::Watch(const TClipNode* left, const TClipNode* right) {
  if (!left || !right) return;
  const int disorder = Disorder(*left->edge, *right->edge);
  if (disorder > 0) {
    Schedule(*left->edge, *right->edge);
  } else if (disorder == 0 && left->edge->top != right->edge->top) {
    const TClipPoint end = std::min(left->edge->top, right->edge->top, IsSweptBefore);
    queue_.Push({end, end.x, left->edge, right->edge});
  }
}

// Of a pair that has to be exchanged: not before now, and not after the end of either. If it should have been
// before, because crossings close to one another were met in the wrong order, now is the time.
void TClipSweep::Schedule(TClipEdge& left, TClipEdge& right) {
  const double level = RoundToGrid(now_.y);
  const TClipPoint end = std::min(left.top, right.top, IsSweptBefore);
  TClipCrossing crossing;
  bool is_sound = CrossLines(left, right, crossing);
  const auto key = [&] { return TClipPoint{crossing.place.x, crossing.place.y + 0.25 * crossing.above}; };
  is_sound = is_sound && crossing.place.y >= level - 2 && !IsSweptBefore(end, key());
  if (!is_sound) crossing = {AtLevel(IsSteeper(left, right) ? left : right, level), 0};
  crossing.place.x = ClampToSpan(ClampToSpan(crossing.place.x, left), right);
  queue_.Push({std::max(key(), now_, IsSweptBefore), crossing.place.x, &left, &right});
}

// A vertex where nothing happens but that an edge is followed by the next one of its contour. False if there
// may be more to it.
bool TClipSweep::PassVertex() {
  const TClipEvent& event = queue_.Top();
  TClipEdge* const edge = event.left;
  TClipNode* const node = edge->node;
  TClipEdge* const next = edge->Next();
  if (event.right || !next || !node || !queue_.IsTopAlone()) return false;
  if (next_minimum_ < minima_.size() && minima_[next_minimum_].point == now_) return false;
  if (node->coincident || (node->next && node->next->coincident)) return false;

  edge->node = nullptr;
  node->edge = next;
  next->node = node;
  queue_.ReplaceTop({next->top, next->top.x, next, nullptr});
  if (node->chain != -1 && Turn(*edge, *next) != 0) {
    if (IsInside(node->beyond)) {
      chains_.Prepend(node->chain, now_);
    } else {
      chains_.Append(node->chain, now_);
    }
  }
  Watch(node->previous, node);
  Watch(node, node->next);
  return true;
}

// All that happens at one place.
void TClipSweep::Meet() {
  marked_ = 0;
  first_ = last_ = before_ = nullptr;
  upward_.clear();
  ends_.clear();
  ends_below_.clear();
  GatherEvents();
  GatherMinima();
  if (marked_ == 0 && upward_.empty()) return;
  WidenToMarked();
  TakeOut();
  Order();
  PutBack();
}

void TClipSweep::Mark(TClipNode* node) {
  if (node->is_marked) return;
  node->is_marked = true;
  ++marked_;
  if (!first_) first_ = last_ = node;
}

void TClipSweep::GatherEvents() {
  while (!queue_.Empty() && queue_.Top().key == now_ && queue_.Top().Place() == place_) {
    const TClipEvent event = queue_.Top();
    queue_.Pop();
    TClipNode* const node = event.left->node;
    if (!node) continue;
    if (!event.right) {
      Mark(node);
    } else if (node->next && node->next == event.right->node) {
      Mark(node);
      Mark(node->next);
    }
  }
}

void TClipSweep::GatherMinima() {
  if (now_ != place_ || next_minimum_ == minima_.size() || minima_[next_minimum_].point != now_) return;
  for (; next_minimum_ < minima_.size() && minima_[next_minimum_].point == now_; ++next_minimum_) {
    for (TClipEdge* edge : {minima_[next_minimum_].first, minima_[next_minimum_].second}) {
      upward_.push_back(edge);
      PushEnd(*edge);
    }
  }
  bool on = false;
  before_ = status_.Locate(now_, on);
  if (!on) return;
  Mark(before_);
  for (TClipNode* node = before_->previous; node && SideOf(*node->edge, now_) == 0; node = node->previous) {
    Mark(node);
  }
  for (TClipNode* node = before_->next; node && SideOf(*node->edge, now_) == 0; node = node->next) Mark(node);
}

// Makes [first_, last_] the shortest run of neighbours that has all marked ones and no part only of edges
// that run along each other.
void TClipSweep::WidenToMarked() {
  if (!first_) return;
  TClipNode* left = first_;
  TClipNode* right = last_;
  for (std::size_t found = 1; found < marked_;) {
    if (left) left = left->previous;
    if (right) right = right->next;
    if (left && left->is_marked) {
      first_ = left;
      ++found;
    }
    if (right && right->is_marked) {
      last_ = right;
      ++found;
    }
  }
  while (first_->coincident) first_ = first_->previous;
  while (last_->next && last_->next->coincident) last_ = last_->next;
  before_ = first_->previous;
}

// What comes from below: the ends of chains, and the edges that go on.
void TClipSweep::TakeOut() {
  if (!first_) return;
  for (TClipNode* node = first_;; node = node->next) {
    TClipEdge* edge = node->edge;
    if (node->chain != -1) ends_below_.push_back({edge, nullptr, node->chain});
    edge->node = nullptr;
    if (edge->top == now_ && now_ == place_) {
      edge = edge->Next();
      if (edge) PushEnd(*edge);
    }
    if (edge) upward_.push_back(edge);
    if (node == last_) break;
  }
}

// The edges above from left to right. Each that stands the wrong way round with its new neighbour is passed
// on, so that none is left beside one that it still has to change places with. Only this takes them nearer to
// their final order for sure, so that the sweep cannot go round in circles; sorting many by direction saves
// time where they truly pass one point, and is done once a point.
void TClipSweep::Order() {
  std::reverse(upward_.begin(), upward_.end());
  constexpr std::size_t kFew = 6;
  if (upward_.size() > kFew && sorted_at_ != now_) {
    std::stable_sort(upward_.begin(), upward_.end(), IsSteeperLeft);
    sorted_at_ = now_;
  }
  for (std::size_t i = 1; i < upward_.size(); ++i) {
    for (std::size_t k = i; k > 0 && Disorder(*upward_[k - 1], *upward_[k]) > 0; --k) {
      std::swap(upward_[k - 1], upward_[k]);
    }
  }
}

// Gives the edges above their places and ties the chains.
void TClipSweep::PutBack() {
  TClipNode* const outside = last_ ? last_->next : before_ ? before_->next : status_.First();
  const std::uint8_t left = before_ ? before_->beyond : 0;
  std::uint8_t beyond = left;
  std::uint8_t group_left = left;
  TClipNode* previous = before_;
  TClipNode* leader = nullptr;
  const auto close_group = [&] {
    if (leader && IsOutline(group_left, beyond)) ends_.push_back({leader->edge, leader, -1});
  };
  for (TClipEdge* edge : upward_) {
    TClipNode* const following = previous ? previous->next : status_.First();
    TClipNode* const node = following != outside ? following : status_.InsertAfter(previous);
    const bool coincident = leader && Turn(*previous->edge, *edge) == 0;
    if (!coincident) {
      close_group();
      leader = node;
      group_left = beyond;
    }
    beyond ^= edge->operand;
    node->edge = edge;
    node->chain = -1;
    node->is_marked = false;
    node->beyond = beyond;
    node->coincident = coincident;
    edge->node = node;
    previous = node;
  }
  close_group();
  while (TClipNode* const rest = previous ? previous->next : status_.First()) {
    if (rest == outside) break;
    status_.Erase(rest);
  }

  TieEnds(IsInside(left));
  if (upward_.empty()) {
    Watch(before_, outside);
  } else {
    Watch(before_, before_ ? before_->next : status_.First());
    Watch(previous, outside);
  }
}

// All ends of chains around the point, in pairs that have nothing of the inside between them.
void TClipSweep::TieEnds(bool inside_left) {
  ends_.insert(ends_.end(), ends_below_.rbegin(), ends_below_.rend());
  if (ends_.empty()) return;
  if (!inside_left) Tie(ends_.back(), ends_.front(), true);
  for (std::size_t i = inside_left ? 0 : 1; i + 1 < ends_.size(); i += 2) Tie(ends_[i], ends_[i + 1], false);
}

// Two edges of the outline, neighbours around the point with nothing of the inside between them, the first
// one anticlockwise of the second. `round_all` tells that what lies between is left of the point.
void TClipSweep::Tie(const TChainEnd& first, const TChainEnd& second, bool round_all) {
  if (first.node && second.node) {
    first.node->chain = second.node->chain = chains_.Begin(place_, !round_all);
  } else if (!first.node && !second.node) {
    chains_.Join(second.chain, first.chain, place_);
  } else {
    const bool is_straight = first.edge == second.edge || Turn(*first.edge, *second.edge) == 0;
    if (second.node) {
      second.node->chain = first.chain;
      if (!is_straight) chains_.Prepend(first.chain, place_);
    } else {
      first.node->chain = second.chain;
      if (!is_straight) chains_.Append(second.chain, place_);
    }
  }
}

}  // namespace Ketril::Tools
