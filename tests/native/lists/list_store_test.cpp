// The channel lists in their volume.
#include "handset/lists/list_store.h"

#include <gmock/gmock.h>

#include "handset/coredll/cedb/engine/cursor.h"
#include "tests/native/cedb/volume_file.h"
#include "tests/native/lists/sample_lists.h"

using cedb::Status;
using lists::ChannelList;
using lists::ImportMode;
using lists::ImportPlan;
using lists::ListFile;

namespace {

class ListStore : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_EQ(cedb::CVolume::Create(file_.Path(), 2, collator_), Status::Ok);
        ASSERT_EQ(volume_.Open(file_.Path()), Status::Ok);
    }
    ImportPlan Import(std::vector<ChannelList> lists, ImportMode mode = ImportMode::kAdd) {
        ListFile file;
        file.lists = std::move(lists);
        ImportPlan plan;
        EXPECT_EQ(lists::Import(volume_, file, mode, &plan), Status::Ok);
        return plan;
    }
    std::vector<ChannelList> Stored(std::size_t strays = 0) {
        std::vector<ChannelList> stored;
        std::size_t found = 0;
        EXPECT_EQ(lists::ReadLists(volume_, &stored, &found), Status::Ok);
        EXPECT_EQ(found, strays);
        return stored;
    }

    PlainCollator collator_;
    VolumeFile file_;
    cedb::CVolume volume_{collator_};
};

const ChannelList kOne{u"One", {{u"a", 9850, u"news", 0}}, 0, true};
const ChannelList kTwo{u"Two", {{u"b", 10100, u"", 0}}, 0, true};

}  // namespace

TEST_F(ListStore, AVolumeWithoutDatabasesHasNoLists) {
    EXPECT_THAT(Stored(), testing::IsEmpty());
}

TEST_F(ListStore, AnyTextComesBackAsItWasStored) {
    Import(AwkwardLists());
    EXPECT_TRUE(SameLists(Stored(), AwkwardLists()));
}

// What the radio asks of its databases: found by these names, opened by these orders, read as these
// properties.
TEST_F(ListStore, TheDatabasesAreThoseThatTheRadioMakes) {
    Import({kOne});
    cedb::DatabaseInfo names, channels;
    ASSERT_EQ(volume_.FindDatabase(u"FileIndexDB", &names), Status::Ok);
    ASSERT_EQ(volume_.FindDatabase(u"FileDB", &channels), Status::Ok);
    EXPECT_EQ(names.orders, (std::vector<cedb::SortOrder>{{false, {{0x0065001F, 4}}}}));
    EXPECT_EQ(channels.orders, (std::vector<cedb::SortOrder>{{false, {{0x0065001F, 4}}},
                                                             {false, {{0x0066001F, 4}}},
                                                             {false, {{0x00670013, 4}}},
                                                             {false, {{0x0068001F, 4}}}}));
    cedb::CCursor cursor(volume_, channels, std::nullopt, true);
    cedb::Oid oid = 0;
    cedb::Record record;
    ASSERT_EQ(cursor.Look(&oid, &record), Status::Ok);
    ASSERT_EQ(record.size(), 4u);
    EXPECT_EQ(record[0].id, 0x0065001Fu);
    EXPECT_EQ(record[0].text, u"One");
    EXPECT_EQ(record[1].text, u"a");
    EXPECT_EQ(record[2].number, 9850u);
    EXPECT_EQ(record[3].text, u"news");
}

TEST_F(ListStore, WhatIsStoredStaysBesideWhatIsAdded) {
    Import({kOne});
    Import({kTwo, kOne});
    EXPECT_TRUE(SameLists(Stored(), {kOne, kTwo}));
}

TEST_F(ListStore, ReplacingPutsTheFileInThePlaceOfAll) {
    Import({kOne});
    Import({kTwo}, ImportMode::kReplace);
    EXPECT_TRUE(SameLists(Stored(), {kTwo}));
}

TEST_F(ListStore, ReplacingStoresNothingWhenAnythingIsRefused) {
    Import({kOne});
    ChannelList bad = kTwo;
    bad.channels.push_back({u"outside", 1, u"", 5});
    EXPECT_EQ(Import({bad}, ImportMode::kReplace).refused.size(), 1u);
    EXPECT_TRUE(SameLists(Stored(), {kOne}));
}

TEST_F(ListStore, ReplacingByNothingKeepsWhatIsStored) {
    Import({kOne});
    Import({}, ImportMode::kReplace);
    EXPECT_TRUE(SameLists(Stored(), {kOne}));
}

TEST_F(ListStore, ChannelsOfAListWithoutANameInTheStoreComeLastAndAreCounted) {
    Import({kOne});
    cedb::DatabaseInfo channels;
    ASSERT_EQ(volume_.FindDatabase(u"FileDB", &channels), Status::Ok);
    cedb::Oid oid = 0;
    ASSERT_EQ(volume_.InsertRecord(channels, {Set(0x0065001F, u"Gone"), Set(0x00670013, 9000)}, &oid),
              Status::Ok);
    EXPECT_TRUE(SameLists(Stored(1), {kOne, {u"Gone", {{u"", 9000, u"", 0}}, 0, false}}));
}

TEST_F(ListStore, AnImportForWhichTheRoomRunsOutHalfWayStoresNothing) {
    Import({kOne});
    ASSERT_EQ(volume_.Connection().Execute("PRAGMA max_page_count=60"), Status::Ok);
    ListFile file;
    file.lists = {kTwo, {u"Many", {}, 0, true}};
    for (std::uint32_t value = lists::kBandBottom_10kHz; value <= lists::kBandTop_10kHz; ++value) {
        file.lists[1].channels.push_back({u"name", value, std::u16string(200, u'g'), 0});
    }
    ImportPlan plan;
    EXPECT_EQ(lists::Import(volume_, file, ImportMode::kAdd, &plan), Status::Full);
    EXPECT_TRUE(SameLists(Stored(), {kOne}));
    ASSERT_EQ(volume_.Connection().Execute("PRAGMA max_page_count=100000"), Status::Ok);
    EXPECT_EQ(lists::Import(volume_, file, ImportMode::kAdd, &plan), Status::Ok);
    EXPECT_EQ(Stored().back().channels.size(), 2051u);
}

// Another program reads the volume at every moment; a write of its own would have to wait.
TEST_F(ListStore, WhoReadsMeanwhileSeesAllOfAnImportOrNothingOfIt) {
    Import({kOne});
    cedb::CVolume other(collator_);
    ASSERT_EQ(other.Open(file_.Path()), Status::Ok);
    {
        cedb::CTransaction all(volume_.Connection());
        ASSERT_EQ(all.Begin(cedb::CTransaction::Kind::Write), Status::Ok);
        Import({kTwo});
        std::vector<ChannelList> seen;
        std::size_t strays = 0;
        ASSERT_EQ(lists::ReadLists(other, &seen, &strays), Status::Ok);
        EXPECT_TRUE(SameLists(seen, {kOne}));
        // Not committed: taken back.
    }
    EXPECT_TRUE(SameLists(Stored(), {kOne}));
}
