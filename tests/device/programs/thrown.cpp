// A program for the phone that throws: made as the radio is, run in the emulated processor by
// thrown_test.cpp. It traces what happens in its order. Its command line says what it does.
#include <cxxabi.h>
#include <windows.h>

#include <exception>
#include <string>

namespace {

// Says that it was destroyed.
class CLocal {
  public:
    explicit CLocal(const WCHAR* name) : m_name(name) {}
    ~CLocal() { NKDbgPrintfW(L"~%.20s %d\n", m_name, std::uncaught_exceptions()); }
    CLocal(const CLocal&) = delete;
    CLocal& operator=(const CLocal&) = delete;

  private:
    const WCHAR* m_name;
};

struct Fault : std::exception {
    explicit Fault(int code) : nCode(code) {}
    int nCode;
};
struct LateFault : Fault {
    using Fault::Fault;
    const char* what() const noexcept override { return "late"; }
};
struct OtherFault : std::exception {};

[[gnu::noinline]] void Deep(int depth) {
    const CLocal local(depth % 2 == 0 ? L"even" : L"odd");
    if (depth == 0) throw LateFault(7);
    Deep(depth - 1);
    NKDbgPrintfW(L"came back\n");
}

// Not the handler for it: it goes by, and the local of this frame with it.
[[gnu::noinline]] void PastAnotherHandler(int depth) {
    const CLocal local(L"passed");
    try {
        Deep(depth);
    } catch (const OtherFault&) {
        NKDbgPrintfW(L"the wrong handler\n");
    }
}

void CatchByBase() {
    try {
        PastAnotherHandler(3);
    } catch (const Fault& fault) {
        NKDbgPrintfW(L"caught %d %S\n", fault.nCode, fault.what());
    }
}

void ThrowAgain() {
    try {
        try {
            const CLocal local(L"inner");
            throw Fault(1);
        } catch (Fault& fault) {
            const CLocal local(L"handler");
            fault.nCode += 1;
            throw;
        }
    } catch (const Fault& fault) {
        NKDbgPrintfW(L"again %d\n", fault.nCode);
    }
}

void ThrowWhileOneIsCaught() {
    try {
        throw Fault(1);
    } catch (const Fault& first) {
        try {
            const CLocal local(L"second");
            throw 2;
        } catch (int second) {
            NKDbgPrintfW(L"both %d %d\n", first.nCode, second);
        }
    }
    NKDbgPrintfW(L"none is caught: %d\n", abi::__cxa_current_exception_type() == nullptr);
}

// The compiler cannot know either, and has to ask for the memory and to give it back.
volatile bool g_bRefused = true;
struct Parts {
    CLocal first{L"first part"};
    CLocal second{L"second part"};
    Parts() {
        if (g_bRefused) throw Fault(3);
    }
};
Parts* volatile g_pParts = nullptr;

// Only what was made is destroyed, last first, and the memory is given back.
void ThrowFromAConstructor() {
    try {
        g_pParts = new Parts;
    } catch (...) {
        NKDbgPrintfW(L"caught something\n");
    }
}

void ThrowFromTheLibrary() {
    try {
        std::wstring text(L"text");
        text.append(text.max_size(), L'x');
    } catch (const std::exception&) {
        NKDbgPrintfW(L"too long a text\n");
    }
}

DWORD WINAPI OtherThread(LPVOID) {
    NKDbgPrintfW(L"thread, none is caught: %d\n", abi::__cxa_current_exception_type() == nullptr);
    CatchByBase();
    return 0;
}

void ThrowInAnotherThreadMeanwhile() {
    try {
        throw Fault(5);
    } catch (const Fault& fault) {
        WaitForSingleObject(CreateThread(nullptr, 0, OtherThread, nullptr, 0, nullptr), INFINITE);
        NKDbgPrintfW(L"still %d\n", fault.nCode);
    }
}

struct Scene {
    const WCHAR* pszName;
    void (*play)();
};
const Scene kScenes[] = {
    {L"base", CatchByBase},
    {L"again", ThrowAgain},
    {L"nested", ThrowWhileOneIsCaught},
    {L"constructor", ThrowFromAConstructor},
    {L"library", ThrowFromTheLibrary},
    {L"thread", ThrowInAnotherThreadMeanwhile},
    {L"uncaught", [] { throw Fault(9); }},
};

}  // namespace

extern "C" int wWinMain(HINSTANCE, HINSTANCE, LPWSTR commandLine, int) {
    for (const Scene& scene : kScenes) {
        if (wcscmp(commandLine, scene.pszName) == 0) scene.play();
    }
    return 42;
}
