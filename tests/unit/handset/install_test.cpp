// handset install: what it lays down and what it leaves alone.
#include "handset/setup/install.h"

#include "handset/controls/device_registry.h"
#include "handset/controls/encoding.h"
#include "handset/controls/switches.h"
#include "handset/setup/manifest.h"
#include "handset/setup/presets.h"
#include "handset/state/handset_state.h"
#include "tests/support/tuner_contract.h"
#include "tests/unit/handset/handset_fixture.h"

namespace panel {
namespace {

using Install = HandsetTest;

constexpr wchar_t kFavourites[] = L"HKCU\\Software\\Quillon\\Kora\\My Favorite";

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

TEST_F(Install, LaysTheProgramsTheBandAndTheFoldersOnTheDevice) {
    const InstallReport report = InstallHandset(ProgramsToInstall());
    EXPECT_EQ(report.fault, L"");
    for (const wchar_t* path :
         {L"\\Windows\\UI.exe", L"\\Windows\\COREDLL.dll", L"\\Windows\\AYGSHELL.dll",
          L"\\Windows\\COMMCTRL.dll", L"\\Windows\\COMMDLG.dll", L"\\Windows\\fmdevice.dll",
          L"\\Windows\\UI.exe.manifest", L"\\Windows\\band.ini", L"\\Storage Card",
          L"\\My Documents\\My Music", L"\\Temp"}) {
        EXPECT_TRUE(Exists(Device(path))) << testing::PrintToString(std::wstring(path));
    }
    EXPECT_FALSE(Exists(Device(L"\\Windows\\capture.dll")));
    EXPECT_FALSE(Exists(Device(L"\\Windows\\handset.exe")));
}

TEST_F(Install, TakesTheRecordingPartsAlongWhenTheyAreThere) {
    const std::wstring programs = ProgramsToInstall();
    WriteWholeFile(programs + L"\\capture.dll", "capture");
    EXPECT_EQ(InstallHandset(programs).fault, L"");
    EXPECT_EQ(ReadWholeFile(Device(L"\\Windows\\capture.dll")), "capture");
}

TEST_F(Install, AMissingProgramIsNamed) {
    const std::wstring programs = ProgramsToInstall();
    DeleteFileW((programs + L"\\COMMDLG.dll").c_str());
    EXPECT_EQ(InstallHandset(programs).fault, programs + L"\\COMMDLG.dll is missing; build the radio first");
}

TEST_F(Install, WritesTheFirstRegistryValues) {
    InstallHandset(ProgramsToInstall());
    EXPECT_EQ(DeviceDword(L"HKLM\\System\\State\\Hardware", L"Headset", 0), 1u);
    EXPECT_EQ(DeviceDword(L"HKLM\\System\\State\\Phone", L"Status", 9), 0u);
    EXPECT_EQ(DeviceString(test::kRadioSettings, L"Selected", L""), L"My Favorite");
    EXPECT_EQ(DeviceDword(test::kRadioSettings, L"EnableRDSPSPTY", 9), 1u);
    EXPECT_TRUE(DeviceKeyExists(L"HKLM\\System\\CurrentControlSet\\Control\\Power\\State\\ScreenOff"));
}

TEST_F(Install, EveryPresetFavouriteHasAGroupANameAGuideAndAChannelOfTheBand) {
    InstallHandset(ProgramsToInstall());
    const auto groups = DeviceSubkeys(kFavourites);
    ASSERT_FALSE(groups.empty());
    bool selectedIsThere = false;
    int channels = 0;
    for (const std::wstring& group : groups) {
        const std::wstring key = std::wstring(kFavourites) + L"\\" + group;
        selectedIsThere = selectedIsThere || DeviceString(key, L"Name", L"") == L"My Favorite";
        EXPECT_NE(DeviceString(key, L"Name", L""), L"");
        for (const std::wstring& name : DeviceValueNames(key)) {
            if (name.compare(0, 12, L"ChannelValue") != 0) continue;
            ++channels;
            const std::wstring number = name.substr(12);
            const DWORD channel = DeviceDword(key, name, 0);
            EXPECT_TRUE(channel >= 8750 && channel <= 10800) << channel;
            const std::wstring title = DeviceString(key, L"ChannelName" + number, L"");
            EXPECT_TRUE(!title.empty() && title.size() < 50) << channel;
            const std::wstring guide = DeviceString(key, L"ChannelProgramGuide" + number, L"");
            EXPECT_TRUE(!guide.empty() && guide.size() < 50) << channel;
        }
    }
    EXPECT_TRUE(selectedIsThere);
    EXPECT_GE(channels, 5);
}

TEST_F(Install, TheTunerOfANewPhoneBeginsOnTheFirstPresetStationAndThatOfAUsedOneWhereItWas) {
    InstallHandset(ProgramsToInstall());
    EXPECT_EQ(TunedChannel(), DeviceDword(std::wstring(kFavourites) + L"\\Group1", L"ChannelValue1", 0));
    handset::SetStateDword(L"TunedChannel", 10630);
    InstallHandset(ProgramsToInstall());
    EXPECT_EQ(TunedChannel(), 10630u);
}

TEST_F(Install, ASecondTimeReplacesProgramsAndKeepsWhatIsTheUsers) {
    const std::wstring programs = ProgramsToInstall();
    ASSERT_EQ(InstallHandset(programs).fault, L"");
    WriteWholeFile(Device(L"\\Windows\\band.ini"), "[9850]\nps=MINE\n");
    WriteWholeFile(Device(L"\\My Documents\\My Music\\one.wav"), "sound");
    SetDeviceString(test::kRadioSettings, L"Selected", L"Mine");
    SetDeviceDword(test::kRadioSettings, L"EnableRDSPSPTY", 0);
    SetDeviceDword(L"HKLM\\System\\State\\Hardware", L"Headset", 0);
    DeleteDeviceKey(std::wstring(kFavourites) + L"\\Group1");
    WriteWholeFile(programs + L"\\COREDLL.dll", "second");
    WriteWholeFile(programs + L"\\band.ini", "[band]\n");

    EXPECT_EQ(InstallHandset(programs).fault, L"");
    EXPECT_EQ(ReadWholeFile(Device(L"\\Windows\\COREDLL.dll")), "second");
    EXPECT_EQ(ReadWholeFile(Device(L"\\Windows\\band.ini")), "[9850]\nps=MINE\n");
    EXPECT_EQ(ReadWholeFile(Device(L"\\My Documents\\My Music\\one.wav")), "sound");
    EXPECT_EQ(DeviceString(test::kRadioSettings, L"Selected", L""), L"Mine");
    EXPECT_EQ(DeviceDword(test::kRadioSettings, L"EnableRDSPSPTY", 9), 0u);
    EXPECT_EQ(DeviceDword(L"HKLM\\System\\State\\Hardware", L"Headset", 9), 0u);
    EXPECT_FALSE(DeviceKeyExists(std::wstring(kFavourites) + L"\\Group1"));
}

TEST_F(Install, ReadOnlyProgramsAreReplacedToo) {
    const std::wstring programs = ProgramsToInstall();
    SetFileAttributesW((programs + L"\\COREDLL.dll").c_str(), FILE_ATTRIBUTE_READONLY);
    ASSERT_EQ(InstallHandset(programs).fault, L"");
    SetFileAttributesW((programs + L"\\COREDLL.dll").c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(InstallHandset(programs).fault, L"");
}

TEST(Manifest, NamesTheTunersClassInItsOwnDll) {
    const std::string text = ManifestText({L"UI.exe", L"fmdevice.dll"});
    EXPECT_NE(text.find("<file name=\"fmdevice.dll\">"), std::string::npos);
    EXPECT_NE(text.find("<comClass clsid=\"" TEST_TUNER_CLASS "\" threadingModel=\"Both\""),
              std::string::npos);
    EXPECT_NE(text.find("</assembly>"), std::string::npos);
}

TEST(Manifest, LeavesOutTheClassesOfADllThatIsNotThere) {
    EXPECT_EQ(ManifestText({L"UI.exe"}).find("comClass"), std::string::npos);
}

TEST(Manifest, IsOneThatTheSystemAccepts) {
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    const std::wstring file = folder + std::wstring(L"kora-manifest-test.manifest");
    ASSERT_TRUE(WriteWholeFile(file, ManifestText({L"fmdevice.dll"})));
    ACTCTXW context = {};
    context.cbSize = sizeof context;
    context.lpSource = file.c_str();
    const HANDLE handle = CreateActCtxW(&context);
    EXPECT_NE(handle, INVALID_HANDLE_VALUE) << GetLastError();
    ReleaseActCtx(handle);
    DeleteFileW(file.c_str());
}

}  // namespace
}  // namespace panel
