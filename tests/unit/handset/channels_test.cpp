// The channel lists going out to files and coming in from them.
#include "handset/controls/device_registry.h"
#include "handset/controls/encoding.h"
#include "handset/include/tuner_slots.h"
#include "handset/state/handset_state.h"
#include "tests/unit/handset/handset_fixture.h"

namespace panel {
namespace {

constexpr char kTwoLists[] = R"({
  "format": "kora-channel-lists",
  "version": 1,
  "lists": [
    {
      "name": "My \"best\"",
      "channels": [
        {
          "name": "Züri, Jazz",
          "frequency": 103.7,
          "guide": "one line\nand another"
        },
        {
          "name": "",
          "frequency": 98.55,
          "guide": ""
        }
      ]
    },
    {
      "name": "empty 📻",
      "channels": []
    }
  ]
}
)";

class Channels : public HandsetTest {
  protected:
    [[nodiscard]] std::wstring File(const std::wstring& name) const { return home_ + L"\\" + name; }
    [[nodiscard]] std::wstring Written(const std::wstring& name, const std::string& bytes) const {
        EXPECT_TRUE(WriteWholeFile(File(name), bytes));
        return File(name);
    }
    std::string Exported(const std::wstring& name) {
        EXPECT_EQ(Run({L"channels", L"export", File(name)}), kDone) << Utf8(console_.Complained());
        return ReadWholeFile(File(name)).value_or("");
    }
    [[nodiscard]] bool HasVolume() const { return ReadWholeFile(Device(L"\\KORA.vol")).has_value(); }
    [[nodiscard]] bool Complained(const wchar_t* words) const {
        return console_.Complained().find(words) != std::wstring::npos;
    }
};

TEST_F(Channels, APhoneWithoutListsSaysSoAndWritesNoFile) {
    EXPECT_EQ(Run({L"channels", L"export", File(L"lists.json")}), kFailed);
    EXPECT_TRUE(Complained(L"no channel lists yet"));
    EXPECT_FALSE(ReadWholeFile(File(L"lists.json")));
    EXPECT_FALSE(HasVolume());
}

TEST_F(Channels, WhatWasImportedIsExportedToTheByte) {
    EXPECT_EQ(Run({L"channels", L"import", Written(L"in.json", kTwoLists)}), kDone);
    EXPECT_EQ(console_.Said(), L"taken: 2 new lists, 2 new channels; there already: 0; refused: 0\n");
    EXPECT_EQ(Exported(L"out.json"), kTwoLists);
    EXPECT_EQ(console_.Said(), L"2 lists, 2 channels written to " + File(L"out.json") + L"\n");
}

TEST_F(Channels, ListsGoThroughCsvToAnotherPhoneWithoutALoss) {
    ASSERT_EQ(Run({L"channels", L"import", Written(L"in.json", kTwoLists)}), kDone);
    Exported(L"lists.CSV");
    ASSERT_TRUE(DeleteFileW(Device(L"\\KORA.vol").c_str()));
    EXPECT_EQ(Run({L"channels", L"import", File(L"lists.CSV")}), kDone);
    EXPECT_EQ(Exported(L"out.json"), kTwoLists);
}

TEST_F(Channels, OfABrokenFileNothingIsStored) {
    struct Row {
        const wchar_t* name;
        std::string bytes;
    };
    const Row kRows[] = {{L"broken.json", std::string(kTwoLists, 200)},
                         {L"broken.csv", "Frequency,Name\r\n98500000,good\r\n99500000,\"open\r\n"}};
    for (const Row& row : kRows) {
        EXPECT_EQ(Run({L"channels", L"import", Written(row.name, row.bytes)}), kFailed);
        EXPECT_TRUE(Complained(L" is broken, nothing was stored: "));
        EXPECT_TRUE(Complained(L"line ")) << Utf8(console_.Complained());
        EXPECT_FALSE(HasVolume());
    }
}

TEST_F(Channels, WhatIsRefusedIsNamedWithItsLineAndTheRestIsTaken) {
    const std::wstring file = Written(L"lists.csv",
                                      "Frequency,Name,List\r\n98500000,One,Mine\r\n145000000,Two,Mine\r\n"
                                      "98500000,Three,Mine\r\n101000000,Four,Mine\r\n");
    EXPECT_EQ(Run({L"channels", L"import", file}), kFailed);
    EXPECT_EQ(console_.Said(), L"taken: 1 new list, 2 new channels; there already: 0; refused: 2\n");
    EXPECT_EQ(console_.Complained(),
              L"line 3: \"Two\": 145.0 MHz is outside 87.5 to 108 MHz\n"
              L"line 4: \"Three\": 98.5 MHz is in the list \"Mine\" already, as \"One\"\n");
    EXPECT_EQ(Run({L"channels", L"import", file}), kFailed);
    EXPECT_EQ(console_.Said(), L"taken: 0 new lists, 0 new channels; there already: 2; refused: 2\n");
}

