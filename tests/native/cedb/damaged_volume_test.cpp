// Files that are damaged volumes or no volumes: an answer, never a crash, and never a change of the file.
#include <gtest/gtest.h>

#include <random>

#include "handset/coredll/cedb/engine/cursor.h"
#include "tests/native/cedb/volume_file.h"

using namespace cedb;

namespace {

constexpr PropertyId kName = Id(0x66, kTypeText);
constexpr std::size_t kPage_bytes = 4096;
const PlainCollator kCollator;

void Fill(const std::string& path, int records) {
    ASSERT_EQ(CVolume::Create(path, 2, kCollator), Status::Ok);
    CVolume volume(kCollator);
    ASSERT_EQ(volume.Open(path), Status::Ok);
    DatabaseInfo info;
    info.name = u"FileDB";
    info.orders = {SortOrder{false, {{kName, 0}}}};
    Oid oid = 0;
    ASSERT_EQ(volume.CreateDatabase(info, &info.oid), Status::Ok);
    for (int i = 0; i < records; ++i) {
        const std::u16string name(static_cast<std::size_t>(1 + i % 40), static_cast<char16_t>(u'a' + i % 26));
        ASSERT_EQ(volume.InsertRecord(info, {Set(kName, name)}, &oid), Status::Ok);
    }
    volume.Settle();
}

// Opens the file as a mount does, reads all there is, and says how that ended.
Status ReadAll(const VolumeFile& file) {
    if (!LooksLikeVolume(file.Contents().substr(0, kVolumeHeader_bytes))) return Status::NotAVolume;
    CVolume volume(kCollator);
    Status status = volume.Open(file.Path());
    std::vector<DatabaseInfo> databases;
    if (status == Status::Ok) status = volume.ListDatabases(&databases);
    for (const DatabaseInfo& info : databases) {
        CCursor cursor(volume, info, info.orders.empty() ? std::optional<std::size_t>() : 0, true);
        Oid oid = 0;
        Record record;
        // A damaged index may lead round in circles; a bound keeps the test from doing so.
        for (int i = 0; status == Status::Ok && i < 2000; ++i) {
            status = cursor.Look(&oid, &record);
            cursor.HasBeenRead();
        }
        if (status == Status::EndOfData) status = Status::Ok;
    }
    return status;
}

}  // namespace

TEST(DamagedVolume, CutOffAnywhereItIsRefusedAndLeftAsItIs) {
    VolumeFile file;
    Fill(file.Path(), 60);
    const std::string whole = file.Contents();
    ASSERT_EQ(ReadAll(file), Status::Ok);
    for (std::size_t size = 0; size < whole.size(); size += size < 200 ? 1 : 97) {
        const std::string cut = whole.substr(0, size);
        file.SetContents(cut);
        EXPECT_NE(ReadAll(file), Status::Ok) << size;
        EXPECT_EQ(file.Contents(), cut) << size;
    }
}

TEST(DamagedVolume, NoiseInItNeverCrashesAndReadingNeverChangesIt) {
    VolumeFile file;
    Fill(file.Path(), 300);
    const std::string whole = file.Contents();
    std::mt19937 random(20260103);
    for (int round = 0; round < 1500; ++round) {
        std::string noisy = whole;
        for (unsigned hits = 1 + random() % 40; hits > 0; --hits) {
            // Page beginnings hold the structure: half of the hits go there. The second page is spared: it
            // says how the texts are sorted, and a volume that says otherwise is rightly sorted anew.
            std::size_t at = random() % noisy.size();
            if (hits % 2 == 0) at = at / kPage_bytes * kPage_bytes + random() % 120;
            if (at / kPage_bytes != 1) noisy[at] = static_cast<char>(random());
        }
        file.SetContents(noisy);
        (void)ReadAll(file);
        ASSERT_EQ(file.Contents(), noisy) << round;
    }
}

TEST(DamagedVolume, NoiseAloneIsNotAVolume) {
    VolumeFile file;
    std::mt19937 random(20260104);
    for (const std::size_t size : {0U, 1U, 99U, 100U, 512U, 4096U, 40960U}) {
        std::string noise(size, '\0');
        for (char& byte : noise) byte = static_cast<char>(random());
        file.SetContents(noise);
        EXPECT_EQ(ReadAll(file), Status::NotAVolume);
        EXPECT_EQ(file.Contents(), noise);
    }
}

TEST(DamagedVolume, AnotherProgramsDatabaseIsNotAVolume) {
    VolumeFile file;
    {
        CSqliteConnection other;
        ASSERT_EQ(other.Open(file.Path(), true), Status::Ok);
        ASSERT_EQ(other.Execute("CREATE TABLE volume(x); INSERT INTO volume VALUES (1)"), Status::Ok);
    }
    const std::string before = file.Contents();
    EXPECT_EQ(ReadAll(file), Status::NotAVolume);
    EXPECT_EQ(file.Contents(), before);
}

TEST(DamagedVolume, OneWithAnotherTableInItIsRefused) {
    VolumeFile file;
    Fill(file.Path(), 3);
    {
        CSqliteConnection other;
        ASSERT_EQ(other.Open(file.Path(), false), Status::Ok);
        ASSERT_EQ(other.Execute("CREATE TABLE more(x)"), Status::Ok);
    }
    EXPECT_EQ(ReadAll(file), Status::Corrupt);
}
