// What the tests of the platform share: real trees, listings, the environment, paths in the system's form.
#pragma once

#include "fixtures/Listing.h"
#include "fixtures/NativePath.h"
#include "fixtures/OrdinaryUser.h"
#include "fixtures/QtPrinters.h"
#include "fixtures/TempTree.h"
#include "fixtures/Variables.h"

#include <gmock/gmock.h>

#include <map>
#include <memory>
#include <vector>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

// Memory that is really in use, in blocks small enough to come from the heap.
inline constexpr size_t kBlock = 64 * 1024;
inline std::vector<std::unique_ptr<char[]>> TouchMemory(size_t blocks) {
  std::vector<std::unique_ptr<char[]>> touched(blocks);
  for (auto& block : touched)
    block = std::make_unique<char[]>(kBlock);
  return touched;
}
