// Root of the library's board objects.
#pragma once

namespace Ketril::Tools {

// Objects of this family live on the heap and are freed by an operation of their own, never by `delete`.
class TAbstractObject {
 public:
  TAbstractObject(const TAbstractObject&) = delete;
  TAbstractObject& operator=(const TAbstractObject&) = delete;

 protected:
  TAbstractObject() = default;
  virtual ~TAbstractObject() = default;
};

}  // namespace Ketril::Tools
