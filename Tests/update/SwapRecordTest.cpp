#include "update/SwapRecord.h"

#include <gtest/gtest.h>

namespace orvu {
namespace {

using Phase = SwapRecord::Phase;

TEST(SwapRecordTest, WhatWasWrittenIsRead) {
    for (const auto phase : {Phase::none, Phase::swapping, Phase::trial, Phase::takingBack}) {
        const SwapRecord record{.phase = phase, .from = 10, .to = 12, .starts = 2, .takenBack = 9};

        EXPECT_EQ(SwapRecord::parse(record.string()), record);
    }
}

TEST(SwapRecordTest, AnythingElseIsNoRecord) {
    for (const char* const text :
         {"", "\n", "orvu-swap-1 1 10 12 0 0", "orvu-swap-2 1 10 12 0 0\n",
          "orvu-swap-1 4 10 12 0 0\n", "orvu-swap-1 -1 10 12 0 0\n", "orvu-swap-1 1 10 12 3 0\n",
          "orvu-swap-1 1 10 12 0\n", "orvu-swap-1 1 10 12 0 0 0\n", "orvu-swap-1 1 010 12 0 0\n",
          "orvu-swap-1 1 -10 12 0 0\n", "orvu-swap-1  1 10 12 0 0\n",
          "orvu-swap-1 1 10 12 0 0\n\n"}) {
        EXPECT_FALSE(SwapRecord::parse(text)) << text;
    }
}

}  // namespace
}  // namespace orvu
