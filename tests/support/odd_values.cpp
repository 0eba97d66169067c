#include "tests/support/odd_values.h"

#include "tests/support/tuner_contract.h"

namespace test {
namespace {

constexpr wchar_t kSettings[] = L"Registry\\HKCR\\CLSID\\" TEST_TUNER_CLASS;
constexpr wchar_t kEntry[] = L"Registry\\HKCR\\CLSID\\" TEST_TUNER_CLASS "\\RunAppAtTime-0000000077";
constexpr wchar_t kPhone[] = L"Registry\\HKLM\\System\\State\\Phone";
constexpr wchar_t kTimeouts[] = L"Registry\\HKLM\\System\\CurrentControlSet\\Control\\Power\\Timeouts";
constexpr wchar_t kBookings[] = L"Registry\\HKLM\\System\\Notifications";
constexpr wchar_t kBooking[] = L"Registry\\HKLM\\System\\Notifications\\RunAppAtTime-0000000088";
constexpr wchar_t kPresets[] = L"Registry\\HKCU\\Software\\Quillon\\Kora\\My Favorite\\G7";

std::wstring StateKey() {
    wchar_t key[260] = L"";
    GetEnvironmentVariableW(L"KORA_STATEKEY", key, 260);
    return key;
}

// A text that is a path of the device as well, with or without its terminator, or cut in the middle of a
// character.
std::vector<BYTE> OddText(std::mt19937& random) {
    static constexpr unsigned kLengths[] = {0,  1,  2,   15,  16,  31,  32,  49,   50,
                                            51, 99, 100, 101, 259, 260, 261, 4000, 40000};
    std::wstring text = L"\\Temp\\";
    text.resize(kLengths[random() % std::size(kLengths)], static_cast<wchar_t>(L'a' + random() % 26));
    if (random() % 8 == 0 && !text.empty()) text[random() % text.size()] = L'\0';
    if (random() % 2 == 0) text.push_back(L'\0');
    std::vector<BYTE> bytes(reinterpret_cast<const BYTE*>(text.data()),
                            reinterpret_cast<const BYTE*>(text.data() + text.size()));
    if (random() % 4 == 0) bytes.push_back(0x41);
    return bytes;
}

std::vector<BYTE> OddBytes(std::mt19937& random) {
    std::vector<BYTE> bytes(random() % 3 == 0 ? random() % 10 : random() % 600);
    for (BYTE& byte : bytes) byte = static_cast<BYTE>(random());
    return bytes;
}

struct OddKind {
    DWORD dwType;
    std::vector<BYTE> (*bytes)(std::mt19937&);
};

// Texts are called numbers and numbers texts.
constexpr OddKind kKinds[] = {
    {REG_SZ, OddText},
    {REG_SZ, OddText},
    {REG_SZ, OddBytes},
    {REG_DWORD, OddBytes},
    {REG_DWORD, OddText},
    {REG_QWORD, OddBytes},
    {REG_BINARY, OddBytes},
    {REG_BINARY, OddText},
    {REG_MULTI_SZ, OddText},
    {REG_EXPAND_SZ, OddText},
    {REG_NONE, OddBytes},
    {0x7FFFFFFF, OddBytes},
    {REG_DWORD_BIG_ENDIAN, OddBytes},
};

std::wstring PathOf(const ReadPlace& place) {
    return StateKey() + (place.pszKey[0] == L'\0' ? L"" : L"\\") + place.pszKey;
}

void Write(const ReadPlace& place, DWORD type, const std::vector<BYTE>& bytes) {
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, PathOf(place).c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &key,
                        nullptr) != ERROR_SUCCESS) {
        return;
    }
    RegSetValueExW(key, place.pszValue, 0, type, bytes.data(), static_cast<DWORD>(bytes.size()));
    RegCloseKey(key);
}

}  // namespace

const std::vector<ReadPlace> kReadByTheRadio = {
    {kSettings, L"RecordAudioType"},
    {kSettings, L"SaveFileType"},
    {kSettings, L"DefineFileName"},
    {kSettings, L"EnableMute"},
    {kSettings, L"EnableRDSPSPTY"},
    {kSettings, L"EnableAFAutoSwitch"},
    {kSettings, L"Selected"},
    {kEntry, L"Channel"},
    {kEntry, L"StartTime"},
    {kEntry, L"EndTime"},
    {kEntry, L"Week"},
    {kPhone, L"Status"},
    {kPhone, L"Caller Number"},
    {kTimeouts, L"BattSuspend"},
    {kTimeouts, L"BattUserIdle"},
    {L"", L"StorageCard"},
    {L"", L"ObjectStoreFree"},
    {L"", L"StorageCardFree"},
    {L"", L"PowerState"},
    {L"", L"PowerFlags"},
    {L"", L"IdleTimerResets"},
    {L"", L"SignalLimit"},
    {L"", L"SignalLimitChannel"},
    {L"", L"TunedChannel"},
    {L"", L"TunerVolume"},
    {L"", L"Fault"},
};

const std::vector<ReadPlace> kReadAtAStart = {
    {L"Registry\\HKLM\\System\\State\\Hardware", L"Headset"},
    {L"Registry\\HKLM\\System\\State\\Hardware", L"Bluetooth"},
    {kSettings, L"Selected"},
    {L"", L"ScreenWidth"},
    {L"", L"ScreenHeight"},
    {L"", L"ClockRate"},
    {L"", L"ClockMoment"},
    {L"", L"TimeZone"},
    {L"", L"HostSound"},
    {L"", L"TunerLog"},
    {L"", L"SoundLog"},
    {L"", L"TunedChannel"},
    {L"", L"TunerVolume"},
    {L"", L"PowerState"},
    {L"", L"AllKeys"},
    {L"", L"UnattendedRequests"},
    {L"", L"LastBooking"},
    {kBookings, L"LastNumber"},
    {kBooking, L"Application"},
    {kBooking, L"CommandLine"},
    {kBooking, L"Repeat"},
    {kBooking, L"Start"},
    {kBooking, L"Started"},
};

const std::vector<ReadPlace> kReadAsPresets = {
    {kPresets, L"Name"},
    {kPresets, L"ChannelValue1"},
    {kPresets, L"ChannelName1"},
    {kPresets, L"ChannelProgramGuide1"},
    {kPresets, L"ChannelValue"},
    {kPresets, L"ChannelValue99999999999"},
    {kPresets, L"ChannelName2147483647"},
};

void WriteOddValue(const ReadPlace& place, std::mt19937& random) {
    if (random() % 5 == 0) {
        RegDeleteKeyValueW(HKEY_CURRENT_USER, PathOf(place).c_str(), place.pszValue);
        return;
    }
    const OddKind& kind = kKinds[random() % std::size(kKinds)];
    Write(place, kind.dwType, kind.bytes(random));
}

void WriteLongText(const ReadPlace& place) {
    constexpr std::size_t kLong_bytes = 60000;
    Write(place, REG_SZ, std::vector<BYTE>(kLong_bytes, 'x'));
}

OddWriter::OddWriter(const std::vector<ReadPlace>& places, unsigned seed)
    : m_thread([this, &places, seed] {
          std::mt19937 random(seed);
          while (!m_over) {
              WriteOddValue(places[random() % places.size()], random);
              ++m_written;
              // A reader keeps what it has read until something changes: now and then it is left alone.
              if (random() % 8 == 0) Sleep(1 + random() % 20);
          }
      }) {}

OddWriter::~OddWriter() {
    m_over = true;
    m_thread.join();
}

}  // namespace test
