// The tuner device's identifiers as they are published, for tests: neither side's declaration is asked.
#pragma once

#define TEST_TUNER_CLASS "{cd0dd476-b0be-48fd-90fe-91fc36ed0a77}"

namespace test {

inline constexpr wchar_t kTunerClassText[] = L"" TEST_TUNER_CLASS;
inline constexpr wchar_t kTunerInterfaceText[] = L"{3a905b65-d245-4160-a7fd-fbcdd8a6d1ef}";
// The radio's settings: as `handset reg` names the key, and under HKEY_CLASSES_ROOT.
inline constexpr wchar_t kRadioSettings[] = L"HKCR\\CLSID\\" TEST_TUNER_CLASS;
inline constexpr wchar_t kRadioSettingsPath[] = L"\\CLSID\\" TEST_TUNER_CLASS;

}  // namespace test
