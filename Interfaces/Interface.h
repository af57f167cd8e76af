// The root of the boundary between the editor and the tools library: counted interfaces that are asked for
// by identifier, and the one smart pointer that holds them.
//
// Conventions of every interface:
//  - a method returns a `Status`; results come back through out arguments, which a failing method may leave
//    as they were; nothing throws across the boundary from the editor's side;
//  - an out argument that is an interface is a `Ref`; an in argument that is one is a borrowed raw pointer,
//    valid for the call;
//  - references are counted without locks: everything happens on the editor's thread.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace Ketril {

// What a method of an interface answers. Everything but `Ok` is a failure.
enum class Status : std::int32_t {
  Ok = 0,
  Failure = 1,          // the host could not do it, for a reason of its own
  InvalidArgument = 2,  // an index, a layer, a kind that the object does not have
  OutOfMemory = 3,
  NotOnBoard = 4,  // the object has to be on a board for this call
};

constexpr bool Failed(Status status) {
  return status != Status::Ok;
}

// The 128-bit identifier of an interface: two FNV-1a hashes of its name with different starts, so that an
// identifier never has to be invented by hand.
struct InterfaceId {
  std::uint64_t High = 0;
  std::uint64_t Low = 0;

  constexpr explicit InterfaceId(std::string_view name)
      : High(Hash(name, 0xcbf29ce484222325ULL)), Low(Hash(name, 0x9ae16a3b2f90404fULL)) {}
  // Of an interface that editors know by a number: its first 64 bits and its last, as they are written.
  constexpr InterfaceId(std::uint64_t high, std::uint64_t low) : High(high), Low(low) {}

  friend constexpr bool operator==(const InterfaceId& a, const InterfaceId& b) {
    return a.Low == b.Low && a.High == b.High;
  }

 private:
  static constexpr std::uint64_t Hash(std::string_view name, std::uint64_t value) {
    for (const char c : name) value = (value ^ static_cast<unsigned char>(c)) * 0x100000001b3ULL;
    return value;
  }
};

// Base of all interfaces. An interface derives from one other interface (its `Base`) and names its own
// identifier `Id`; an object answers a query for its interface and for all the bases of that.
class IInterface {
 public:
  static constexpr InterfaceId Id{"IInterface"};

  // Gives the object as the interface `id`, with a reference added for the caller, or null when it does not
  // offer it. The result points at that very interface: static_cast it down, never across.
  virtual IInterface* QueryInterface(const InterfaceId& id) noexcept = 0;
  virtual void AddRef() noexcept = 0;
  virtual void Release() noexcept = 0;

 protected:
  ~IInterface() = default;
};

// A counted reference to an interface; empty by default.
template <class T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}  // NOLINT: an empty reference is written as nullptr
  // Shares `object`: adds a reference of its own.
  Ref(T* object) : object_(object) {  // NOLINT: a borrowed pointer may be kept by assigning it
    if (object_) object_->AddRef();
  }
  Ref(const Ref& other) : Ref(other.object_) {}
  Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  template <class U>
  requires std::is_convertible_v<U*, T*> Ref(const Ref<U>& other)
      : Ref(static_cast<T*>(other.Get())) {}  // NOLINT
  ~Ref() {
    if (object_) object_->Release();
  }

  Ref& operator=(Ref other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }

  // Takes over a reference that somebody added already.
  static Ref Adopt(T* object) {
    Ref result;
    result.object_ = object;
    return result;
  }

  T* Get() const { return object_; }
  T* operator->() const { return object_; }
  T& operator*() const { return *object_; }
  explicit operator bool() const { return object_ != nullptr; }
  friend bool operator==(const Ref& a, const Ref& b) { return a.object_ == b.object_; }
  friend bool operator==(const Ref& a, std::nullptr_t) { return a.object_ == nullptr; }

 private:
  T* object_ = nullptr;
};

// Asks `object` for the interface `T`; empty when `object` is empty or does not offer it.
template <class T, class U>
Ref<T> Probe(U* object) {
  if (!object) return {};
  return Ref<T>::Adopt(static_cast<T*>(object->QueryInterface(T::Id)));
}

template <class T, class U>
Ref<T> Probe(const Ref<U>& object) {
  return Probe<T>(object.Get());
}

namespace Detail {
template <class T>
struct Argument {
  using Type = T;
};
template <>
struct Argument<std::u16string> {
  using Type = const std::u16string&;
};
template <class T>
struct Argument<Ref<T>> {
  using Type = T*;
};
}  // namespace Detail

// How a value of type `T` is passed into a method: texts by reference, interfaces as borrowed pointers.
template <class T>
using InArg = typename Detail::Argument<T>::Type;

}  // namespace Ketril

// A property of an interface is a pair of methods. These macros only declare that pair, so that an interface
// reads as the table of properties that it is.
#define KETRIL_READ(Type, Name) virtual Status GetState_##Name(Type& value) noexcept = 0
#define KETRIL_PROPERTY(Type, Name) \
  KETRIL_READ(Type, Name);          \
  virtual Status SetState_##Name(InArg<Type> value) noexcept = 0
// The same for a property that has a value on each layer.
#define KETRIL_LAYER_READ(Type, Name) \
  virtual Status GetState_##Name(TV7_Layer layer, Type& value) noexcept = 0
#define KETRIL_LAYER_PROPERTY(Type, Name) \
  KETRIL_LAYER_READ(Type, Name);          \
  virtual Status SetState_##Name(TV7_Layer layer, InArg<Type> value) noexcept = 0
