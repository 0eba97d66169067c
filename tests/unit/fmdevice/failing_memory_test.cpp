// The tuner device when there is no memory for an operation.
#include "tests/support/failing_memory.h"

#include "tests/unit/fmdevice/tuner_under_test.h"

namespace {

using test::Answer;

template <typename Call>
void ExpectOutOfMemory(Call call) {
    test::ExpectFailureForWantOfMemory(L"fmdevice.dll", static_cast<DWORD>(E_OUTOFMEMORY), [&] {
        const HRESULT result = call();
        return Answer{SUCCEEDED(result), static_cast<DWORD>(result)};
    });
}

class TunerWithoutMemory : public test::TunerTest {
  protected:
    TunerWithoutMemory() {
        // Each operation writes a line, which takes memory.
        handset::SetStateString(L"TunerLog", L"\\A log whose name is long enough.txt");
        WriteBand(
            "[9850]\nlevel=45\nps=KORA ONE\nrt=Good morning from the handset\naf=101.1\n[10110]\nlevel=40\n");
        PowerUp();
    }
};

TEST_F(TunerWithoutMemory, EveryOperationSaysSo) {
    ExpectOutOfMemory([&] { return device_->SetChannel(9850); });
    ExpectOutOfMemory([&] {
        std::uint32_t channel = 0;
        return device_->GetChannel(&channel);
    });
    ExpectOutOfMemory([&] { return device_->SetVolume(40); });
    ExpectOutOfMemory([&] { return device_->SetMute(FALSE); });
    ExpectOutOfMemory([&] {
        std::int32_t level = 0;
        return device_->GetSignal(&level);
    });
    ExpectOutOfMemory([&] {
        rds_inf services = {};
        return device_->GetRDSInfo(&services);
    });
    ExpectOutOfMemory([&] { return device_->SeekNext(); });
}

TEST_F(TunerWithoutMemory, NoDeviceIsMadeAndNoneIsLeft) {
    IClassFactory* const factory = test::Factory();
    ASSERT_NE(factory, nullptr);
    ExpectOutOfMemory([&] {
        IUnknown* made = nullptr;
        const HRESULT result =
            factory->CreateInstance(nullptr, IID_IUnknown, reinterpret_cast<void**>(&made));
        EXPECT_EQ(made != nullptr, SUCCEEDED(result));
        if (made != nullptr) made->Release();
        return result;
    });
}

}  // namespace
