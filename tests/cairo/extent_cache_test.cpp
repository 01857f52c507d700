#include <gtest/gtest.h>

#include <backends/cairo/internal/extent_cache.h>

#include <string>

using nodeline::cairo::ExtentCache;
using nodeline::cairo::TextExtent;

TEST(ExtentCache, FindsWhatWasInserted) {
    ExtentCache cache;
    EXPECT_EQ(cache.Find("main"), nullptr);
    cache.Insert("main", {1.0, 2.0, 3.0});
    ASSERT_NE(cache.Find("main"), nullptr);
    EXPECT_EQ(*cache.Find("main"), (TextExtent{1.0, 2.0, 3.0}));
    EXPECT_EQ(cache.Find("mai"), nullptr);
}

TEST(ExtentCache, HoldsNoMoreThanTwoGenerations) {
    ExtentCache cache;
    for (std::size_t n = 0; n < 10 * ExtentCache::kMaxTexts; ++n) {
        cache.Insert(std::to_string(n), {});
        ASSERT_LE(cache.CountTexts(), 2 * ExtentCache::kMaxTexts);
    }
    EXPECT_EQ(cache.Find("0"), nullptr);
    EXPECT_NE(cache.Find(std::to_string(10 * ExtentCache::kMaxTexts - 1)), nullptr);
}

TEST(ExtentCache, WhatIsUsedStays) {
    ExtentCache cache;
    cache.Insert("used", {4.0, 5.0, 6.0});
    for (std::size_t n = 0; n < 10 * ExtentCache::kMaxTexts; ++n) {
        cache.Insert(std::to_string(n), {});
        if (n % 100 == 0) {
            ASSERT_NE(cache.Find("used"), nullptr) << n;
        }
    }
    EXPECT_EQ(*cache.Find("used"), (TextExtent{4.0, 5.0, 6.0}));
}

TEST(ExtentCache, LongTextsMakeItForgetSooner) {
    ExtentCache cache;
    for (char c = 'a'; c <= 'z'; ++c) {
        cache.Insert(std::string(ExtentCache::kMaxBytes / 4, c), {});
        ASSERT_LE(cache.CountBytes(), 2 * ExtentCache::kMaxBytes);
    }
    EXPECT_EQ(cache.Find(std::string(ExtentCache::kMaxBytes / 4, 'a')), nullptr);
    EXPECT_NE(cache.Find(std::string(ExtentCache::kMaxBytes / 4, 'z')), nullptr);
}

TEST(ExtentCache, ATextTooLargeIsNotKept) {
    ExtentCache cache;
    cache.Insert("main", {});
    cache.Insert(std::string(ExtentCache::kMaxBytes + 1, 'x'), {});
    EXPECT_EQ(cache.CountTexts(), 1U);
    EXPECT_EQ(cache.CountBytes(), 4U);
}

TEST(ExtentCache, BytesAreCountedThroughAllMoves) {
    ExtentCache cache;
    for (std::size_t n = 0; n < ExtentCache::kMaxTexts; ++n) cache.Insert(std::to_string(n), {});
    cache.Insert("young", {});
    const std::size_t before = cache.CountBytes();
    ASSERT_NE(cache.Find("0"), nullptr);
    EXPECT_EQ(cache.CountBytes(), before);
    EXPECT_EQ(cache.CountTexts(), ExtentCache::kMaxTexts + 1);
}
