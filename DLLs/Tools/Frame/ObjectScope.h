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
// the order in which they were made, and every list. A call without a begin opens and breaks nothing. Raises
// nothing: freeing a wrapper calls no host.
void EndObjectScope();

// A scope for the length of a block.
class TObjectScope {
 public:
  TObjectScope() { BeginObjectScope(); }
  ~TObjectScope() { EndObjectScope(); }
  TObjectScope(const TObjectScope&) = delete;
  TObjectScope& operator=(const TObjectScope&) = delete;
};

// The wrapper that closing is freeing at the moment. Its entry is taken already.
extern const void* ObjectBeingClosed;

// Enters a wrapper that was just made into its registry; nothing when there is none.
template <class T>
void RecordIn(std::vector<T*>* registry, T* object) {
  if (registry) registry->push_back(object);
}

// Takes a wrapper that is being freed out of its registry; nothing when it is not there. The search starts at
// the newest entry, since most wrappers that are freed early are young.
//
// Closing walks the list and frees without a search, a fixed time for each wrapper. The list may grow under
// it but never shrinks: a wrapper that another one frees meanwhile leaves an empty entry, so that nothing is
// freed twice.
template <class T>
void ForgetIn(std::vector<T*>* registry, T* object) {
  if (!registry || object == ObjectBeingClosed) return;
  const auto found = std::find(registry->rbegin(), registry->rend(), object);
  if (found == registry->rend()) return;
  if (ObjectScopeClosing)
    *found = nullptr;
  else
    registry->erase(std::next(found).base());
}

}  // namespace Ketril::Tools
