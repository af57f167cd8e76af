#include "DLLs/Tools/Geometry/ListContainer.h"

#include <gtest/gtest.h>

#include <functional>

#include "DLLs/Tools/Geometry/AbstractPolygon.h"

namespace Ketril::Tools {
namespace {

class ListContainer : public testing::Test {
 protected:
  // Squares of side 10 at (20 i, 0).
  ListContainer() {
    for (int i = 0; i < 5; ++i) {
      for (const TCoordPoint corner : {TCoordPoint{0, 0}, {10, 0}, {10, 10}, {0, 10}})
        squares[i].AddPoint({20 * i + corner.x, corner.y});
    }
  }
  std::vector<int> Numbers(TContainerIterator& iterator) {
    std::vector<int> numbers;
    for (TItem item = iterator.First(); item; item = iterator.Next())
      numbers.push_back(static_cast<int>(static_cast<TAbstractPolygon*>(item) - squares));
    return numbers;
  }
  std::vector<int> Numbers(TContainer& container) {
    const std::unique_ptr<TContainerIterator> iterator(container.CreateIterator());
    return Numbers(*iterator);
  }

  TAbstractPolygon squares[5];
  TListContainer list;
};

TEST_F(ListContainer, GrowsAsTold) {
  std::vector<std::int32_t> capacities;
  for (int i = 0; i < 95; ++i) {
    list.Insert(nullptr);
    if (capacities.empty() || capacities.back() != list.Capacity()) capacities.push_back(list.Capacity());
  }
  EXPECT_EQ(capacities, (std::vector<std::int32_t>{4, 8, 12, 28, 44, 60, 76, 95}));
  const auto text = [](auto call) -> std::string {
    try {
      call();
    } catch (const EListError& error) {
      return error.what();
    }
    return "";
  };
  EXPECT_EQ(text([&] { list.SetCapacity(94); }), "List capacity out of bounds (94)");
  EXPECT_EQ(text([&] { list.SetCapacity(134217728); }), "List capacity out of bounds (134217728)");
  EXPECT_EQ(text([&] { list.SetCount(-1); }), "List count out of bounds (-1)");
  EXPECT_EQ(text([&] { list.SetStorageToFixedArray(-1); }), "List capacity out of bounds (-1)");
  list.SetStorageToFixedArray(3);
  list.AtPut(2, &squares[1]);
  EXPECT_EQ(list.Capacity(), 3);
  EXPECT_EQ(list.Count(), 3);
  EXPECT_EQ(Numbers(list), (std::vector<int>{1}));
}

TEST_F(ListContainer, KeepsNullsAndDuplicatesUntilTheyGo) {
  for (TItem item : {TItem(&squares[0]), TItem(nullptr), TItem(&squares[1]), TItem(&squares[0])})
    list.Insert(item);
  list.AtInsert(9, &squares[4]);
  list.AtInsert(1, &squares[2]);
  EXPECT_EQ(list.Count(), 5);
  EXPECT_EQ(Numbers(list), (std::vector<int>{0, 2, 1, 0}));
  list.Delete(&squares[0]);
  list.Delete(&squares[3]);
  EXPECT_EQ(Numbers(list), (std::vector<int>{2, 1, 0}));
  EXPECT_EQ(list.At(1), nullptr);
  list.Pack();
  EXPECT_EQ(list.Count(), 3);
  EXPECT_EQ(list.At(3), nullptr);
  EXPECT_EQ(list.At(-1), nullptr);
}

TEST_F(ListContainer, CombinesWithAnother) {
  TListContainer other;
  for (int i : {0, 1, 2}) list.Insert(&squares[i]);
  for (int i : {1, 3}) other.Insert(&squares[i]);
  list.Add(&other);
  EXPECT_EQ(Numbers(list), (std::vector<int>{0, 1, 2, 3}));
  list.Intersect(&other);
  EXPECT_EQ(Numbers(list), (std::vector<int>{1, 3}));
  list.Subtract(&other);
  EXPECT_EQ(list.Count(), 0);
  other.CopyTo(&other);
  EXPECT_EQ(Numbers(other), (std::vector<int>{1, 3, 1, 3}));
  other.Subtract(&other);
  EXPECT_EQ(other.Count(), 0);
  list.Add(nullptr);
}

TEST_F(ListContainer, WalksByAreaAndDeletesAtTheEnd) {
  for (TAbstractPolygon& square : squares) list.Insert(&square);
  TListContainerIterator iterator(&list);
  iterator.SetState_FilterArea(70, 20, 30, 10);  // corners touch squares 1 and 3
  EXPECT_EQ(Numbers(iterator), (std::vector<int>{1, 2, 3}));
  iterator.SetState_FilterArea(2000000000, 0, 0, -2000000000);
  EXPECT_EQ(iterator.FilterArea(), (TCoordRect{999990000, 0, 0, -999990000}));
  {
    TListContainerIterator deleting(&list);
    deleting.Delete(&squares[2]);
    EXPECT_EQ(list.Count(), 5);
    TListContainerIterator changed(&list);
    changed.Delete(&squares[0]);
    changed.ChangeOwnerContainer(&list);
  }
  EXPECT_EQ(Numbers(list), (std::vector<int>{0, 1, 3, 4}));
  int seen = 0;
  list.ProcessItemsAllowAbort([&](TItem) { return ++seen == 2; });
  EXPECT_EQ(seen, 2);
}

TEST_F(ListContainer, RefusesWhatItCannot) {
  std::int32_t index = 0;
  const auto text = [](auto call) -> std::string {
    try {
      call();
    } catch (const EMethodCallNotAllowedException& error) {
      return error.what();
    }
    return "";
  };
  EXPECT_EQ(text([&] { list.Search(nullptr, index); }), "Container doesn't support [Search] method.");
  EXPECT_EQ(text([&] { list.Compare(nullptr, nullptr); }),
            "Container doesn't support [Compare] method (Make sure this is a sorted container).");
  TContainerBase none;
  const std::pair<const char*, std::function<void()>> calls[] = {
      {"AcceptDuplicates", [&] { none.AcceptDuplicates(true); }},
      {"At", [&] { none.At(0); }},
      {"AtInsert", [&] { none.AtInsert(0, nullptr); }},
      {"AtPut", [&] { none.AtPut(0, nullptr); }},
      {"Count", [&] { none.Count(); }},
      {"CreateIterator", [&] { none.CreateIterator(); }},
      {"Delete", [&] { none.Delete(nullptr); }},
      {"DeleteAll", [&] { none.DeleteAll(); }},
      {"FreeAll", [&] { none.FreeAll(); }},
      {"GetFirst", [&] { none.GetFirst(); }},
      {"GetLast", [&] { none.GetLast(); }},
      {"GetRebuilThreshold", [&] { none.GetRebuilThreshold(); }},
      {"IndexOf", [&] { none.Exists(nullptr); }},
      {"Insert", [&] { none.Insert(nullptr); }},
      {"MemoryUsed", [&] { none.MemoryUsed(); }},
      {"Pack", [&] { none.Pack(); }},
      {"ProcessItems", [&] { none.ProcessItems([](TItem) {}); }},
      {"ProcessItemsAllowAbort", [&] { none.ProcessItemsAllowAbort([](TItem) { return true; }); }},
      {"Rebuild", [&] { none.Rebuild(); }},
      {"Search", [&] { none.Search(nullptr, index); }},
      {"SetRebuilThreshold", [&] { none.SetRebuilThreshold(1); }},
  };
  for (const auto& [method, call] : calls)
    EXPECT_EQ(text(call), "Container doesn't support [" + std::string(method) + "] method.");
  EXPECT_FALSE(none.RequiresRebuild());
}

}  // namespace
}  // namespace Ketril::Tools
