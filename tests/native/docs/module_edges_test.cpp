// No C++ exception crosses the edge of a module: every export, every COM method, every procedure that the
// host calls and every thread's start goes through handset/base/module_edge.h, or has nothing in it that
// throws.
#include "tests/native/docs/module_edges.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/native/docs/source_text.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

const std::filesystem::path kRoot = KORA_SOURCE_DIR;

// The module's export list lies in its folder; `also` is another room that is linked into it.
test::ModuleEdges EdgesOfFolder(const std::string& folder, const std::string& def,
                                const std::string& also = {}) {
    std::set<std::string> folders = {"handset/" + folder};
    if (!also.empty()) folders.insert("handset/" + also);
    test::ModuleSources sources;
    for (const auto& file : test::CppFiles(kRoot, folders))
        sources[std::filesystem::relative(file, kRoot).string()] = test::ReadSource(file);
    return test::EdgesOf(test::ReadSource(kRoot / "handset" / folder / def), sources);
}

TEST(ModuleEdges, NothingOfTheKernelsLibraryLetsAnExceptionOut) {
    const auto edges = EdgesOfFolder("coredll", "coredll.def");
    EXPECT_THAT(edges.complaints, IsEmpty());
    EXPECT_GT(edges.exports.size(), 180u);
    EXPECT_GT(edges.procedures.size(), 10u);
}

TEST(ModuleEdges, NothingOfTheShellsLibraryLetsAnExceptionOut) {
    const auto edges = EdgesOfFolder("aygshell", "aygshell.def");
    EXPECT_THAT(edges.complaints, IsEmpty());
    EXPECT_THAT(edges.exports, SizeIs(15));
    EXPECT_THAT(edges.procedures,
                UnorderedElementsAre("BarProc", "ParentProc", "DialogSubclassProc", "WorkerProc"));
}

TEST(ModuleEdges, NothingOfTheTunerLetsAnExceptionOut) {
    const auto edges = EdgesOfFolder("fmdevice", "fmdevice.def", "sound");
    EXPECT_THAT(edges.complaints, IsEmpty());
    EXPECT_THAT(edges.exports, SizeIs(6));
    // 22 slots of the tuner and five methods of its factory.
    EXPECT_THAT(edges.methods, SizeIs(27));
}

TEST(ModuleEdges, NothingOfTheRecordingPartsLetsAnExceptionOut) {
    const auto edges = EdgesOfFolder("capture", "capture.def");
    EXPECT_THAT(edges.complaints, IsEmpty());
    EXPECT_THAT(edges.exports, SizeIs(2));
    EXPECT_GT(edges.methods.size(), 90u);
}

TEST(ModuleEdges, TheLibrariesOfTheControlsHaveNothingOfTheirOwn) {
    EXPECT_THAT(test::SuppliedBy(test::ReadSource(kRoot / "handset/commctrl/commctrl.def")), IsEmpty());
    EXPECT_THAT(test::SuppliedBy(test::ReadSource(kRoot / "handset/commctrl/commdlg.def")), IsEmpty());
    EXPECT_THAT(EdgesOfFolder("commctrl", "commctrl.def").complaints, IsEmpty());
}

TEST(ModuleEdges, EveryThreadOfTheHandsetStartsAtAnEdge) {
    const std::set<std::string> modules = {"coredll", "aygshell", "fmdevice", "sound", "capture"};
    for (const auto& file : test::CppFiles(kRoot, {"handset"})) {
        const std::string name = std::filesystem::relative(file, kRoot / "handset").string();
        if (name == "base/module_edge.h") continue;
        const bool module = modules.count(name.substr(0, name.find('/'))) != 0;
        EXPECT_THAT(test::UnguardedThreads(test::ReadSource(file), module), IsEmpty()) << name;
    }
}

// What the checks above would say.
std::vector<std::string> Complaints(const std::string& source, const std::string& exported = "") {
    return test::EdgesOf("EXPORTS\n    " + exported + "\n", {{"a.cpp", source}}).complaints;
}

constexpr char kGuard[] = "} catch (...) {\n    return handset::EdgeAnswer(FALSE);\n}\n";

TEST(ModuleEdgesNotice, AnExportWithoutAHandler) {
    const std::string body = "    return Look(file);\n";
    EXPECT_THAT(Complaints("BOOL WINAPI Find(HANDLE file) {\n" + body + "}\n", "Find"),
                ElementsAre("a.cpp: Find has no handler and calls Look"));
    EXPECT_THAT(Complaints("BOOL WINAPI Find(HANDLE file) try {\n" + body + kGuard, "Find"), IsEmpty());
    EXPECT_THAT(Complaints("std::uint32_t Find(int file) {\n" + body + "}\n", "Find = Find"), SizeIs(1))
        << "whatever its calling convention";
}

TEST(ModuleEdgesNotice, AHandlerThatDoesNotAnswerByTheOneWrapper) {
    EXPECT_THAT(
        Complaints("BOOL WINAPI Find() try {\n    return Look();\n} catch (...) {\n    return 0;\n}\n",
                   "Find"),
        SizeIs(1));
}

