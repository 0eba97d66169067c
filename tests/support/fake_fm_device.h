// A tuner device that writes down what it is asked and answers as the test wants.
#pragma once

#include <windows.h>

#include <chrono>
#include <cstdint>
#include <cwchar>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tuner/fm_device.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"  // COM interfaces have none, by their binary form

namespace test {

// Calls may come from any thread; the public fields are set before and read after them.
class FakeFMDevice : public IFMDevice {
  public:
    struct Call {
        std::string text;  // name and arguments: "SetChannel 9850"
        std::chrono::steady_clock::time_point at;
        DWORD thread;
    };

    // What it answers.
    std::uint32_t volume = 50;
    std::uint32_t channel = 8750;
    std::int32_t signal = 45;
    bool stereo = true;
    rds_inf rdsInfo = {};
    std::wstring ptyText;
    std::vector<std::wstring> alternatives;
    std::optional<std::int32_t> alternativeCount;               // told instead of their number
    std::deque<std::pair<std::int32_t, std::wstring>> rdsData;  // kind and text, each given once
    std::deque<std::uint32_t> stations;                         // where the next seeks stop; empty: they fail
    // Result by the operation's name; the others succeed. What fails does nothing.
    std::map<std::string, HRESULT> results;
    // Called inside each operation with its text, before it does anything.
    std::function<void(const std::string&)> onCall;
    // References held by others.
    long references = 0;

    std::vector<Call> TimedCalls() const {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return m_calls;
    }
    std::vector<std::string> Calls() const {
        std::vector<std::string> texts;
        for (const Call& call : TimedCalls()) texts.push_back(call.text);
        return texts;
    }
    // Without those whose text begins with `prefix`.
    std::vector<std::string> CallsExcept(const std::string& prefix) const {
        std::vector<std::string> texts;
        for (const Call& call : TimedCalls()) {
            if (call.text.rfind(prefix, 0) != 0) texts.push_back(call.text);
        }
        return texts;
    }
    void ForgetCalls() {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_calls.clear();
    }

