// A reference to something callable, for operations that call back while they run.
#pragma once

#include <concepts>
#include <memory>
#include <type_traits>
#include <utility>

namespace Ketril::Tools {

template <class Signature>
class FunctionRef;

// Refers to a plain function, or to a function object or lambda, which it does not own: pass it down, never
// keep it beyond the call. It may be empty, which a null function pointer makes too.
template <class Result, class... Arguments>
class FunctionRef<Result(Arguments...)> {
 public:
  FunctionRef() = default;
  FunctionRef(std::nullptr_t) {}                                                   // NOLINT
  FunctionRef(Result (*function)(Arguments...)) : target_{.Function = function} {  // NOLINT
    if (function)
      call_ = [](Target target, Arguments... arguments) -> Result {
        return target.Function(std::forward<Arguments>(arguments)...);
      };
  }
  template <class Object>
  requires(std::is_class_v<std::remove_cvref_t<Object>> &&
           !std::same_as<std::remove_cvref_t<Object>, FunctionRef> &&
           std::is_invocable_r_v<Result, Object&, Arguments...>) FunctionRef(Object&& object)  // NOLINT
      : target_{.Object = const_cast<void*>(static_cast<const void*>(std::addressof(object)))},
        call_([](Target target, Arguments... arguments) -> Result {
          return (*static_cast<std::remove_reference_t<Object>*>(target.Object))(
              std::forward<Arguments>(arguments)...);
        }) {}

  explicit operator bool() const { return call_ != nullptr; }
  Result operator()(Arguments... arguments) const {
    return call_(target_, std::forward<Arguments>(arguments)...);
  }

 private:
  union Target {
    void* Object;
    Result (*Function)(Arguments...);
  };
  Target target_{.Object = nullptr};
  Result (*call_)(Target, Arguments...) = nullptr;
};

}  // namespace Ketril::Tools
