// Records' encoded form and sort keys, byte for byte where it matters.
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "tests/native/cedb/volume_file.h"

using namespace cedb;

namespace {
constexpr PropertyId kName = Id(0x66, kTypeText);

std::string KeyOf(const SortColumn& column, const Record& record) {
    return SortKey(SortOrder{false, {column}}, record, 2, PlainCollator()).value_or("none");
}

Record Double(double value) {
    Property property;
    property.id = Id(1, kTypeDouble);
    std::memcpy(&property.number, &value, sizeof value);
    return {property};
}
}  // namespace

TEST(SortKey, DoublesOrderByValueAndBothZerosAreEqual) {
    const SortColumn column{Id(1, kTypeDouble), 0};
    const double ascending[] = {-1e308, -2.5, -1e-300, 0.0, 1e-300, 2.5, 1e308};
    for (std::size_t i = 1; i < std::size(ascending); ++i) {
        EXPECT_LT(KeyOf(column, Double(ascending[i - 1])), KeyOf(column, Double(ascending[i])));
    }
    EXPECT_EQ(KeyOf(column, Double(0.0)), KeyOf(column, Double(-0.0)));
}

TEST(SortKey, RecordsWithoutThePropertyComeLastUnlessAskedForFirst) {
    const Record with{Set(kName, u"\uFFFF").property};
    EXPECT_LT(KeyOf({kName, 0}, with), KeyOf({kName, 0}, {}));
    EXPECT_LT(KeyOf({kName, kSortDescending}, with), KeyOf({kName, kSortDescending}, {}));
    EXPECT_GT(KeyOf({kName, kSortUnknownFirst}, with), KeyOf({kName, kSortUnknownFirst}, {}));
    EXPECT_EQ(KeyOf({kName, kSortNonNull}, {}), "none");
}

TEST(SortKey, NoKeyIsTheBeginningOfAnother) {
    const SortColumn column{kName, 0};
    const std::string shorter = KeyOf(column, {Set(kName, u"ab").property});
    const std::string longer = KeyOf(column, {Set(kName, u"abc").property});
    EXPECT_NE(longer.substr(0, shorter.size()), shorter);
    EXPECT_LT(shorter, longer);
    EXPECT_LT(shorter, BehindPrefix(shorter));
    EXPECT_LT(BehindPrefix(shorter), longer);
}

TEST(RecordForm, WhatWasEncodedIsDecodedAgain) {
    Record record{Set(kName, u"K\u00F6ln \U0001F600").property, Set(Id(0x67, kTypeInt16), ~0ULL).property};
    Property blob;
    blob.id = Id(0x70, kTypeBlob);
    blob.bytes = std::string("\0\xFF\0", 3);
    record.push_back(blob);
    Record decoded;
    ASSERT_EQ(DecodeRecord(EncodeRecord(record), &decoded), Status::Ok);
    EXPECT_EQ(decoded, record);
}

TEST(RecordForm, RandomBytesAreRefusedOrComeOutAsTheyWentIn) {
    std::mt19937 random(20260101);
    const std::string good = EncodeRecord({Set(kName, u"abc").property, Set(Id(1, kTypeUInt32), 7).property});
    int accepted = 0;
    for (int round = 0; round < 100000; ++round) {
        std::string bytes = good.substr(0, random() % (good.size() + 1));
        for (unsigned hits = random() % 3; hits > 0 && !bytes.empty(); --hits) {
            bytes[random() % bytes.size()] = static_cast<char>(random());
        }
        Record record;
        if (DecodeRecord(bytes, &record) != Status::Ok) continue;
        ++accepted;
        EXPECT_EQ(EncodeRecord(record), bytes);
    }
    EXPECT_GT(accepted, 100);
}

TEST(SortOrders, RandomBytesAreRefusedOrComeOutAsTheyWentIn) {
    std::mt19937 random(20260102);
    const std::string good = EncodeOrders({SortOrder{true, {{kName, 4}, {Id(1, kTypeUInt32), 1}}}});
    for (int round = 0; round < 100000; ++round) {
        std::string bytes = good.substr(0, random() % (good.size() + 1));
        if (!bytes.empty()) bytes[random() % bytes.size()] = static_cast<char>(random() % 4);
        std::vector<SortOrder> orders;
        if (DecodeOrders(bytes, &orders) != Status::Ok) continue;
        for (const SortOrder& order : orders) EXPECT_TRUE(IsValid(order));
    }
}
