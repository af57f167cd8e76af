// The exceptions of the library. Messages are UTF-8. The exports catch nothing, so each of them reaches the
// editor.
#pragma once

#include <stdexcept>
#include <string>

#include "Interfaces/Interface.h"

namespace Ketril::Tools {

class Exception : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class ENotImplementedException : public Exception {
 public:
  ENotImplementedException() : Exception("Not implemented") {}
};

// The run-time's cast error: an object is not of the class that it was cast to ...
class EInvalidCast : public Exception {
 public:
  using Exception::Exception;
};
// ... or does not offer the interface.
class EIntfCastError : public EInvalidCast {
 public:
  using EInvalidCast::EInvalidCast;
};

// A host call answered with a failing status.
class EHostError : public Exception {
 public:
  EHostError(Ketril::Status status, const std::string& message) : Exception(message), status_(status) {}
  Ketril::Status Status() const { return status_; }

 private:
  Ketril::Status status_;
};

// A host call through a view of a wrapper that holds no host object.
class EEmptyReference : public Exception {
 public:
  using Exception::Exception;
};

// The library called itself wrongly. `source` is where.
class EAssertionFailed : public Exception {
 public:
  explicit EAssertionFailed(const std::string& source) : Exception("Assertion failure (" + source + ")") {}
};

// An index, or a layer in a map of layers, that is not there.
class EListError : public Exception {
 public:
  using Exception::Exception;
};

// A number that no layer of the family has.
class ELayerException : public Exception {
 public:
  using Exception::Exception;
};

// A layer set that cannot do what was asked, such as being walked without a bound.
class EPCB_LayerSetException : public Exception {
 public:
  using Exception::Exception;
};

}  // namespace Ketril::Tools
