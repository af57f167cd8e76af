// Objects on a board in one line, for the tests of the model.
#pragma once

#include <random>
#include <vector>

#include "Editor/Model/Board.h"

namespace Ketril::Editor {

// A new object of the class, already on the board.
template <class T, class Data>
T& Put(Board& board, const Data& data, TV7_Layer layer = eV6_TopLayer) {
  const Ref<T> object = MakeHost<T>();
  object->data = data;
  object->state.layer = layer;
  board.Load(object.Get());
  return *object;
}

inline Track& PutTrack(Board& board, TCoordPoint a, TCoordPoint b, TV7_Layer layer = eV6_TopLayer) {
  return Put<Track>(board, TrackData{a, b, 1000}, layer);
}

class Random {
 public:
  explicit Random(unsigned seed) : engine_(seed) {}
  int Below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(engine_); }
  TCoordPoint Point(int size) { return {Below(size), Below(size)}; }
  template <class List>
  auto& Of(List& list) {
    return list[static_cast<std::size_t>(Below(static_cast<int>(list.size())))];
  }

 private:
  std::mt19937 engine_;
};

// What an iterator gives from `First` to the end.
template <class Iterator>
std::vector<IPCB_Primitive*> Walked(const Ref<Iterator>& iterator) {
  std::vector<IPCB_Primitive*> found;
  Ref<IPCB_Primitive> object;
  for (iterator->First(object); object; iterator->Next(object)) found.push_back(object.Get());
  return found;
}

}  // namespace Ketril::Editor
