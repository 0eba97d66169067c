// The tuner device is declared twice, by the radio and by the handset, since neither includes the other. Both
// are held here to the published form: identifiers, each operation's slot and arguments, the record, the
// kinds.
#include <objbase.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <tuple>
#include <type_traits>

#include "handset/include/tuner_slots.h"
#include "tests/support/tuner_contract.h"
#include "tuner/fm_device.h"

namespace {

GUID FromText(const wchar_t* text) {
    GUID guid{};
    EXPECT_EQ(CLSIDFromString(text, &guid), S_OK) << text;
    return guid;
}

TEST(PinnedTuner, HasThePublishedIdentifiersOnBothSides) {
    EXPECT_EQ(CLSID_CFMDevice, FromText(test::kTunerClassText));
    EXPECT_EQ(fm::kTunerClass, FromText(test::kTunerClassText));
    EXPECT_EQ(IID_IFMDevice, FromText(test::kTunerInterfaceText));
    EXPECT_EQ(fm::kTunerInterface, FromText(test::kTunerInterfaceText));
}

TEST(PinnedTuner, HasItsSettingsUnderTheSameKeyOnBothSides) {
    EXPECT_STREQ(kFMDeviceKey, test::kRadioSettingsPath);
    EXPECT_STREQ(fm::kTunerKey, test::kRadioSettings);
}

template <typename>
struct Operation;
template <typename Interface, typename... Arguments>
struct Operation<HRESULT (STDMETHODCALLTYPE Interface::*)(Arguments...)> {
    using Given = std::tuple<Arguments...>;
};
template <auto kOperation>
using Given = typename Operation<decltype(kOperation)>::Given;

// A pointer to a virtual operation is its place in the table in bytes, plus one.
template <typename Member>
std::size_t Slot(Member operation) {
    std::uintptr_t place = 0;
    static_assert(sizeof operation >= sizeof place);
    std::memcpy(&place, &operation, sizeof place);
    EXPECT_EQ(place % sizeof(void*), 1u) << "not a virtual operation";
    return place / sizeof(void*);
}

template <auto kOperation, typename... Arguments>
void ExpectPinned(std::size_t slot, const char* side) {
    static_assert(std::is_same_v<Given<kOperation>, std::tuple<Arguments...>>,
                  "an argument has another type");
    EXPECT_EQ(Slot(kOperation), slot) << side;
}

#define PINNED(slot, name, ...)                                                       \
    ExpectPinned<&IFMDevice::name __VA_OPT__(, ) __VA_ARGS__>(slot, "radio: " #name); \
    ExpectPinned<&fm::ITunerSlots::name __VA_OPT__(, ) __VA_ARGS__>(slot, "handset: " #name)

TEST(PinnedTuner, HasEachOperationInItsSlotWithItsArgumentsOnBothSides) {
    PINNED(3, GetVolume, std::uint32_t*);
    PINNED(4, GetChannel, std::uint32_t*);
    PINNED(5, Close);
    PINNED(6, SetChannel, std::uint32_t);
    PINNED(7, Initialize);
    PINNED(8, Reserved);
    PINNED(9, SetSpeaker, BOOL);
    PINNED(10, SetBTAudio, BOOL);
    PINNED(11, SetMute, BOOL);
    PINNED(12, SetVolume, std::uint32_t);
    PINNED(13, SeekNext);
    PINNED(14, SeekPrev);
    PINNED(15, GetSignal, std::int32_t*);
    PINNED(16, GetRDSData, WCHAR*, std::int32_t*);
    PINNED(17, GetStereo);
    PINNED(18, GetAFCount, std::int32_t*);
    PINNED(19, GetAFItem, std::int32_t, WCHAR*);
    ExpectPinned<&IFMDevice::GetRDSInfo, rds_inf*>(20, "radio: GetRDSInfo");
    ExpectPinned<&fm::ITunerSlots::GetRDSInfo, fm::RdsServices*>(20, "handset: GetRDSInfo");
    PINNED(21, GetPTYText, WCHAR*);
}

TEST(PinnedTuner, FillsTheSameFiveWordsOnBothSides) {
    static_assert(sizeof(rds_inf) == 20 && sizeof(fm::RdsServices) == 20);
#define SAME_PLACE(radio, handset, place)          \
    EXPECT_EQ(offsetof(rds_inf, radio), place##u); \
    EXPECT_EQ(offsetof(fm::RdsServices, handset), place##u)
    SAME_PLACE(b_RDS_RT, radioText, 0);
    SAME_PLACE(b_RDS_PS, serviceName, 4);
    SAME_PLACE(b_RDS_PTY, programmeType, 8);
    SAME_PLACE(b_RDS_AF, alternatives, 12);
    SAME_PLACE(b_RDS_CT, clockTime, 16);
}

TEST(PinnedTuner, NumbersItsTextsAndTheirRoomAlikeOnBothSides) {
    const struct {
        RdsKind radio;
        fm::TextKind handset;
        std::int32_t published;
    } kKinds[] = {
        {kRdsServiceName, fm::TextKind::kServiceName, 0},
        {kRdsRadioText, fm::TextKind::kRadioText, 1},
        {kRdsProgramText, fm::TextKind::kProgramText, 2},
        {kRdsServiceNameWithAF, fm::TextKind::kServiceNameWithAF, 4},
    };
    for (const auto& row : kKinds) {
        EXPECT_EQ(static_cast<std::int32_t>(row.radio), row.published);
        EXPECT_EQ(static_cast<std::int32_t>(row.handset), row.published);
    }
    EXPECT_EQ(kRdsTextCapacity, 260);
    EXPECT_EQ(fm::kRdsTextRoom, 260);
    EXPECT_EQ(kAFTextCapacity, 16);
    EXPECT_EQ(fm::kAlternativeTextRoom, 16);
}

}  // namespace
