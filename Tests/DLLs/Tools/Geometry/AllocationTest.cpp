// What the clipper and its records say when memory runs out. Arrays of the whole program come from here.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <memory_resource>
#include <new>
#include <set>

#include "DLLs/Tools/Geometry/Contour.h"
#include "Tests/DLLs/Tools/Geometry/ClipperShapes.h"

namespace {

// How many more arrays there are to be; below 0, any number.
thread_local int arrays_left = -1;

void* TakeArray(std::size_t size) noexcept {
  if (arrays_left == 0) return nullptr;
  if (arrays_left > 0) --arrays_left;
  return std::malloc(size != 0 ? size : 1);
}

}  // namespace

void* operator new[](std::size_t size) {
  if (void* block = TakeArray(size)) return block;
  throw std::bad_alloc();
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return TakeArray(size);
}
void operator delete[](void* block) noexcept {
  std::free(block);
}
void operator delete[](void* block, std::size_t) noexcept {
  std::free(block);
}
void operator delete[](void* block, const std::nothrow_t&) noexcept {
  std::free(block);
}

namespace Ketril::Tools::Tests {
namespace {

// The texts of a call of which the first array fails, then the second, and so on until none does.
std::vector<std::string> TextsOfFailingArrays(const std::function<void()>& call) {
  std::vector<std::string> texts;
  for (int k = 0;; ++k) {
    arrays_left = k;
    try {
      call();
      arrays_left = -1;
      return texts;
    } catch (const Exception& failure) {
      arrays_left = -1;
      texts.push_back(failure.what());
    }
  }
}

TEST(Allocation, RecordsSayWhatTheyHadNoMemoryFor) {
  const std::string kMalloc = "memory allocation in GPC_MALLOC";
  EXPECT_EQ(TextsOfFailingArrays([] { TVertexListOwner(NewVertexList(3)); }), std::vector{kMalloc});
  const TVertexListOwner list(NewVertexList(3));
  EXPECT_EQ(TextsOfFailingArrays([&] { TVertexListOwner(CopyVertexList(list.get())); }),
            std::vector{kMalloc});
  const TPolygonOwner polygon(NewPolygon());
  AddContour(polygon.get(), list.get(), false);
  EXPECT_EQ(TextsOfFailingArrays([&] {
              EXPECT_EQ(polygon->num_contours, 1);
              AddContour(polygon.get(), list.get(), true);
            }),
            (std::vector<std::string>{"contour hole addition", "contour addition", kMalloc}));
  EXPECT_EQ(polygon->num_contours, 2);
}

TEST(Allocation, AContourThatCannotGrowStaysAsItIs) {
  const auto contour = MakeCounted<TContour>();
  for (int i = 0; i < 19; ++i) contour->Append(i, i);
  EXPECT_EQ(TextsOfFailingArrays([&] {
              EXPECT_EQ(contour->GetState_Count(), 19);
              contour->Append(19, 19);
            }),
            std::vector<std::string>{"memory allocation in GPC_MALLOC"});
  EXPECT_EQ(contour->CoordVertex(19), (TCoordPoint{19, 19}));
}

TEST(Allocation, ResultTablesOfTheClipper) {
  TRing square = Rectangle(0, 0, 8, 8), inner = Rectangle(2, 2, 6, 6);
  const Tgpc_vertex_list square_list{4, square.data()}, inner_list{4, inner.data()};
  const TPolygonOwner subject(NewPolygon()), clip(NewPolygon()), result(NewPolygon());
  AddContour(subject.get(), &square_list, false);
  AddContour(clip.get(), &inner_list, false);
  AddContour(result.get(), &inner_list, false);
  // Two contours come out: the outline and the hole.
  EXPECT_EQ(TextsOfFailingArrays([&] {
              EXPECT_EQ(result->num_contours, 1);
              ClipPolygons(eClipDifference, subject.get(), clip.get(), result.get());
            }),
            (std::vector<std::string>{"hole flag table creation", "contour creation", "vertex creation",
                                      "vertex creation"}));
  EXPECT_EQ(result->num_contours, 2);
}

// Memory that fails at the k-th request.
class TFailingMemory : public std::pmr::memory_resource {
 public:
  explicit TFailingMemory(int left) : left_(left) {}
  bool HasFailed() const { return left_ < 0; }

 private:
  void* do_allocate(std::size_t size, std::size_t alignment) override {
    if (left_-- <= 0) throw std::bad_alloc();
    return std::pmr::new_delete_resource()->allocate(size, alignment);
  }
  void do_deallocate(void* block, std::size_t size, std::size_t alignment) override {
    std::pmr::new_delete_resource()->deallocate(block, size, alignment);
  }
  bool do_is_equal(const memory_resource& other) const noexcept override { return this == &other; }

  int left_;
};

TEST(Allocation, WorkingMemoryOfTheClipper) {
  TShape many, wide;
  for (int i = 0; i < 600; ++i) many.rings.push_back(Rectangle(10 * i, 0, 10 * i + 5, 600));
  for (int i = 0; i < 600; ++i) wide.rings.push_back(Rectangle(0, 10 * i, 6000, 10 * i + 5));
  std::set<std::string> texts;
  for (int k = 0;; ++k) {
    TFailingMemory memory(k);
    std::pmr::set_default_resource(&memory);
    try {
      Clip(eClipExclusiveOr, many, wide);
    } catch (const Exception& failure) {
      texts.insert(failure.what());
    }
    std::pmr::set_default_resource(nullptr);
    if (!memory.HasFailed()) break;
  }
  EXPECT_EQ(texts, (std::set<std::string>{
                       "contributing Subject Contours table creation",
                       "contributing Clip Contours table creation", "memory allocation in GPC_MALLOC",
                       "memory allocation in GPC_REALLOC", "sbt creation", "vertex creation"}));
}

}  // namespace
}  // namespace Ketril::Tools::Tests
