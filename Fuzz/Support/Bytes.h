// The input of a target as a series of decisions.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>

namespace Ketril::Fuzz {

// Taken from the front. When all are used up, every decision is 0: the calm choice stands first.
class Bytes {
 public:
  Bytes() = default;
  Bytes(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}

  bool IsEmpty() const { return at_ == end_; }
  std::uint8_t Take() { return IsEmpty() ? std::uint8_t{0} : *at_++; }
  int Below(int count) { return Take() % count; }
  bool Flag() { return (Take() & 1) != 0; }
  template <class T>
  const T& OneOf(const T* begin, std::size_t count) {
    return begin[Take() % count];
  }
  template <class T, std::size_t count>
  const T& OneOf(const T (&choices)[count]) {
    return OneOf(choices, count);
  }
  // The next ones, fewer at the end, apart from the rest.
  Bytes Slice(std::size_t size) {
    const Bytes slice(at_, std::min(size, static_cast<std::size_t>(end_ - at_)));
    at_ = slice.end_;
    return slice;
  }
  std::string Rest() { return {std::exchange(at_, end_), end_}; }

 private:
  const std::uint8_t* at_ = nullptr;
  const std::uint8_t* end_ = nullptr;
};

}  // namespace Ketril::Fuzz
