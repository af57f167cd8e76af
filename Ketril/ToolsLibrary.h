// The tools library, loaded at run time and asked for its functions by name, as any editor does.
#pragma once

#include <string>

namespace Ketril::Command {

class ToolsLibrary {
 public:
  // Loads the library that the environment variable KETRIL_TOOLS names, else libKetrilTools.so beside the
  // editor's library. Raises Failure with the loader's reason.
  ToolsLibrary();
  ToolsLibrary(const ToolsLibrary&) = delete;
  ToolsLibrary& operator=(const ToolsLibrary&) = delete;
  ~ToolsLibrary();

  // The export of that name as a pointer to a function of type `F`; raises Failure when there is none.
  template <class F>
  F* Find(const char* name) const {
    return reinterpret_cast<F*>(FindSymbol(name));
  }

 private:
  void* FindSymbol(const char* name) const;
  void* handle_ = nullptr;
};

}  // namespace Ketril::Command
