// A property of an object is a pair of methods behind the gate; these macros write that pair, so that a class
// of the editor reads as the table of its properties.
#pragma once

#include "Editor/HostCall.h"

// A read: `Expression` is the value.
#define KETRIL_HOST_READ(Interface, Type, Name, Expression)                      \
  Status GetState_##Name(Type& value) noexcept override {                        \
    return HostCall(#Interface ".GetState_" #Name, [&] { value = Expression; }); \
  }
// A read and a write of `Field`, an lvalue of the object; the write is an edit.
#define KETRIL_HOST_PROPERTY(Interface, Type, Name, Field) \
  KETRIL_HOST_PAIR(Interface, Type, Name, Field, this->Write([&] { (Field) = value; }))
// A read and a write by `Action`, an expression in `value` that does its own edit and may give a Status.
#define KETRIL_HOST_PAIR(Interface, Type, Name, Expression, Action)         \
  KETRIL_HOST_READ(Interface, Type, Name, Expression)                       \
  Status SetState_##Name(InArg<Type> value) noexcept override {             \
    return HostCall(#Interface ".SetState_" #Name, [&] { return Action; }); \
  }
// The same for a property of each layer; the expressions may use `layer`.
#define KETRIL_HOST_LAYER_READ(Interface, Type, Name, Expression)                \
  Status GetState_##Name(TV7_Layer layer, Type& value) noexcept override {       \
    return HostCall(#Interface ".GetState_" #Name, [&] { value = Expression; }); \
  }
#define KETRIL_HOST_LAYER_PAIR(Interface, Type, Name, Expression, Action)        \
  KETRIL_HOST_LAYER_READ(Interface, Type, Name, Expression)                      \
  Status SetState_##Name(TV7_Layer layer, InArg<Type> value) noexcept override { \
    return HostCall(#Interface ".SetState_" #Name, [&] { return Action; });      \
  }
// An operation: `Action` does it and may give a Status. `Arguments` is the parenthesised list of parameters.
#define KETRIL_HOST_METHOD(Interface, Name, Arguments, Action)     \
  Status Name Arguments noexcept override {                        \
    return HostCall(#Interface "." #Name, [&] { return Action; }); \
  }
