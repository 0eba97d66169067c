// What the system tests of recording share: a radio whose record button is pressed, and the files that come
// of it.
#pragma once

#include "resources/resource_ids.h"
#include "tests/support/host_tool.h"
#include "tests/support/tuner_contract.h"
#include "tests/system/radio_test.h"

namespace test {

// Files with automatic names go there.
inline std::wstring Music(const wchar_t* name) {
    return L"\\My Documents\\My Music\\" + std::wstring(name);
}

// More than a booked minute takes with all that is before and behind it, at any rate.
inline constexpr DWORD kBookedMinute_ms = 120000;

class RecordingTest : public RadioTest {
  protected:
    // One station, at 98.5 MHz, that plays a tone, as well as it can be received.
    void PlayTone() const {
        const std::string level = OnTheEther() ? "45" : "100";
        handset.WriteBand("[band]\nwrap=1\n[9850]\nlevel=" + level +
                          "\nstereo=1\nps=KORA ONE\nprogramme=tone:" + std::to_string(Tone_Hz()) + "\n");
    }
    // On the ether so low that the clocks of two crystals, up to 300 ppm apart, leave it where it is looked
    // for.
    static int Tone_Hz() { return OnTheEther() ? 110 : 440; }
    // The stylus on the record button of the upright screen.
    static void TapRecord(const Radio& radio) { radio.Tap(28, 251); }

    // A recording that has shown its time for `seconds` of the handset's clock.
    void RecordFor(Radio& radio, int seconds, const std::wstring& file) {
        TapRecord(radio);
        ASSERT_TRUE(WaitForTrace("[FM_EnCoder]iIndex : 2\n"));
        ASSERT_TRUE(WaitFor([&] { return Exists(file); }));
        const int checks = Count(Lines(handset.Trace()), "FM: disk space");
        ASSERT_TRUE(WaitFor(
            [&] { return Count(Lines(handset.Trace()), "FM: disk space") >= checks + 2 * seconds; }, 120000));
    }
    // Stops with the button and answers the closing box.
    void StopAndAnswer(Radio& radio) {
        TapRecord(radio);
        const HWND box = radio.WaitForBox(L"FM");
        ASSERT_NE(box, nullptr);
        Radio::Answer(box, IDOK);
        ASSERT_TRUE(WaitFor([&] { return radio.Box(L"FM") == nullptr; }));
    }

    bool Exists(const std::wstring& file) const {
        return GetFileAttributesW(handset.DevicePath(file).c_str()) != INVALID_FILE_ATTRIBUTES;
    }
    std::uint64_t SizeOf(const std::wstring& file) const {
        WIN32_FILE_ATTRIBUTE_DATA data = {};
        GetFileAttributesExW(handset.DevicePath(file).c_str(), GetFileExInfoStandard, &data);
        return (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
    }
    void DefineName(const std::wstring& name) const {
        handset.SetRegistry(kRadioSettings, L"SaveFileType", 1u);
        handset.SetRegistry(kRadioSettings, L"DefineFileName", name);
    }
    void SetFormat(std::uint32_t type) const {
        handset.SetRegistry(kRadioSettings, L"RecordAudioType", type);
    }
};

}  // namespace test
