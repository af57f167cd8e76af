// Named parameters of a command: a text of name and value pairs.
#pragma once

#include "Interfaces/Interface.h"

namespace Ketril {

// Where a parameter list is read from or saved to: bytes in order.
class IByteStream {
 public:
  // Reads up to `size` bytes; gives how many it read, fewer only at the end.
  virtual std::size_t Read(void* data, std::size_t size) = 0;
  virtual void Write(const void* data, std::size_t size) = 0;

 protected:
  ~IByteStream() = default;
};

// The text is a sequence of pairs Name=Value separated by |. There is no escaping: a value cannot hold |; it
// may hold =. Names compare without regard to case, for the ASCII letters.
class IParameterList : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IParameterList"};

  virtual bool GetModified() = 0;
  virtual void SetModified(bool modified) = 0;
  // Replace the whole text, from zero-terminated 8-bit or UTF-16 text.
  virtual void SetFromAnsi(const char* text) = 0;
  virtual void SetFromWide(const char16_t* text) = 0;
  // Adds a pair or replaces its value.
  virtual void AddParameter(const std::u16string& name, const std::u16string& value) = 0;
  virtual void RemoveParameter(const std::u16string& name) = 0;
  // False, and an empty value, when there is no such name.
  virtual bool GetParameter(const std::u16string& name, std::u16string& value) = 0;
  // Length of the text in UTF-16 code units.
  virtual std::int32_t GetLength() = 0;
  // Copies `size` code units of the text and a closing zero; -1 means all of it.
  virtual void CopyToBuffer(char16_t* buffer, std::int32_t size) = 0;
  virtual std::string GetAnsi() = 0;
  virtual std::u16string GetWide() = 0;
  virtual std::u16string GetText() = 0;
  // With `size` -1 the stream carries the length ahead of the text.
  virtual void LoadFromStream(IByteStream& stream, std::int32_t size) = 0;
  virtual void SaveToStream(IByteStream& stream, std::int32_t size) = 0;
  // Appends one character of code 13.
  virtual void AppendEnd() = 0;
  virtual void Clear() = 0;
  // Between the two, reads go through an index that is built once.
  virtual void BeginFastRead() = 0;
  virtual void EndFastRead() = 0;
};

// Diagnostics of the library's memory.
class IServerMemoryInfo : public IInterface {
 public:
  using Base = IInterface;
  static constexpr InterfaceId Id{"IServerMemoryInfo"};
  KETRIL_READ(std::uint64_t, AllocatedBytes);  // in use on the process's heap
  KETRIL_READ(std::uint64_t, ReservedBytes);   // taken from the system for that heap
  KETRIL_READ(std::int32_t, WrapperCount);     // wrappers held by the open object scope, 0 outside one
};

}  // namespace Ketril
