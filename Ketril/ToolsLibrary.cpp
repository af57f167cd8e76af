#include "Ketril/ToolsLibrary.h"

#include <dlfcn.h>

#include <cstdlib>

#include "Ketril/Exit.h"

namespace Ketril::Command {

ToolsLibrary::ToolsLibrary() {
  const char* chosen = std::getenv("KETRIL_TOOLS");
  const char* name = chosen ? chosen : "libKetrilTools.so";
  handle_ = dlopen(name, RTLD_NOW | RTLD_LOCAL);
  if (!handle_) throw Failure(kExit_Failed, std::string("the tools library cannot be loaded: ") + dlerror());
}

ToolsLibrary::~ToolsLibrary() {
  if (handle_) dlclose(handle_);
}

void* ToolsLibrary::FindSymbol(const char* name) const {
  void* symbol = dlsym(handle_, name);
  if (!symbol) throw Failure(kExit_Failed, std::string("the tools library does not have ") + name);
  return symbol;
}

}  // namespace Ketril::Command
