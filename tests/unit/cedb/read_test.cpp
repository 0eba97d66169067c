// CeReadRecordPropsEx: the block, its growth, the properties chosen.
#include "tests/unit/cedb/database_fixture.h"

namespace {

class ReadTest : public DatabaseTest {
  protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        volume_ = Mount();
        database_ = Open(volume_, kName);
    }
    void TearDown() override {
        LocalFree(buffer_);
        Close(database_);
        Unmount(volume_);
        DatabaseTest::TearDown();
    }
    CEOID ReadInto(DWORD flags, WORD* count, CEPROPID* ids = nullptr, HANDLE heap = nullptr) {
        SetLastError(0);
        const CEOID oid = CeReadRecordPropsEx(database_, flags, count, ids, &buffer_, &size_, heap);
        error_ = GetLastError();
        return oid;
    }
    const CEPROPVAL* Values() const { return reinterpret_cast<const CEPROPVAL*>(buffer_); }

    CEGUID volume_{};
    HANDLE database_ = nullptr;
    BYTE* buffer_ = nullptr;
    DWORD size_ = 0;
    DWORD error_ = 0;
};

}  // namespace

TEST_F(ReadTest, EveryTypeComesBackAsItWasWritten) {
    BYTE bytes[] = {0, 255, 7};
    CEPROPVAL written[9]{};
    const WORD types[] = {CEVT_I2,   CEVT_UI2,      CEVT_I4,     CEVT_UI4, CEVT_R8,
                          CEVT_BOOL, CEVT_FILETIME, CEVT_LPWSTR, CEVT_BLOB};
    for (DWORD i = 0; i < 9; ++i) written[i].propid = (0x70 + i) << 16 | types[i];
    written[0].val.iVal = -32768;
    written[1].val.uiVal = 65535;
    written[2].val.lVal = -2147483647;
    written[3].val.ulVal = 4294967295U;
    written[4].val.dblVal = 87.5;
    written[5].val.boolVal = TRUE;
    written[6].val.filetime = {1, 0x80000000};
    written[7].val.lpwstr = Mutable(L"M\u00FCnchen \u4E2D");
    written[8].val.blob = {3, bytes};
    const CEOID oid = CeWriteRecordProps(database_, 0, 9, written);
    ASSERT_NE(oid, 0U);
    WORD count = 0;
    ASSERT_EQ(ReadInto(CEDB_ALLOWREALLOC, &count), oid) << error_;
    ASSERT_EQ(count, 9);
    for (int i = 0; i < 9; ++i) EXPECT_EQ(Values()[i].propid, written[i].propid);
    EXPECT_EQ(Values()[0].val.iVal, -32768);
    EXPECT_EQ(Values()[1].val.uiVal, 65535);
    EXPECT_EQ(Values()[2].val.lVal, -2147483647);
    EXPECT_EQ(Values()[3].val.ulVal, 4294967295U);
    EXPECT_EQ(Values()[4].val.dblVal, 87.5);
    EXPECT_EQ(Values()[5].val.boolVal, TRUE);
    EXPECT_EQ(Values()[6].val.filetime.dwHighDateTime, 0x80000000U);
    EXPECT_STREQ(Values()[7].val.lpwstr, L"M\u00FCnchen \u4E2D");
    ASSERT_EQ(Values()[8].val.blob.dwCount, 3U);
    EXPECT_EQ(memcmp(Values()[8].val.blob.lpb, bytes, 3), 0);
    EXPECT_GE(LocalSize(buffer_), size_);
}

TEST_F(ReadTest, OneBlockIsUsedForAWholeScanAndGrowsWhenARecordNeedsIt) {
    Insert(database_, L"a", 1);
    Insert(database_, std::wstring(3000, L'b').c_str(), 2);
    Insert(database_, L"c", 3);
    WORD count = 0;
    ASSERT_NE(ReadInto(CEDB_ALLOWREALLOC, &count), 0U);
    const DWORD small = size_;
    ASSERT_NE(ReadInto(CEDB_ALLOWREALLOC, &count), 0U);
    EXPECT_EQ(wcslen(Values()[1].val.lpwstr), 3000U);
    const BYTE* large = buffer_;
    ASSERT_NE(ReadInto(CEDB_ALLOWREALLOC, &count), 0U);
    EXPECT_EQ(buffer_, large);
    EXPECT_EQ(size_, small);
    EXPECT_EQ(ReadInto(CEDB_ALLOWREALLOC, &count), 0U);
    EXPECT_EQ(error_, static_cast<DWORD>(ERROR_NO_MORE_ITEMS));
}

