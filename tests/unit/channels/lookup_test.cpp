// The name that is stored for a frequency.
#include "tests/unit/channels/channels_test.h"

namespace {

using test::TraceOf;

class ChannelLookup : public test::ChannelsTest {
  protected:
    WCHAR name[kChannelTextCapacity] = L"as it was";
};

TEST_F(ChannelLookup, GivesTheNameOfTheGroupsChannel) {
    Put(L"Mine", L"One", 9850);
    Put(L"Mine", L"Two", 9860);
    EXPECT_EQ(db.CEDB_FindChannelName(L"Mine", 9860, name), 1);
    EXPECT_STREQ(name, L"Two");
}

TEST_F(ChannelLookup, NoGroupTouchesNothing) {
    EXPECT_EQ(db.CEDB_FindChannelName(nullptr, 9850, name), 0);
    EXPECT_STREQ(name, L"as it was");
    EXPECT_EQ(GetFileAttributesW(L"\\KORA.vol"), INVALID_FILE_ATTRIBUTES);
}

TEST_F(ChannelLookup, AGroupWithoutARecordLeavesTheNameAsItWasAndTheVolumeMounted) {
    Put(L"Mine", L"One", 9850);
    EXPECT_EQ(db.CEDB_FindChannelName(L"Yours", 9850, name), 0);
    EXPECT_STREQ(name, L"as it was");
    EXPECT_TRUE(VolumeIsMounted());
    EXPECT_TRUE(db.CEDB_Close());
}

TEST_F(ChannelLookup, TheNextOperationWorksOnAVolumeThatWasLeftMounted) {
    Put(L"Mine", L"One", 9850);
    CChannelDB leaving;
    EXPECT_EQ(leaving.CEDB_FindChannelName(L"Yours", 9850, name), 0);
    EXPECT_EQ(db.CEDB_FindChannelName(L"Mine", 9850, name), 1);
    EXPECT_STREQ(name, L"One");
    EXPECT_TRUE(leaving.CEDB_Close());
}

TEST_F(ChannelLookup, AFrequencyThatIsNotStoredClearsTheName) {
    Put(L"Mine", L"One", 9850);
    EXPECT_EQ(db.CEDB_FindChannelName(L"Mine", 9860, name), 0);
    EXPECT_STREQ(name, L"");
}

TEST_F(ChannelLookup, AChannelOfALaterGroupAlsoNamesTheFrequency) {
    Put(L"Mine", L"One", 9850);
    Put(L"Yours", L"Theirs", 9860);
    EXPECT_EQ(db.CEDB_FindChannelName(L"Mine", 9860, name), 1);
    EXPECT_STREQ(name, L"Theirs");
}

TEST_F(ChannelLookup, AChannelOfAnEarlierGroupDoesNotNameTheFrequency) {
    Put(L"Ahead", L"Theirs", 9860);
    Put(L"Mine", L"One", 9850);
    EXPECT_EQ(db.CEDB_FindChannelName(L"Mine", 9860, name), 0);
}

TEST_F(ChannelLookup, WritesNothingToTheTrace) {
    Put(L"Mine", L"One", 9850);
    EXPECT_EQ(TraceOf([&] { db.CEDB_FindChannelName(L"Mine", 9850, name); }), "");
}

}  // namespace
