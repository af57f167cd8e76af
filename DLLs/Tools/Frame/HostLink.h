// The one way from the library into the editor: a failing status becomes an exception, an out argument a
// result, an empty view a clear exception instead of a crash. A forwarded property is one line:
//
//   TCoord Width() const { return On(ITrack()).Read(&IPCB_Track::GetState_Width); }
#pragma once

#include <string_view>
#include <type_traits>
#include <utility>

#include "DLLs/Tools/Frame/Exceptions.h"
#include "Interfaces/Interface.h"

namespace Ketril::Tools {

// The name of a class without its namespaces, for messages.
template <class T>
constexpr std::string_view ClassName() {
  std::string_view name = __PRETTY_FUNCTION__;  // ends in "[with T = Ketril::IPCB_Track; ...]" or "[T = ...]"
  name.remove_prefix(name.find("T = ") + 4);
  name = name.substr(0, name.find_first_of(";]"));
  return name.substr(name.rfind(':') + 1);
}

// The failures, out of line so that a forwarded call stays small. `operation` is who made the call.
[[noreturn]] void RaiseHostError(Status status, std::string_view view, const char* operation);
[[noreturn]] void RaiseEmptyReference(std::string_view view, const char* operation);
[[noreturn]] void RaiseInterfaceCastError(std::string_view wanted);
[[noreturn]] void RaiseClassCastError(std::string_view wanted);

// `object` as the interface `T`: empty when it is empty; raises EIntfCastError when it does not offer `T`.
template <class T, class U>
Ref<T> CheckedCast(const Ref<U>& object) {
  Ref<T> result = Probe<T>(object);
  if (object && !result) [[unlikely]]
    RaiseInterfaceCastError(ClassName<T>());
  return result;
}

// A host object for the length of one call. Each operation raises EHostError when the host fails.
template <class I>
class HostLink {
 public:
  HostLink(Ref<I> object, const char* operation) : object_(std::move(object)), operation_(operation) {
    if (!object_) [[unlikely]]
      RaiseEmptyReference(ClassName<I>(), operation_);
  }

  // Calls a method that gives one value through its last argument.
  template <class Method, class... Arguments>
  auto Read(Method method, Arguments&&... arguments) const {
    OutArgument<Method> value{};
    Call(method, std::forward<Arguments>(arguments)..., value);
    return value;
  }

  // Calls a method that gives nothing back, or whose out arguments the caller brings.
  template <class Method, class... Arguments>
  void Call(Method method, Arguments&&... arguments) const {
    const Status status = (object_.Get()->*method)(std::forward<Arguments>(arguments)...);
    if (Failed(status)) [[unlikely]]
      RaiseHostError(status, ClassName<I>(), operation_);
  }

 private:
  template <class T>
  struct Last;
  template <class C, class... A>
  struct Last<Status (C::*)(A...) noexcept> {
    using Type = std::remove_reference_t<typename decltype((std::type_identity<A>{}, ...))::type>;
  };
  template <class Method>
  using OutArgument = typename Last<Method>::Type;

  Ref<I> object_;
  const char* operation_;
};

// Opens the link to `view`; raises EEmptyReference when there is nothing to call on. Messages name the
// calling operation.
template <class I>
HostLink<I> On(Ref<I> view, const char* operation = __builtin_FUNCTION()) {
  return {std::move(view), operation};
}

}  // namespace Ketril::Tools

// The properties of a wrapper, forwarded through its typed view: reading, writing, both. `HostName` is the
// property of the host's interface, as in `GetState_HostName`.
#define KETRIL_VIEW_METHOD(View, Method) &std::remove_cvref_t<decltype(*View())>::Method
#define KETRIL_READ_BODY(View, HostName) \
  { return On(View()).Read(KETRIL_VIEW_METHOD(View, GetState_##HostName)); }
#define KETRIL_WRITE_BODY(View, HostName) \
  { On(View()).Call(KETRIL_VIEW_METHOD(View, SetState_##HostName), value); }

#define KETRIL_FORWARD_READ(Type, Name, View, HostName) Type Name() const KETRIL_READ_BODY(View, HostName)
#define KETRIL_FORWARD_WRITE(Type, SetName, View, HostName) \
  void SetName(InArg<Type> value) KETRIL_WRITE_BODY(View, HostName)
#define KETRIL_FORWARD(Type, Name, View, HostName) \
  KETRIL_FORWARD_READ(Type, Name, View, HostName)  \
  KETRIL_FORWARD_WRITE(Type, Set##Name, View, HostName)

// Virtual operations, and reading as the override of one.
#define KETRIL_FORWARD_VIRTUAL(Type, Name, View, HostName) \
  virtual Type Name() const KETRIL_READ_BODY(View, HostName)
#define KETRIL_FORWARD_VIRTUAL_WRITE(Type, SetName, View, HostName) \
  virtual void SetName(InArg<Type> value) KETRIL_WRITE_BODY(View, HostName)
#define KETRIL_FORWARD_OVERRIDE(Type, Name, View, HostName) \
  Type Name() const override KETRIL_READ_BODY(View, HostName)

// A property that has a value on each layer.
#define KETRIL_FORWARD_LAYER_READ(Type, Name, View, HostName)                     \
  Type Name(TV7_Layer layer) const {                                              \
    return On(View()).Read(KETRIL_VIEW_METHOD(View, GetState_##HostName), layer); \
  }
#define KETRIL_FORWARD_LAYER(Type, Name, View, HostName)                          \
  KETRIL_FORWARD_LAYER_READ(Type, Name, View, HostName)                           \
  void Set##Name(TV7_Layer layer, InArg<Type> value) {                            \
    On(View()).Call(KETRIL_VIEW_METHOD(View, SetState_##HostName), layer, value); \
  }
