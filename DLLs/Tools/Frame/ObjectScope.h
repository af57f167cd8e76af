// The object scope: every wrapper made while it is open is recorded, and closing it frees them all at one
// time, so that tools make wrappers freely and forget them.
//
// Each export opens the scope first and closes it in a guaranteed last step. Exports may run inside exports:
// only the outermost pair opens and closes, the inner ones share what is open. There is one scope in the
// process and no lock: everything happens on the editor's thread.
#pragma once

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace Ketril::Tools {

class TPrimitive;
class TNet;
class TPCBComponentLibrary;
class TLayerObject;

extern std::int32_t ObjectScopeDepth;  // 0: closed
extern bool ObjectScopeClosing;        // only while the registries are being emptied

// Null while the scope is closed: a wrapper made then is not recorded and belongs to its maker. A recorded
// wrapper has one entry, until it is freed.
extern std::vector<TPrimitive*>* PrimitiveRegistry;
extern std::vector<TPCBComponentLibrary*>* LibraryRegistry;
extern std::vector<TLayerObject*>* LayerObjectRegistry;

// One `TNet` for each net, under the host's identity key of the net, so that within a scope all primitives of
// a net hand back the same wrapper. The wrappers stand in `PrimitiveRegistry` too; the map does not own them,
// and nobody frees one before the scope closes.
extern std::unordered_map<std::uintptr_t, TNet*>* NetMap;

// Opens the scope, or shares the open one.
void BeginObjectScope();

// Closes what the matching `BeginObjectScope` opened. At the outermost level frees every recorded wrapper, in
// the order in which they were made, and every list. A call without a begin changes nothing.
void EndObjectScope();

// A scope for the length of a block.
class TObjectScope {
 public:
  TObjectScope() { BeginObjectScope(); }
  ~TObjectScope() { EndObjectScope(); }
  TObjectScope(const TObjectScope&) = delete;
  TObjectScope& operator=(const TObjectScope&) = delete;
};

// Enters a wrapper that was just made into its registry. True when it was recorded: an open scope owns it now.
template <class T>
bool RecordIn(std::vector<T*>* registry, T* object) {
  if (!registry) return false;
  registry->push_back(object);
  return true;
}

// Takes a wrapper that is being freed out of its registry; nothing when it is not there. The search starts at
// the newest entry, since most wrappers that are freed early are young. While the scope closes the lists stay
// as they are: closing walks them, and without a search costs a fixed time for each wrapper.
template <class T>
void ForgetIn(std::vector<T*>* registry, T* object) {
  if (!registry || ObjectScopeClosing) return;
  const auto found = std::find(registry->rbegin(), registry->rend(), object);
  if (found != registry->rend()) registry->erase(std::next(found).base());
}

}  // namespace Ketril::Tools