TEST(ModuleEdgesNotice, AnExportThatIsNowhere) {
    EXPECT_THAT(Complaints("", "Find = DeviceFind"),
                ElementsAre("DeviceFind is exported and nowhere defined"));
    EXPECT_THAT(Complaints("", "Find = KERNEL32.Find"), IsEmpty()) << "it is forwarded";
}

TEST(ModuleEdgesNotice, AMethodInAClassAndBehindIt) {
    const std::string inside =
        "class C : public I {\n    HRESULT STDMETHODCALLTYPE Get(int* out) override {\n"
        "        return Look(out);\n    }\n};\n";
    EXPECT_THAT(Complaints(inside), ElementsAre(HasSubstr("Get has no handler and calls Look")));
    const std::string declared =
        "class C : public I {\n    HRESULT STDMETHODCALLTYPE Get(int* out) override;\n};\n";
    EXPECT_THAT(Complaints(declared + "HRESULT C::Get(int* out) {\n    return Look(out);\n}\n"),
                ElementsAre(HasSubstr("Get has no handler and calls Look")));
    EXPECT_THAT(Complaints(declared + "HRESULT D::Get(int* out) {\n    return Look(out);\n}\n"), IsEmpty())
        << "of another class";
}

TEST(ModuleEdgesNotice, AProcedureOfTheHost) {
    EXPECT_THAT(Complaints("LRESULT CALLBACK OnHook(int code) {\n    return Look(code);\n}\n"), SizeIs(1));
    EXPECT_THAT(Complaints("DWORD WINAPI Proc(void*) {\n    Look();\n    return 0;\n}\n"), SizeIs(1));
}

TEST(ModuleEdgesNotice, AMacroThatDefinesExportsWithoutAHandler) {
    const std::string rows = "GUARDED(BOOL, Find, (int a), (a))\n";
    const std::string head =
        "\n#define GUARDED(result, name, parameters, arguments) \\\n"
        "    result WINAPI Device##name parameters ";
    EXPECT_THAT(
        Complaints(head + "{ \\\n        return name arguments; \\\n    }\n" + rows, "Find = DeviceFind"),
        SizeIs(1));
    EXPECT_THAT(Complaints(head +
                               "try { \\\n        return name arguments; \\\n    } catch (...) { \\\n"
                               "        return handset::EdgeAnswer<result>(); \\\n    }\n" +
                               rows,
                           "Find = DeviceFind"),
                IsEmpty());
}

TEST(ModuleEdgesNotice, WhatAnEdgeWithoutAHandlerCalls) {
    const std::string release =
        "class C : public I {\n    ULONG STDMETHODCALLTYPE Release() override {\n"
        "        if (--references_ == 0) delete this;\n        return references_;\n    }\n};\n";
    EXPECT_THAT(Complaints(release), IsEmpty()) << "no call at all";
    const std::string other =
        "class D : public I {\n    ULONG STDMETHODCALLTYPE Release() override { return owner_.Release(); "
        "}\n};\n";
    EXPECT_THAT(Complaints(release + other), IsEmpty()) << "an edge that lets nothing out";
    const std::string open =
        "class E : public I {\n    ULONG STDMETHODCALLTYPE Release() override { return Look(); }\n};\n";
    EXPECT_THAT(Complaints(release + other + open), SizeIs(2)) << "an edge that does, by one of its classes";
    for (const char* what : {"new int", "throw 1", "std::string()"})
        EXPECT_THAT(
            Complaints("DWORD WINAPI Proc(void*) {\n    " + std::string(what) + ";\n    return 0;\n}\n"),
            SizeIs(1))
            << what;
}

TEST(ModuleEdgesNotice, WhatStandsBesideTheGuardedPartOfABody) {
    const std::string perform =
        "HRESULT Perform(Operation operation) try {\n    return operation();\n} catch (...) {\n"
        "    return handset::EdgeResult();\n}\n";
    const std::string method = "class C : public I {\n    HRESULT STDMETHODCALLTYPE Get() override {\n";
    EXPECT_THAT(Complaints(perform + method + "        return Perform([&] { return Look(); });\n    }\n};\n"),
                IsEmpty());
    EXPECT_THAT(Complaints(perform + method +
                           "        Look();\n        return Perform([&] { return Look(); });\n    }\n};\n"),
                SizeIs(1));
}

TEST(ModuleEdgesNotice, AThreadThatIsStartedByHand) {
    for (const char* start : {"thread_ = std::thread([this] { Run(); });", "std::thread worker(Run);",
                              "std::async(Run);", "_beginthreadex(0, 0, Run, 0, 0, 0);"}) {
        EXPECT_THAT(test::UnguardedThreads(start, true), SizeIs(1)) << start;
    }
    EXPECT_THAT(test::UnguardedThreads("h = CreateThread(0, 0, Proc, 0, 0, 0);", false), SizeIs(1));
    EXPECT_THAT(test::UnguardedThreads("h = CreateThread(0, 0, Proc, 0, 0, 0);", true), IsEmpty())
        << "the procedure is an edge of the module";
    EXPECT_THAT(
        test::UnguardedThreads("thread_ = handset::WorkerThread(run, wanted);\nstd::thread thread_;\n", true),
        IsEmpty());
}

}  // namespace
