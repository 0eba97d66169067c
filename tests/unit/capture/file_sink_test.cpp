// The file names that the sinks take, and what they do to the files.
#include "handset/capture/graph/class_ids.h"
#include "handset/controls/encoding.h"
#include "handset/state/handset_state.h"
#include "tests/unit/capture/fixture.h"

namespace {

using test::CRef;

class FileSink : public test::CaptureTest {
  protected:
    FileSink() : file_(test::CreateAs<IFileSinkFilter2>(capture::kClassWavWriter, IID_IFileSinkFilter2)) {}

    HRESULT SetName(const std::wstring& path) { return file_->SetFileName(path.c_str(), nullptr); }
    bool Exists(const std::wstring& devicePath) const {
        return GetFileAttributesW(Host(devicePath).c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    CRef<IFileSinkFilter2> file_;
};

TEST_F(FileSink, MakesTheFileOnTheDevice) {
    EXPECT_EQ(SetName(L"\\Windows\\new.wav"), S_OK);
    EXPECT_TRUE(Exists(L"\\Windows\\new.wav"));
}

TEST_F(FileSink, APathBelowTheRootMayDoWithoutItsBackslash) {
    EXPECT_EQ(SetName(L"Windows\\..\\new.wav"), S_OK);
    EXPECT_TRUE(Exists(L"\\new.wav"));
}

TEST_F(FileSink, LeavesAFileAsItIsUntilARecordingBegins) {
    panel::WriteWholeFile(Host(L"\\old.wav"), "old");
    EXPECT_EQ(SetName(L"\\old.wav"), S_OK);
    EXPECT_EQ(test::Bytes(Host(L"\\old.wav")), "old");
}

TEST_F(FileSink, RefusesWhatCannotBeWritten) {
    EXPECT_EQ(SetName(L"\\Windows"), HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED));
    EXPECT_EQ(SetName(L"\\no such folder\\a.wav"), HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(SetName(L"\\" + std::wstring(MAX_PATH - 1, L'x')),
              HRESULT_FROM_WIN32(ERROR_FILENAME_EXCED_RANGE));
    EXPECT_TRUE(FAILED(SetName(L"\\a?b*.wav")));
    EXPECT_TRUE(FAILED(SetName(L"")));
    panel::WriteWholeFile(Host(L"\\kept.wav"), "kept");
    SetFileAttributesW(Host(L"\\kept.wav").c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(SetName(L"\\kept.wav"), HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED));
    SetFileAttributesW(Host(L"\\kept.wav").c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_EQ(test::Bytes(Host(L"\\kept.wav")), "kept");
    handset::SetStateDword(L"StorageCard", 0);
    EXPECT_EQ(SetName(L"\\Storage Card\\a.wav"), HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND));
    EXPECT_FALSE(Exists(L"\\Storage Card\\a.wav"));
    EXPECT_EQ(file_->SetFileName(nullptr, nullptr), E_POINTER);
}

TEST_F(FileSink, KeepsTheNameThatItHadWhenAnotherIsRefused) {
    ASSERT_EQ(SetName(L"\\first.wav"), S_OK);
    ASSERT_NE(SetName(L"\\no such folder\\a.wav"), S_OK);
    LPOLESTR name = nullptr;
    ASSERT_EQ(file_->GetCurFile(&name, nullptr), S_OK);
    EXPECT_STREQ(name, L"\\first.wav");
    CoTaskMemFree(name);
}

TEST_F(FileSink, HasNoNameAtFirst) {
    LPOLESTR name = const_cast<LPOLESTR>(L"x");
    AM_MEDIA_TYPE type{};
    ASSERT_EQ(file_->GetCurFile(&name, &type), S_OK);
    EXPECT_EQ(name, nullptr);
    EXPECT_EQ(type.majortype, GUID_NULL);
    EXPECT_EQ(file_->GetCurFile(nullptr, nullptr), E_POINTER);
}

TEST_F(FileSink, GivesTheTypeOfFileBack) {
    AM_MEDIA_TYPE type{};
    type.majortype = MEDIATYPE_Stream;
    ASSERT_EQ(file_->SetFileName(L"\\a.wav", &type), S_OK);
    LPOLESTR name = nullptr;
    AM_MEDIA_TYPE given{};
    ASSERT_EQ(file_->GetCurFile(&name, &given), S_OK);
    EXPECT_EQ(given.majortype, MEDIATYPE_Stream);
    EXPECT_EQ(given.pbFormat, nullptr);
    CoTaskMemFree(name);
}

TEST_F(FileSink, ATypeOfFileThatItDoesNotMakeIsRefused) {
    AM_MEDIA_TYPE type{};
    type.majortype = MEDIATYPE_Audio;
    type.subtype = capture::kFileAmr;
    EXPECT_EQ(file_->SetFileName(L"\\a.wav", &type), VFW_E_INVALIDMEDIATYPE);
    const auto mux = test::CreateAs<IFileSinkFilter2>(capture::kClassMultiplexer, IID_IFileSinkFilter2);
    EXPECT_EQ(mux->SetFileName(L"\\a.amr", &type), S_OK);
    type.subtype = MEDIASUBTYPE_PCM;
    EXPECT_EQ(mux->SetFileName(L"\\b.amr", &type), VFW_E_INVALIDMEDIATYPE);
    EXPECT_FALSE(Exists(L"\\b.amr"));
}

TEST_F(FileSink, AlwaysOverwrites) {
    DWORD mode = 0;
    EXPECT_EQ(file_->GetMode(&mode), S_OK);
    EXPECT_EQ(mode, static_cast<DWORD>(AM_FILE_OVERWRITE));
    EXPECT_EQ(file_->SetMode(AM_FILE_OVERWRITE), S_OK);
    EXPECT_EQ(file_->SetMode(0), E_INVALIDARG);
    EXPECT_EQ(file_->GetMode(nullptr), E_POINTER);
}

}  // namespace