    // IUnknown. The object belongs to the test: it does not delete itself.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if (!IsEqualGUID(iid, IID_IFMDevice) && !IsEqualGUID(iid, IID_IUnknown)) return E_NOINTERFACE;
        *object = static_cast<IFMDevice*>(this);
        ++references;
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++references); }
    ULONG STDMETHODCALLTYPE Release() override {
        Note("Release");
        return static_cast<ULONG>(--references);
    }

    HRESULT STDMETHODCALLTYPE GetVolume(std::uint32_t* percent) override {
        return Give("GetVolume", percent, volume);
    }
    HRESULT STDMETHODCALLTYPE GetChannel(std::uint32_t* out) override {
        return Give("GetChannel", out, channel);
    }
    HRESULT STDMETHODCALLTYPE Close() override { return Note("Close"); }
    HRESULT STDMETHODCALLTYPE SetChannel(std::uint32_t value) override {
        return Take("SetChannel", value, channel);
    }
    HRESULT STDMETHODCALLTYPE Initialize() override { return Note("Initialize"); }
    HRESULT STDMETHODCALLTYPE Reserved() override { return Note("Reserved"); }
    HRESULT STDMETHODCALLTYPE SetSpeaker(BOOL on) override { return Note("SetSpeaker", std::to_string(on)); }
    HRESULT STDMETHODCALLTYPE SetBTAudio(BOOL on) override { return Note("SetBTAudio", std::to_string(on)); }
    HRESULT STDMETHODCALLTYPE SetMute(BOOL mute) override { return Note("SetMute", std::to_string(mute)); }
    HRESULT STDMETHODCALLTYPE SetVolume(std::uint32_t percent) override {
        return Take("SetVolume", percent, volume);
    }
    HRESULT STDMETHODCALLTYPE SeekNext() override { return Seek("SeekNext"); }
    HRESULT STDMETHODCALLTYPE SeekPrev() override { return Seek("SeekPrev"); }
    HRESULT STDMETHODCALLTYPE GetSignal(std::int32_t* level) override {
        return Give("GetSignal", level, signal);
    }
    HRESULT STDMETHODCALLTYPE GetRDSData(WCHAR* text, std::int32_t* kind) override {
        const HRESULT result = Note("GetRDSData");
        if (result != S_OK || rdsData.empty()) return result != S_OK ? result : S_FALSE;
        *kind = rdsData.front().first;
        Copy(rdsData.front().second, text, kRdsTextCapacity);
        rdsData.pop_front();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetStereo() override {
        const HRESULT result = Note("GetStereo");
        return result == S_OK && !stereo ? S_FALSE : result;
    }
    HRESULT STDMETHODCALLTYPE GetAFCount(std::int32_t* count) override {
        return Give("GetAFCount", count,
                    alternativeCount.value_or(static_cast<std::int32_t>(alternatives.size())));
    }
    HRESULT STDMETHODCALLTYPE GetAFItem(std::int32_t index, WCHAR* text) override {
        const HRESULT result = Note("GetAFItem", std::to_string(index));
        if (result != S_OK) return result;
        if (index < 0 || static_cast<std::size_t>(index) >= alternatives.size()) return E_INVALIDARG;
        Copy(alternatives[static_cast<std::size_t>(index)], text, kAFTextCapacity);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetRDSInfo(rds_inf* info) override { return Give("GetRDSInfo", info, rdsInfo); }
    HRESULT STDMETHODCALLTYPE GetPTYText(WCHAR* text) override {
        const HRESULT result = Note("GetPTYText");
        if (result != S_OK || ptyText.empty()) return result != S_OK ? result : S_FALSE;
        Copy(ptyText, text, kRdsTextCapacity);
        return S_OK;
    }

  private:
    HRESULT Note(const std::string& name, const std::string& argument = "") {
        const std::string text = argument.empty() ? name : name + " " + argument;
        {
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_calls.push_back({text, std::chrono::steady_clock::now(), GetCurrentThreadId()});
        }
        if (onCall) onCall(text);
        const auto found = results.find(name);
        return found == results.end() ? S_OK : found->second;
    }
    template <typename Value>
    HRESULT Give(const char* name, Value* out, const Value& value) {
        const HRESULT result = Note(name);
        if (result == S_OK) *out = value;
        return result;
    }
    HRESULT Take(const char* name, std::uint32_t value, std::uint32_t& field) {
        const HRESULT result = Note(name, std::to_string(value));
        if (result == S_OK) field = value;
        return result;
    }
    HRESULT Seek(const char* name) {
        const HRESULT result = Note(name);
        if (result != S_OK || stations.empty()) return result != S_OK ? result : E_FAIL;
        channel = stations.front();
        stations.pop_front();
        return S_OK;
    }
    static void Copy(const std::wstring& from, WCHAR* to, int capacity) {
        std::wcsncpy(to, from.c_str(), static_cast<std::size_t>(capacity));
        to[capacity - 1] = L'\0';
    }

    mutable std::mutex m_mutex;  // guards m_calls
    std::vector<Call> m_calls;
};

// The class of the tuner device in this process, as long as the object lives: CoCreateInstance gives
// `device`. The calling thread must have entered the multithreaded apartment.
class RegisteredFMDevice : private IClassFactory {
  public:
    explicit RegisteredFMDevice(FakeFMDevice& device) : m_device(device) {
        CoRegisterClassObject(CLSID_CFMDevice, this, CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_cookie);
    }
    virtual ~RegisteredFMDevice() { CoRevokeClassObject(m_cookie); }
    RegisteredFMDevice(const RegisteredFMDevice&) = delete;
    RegisteredFMDevice& operator=(const RegisteredFMDevice&) = delete;

  private:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if (!IsEqualGUID(iid, IID_IClassFactory) && !IsEqualGUID(iid, IID_IUnknown)) return E_NOINTERFACE;
        *object = static_cast<IClassFactory*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID iid, void** object) override {
        *object = nullptr;
        return outer != nullptr ? CLASS_E_NOAGGREGATION : m_device.QueryInterface(iid, object);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

    FakeFMDevice& m_device;
    DWORD m_cookie = 0;
};

}  // namespace test

#pragma GCC diagnostic pop
