// Base of the editor's objects: the count of references, the answer to queries, and a count of the objects
// that are alive, which the tests compare after each run.
#pragma once

#include <cstdint>
#include <type_traits>
#include <utility>

#include "Interfaces/Interface.h"

namespace Ketril::Editor {

// How many objects of the editor are alive in the process.
class LiveObjects {
 public:
  static std::int64_t Count() { return count_; }

 private:
  template <class... Interfaces>
  friend class HostObject;
  static std::int64_t count_;
};

namespace Detail {

// True when `T` or an interface that it derives from has the identifier.
template <class T>
constexpr bool ChainHas(const InterfaceId& id) {
  if (T::Id == id) return true;
  if constexpr (!std::is_same_v<T, IInterface>) {
    return ChainHas<typename T::Base>(id);
  } else {
    return false;
  }
}

}  // namespace Detail

// An object that implements one interface chain, or several, each named by its last interface. It starts with
// no reference: put it into a Ref at once, or use MakeHost.
template <class... Interfaces>
class HostObject : public Interfaces... {
 public:
  HostObject() { ++LiveObjects::count_; }
  // For a base `Core` that is made from values.
  template <class Core, class... Values>
  explicit HostObject(std::in_place_type_t<Core>, const Values&... values) : Core(values...) {
    ++LiveObjects::count_;
  }
  HostObject(const HostObject&) = delete;
  HostObject& operator=(const HostObject&) = delete;

  IInterface* QueryInterface(const InterfaceId& id) noexcept override {
    IInterface* found = nullptr;
    // The first chain that has the identifier answers, so IInterface itself is always the same pointer.
    (void)((Detail::ChainHas<Interfaces>(id) && (found = static_cast<Interfaces*>(this), true)) || ...);
    if (found) ++references_;
    return found;
  }
  void AddRef() noexcept override { ++references_; }
  void Release() noexcept override {
    if (--references_ == 0) delete this;
  }
  std::int32_t References() const { return references_; }

 protected:
  virtual ~HostObject() { --LiveObjects::count_; }

 private:
  std::int32_t references_ = 0;
};

// Makes an object of the editor and holds it.
template <class T, class... Arguments>
Ref<T> MakeHost(Arguments&&... arguments) {
  return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

}  // namespace Ketril::Editor
