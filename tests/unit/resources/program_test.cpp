// The program itself, not only the object that it is linked from: the resources really end up in it.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "resources/resource_ids.h"
#include "tests/unit/resources/resource_bytes.h"

namespace {

class LoadedProgram {
  public:
    LoadedProgram() {
        WCHAR path[MAX_PATH];
        GetModuleFileNameW(nullptr, path, MAX_PATH);
        std::wstring file(path);
        file = file.substr(0, file.find_last_of(L'\\') + 1) + L"UI.exe";
        module_ = LoadLibraryExW(file.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
    }
    ~LoadedProgram() { FreeLibrary(module_); }
    LoadedProgram(const LoadedProgram&) = delete;
    LoadedProgram& operator=(const LoadedProgram&) = delete;
    HMODULE Get() const { return module_; }

  private:
    HMODULE module_;
};

}  // namespace

TEST(Program, CarriesEveryKindOfResource) {
    const LoadedProgram program;
    ASSERT_NE(program.Get(), nullptr) << GetLastError();
    const struct {
        LPCWSTR type;
        unsigned id;
    } kinds[] = {{L"GIF", IDB_BACKGROUND_PORTRAIT},
                 {RT_GROUP_ICON, IDI_APP},
                 {RT_MENU, IDM_MAIN},
                 {RT_RCDATA, IDM_MAIN},
                 {RT_DIALOG, IDD_GROUPS},
                 {RT_ACCELERATOR, IDA_MAIN},
                 {RT_VERSION, VS_VERSION_INFO},
                 {RT_STRING, IDS_APP_TITLE / 16 + 1}};
    for (const auto& kind : kinds)
        EXPECT_NE(FindBytes(kind.type, kind.id, program.Get()).data, nullptr)
            << "type " << reinterpret_cast<ULONG_PTR>(kind.type) << " id " << kind.id;
    // The image loader passes over any other type.
    EXPECT_EQ(FindBytes(RT_BITMAP, IDB_BACKGROUND_PORTRAIT, program.Get()).data, nullptr);
}
