#include "DLLs/Tools/Frame/ObjectScope.h"

#include <memory>
#include <utility>

#include "DLLs/Tools/Frame/PrimitivesGroups.h"
#include "DLLs/Tools/Frame/PrimitivesLayerObject.h"
#include "DLLs/Tools/Frame/PrimitivesLibrary.h"

namespace Ketril::Tools {

std::int32_t ObjectScopeDepth = 0;
bool ObjectScopeClosing = false;
const void* ObjectBeingClosed = nullptr;
std::vector<TPrimitive*>* PrimitiveRegistry = nullptr;
std::vector<TPCBComponentLibrary*>* LibraryRegistry = nullptr;
std::vector<TLayerObject*>* LayerObjectRegistry = nullptr;
std::unordered_map<std::uintptr_t, TNet*>* NetMap = nullptr;

namespace {

// A run on a board makes thousands of wrappers: the lists do not grow before that many.
constexpr std::size_t kPrimitiveCapacity = 4096;
constexpr std::size_t kLibraryCapacity = 256;
constexpr std::size_t kLayerObjectCapacity = 1024;

template <class T>
std::unique_ptr<std::vector<T*>> NewRegistry(std::size_t capacity) {
  auto registry = std::make_unique<std::vector<T*>>();
  registry->reserve(capacity);
  return registry;
}

void FreeRecorded(TPrimitive* primitive) {
  primitive->Free();
}
template <class T>
void FreeRecorded(T* object) {
  delete object;
}

template <class T>
void CloseRegistry(std::vector<T*>*& registry) {
  if (!registry) return;
  for (std::size_t i = 0; i < registry->size(); ++i) {
    T* object = std::exchange((*registry)[i], nullptr);
    if (!object) continue;
    ObjectBeingClosed = object;
    FreeRecorded(object);
  }
  ObjectBeingClosed = nullptr;
  delete std::exchange(registry, nullptr);
}

// Nets that were read with no scope open are recorded nowhere else: the map is all that knows them.
void DropNetMap() {
  const std::unique_ptr<std::unordered_map<std::uintptr_t, TNet*>> map(std::exchange(NetMap, nullptr));
  if (!map || PrimitiveRegistry) return;
  for (const auto& [key, net] : *map) net->Free();
}

}  // namespace

void BeginObjectScope() {
  if (ObjectScopeDepth > 0 || ObjectScopeClosing) {
    ++ObjectScopeDepth;
    return;
  }
  DropNetMap();
  auto nets = std::make_unique<std::unordered_map<std::uintptr_t, TNet*>>();
  auto primitives = NewRegistry<TPrimitive>(kPrimitiveCapacity);
  auto libraries = NewRegistry<TPCBComponentLibrary>(kLibraryCapacity);
  auto layer_objects = NewRegistry<TLayerObject>(kLayerObjectCapacity);
  NetMap = nets.release();
  PrimitiveRegistry = primitives.release();
  LibraryRegistry = libraries.release();
  LayerObjectRegistry = layer_objects.release();
  ObjectScopeDepth = 1;
}

void EndObjectScope() {
  if (ObjectScopeDepth > 0) --ObjectScopeDepth;
  if (ObjectScopeDepth > 0 || ObjectScopeClosing) return;
  ObjectScopeClosing = true;
  DropNetMap();
  CloseRegistry(PrimitiveRegistry);
  CloseRegistry(LibraryRegistry);
  CloseRegistry(LayerObjectRegistry);
  ObjectScopeClosing = false;
}

}  // namespace Ketril::Tools
