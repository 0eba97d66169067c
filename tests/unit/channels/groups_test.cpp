// Groups: added, found, renamed, emptied and removed.
#include "tests/unit/channels/channels_test.h"

namespace {

using test::StoredChannel;
using test::TraceOf;
using testing::ElementsAre;
using testing::IsEmpty;

class ChannelGroups : public test::ChannelsTest {
  protected:
    int Rename(const wchar_t* from, const wchar_t* to) {
        int result = -2;
        TraceOf([&] { result = db.CEDB_RenameGroup(from, to); });
        return result;
    }
    void Delete(int mode, const wchar_t* group) {
        TraceOf([&] { db.CEDB_DeleteGroup(mode, group); });
    }
};

TEST_F(ChannelGroups, AnAddedGroupIsFoundByItsExactName) {
    CEOID oid = 0;
    TraceOf([&] { oid = db.CEDB_AddGroup(L"Mine"); });
    ASSERT_NE(oid, 0u);
    EXPECT_THAT(Groups(), ElementsAre(L"Mine"));
    EXPECT_EQ(db.CEDB_FindGroup(L"Mine"), oid);
    EXPECT_EQ(db.CEDB_FindGroup(L"mine"), 0u);
    EXPECT_EQ(db.CEDB_FindGroup(L"Min"), 0u);
}

TEST_F(ChannelGroups, AGroupThatExistsIsNotAddedAgain) {
    PutGroup(L"Mine");
    TraceOf([&] { EXPECT_EQ(db.CEDB_AddGroup(L"Mine"), 0u); });
    EXPECT_THAT(Groups(), ElementsAre(L"Mine"));
}

TEST_F(ChannelGroups, TheWriteOfAGroupThatFailsLeavesTheVolumeMounted) {
    PutGroup(L"Mine");
    const std::wstring tooLong(40000, L'x');
    CEOID added = 1;
    TraceOf([&] { added = db.CEDB_AddGroup(tooLong.c_str()); });
    EXPECT_EQ(added, 0u);
    EXPECT_TRUE(VolumeIsMounted());
    EXPECT_TRUE(db.CEDB_Close());
    EXPECT_THAT(Groups(), ElementsAre(L"Mine"));
}

TEST_F(ChannelGroups, RenamingChangesTheGroupAndItsChannels) {
    PutGroup(L"Mine");
    Put(L"Mine", L"One", 9850, L"guide");
    const CEOID last = Put(L"Mine", L"Two", 9860);
    EXPECT_EQ(Rename(L"Mine", L"Ours"), static_cast<int>(last));
    EXPECT_THAT(Groups(), ElementsAre(L"Ours"));
    EXPECT_THAT(Channels(), ElementsAre(StoredChannel{L"Ours", L"One", 9850, L"guide"},
                                        StoredChannel{L"Ours", L"Two", 9860, L""}));
}

TEST_F(ChannelGroups, RenamingToItsOwnNameSucceedsAndWritesNothing) {
    PutGroup(L"Mine");
    Put(L"Mine", L"One", 9850);
    const std::wstring longName(150, L'n');  // a rewritten one would be cut
    Put(L"Mine", longName.c_str(), 9860);
    const std::string before = VolumeBytes();
    EXPECT_EQ(Rename(L"Mine", L"Mine"), 1);
    EXPECT_EQ(VolumeBytes(), before);
    EXPECT_THAT(Channels(), ElementsAre(StoredChannel{L"Mine", L"One", 9850, L""},
                                        StoredChannel{L"Mine", longName, 9860, L""}));
}

TEST_F(ChannelGroups, RenamingAnUnknownGroupFails) {
    PutGroup(L"Mine");
    EXPECT_EQ(Rename(L"Yours", L"Ours"), 0);
    EXPECT_THAT(Groups(), ElementsAre(L"Mine"));
}

TEST_F(ChannelGroups, RenamingAGroupWithoutChannelsAnswersMinusOneAndRenamesIt) {
    PutGroup(L"Mine");
    Put(L"Ahead", L"One", 9850);
    EXPECT_EQ(Rename(L"Mine", L"Ours"), -1);
    EXPECT_THAT(Groups(), ElementsAre(L"Ours"));
    EXPECT_EQ(Channels()[0].group, L"Ahead");
}

TEST_F(ChannelGroups, RenamingRunsToTheEndOfTheDatabase) {
    PutGroup(L"Mine");
    Put(L"Ahead", L"Before", 9840);
    Put(L"Mine", L"One", 9850);
    Put(L"Yours", L"Theirs", 9860);
    Rename(L"Mine", L"Ours");
    EXPECT_THAT(Channels(), ElementsAre(StoredChannel{L"Ahead", L"Before", 9840, L""},
                                        StoredChannel{L"Ours", L"One", 9850, L""},
                                        StoredChannel{L"Ours", L"Theirs", 9860, L""}));
}

TEST_F(ChannelGroups, RenamingCutsNamesAndGuidesOfMoreThan99Characters) {
    PutGroup(L"Mine");
    const std::wstring longText(150, L'n');
    Put(L"Mine", longText.c_str(), 9850, longText.c_str());
    Rename(L"Mine", L"Ours");
    ASSERT_EQ(Channels().size(), 1u);
    EXPECT_EQ(Channels()[0].name, std::wstring(99, L'n'));
    EXPECT_EQ(Channels()[0].guide, std::wstring(99, L'n'));
}

TEST_F(ChannelGroups, EmptyingAGroupKeepsItListed) {
    PutGroup(L"Mine");
    Put(L"Mine", L"One", 9850);
    Put(L"Mine", L"Two", 9860);
    Put(L"Yours", L"Theirs", 9850);
    Delete(kEmptyGroup, L"Mine");
    EXPECT_THAT(Channels(), ElementsAre(StoredChannel{L"Yours", L"Theirs", 9850, L""}));
    EXPECT_THAT(Groups(), ElementsAre(L"Mine"));
}

TEST_F(ChannelGroups, RemovingAGroupTakesItsNameToo) {
    PutGroup(L"Mine");
    PutGroup(L"Yours");
    Put(L"Mine", L"One", 9850);
    Delete(kRemoveGroup, L"Mine");
    EXPECT_THAT(Channels(), IsEmpty());
    EXPECT_THAT(Groups(), ElementsAre(L"Yours"));
}

TEST_F(ChannelGroups, RemovingAnUnknownGroupChangesNothing) {
    PutGroup(L"Mine");
    Put(L"Mine", L"One", 9850);
    Delete(kRemoveGroup, L"Yours");
    EXPECT_EQ(Channels().size(), 1u);
    EXPECT_THAT(Groups(), ElementsAre(L"Mine"));
}

TEST_F(ChannelGroups, NoGroupIsNotDeleted) {
    Delete(kRemoveGroup, nullptr);
    EXPECT_EQ(GetFileAttributesW(L"\\KORA.vol"), INVALID_FILE_ATTRIBUTES);
}

}  // namespace