TEST_F(Channels, ReplacingPutsTheFileInThePlaceOfAllAndTheRadioShowsAListThatIsThere) {
    ASSERT_EQ(Run({L"channels", L"import", Written(L"in.json", kTwoLists)}), kDone);
    SetDeviceString(fm::kTunerKey, L"Selected", L"My \"best\"");
    const std::wstring file = Written(L"new.csv", "Frequency,Name,List\r\n98500000,One,Mine\r\n");
    EXPECT_EQ(Run({L"channels", L"import", L"--replace", file}), kDone);
    EXPECT_EQ(DeviceString(fm::kTunerKey, L"Selected", L""), L"Mine");
    EXPECT_EQ(Exported(L"out.csv"),
              "Frequency,Name,Modulation,Bandwidth,List,Guide\r\n98500000,One,WFM (stereo),200000,Mine,\r\n");
    EXPECT_EQ(Run({L"channels", L"import", File(L"in.json"), L"--replace"}), kDone);
    EXPECT_EQ(DeviceString(fm::kTunerKey, L"Selected", L""), L"My \"best\"");
}

TEST_F(Channels, ReplacingStoresNothingWhenAnythingIsRefusedOrNothingIsThere) {
    ASSERT_EQ(Run({L"channels", L"import", Written(L"in.json", kTwoLists)}), kDone);
    const std::wstring bad =
        Written(L"bad.csv", "Frequency,Name,List\r\n98500000,One,Mine\r\n1,Two,Mine\r\n");
    EXPECT_EQ(Run({L"channels", L"import", L"--replace", bad}), kFailed);
    const std::wstring empty = Written(L"empty.csv", "Frequency,Name,List\r\n");
    EXPECT_EQ(Run({L"channels", L"import", L"--replace", empty}), kFailed);
    EXPECT_EQ(Exported(L"out.json"), kTwoLists);
}

TEST_F(Channels, BookmarksSayWhatTheyCannotHold) {
    ASSERT_EQ(Run({L"channels", L"import", Written(L"in.json", kTwoLists)}), kDone);
    EXPECT_EQ(Run({L"channels", L"export", L"--bookmarks", File(L"bookmarks.csv")}), kDone);
    EXPECT_TRUE(Complained(L"not written: 1 programme guides"));
    const std::string bytes = ReadWholeFile(File(L"bookmarks.csv")).value_or("");
    EXPECT_NE(bytes.find(
                  "   103700000; Züri, Jazz               ; WFM (stereo)        ;     200000; My \"best\"\n"),
              std::string::npos)
        << bytes;
}

TEST_F(Channels, AFullPhoneStoresNothing) {
    handset::SetStateQword(L"ObjectStoreFree", 100);
    EXPECT_EQ(Run({L"channels", L"import", Written(L"in.json", kTwoLists)}), kFailed);
    EXPECT_TRUE(Complained(L"there is no room left; nothing was stored"));
    EXPECT_FALSE(HasVolume());
}

TEST_F(Channels, AFileOfAnotherKindInTheVolumesPlaceIsLeftAsItIs) {
    WriteWholeFile(Device(L"\\KORA.vol"), "a letter to Ada");
    EXPECT_EQ(Run({L"channels", L"import", Written(L"in.json", kTwoLists)}), kFailed);
    EXPECT_TRUE(Complained(L"something else than its channel lists"));
    EXPECT_EQ(ReadWholeFile(Device(L"\\KORA.vol")), "a letter to Ada");
}

TEST_F(Channels, WhatIsNotUnderstoodIsNamed) {
    struct Row {
        Arguments words;
        const wchar_t* complaint;
    };
    const Row kRows[] = {
        {{L"channels"}, L"\"export\" or \"import\" is wanted"},
        {{L"channels", L"list"}, L"\"export\" or \"import\" is wanted"},
        {{L"channels", L"export"}, L"the name of one file is wanted"},
        {{L"channels", L"import", L"--replace"}, L"the name of one file is wanted"},
        {{L"channels", L"export", L"a.json", L"b.json"}, L"the name of one file is wanted"},
        {{L"channels", L"export", L"lists.txt"}, L"ends in .json or .csv"},
        {{L"channels", L"export", L".csv"}, L"ends in .json or .csv"},
        {{L"channels", L"export", L"--bookmarks", L"lists.json"}, L"ends in .csv"},
    };
    for (const Row& row : kRows) {
        EXPECT_EQ(Run(row.words), kBadUsage);
        EXPECT_TRUE(Complained(row.complaint)) << Utf8(console_.Complained());
    }
    EXPECT_EQ(Run({L"channels", L"import", File(L"nowhere.json")}), kFailed);
    EXPECT_TRUE(Complained(L"cannot be read"));
}

}  // namespace
}  // namespace panel
