#include "brum/terms/address_range.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "brum/terms/arena.h"
#include "brum/terms/term_manager.h"

namespace brum {
namespace {

constexpr std::size_t more_places_than_there_are = 100;

TEST(AddressRange, GivesTheSameAddressesAgainAfterItsEnd) {
  void* first = nullptr;
  {
    AddressRange range;
    first = range.take(64);
  }
  if (first == nullptr) {
    GTEST_SKIP() << "this system gives no fixed addresses";
  }
  AddressRange range;
  EXPECT_EQ(range.take(64), first);
}

TEST(AddressRange, GivesAdjacentZeroedMemory) {
  AddressRange range;
  auto* first = static_cast<unsigned char*>(range.take(24));
  if (first == nullptr) {
    GTEST_SKIP() << "this system gives no fixed addresses";
  }
  EXPECT_EQ(range.take(std::size_t{1} << 20U), first + 24);
  EXPECT_EQ(range.take(8), first + 24 + (std::size_t{1} << 20U));
  for (std::size_t i = 0; i < 24 + (std::size_t{1} << 20U); ++i) {
    ASSERT_EQ(first[i], 0U);
  }
  std::memset(first, 0xff, 24 + (std::size_t{1} << 20U) + 8);
}

TEST(AddressRange, RefusesMoreThanItHolds) {
  AddressRange range;
  EXPECT_EQ(range.take(std::size_t{1} << 40U), nullptr);
}

TEST(AddressRange, IsEmptyWhenAllPlacesAreTaken) {
  std::vector<std::unique_ptr<AddressRange>> ranges;
  for (std::size_t i = 0; i < more_places_than_there_are; ++i) {
    ranges.push_back(std::make_unique<AddressRange>());
  }
  EXPECT_EQ(ranges.back()->take(8), nullptr);
}

TEST(Arena, GoesOnWithoutFixedAddresses) {
  std::vector<std::unique_ptr<AddressRange>> ranges;
  for (std::size_t i = 0; i < more_places_than_there_are; ++i) {
    ranges.push_back(std::make_unique<AddressRange>());
  }
  TermManager mgr;
  const Term* sum = mgr.make_plus(mgr.make_number(1), mgr.make_number(2));
  EXPECT_EQ(sum->id, 3U);
}

TEST(TermManager, PlacesSymbolsAtTheSameAddressesEachTime) {
  std::vector<const void*> addresses[2];
  for (auto& run : addresses) {
    TermManager mgr;
    run.push_back(mgr.get_int_type());
    run.push_back(mgr.get_and_symbol());
    run.push_back(mgr.declare("x", mgr.get_int_type()));
    run.push_back(mgr.declare(std::string(100000, 'y'), mgr.make_bv_type(8)));
    run.push_back(mgr.declare("z", mgr.get_int_type()));
  }
  AddressRange probe;
  if (probe.take(8) == nullptr) {
    GTEST_SKIP() << "this system gives no fixed addresses";
  }
  EXPECT_EQ(addresses[0], addresses[1]);
}

}  // namespace
}  // namespace brum