TEST_F(ReadTest, AFixedBlockThatIsTooSmallTellsItsSizeAndTheCursorStays) {
    const CEOID oid = Insert(database_, L"a", 1);
    WORD count = 0;
    EXPECT_EQ(ReadInto(0, &count), 0U);
    EXPECT_EQ(error_, static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    const DWORD needed = size_;
    ASSERT_GT(needed, 4 * sizeof(CEPROPVAL));
    buffer_ = static_cast<BYTE*>(LocalAlloc(LMEM_FIXED, needed));
    --size_;
    EXPECT_EQ(ReadInto(0, &count), 0U);
    EXPECT_EQ(size_, needed);
    EXPECT_EQ(ReadInto(0, &count), oid);
    EXPECT_EQ(count, 4);
}

TEST_F(ReadTest, ChosenPropertiesComeInTheOrderAskedForAndMissingOnesAreMarked) {
    const CEOID oid = Insert(database_, L"a", 10795);
    CEPROPID ids[] = {kValue, 0x00990013, kName};
    WORD count = 3;
    ASSERT_EQ(ReadInto(CEDB_ALLOWREALLOC, &count, ids), oid);
    ASSERT_EQ(count, 3);
    EXPECT_EQ(Values()[0].val.ulVal, 10795U);
    EXPECT_EQ(Values()[0].wFlags, 0);
    EXPECT_EQ(Values()[1].propid, 0x00990013U);
    EXPECT_EQ(Values()[1].wFlags, CEDB_PROPNOTFOUND);
    EXPECT_STREQ(Values()[2].val.lpwstr, L"a");
}

TEST_F(ReadTest, NoneOfTheChosenPropertiesIsAnErrorThatStepsOn) {
    Insert(database_, L"a", 1);
    const CEOID second = Insert(database_, L"b", 2);
    CEPROPID id = 0x00990013;
    WORD count = 1;
    EXPECT_EQ(ReadInto(CEDB_ALLOWREALLOC, &count, &id), 0U);
    EXPECT_EQ(error_, static_cast<DWORD>(ERROR_NO_DATA));
    EXPECT_EQ(Values()[0].wFlags, CEDB_PROPNOTFOUND);
    EXPECT_EQ(Read(database_).oid, second);
}

TEST_F(ReadTest, ABlockOfAnotherHeapIsMadeThereAndTheProcessHeapIsLocalAllocs) {
    Insert(database_, L"a", 1);
    Insert(database_, L"b", 1);
    const HANDLE heap = HeapCreate(0, 0, 0);
    WORD count = 0;
    ASSERT_NE(ReadInto(CEDB_ALLOWREALLOC, &count, nullptr, heap), 0U);
    EXPECT_GE(HeapSize(heap, 0, buffer_), size_);
    HeapFree(heap, 0, buffer_);
    HeapDestroy(heap);
    buffer_ = nullptr;
    ASSERT_NE(ReadInto(CEDB_ALLOWREALLOC, &count, nullptr, GetProcessHeap()), 0U);
    EXPECT_GE(LocalSize(buffer_), size_);
}

TEST_F(ReadTest, WrongArgumentsAreRefused) {
    Insert(database_, L"a", 1);
    WORD count = 0;
    EXPECT_EQ(CeReadRecordPropsEx(database_, 1, nullptr, nullptr, &buffer_, &size_, nullptr), 0U);
    EXPECT_EQ(CeReadRecordPropsEx(database_, 1, &count, nullptr, nullptr, &size_, nullptr), 0U);
    EXPECT_EQ(CeReadRecordPropsEx(database_, 1, &count, nullptr, &buffer_, nullptr, nullptr), 0U);
    EXPECT_EQ(CeReadRecordPropsEx(database_, 2, &count, nullptr, &buffer_, &size_, nullptr), 0U);
    CEPROPID id = kName;
    EXPECT_EQ(CeReadRecordPropsEx(database_, 1, &count, &id, &buffer_, &size_, nullptr), 0U);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    size_ = 100;
    EXPECT_EQ(CeReadRecordPropsEx(database_, 0, &count, nullptr, &buffer_, &size_, nullptr), 0U);
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_INVALID_PARAMETER));
    EXPECT_EQ(buffer_, nullptr);
}

TEST_F(ReadTest, WithoutAutoIncrementTheCursorStaysOnTheRecord) {
    const CEOID first = Insert(database_, L"a", 1);
    Insert(database_, L"b", 1);
    const HANDLE staying = Open(volume_, kName, 0);
    EXPECT_EQ(Read(staying).oid, first);
    EXPECT_EQ(Read(staying).oid, first);
    Close(staying);
}
