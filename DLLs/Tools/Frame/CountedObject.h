// Base of the library's own objects that are held by counted references: layer sets, parameter lists,
// callbacks that are handed to the editor.
#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>

#include "Interfaces/Interface.h"

namespace Ketril::Tools {

// True when `T` or an interface that it derives from has the identifier.
template <class T>
constexpr bool InterfaceChainHas(const InterfaceId& id) {
  if (T::Id == id) return true;
  if constexpr (std::is_same_v<T, IInterface>) {
    return false;
  } else {
    return InterfaceChainHas<typename T::Base>(id);
  }
}

// An object that implements the chain of `Interface` and of all its bases. It starts with no reference: put
// it into a Ref at once, or make it with MakeCounted. It is deleted with its last reference.
//
// References are counted without locks, and a copy is a new object that starts with no reference either.
template <class Interface>
class CountedObject : public Interface {
 public:
  IInterface* QueryInterface(const InterfaceId& id) noexcept override {
    if (!InterfaceChainHas<Interface>(id)) return nullptr;
    ++references_;
    return this;
  }
  void AddRef() noexcept override { ++references_; }
  void Release() noexcept override {
    if (--references_ == 0) delete this;
  }

 protected:
  CountedObject() = default;
  CountedObject(const CountedObject&) : Interface() {}
  CountedObject& operator=(const CountedObject&) { return *this; }
  virtual ~CountedObject() = default;

 private:
  std::int32_t references_ = 0;
};

// Makes an object and holds it.
template <class T, class... Arguments>
Ref<T> MakeCounted(Arguments&&... arguments) {
  return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace Ketril::Tools
