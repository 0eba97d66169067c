// What every filter does as a filter: pins, names, states, connections that are refused.
#include "handset/capture/graph/class_ids.h"
#include "handset/include/audiowrapper.h"
#include "tests/unit/capture/fixture.h"

namespace {

using test::CRef;

constexpr struct {
    CLSID classId;
    std::size_t pins;
} kFilters[] = {{capture::kClassAudioCapture, 1},
                {capture::kClassWavWriter, 1},
                {capture::kClassAmrEncoder, 2},
                {capture::kClassMultiplexer, 1}};

CRef<IBaseFilter> Filter(const CLSID& classId) {
    return test::CreateAs<IBaseFilter>(classId, IID_IBaseFilter);
}

CRef<IPin> Pin(IBaseFilter* filter, std::size_t index) {
    CRef<IEnumPins> list;
    CRef<IPin> pin;
    filter->EnumPins(list.Put());
    list->Skip(static_cast<ULONG>(index));
    list->Next(1, pin.Put(), nullptr);
    return pin;
}

class Filters : public test::CaptureTest {};

TEST_F(Filters, KnowTheirClass) {
    for (const auto& row : kFilters) {
        CLSID classId{};
        EXPECT_EQ(Filter(row.classId)->GetClassID(&classId), S_OK);
        EXPECT_EQ(classId, row.classId);
        EXPECT_EQ(Filter(row.classId)->GetClassID(nullptr), E_POINTER);
    }
}

TEST_F(Filters, ListTheirPins) {
    for (const auto& row : kFilters) {
        const auto filter = Filter(row.classId);
        CRef<IEnumPins> list;
        ASSERT_EQ(filter->EnumPins(list.Put()), S_OK);
        IPin* pins[4] = {};
        ULONG fetched = 9;
        EXPECT_EQ(list->Next(4, pins, &fetched), S_FALSE);
        EXPECT_EQ(fetched, row.pins);
        for (ULONG i = 0; i < fetched; ++i) pins[i]->Release();
        EXPECT_EQ(list->Next(1, pins, &fetched), S_FALSE);
        EXPECT_EQ(fetched, 0u);
        EXPECT_EQ(list->Next(2, pins, nullptr), E_INVALIDARG);
        EXPECT_EQ(list->Next(1, nullptr, nullptr), E_POINTER);
        EXPECT_EQ(list->Reset(), S_OK);
        EXPECT_EQ(list->Skip(static_cast<ULONG>(row.pins)), S_OK);
        EXPECT_EQ(list->Skip(1), S_FALSE);
        CRef<IEnumPins> copy;
        ASSERT_EQ(list->Clone(copy.Put()), S_OK);
        EXPECT_EQ(copy->Next(1, pins, nullptr), S_FALSE);
        copy.Reset();
        list.Reset();
        EXPECT_EQ(test::OtherReferences(filter.Get()), 0u);
        EXPECT_EQ(filter->EnumPins(nullptr), E_POINTER);
    }
}

TEST_F(Filters, FindAPinByItsName) {
    for (const auto& row : kFilters) {
        const auto filter = Filter(row.classId);
        for (std::size_t i = 0; i < row.pins; ++i) {
            const auto pin = Pin(filter.Get(), i);
            LPWSTR id = nullptr;
            ASSERT_EQ(pin->QueryId(&id), S_OK);
            CRef<IPin> found;
            EXPECT_EQ(filter->FindPin(id, found.Put()), S_OK);
            EXPECT_EQ(found.Get(), pin.Get());
            CoTaskMemFree(id);
        }
        CRef<IPin> found;
        EXPECT_EQ(filter->FindPin(L"no such pin", found.Put()), VFW_E_NOT_FOUND);
        EXPECT_FALSE(static_cast<bool>(found));
        EXPECT_EQ(filter->FindPin(nullptr, found.Put()), E_POINTER);
    }
}

TEST_F(Filters, APinKnowsItsFilter) {
    for (const auto& row : kFilters) {
        const auto filter = Filter(row.classId);
        const auto pin = Pin(filter.Get(), 0);
        PIN_INFO info{};
        ASSERT_EQ(pin->QueryPinInfo(&info), S_OK);
        EXPECT_EQ(info.pFilter, filter.Get());
        PIN_DIRECTION direction{};
        EXPECT_EQ(pin->QueryDirection(&direction), S_OK);
        EXPECT_EQ(direction, info.dir);
        info.pFilter->Release();
        EXPECT_EQ(pin->QueryPinInfo(nullptr), E_POINTER);
        EXPECT_EQ(pin->QueryDirection(nullptr), E_POINTER);
        EXPECT_EQ(pin->QueryInternalConnections(nullptr, nullptr), E_NOTIMPL);
    }
}

TEST_F(Filters, AGraphGivesThemANameAndIsNotKeptAlive) {
    for (const auto& row : kFilters) {
        const auto filter = Filter(row.classId);
        CRef<IGraphBuilder> graph = test::CreateAs<IGraphBuilder>(CLSID_FilterGraph, IID_IGraphBuilder);
        const ULONG before = test::OtherReferences(graph.Get());
        ASSERT_EQ(graph->AddFilter(filter.Get(), L"a name"), S_OK);
        EXPECT_EQ(test::OtherReferences(graph.Get()), before);
        FILTER_INFO info{};
        ASSERT_EQ(filter->QueryFilterInfo(&info), S_OK);
        EXPECT_STREQ(info.achName, L"a name");
        ASSERT_NE(info.pGraph, nullptr);
        info.pGraph->Release();
        graph.Reset();
        EXPECT_EQ(test::OtherReferences(filter.Get()), 0u);
        ASSERT_EQ(filter->QueryFilterInfo(&info), S_OK);
        EXPECT_EQ(info.pGraph, nullptr);
        EXPECT_EQ(filter->QueryFilterInfo(nullptr), E_POINTER);
    }
}

TEST_F(Filters, GoThroughTheirStates) {
    for (const auto& row : kFilters) {
        const auto filter = Filter(row.classId);
        FILTER_STATE state{};
        const HRESULT paused = row.classId == capture::kClassAudioCapture ? VFW_S_CANT_CUE : S_OK;
        EXPECT_EQ(filter->GetState(0, &state), S_OK);
        EXPECT_EQ(state, State_Stopped);
        EXPECT_EQ(filter->Pause(), S_OK);
        EXPECT_EQ(filter->GetState(0, &state), paused);
        EXPECT_EQ(state, State_Paused);
        EXPECT_EQ(filter->Run(0), S_OK);
        EXPECT_EQ(filter->GetState(0, &state), S_OK);
        EXPECT_EQ(state, State_Running);
        EXPECT_EQ(filter->Stop(), S_OK);
        EXPECT_EQ(filter->Run(0), S_OK);
        EXPECT_EQ(filter->Stop(), S_OK);
        EXPECT_EQ(filter->Stop(), S_OK);
        EXPECT_EQ(filter->GetState(0, nullptr), E_POINTER);
    }
}

TEST_F(Filters, KeepAClockButNotThemselves) {
    const auto source = Filter(capture::kClassAudioCapture);
    const auto clock = test::Query<IReferenceClock>(source.Get(), IID_IReferenceClock);
    for (const auto& row : kFilters) {
        const auto filter = Filter(row.classId);
        EXPECT_EQ(filter->SetSyncSource(clock.Get()), S_OK);
        CRef<IReferenceClock> given;
        EXPECT_EQ(filter->GetSyncSource(given.Put()), S_OK);
        EXPECT_EQ(given.Get(), clock.Get());
        EXPECT_EQ(filter->SetSyncSource(nullptr), S_OK);
    }
    EXPECT_EQ(source->SetSyncSource(clock.Get()), S_OK);
    EXPECT_EQ(test::OtherReferences(source.Get()), 1u);
    CRef<IReferenceClock> own;
    EXPECT_EQ(source->GetSyncSource(own.Put()), S_OK);
    EXPECT_EQ(own.Get(), clock.Get());
}

TEST_F(Filters, APinWithoutAConnectionSaysSo) {
    for (const auto& row : kFilters) {
        const auto filter = Filter(row.classId);
        for (std::size_t i = 0; i < row.pins; ++i) {
            const auto pin = Pin(filter.Get(), i);
            CRef<IPin> peer;
            EXPECT_EQ(pin->ConnectedTo(peer.Put()), VFW_E_NOT_CONNECTED);
            AM_MEDIA_TYPE type{};
            EXPECT_EQ(pin->ConnectionMediaType(&type), VFW_E_NOT_CONNECTED);
            EXPECT_EQ(pin->Disconnect(), S_FALSE);
            EXPECT_EQ(pin->QueryAccept(nullptr), E_POINTER);
            EXPECT_EQ(pin->ConnectedTo(nullptr), E_POINTER);
            EXPECT_EQ(pin->Connect(nullptr, nullptr),
                      i == 0 && row.classId != capture::kClassAudioCapture ? E_UNEXPECTED : E_POINTER);
        }
    }
}

TEST_F(Filters, PinsConnectOnlyWhereItMakesSense) {
    const auto source = Filter(capture::kClassAudioCapture);
    const auto wav = Filter(capture::kClassWavWriter);
    const auto mux = Filter(capture::kClassMultiplexer);
    const auto out = Pin(source.Get(), 0);
    const auto in = Pin(wav.Get(), 0);
    EXPECT_EQ(out->Connect(out.Get(), nullptr), VFW_E_INVALID_DIRECTION);
    EXPECT_EQ(out->Connect(Pin(mux.Get(), 0).Get(), nullptr), VFW_E_NO_ACCEPTABLE_TYPES);
    EXPECT_EQ(test::OtherReferences(mux.Get()), 0u);
    ASSERT_EQ(out->Connect(in.Get(), nullptr), S_OK);
    EXPECT_EQ(out->Connect(in.Get(), nullptr), VFW_E_ALREADY_CONNECTED);
    CRef<IPin> peer;
    EXPECT_EQ(in->ConnectedTo(peer.Put()), S_OK);
    EXPECT_EQ(peer.Get(), out.Get());
    AM_MEDIA_TYPE type{};
    ASSERT_EQ(in->ConnectionMediaType(&type), S_OK);
    EXPECT_EQ(type.majortype, MEDIATYPE_Audio);
    CoTaskMemFree(type.pbFormat);
    EXPECT_EQ(wav->Pause(), S_OK);
    EXPECT_EQ(in->Disconnect(), VFW_E_NOT_STOPPED);
    EXPECT_EQ(wav->Stop(), S_OK);
    EXPECT_EQ(in->Disconnect(), S_OK);
    EXPECT_EQ(out->Disconnect(), S_OK);
    peer.Reset();
    EXPECT_EQ(test::OtherReferences(source.Get()), 1u);
}

}  // namespace
