#pragma once

#include <gtest/gtest.h>

#include "base/fault.h"

namespace fathomline {

// The statement raises the fault of that number.
template <class Statement>
void ExpectFault(FaultNumber number, Statement&& statement) {
  try {
    statement();
    ADD_FAILURE() << "no fault; expected: " << Description(number);
  } catch (const Fault& fault) {
    EXPECT_EQ(fault.Number(), static_cast<int>(number)) << fault.what();
  }
}

}  // namespace fathomline
