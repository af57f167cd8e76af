// Root of the library's board objects.
#pragma once

namespace Ketril::Tools {

// Objects of this family live on the heap and are freed by `Free`.
class TAbstractObject {
 public:
  virtual void Free() { delete this; }

  TAbstractObject(const TAbstractObject&) = delete;
  TAbstractObject& operator=(const TAbstractObject&) = delete;

 protected:
  TAbstractObject() = default;
  virtual ~TAbstractObject() = default;
};

}  // namespace Ketril::Tools
