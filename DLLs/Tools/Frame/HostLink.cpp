#include "DLLs/Tools/Frame/HostLink.h"

#include <string>

namespace Ketril::Tools {

namespace {

const char* Reason(Status status) {
  switch (status) {
    case Status::InvalidArgument:
      return "an argument is not valid";
    case Status::OutOfMemory:
      return "out of memory";
    case Status::NotOnBoard:
      return "the object is not on a board";
    default:
      return "the editor could not do it";
  }
}

}  // namespace

void RaiseHostError(Status status, std::string_view view, const char* operation) {
  throw EHostError(
      status, std::string(operation) + ": a call of " + std::string(view) + " failed: " + Reason(status));
}

void RaiseEmptyReference(std::string_view view, const char* operation) {
  throw EEmptyReference(std::string(operation) + ": there is no " + std::string(view) + " to call");
}

void RaiseInterfaceCastError(std::string_view wanted) {
  throw EIntfCastError("The object does not offer " + std::string(wanted));
}

void RaiseClassCastError(std::string_view wanted) {
  throw EInvalidCast("The object is no " + std::string(wanted));
}

}  // namespace Ketril::Tools
