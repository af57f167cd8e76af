#include "Ketril/ToolsLibrary.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>

#include "Editor/Files/BoardFile.h"
#include "Ketril/Exit.h"

namespace Ketril::Command {

namespace {

// The tools lie beside the editor's library, whose place the loader knows.
std::string ToolsPath() {
  if (const char* chosen = std::getenv("KETRIL_TOOLS")) return chosen;
  Dl_info editor{};
  const char* name = "libKetrilTools.so";
  if (dladdr(reinterpret_cast<void*>(&Editor::WriteBoardText), &editor) == 0 || !editor.dli_fname)
    return name;
  return (std::filesystem::path(editor.dli_fname).parent_path() / name).string();
}

}  // namespace

ToolsLibrary::ToolsLibrary() {
  handle_ = dlopen(ToolsPath().c_str(), RTLD_NOW | RTLD_LOCAL);
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
