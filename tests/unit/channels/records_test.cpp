// One stored channel: read, inserted, updated, deleted.
#include <windows.h>

#include <commctrl.h>

#include "tests/unit/channels/channels_test.h"

namespace {

using test::Record;
using test::SentMessage;
using test::StoredChannel;
using test::TraceOf;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr char kOpened[] =
    "[CEDB_OpenDB]ERROR: Name already exists!: FileDB\n"
    "[CEDB_OpenDB]OK: opened database: FileDB\n";

class ChannelRecords : public test::ChannelsTest {};

TEST_F(ChannelRecords, ReadingFillsTheRecordAndTracesNameValueAndGuide) {
    const CEOID oid = Put(L"Mine", L"One", 9850, L"http://one");
    PropRecord record = {};
    BOOL unmounted = FALSE;
    EXPECT_EQ(TraceOf([&] { unmounted = db.CEDB_ReadRecord(oid, &record); }),
              std::string(kOpened) +
                  "lpPropRecord->szPropRecord_ChannelName: One"
                  "lpPropRecord->dwPropRecord_ChannelValue: 9850"
                  "lpPropRecord->szPropRecord_ChannelPGuide: http://one");
    EXPECT_TRUE(unmounted);
    EXPECT_EQ(record.oid, oid);
    EXPECT_STREQ(record.szCountryName, L"Mine");
    EXPECT_STREQ(record.szPropRecord_ChannelName, L"One");
    EXPECT_EQ(record.dwPropRecord_ChannelValue, 9850u);
    EXPECT_STREQ(record.szPropRecord_ChannelPGuide, L"http://one");
}

TEST_F(ChannelRecords, ALongNameIsReadWholeAndTracedAsFarAsTheDebugOutputHasRoom) {
    const std::wstring name(200, L'n');
    const CEOID oid = Put(L"Mine", name.c_str(), 9850);
    PropRecord record = {};
    const std::string trace = TraceOf([&] { db.CEDB_ReadRecord(oid, &record); });
    EXPECT_THAT(trace, testing::HasSubstr("ChannelName: " + std::string(80, 'n') + "lpPropRecord->dw"));
    EXPECT_EQ(record.szPropRecord_ChannelName, name);
}

TEST_F(ChannelRecords, WhatTheStoredRecordLacksKeepsWhatTheCallerHad) {
    const CEOID oid = PutProperties(kChannelDatabase, {TextProperty(kPropChannelName, L"Bare")});
    PropRecord record = Record(L"had", L"had", 9990, L"had");
    TraceOf([&] { db.CEDB_ReadRecord(oid, &record); });
    EXPECT_STREQ(record.szCountryName, L"had");
    EXPECT_STREQ(record.szPropRecord_ChannelName, L"Bare");
    EXPECT_EQ(record.dwPropRecord_ChannelValue, 9990u);
    EXPECT_STREQ(record.szPropRecord_ChannelPGuide, L"had");
}

TEST_F(ChannelRecords, ARecordThatIsGoneReadsAsItsIdentifierAlone) {
    Put(L"Mine", L"One", 9850);
    PropRecord record = Record(L"had", L"had", 9990, L"had");
    TraceOf([&] { EXPECT_TRUE(db.CEDB_ReadRecord(4711, &record)); });
    EXPECT_EQ(record.oid, 4711u);
    EXPECT_STREQ(record.szPropRecord_ChannelName, L"had");
}

TEST_F(ChannelRecords, AnUnknownPropertyIsSkippedWithoutAWord) {
    const CEOID oid = PutProperties(kChannelDatabase,
                                    {TextProperty(kPropChannelName, L"One"), NumberProperty(0x00990013, 7)});
    PropRecord record = {};
    EXPECT_EQ(TraceOf([&] { db.CEDB_ReadRecord(oid, &record); }),
              std::string(kOpened) + "lpPropRecord->szPropRecord_ChannelName: One");
}

TEST_F(ChannelRecords, AnInsertedChannelGetsARowAtTheEndOfTheList) {
    channelList.rows = 4;
    CEOID oid = 0;
    TraceOf([&] { oid = db.CEDB_InsertRecord(Record(L"Mine", L"One", 8755, L"http://one")); });
    ASSERT_NE(oid, 0u);
    EXPECT_THAT(Channels(), ElementsAre(StoredChannel{L"Mine", L"One", 8755, L"http://one"}));
    EXPECT_THAT(channelList.sent, ElementsAre(SentMessage{LVM_GETITEMCOUNT, 0, 0, L""},
                                              SentMessage{LVM_INSERTITEMW, 4, oid, L"One"},
                                              SentMessage{LVM_SETITEMTEXTW, 4, 1, L"87.5 MHz "}));
}

TEST_F(ChannelRecords, AnInsertOfTheSameGroupAndFrequencyIsRefusedAndTheListKeepsItsRows) {
    Put(L"Mine", L"One", 9850);
    CEOID oid = 1;
    TraceOf([&] { oid = db.CEDB_InsertRecord(Record(L"Mine", L"Other", 9850)); });
    EXPECT_EQ(oid, 0u);
    EXPECT_EQ(Channels().size(), 1u);
    EXPECT_THAT(channelList.sent, IsEmpty());
}

TEST_F(ChannelRecords, TheSameFrequencyMayStandInTwoGroupsWhoseOrderPutsTheOtherFirst) {
    Put(L"Mine", L"One", 9850);
    TraceOf([&] { EXPECT_NE(db.CEDB_InsertRecord(Record(L"Yours", L"One", 9850)), 0u); });
    EXPECT_EQ(Channels().size(), 2u);
}

TEST_F(ChannelRecords, AStoredFrequencyOfAnotherGroupMakesAHigherOneOfTheOwnGroupCountAsADuplicate) {
    Put(L"Yours", L"Theirs", 9850);
    const CEOID higher = Put(L"Mine", L"Higher", 10100);
    CEOID found = 0;
    EXPECT_EQ(db.CEDB_FindDuplicate(Record(L"Mine", L"New", 9850), &found), 1);
    EXPECT_EQ(found, higher);
    TraceOf([&] { EXPECT_EQ(db.CEDB_InsertRecord(Record(L"Mine", L"New", 9850)), 0u); });
}

TEST_F(ChannelRecords, AFrequencyThatNobodyStoredIsNoDuplicate) {
    Put(L"Mine", L"Higher", 10100);
    CEOID found = 77;
    EXPECT_EQ(db.CEDB_FindDuplicate(Record(L"Mine", L"New", 9850), &found), 0);
    EXPECT_EQ(found, 77u);
}

TEST_F(ChannelRecords, TheGroupOfADuplicateIsComparedWithItsLetterCase) {
    Put(L"mine", L"One", 9850);
    CEOID found = 0;
    EXPECT_EQ(db.CEDB_FindDuplicate(Record(L"Mine", L"New", 9850), &found), 0);
}

TEST_F(ChannelRecords, AChannelMayBeUpdatedWithoutChangingItsFrequency) {
    const CEOID oid = Put(L"Mine", L"One", 9850);
    channelList.selectionMark = 2;
    PropRecord record = Record(L"Mine", L"Uno", 9850, L"guide");
    record.oid = oid;
    CEOID written = 0;
    TraceOf([&] { written = db.CEDB_UpdateRecord(oid, record); });
    EXPECT_EQ(written, oid);
    EXPECT_THAT(Channels(), ElementsAre(StoredChannel{L"Mine", L"Uno", 9850, L"guide"}));
    EXPECT_THAT(channelList.sent, ElementsAre(SentMessage{LVM_GETSELECTIONMARK, 0, 0, L""},
                                              SentMessage{LVM_SETITEMTEXTW, 2, 0, L"Uno"},
                                              SentMessage{LVM_SETITEMTEXTW, 2, 1, L"98.5 MHz "}));
}

TEST_F(ChannelRecords, AnUpdateShowsOnTheFirstRowAsWell) {
    const CEOID oid = Put(L"Mine", L"One", 9850);
    channelList.selectionMark = 0;
    PropRecord record = Record(L"Mine", L"Uno", 9850);
    record.oid = oid;
    TraceOf([&] { EXPECT_EQ(db.CEDB_UpdateRecord(oid, record), oid); });
    EXPECT_THAT(channelList.sent, ElementsAre(SentMessage{LVM_GETSELECTIONMARK, 0, 0, L""},
                                              SentMessage{LVM_SETITEMTEXTW, 0, 0, L"Uno"},
                                              SentMessage{LVM_SETITEMTEXTW, 0, 1, L"98.5 MHz "}));
}

TEST_F(ChannelRecords, AnUpdateWithoutASelectionMarkLeavesTheRowsAlone) {
    const CEOID oid = Put(L"Mine", L"One", 9850);
    PropRecord record = Record(L"Mine", L"Uno", 9860);
    record.oid = oid;
    TraceOf([&] { EXPECT_EQ(db.CEDB_UpdateRecord(oid, record), oid); });
    EXPECT_THAT(channelList.sent, ElementsAre(SentMessage{LVM_GETSELECTIONMARK, 0, 0, L""}));
}

TEST_F(ChannelRecords, AnUpdateToTheFrequencyOfAnotherChannelOfTheGroupIsRefused) {
    Put(L"Mine", L"Other", 9860);
    const CEOID oid = Put(L"Mine", L"One", 9850);
    PropRecord record = Record(L"Mine", L"One", 9860);
    record.oid = oid;
    TraceOf([&] { EXPECT_EQ(db.CEDB_UpdateRecord(oid, record), 0u); });
    EXPECT_EQ(Channels()[1].value, 9850u);
    EXPECT_THAT(channelList.sent, IsEmpty());
}

TEST_F(ChannelRecords, TheDuplicateOfAnUpdateIsComparedWithTheRecordsOwnIdentifier) {
    const CEOID oid = Put(L"Mine", L"One", 9850);
    const PropRecord withoutIdentifier = Record(L"Mine", L"Uno", 9850);
    TraceOf([&] { EXPECT_EQ(db.CEDB_UpdateRecord(oid, withoutIdentifier), 0u); });
}

TEST_F(ChannelRecords, AnUpdateOfARecordThatIsGoneFails) {
    Put(L"Mine", L"One", 9850);
    TraceOf([&] { EXPECT_EQ(db.CEDB_UpdateRecord(4711, Record(L"Mine", L"Uno", 9900)), 0u); });
    EXPECT_THAT(channelList.sent, IsEmpty());
}

TEST_F(ChannelRecords, ADeletedChannelIsGoneAndCannotBeDeletedAgain) {
    const CEOID oid = Put(L"Mine", L"One", 9850);
    TraceOf([&] {
        EXPECT_TRUE(db.CEDB_DeleteRecord(oid));
        EXPECT_FALSE(db.CEDB_DeleteRecord(oid));
    });
    EXPECT_THAT(Channels(), IsEmpty());
}

TEST_F(ChannelRecords, AStoreWithoutListsWorksAllTheSame) {
    CChannelDB bare;
    TraceOf([&] {
        EXPECT_NE(bare.CEDB_InsertRecord(Record(L"Mine", L"One", 9850)), 0u);
        EXPECT_EQ(bare.CEDB_ShowGroup(kChannelDatabase, L"Mine"), 1);
    });
    EXPECT_EQ(Channels().size(), 1u);
}

}  // namespace
