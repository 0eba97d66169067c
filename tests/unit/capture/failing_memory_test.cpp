// The recording parts when there is no memory for a call.
#include "tests/support/failing_memory.h"

#include "handset/capture/graph/class_ids.h"
#include "tests/unit/capture/fixture.h"

namespace {

using test::Answer;
using test::CRef;

template <typename Call>
void ExpectOutOfMemory(Call call) {
    test::ExpectFailureForWantOfMemory(L"capture.dll", static_cast<DWORD>(E_OUTOFMEMORY), [&] {
        const HRESULT result = call();
        return Answer{SUCCEEDED(result), static_cast<DWORD>(result)};
    });
}

class CaptureWithoutMemory : public test::CaptureTest {};

TEST_F(CaptureWithoutMemory, NoObjectIsMadeOfAnyClass) {
    // It is loaded by the first that is made.
    ASSERT_TRUE(test::Create(capture::kClassWavWriter));
    for (const CLSID* const classId :
         {&capture::kClassAudioCapture, &capture::kClassWavWriter, &capture::kClassAmrEncoder,
          &capture::kClassMultiplexer, &capture::kClassGraphBuilder}) {
        ExpectOutOfMemory([&] {
            void* made = nullptr;
            const HRESULT result =
                CoCreateInstance(*classId, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, &made);
            EXPECT_EQ(made != nullptr, SUCCEEDED(result));
            if (made != nullptr) static_cast<IUnknown*>(made)->Release();
            return result;
        });
    }
}

TEST_F(CaptureWithoutMemory, AFilterSaysSoAndStaysAsItIs) {
    const auto filter = test::CreateAs<IBaseFilter>(capture::kClassAudioCapture, IID_IBaseFilter);
    ASSERT_TRUE(filter);
    ExpectOutOfMemory([&] {
        CRef<IEnumPins> pins;
        return filter->EnumPins(pins.Put());
    });
    CRef<IEnumPins> pins;
    CRef<IPin> pin;
    ASSERT_EQ(filter->EnumPins(pins.Put()), S_OK);
    ASSERT_EQ(pins->Next(1, pin.Put(), nullptr), S_OK);
    ExpectOutOfMemory([&] {
        CRef<IEnumMediaTypes> types;
        return pin->EnumMediaTypes(types.Put());
    });
    ExpectOutOfMemory(
        [&] { return filter->JoinFilterGraph(nullptr, L"A name that no small text has room for"); });
    EXPECT_EQ(test::OtherReferences(pin.Get()), test::OtherReferences(filter.Get()));
}

TEST_F(CaptureWithoutMemory, AFileKeepsTheNameThatItHas) {
    const auto sink = test::CreateAs<IFileSinkFilter>(capture::kClassWavWriter, IID_IFileSinkFilter);
    ASSERT_TRUE(sink);
    ASSERT_EQ(sink->SetFileName(L"\\first.wav", nullptr), S_OK);
    ExpectOutOfMemory([&] {
        const HRESULT result = sink->SetFileName(L"\\A name that no small text has room for.wav", nullptr);
        LPOLESTR name = nullptr;
        EXPECT_EQ(sink->GetCurFile(&name, nullptr), S_OK);
        if (FAILED(result)) {
            EXPECT_STREQ(name, L"\\first.wav");
        }
        CoTaskMemFree(name);
        return result;
    });
}

}  // namespace
