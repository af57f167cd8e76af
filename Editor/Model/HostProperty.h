// A property of an object is a pair of methods behind the gate; these macros write that pair, so that a class
// of the editor reads as the table of its properties. `Field` is an lvalue of the object.
#pragma once

#include "Editor/HostCall.h"

#define KETRIL_HOST_READ(Interface, Type, Name, Expression)                                  \
  Status GetState_##Name(Type& value) noexcept override {                                    \
    return HostCall(#Interface ".GetState_" #Name, [&] { value = (Expression); });           \
  }
#define KETRIL_HOST_PROPERTY(Interface, Type, Name, Field)                                   \
  KETRIL_HOST_READ(Interface, Type, Name, Field)                                             \
  Status SetState_##Name(InArg<Type> value) noexcept override {                              \
    return HostCall(#Interface ".SetState_" #Name, [&] { this->Write([&] { (Field) = value; }); }); \
  }
