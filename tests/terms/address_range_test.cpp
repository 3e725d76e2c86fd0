#include "brum/terms/address_range.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "brum/terms/arena.h"
#include "brum/terms/term_manager.h"

namespace {

bool system_is_out_of_memory = false;

}  // namespace

/// Stands for the C library's function of this name, in this program.
extern "C" int mprotect(void* start, std::size_t bytes, int protection) noexcept {
  if (system_is_out_of_memory) {
    errno = ENOMEM;
    return -1;
  }
  return static_cast<int>(::syscall(SYS_mprotect, start, bytes, protection));
}

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

TEST(AddressRange, TakesTheFirstPlaceThatIsFree) {
  std::vector<std::unique_ptr<AddressRange>> ranges;
  std::vector<void*> places;
  for (std::size_t i = 0; i < 5; ++i) {
    ranges.push_back(std::make_unique<AddressRange>());
    places.push_back(ranges.back()->take(8));
  }
  if (places.back() == nullptr) {
    GTEST_SKIP() << "this system gives no fixed addresses";
  }
  for (const std::size_t freed : {3U, 1U}) {
    ranges[freed].reset();
  }
  for (const std::size_t found : {1U, 3U}) {
    ranges[found] = std::make_unique<AddressRange>();
    EXPECT_EQ(ranges[found]->take(8), places[found]);
  }
}

// As a mapping of somebody else's there would be.
TEST(AddressRange, LeavesAPlaceAloneThatIsTaken) {
  void* place = nullptr;
  {
    AddressRange range;
    place = range.take(8);
  }
  if (place == nullptr) {
    GTEST_SKIP() << "this system gives no fixed addresses";
  }
  constexpr std::size_t page = 65'536;
  ASSERT_EQ(::mmap(place, page, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0), place);
  {
    AddressRange range;
    EXPECT_NE(range.take(8), place);
  }
  ::munmap(place, page);
  AddressRange range;
  EXPECT_EQ(range.take(8), place);
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

TEST(AddressRange, GivesNothingWhenTheSystemHasNoMemory) {
  AddressRange range;
  void* first = range.take(8);
  if (first == nullptr) {
    GTEST_SKIP() << "this system gives no fixed addresses";
  }
  system_is_out_of_memory = true;
  void* refused = range.take(std::size_t{1} << 24U);
  system_is_out_of_memory = false;
  EXPECT_EQ(refused, nullptr);
  EXPECT_EQ(range.take(8), static_cast<std::byte*>(first) + 8);
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
