// Message queues through the device's calls.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "handset_fixture.h"
#include "worker.h"

namespace {

MSGQUEUEOPTIONS Options(bool reads, DWORD flags = MSGQUEUE_NOPRECOMMIT) {
    return {sizeof(MSGQUEUEOPTIONS), flags, 4, 16, reads ? TRUE : FALSE};
}

// An end that is closed at the end of its scope.
class End {
  public:
    explicit End(HANDLE handle) : handle_(handle) {}
    ~End() { Close(); }
    End(const End&) = delete;
    End& operator=(const End&) = delete;
    operator HANDLE() const { return handle_; }
    void Close() {
        if (handle_ == nullptr) return;
        EXPECT_TRUE(CloseMsgQueue(handle_));
        handle_ = nullptr;
    }

  private:
    HANDLE handle_;
};

HANDLE Make(bool reads, DWORD flags = MSGQUEUE_NOPRECOMMIT, const wchar_t* name = nullptr) {
    MSGQUEUEOPTIONS options = Options(reads, flags);
    return CreateMsgQueue(name, &options);
}

HANDLE OtherEnd(HANDLE queue, bool reads) {
    MSGQUEUEOPTIONS options = Options(reads);
    return OpenMsgQueue(GetCurrentProcess(), queue, &options);
}

bool Write(HANDLE queue, std::string text, DWORD flags = 0) {
    return WriteMsgQueue(queue, text.data(), static_cast<DWORD>(text.size()), 0, flags) != FALSE;
}

// The next message; empty, with the last error, when there is none.
std::string Read(HANDLE queue, DWORD milliseconds = 0) {
    char buffer[16];
    DWORD size = 0;
    DWORD flags = 0;
    if (!ReadMsgQueue(queue, buffer, sizeof buffer, &size, milliseconds, &flags)) return "";
    return std::string(buffer, size) + (flags == MSGQUEUE_MSGALERT ? " (alert)" : "");
}

template <typename Call>
DWORD ErrorOf(Call call) {
    SetLastError(ERROR_SUCCESS);
    return call() ? ERROR_SUCCESS : GetLastError();
}

class MessageQueues : public HandsetTest {
  protected:
    End reader_{Make(true)};
    End writer_{OtherEnd(reader_, false)};
};

}  // namespace

TEST_F(MessageQueues, MessagesComeOutInTheOrderInWhichTheyWentIn) {
    for (const char* text : {"one", "two", "three"}) EXPECT_TRUE(Write(writer_, text));
    EXPECT_EQ(Read(reader_), "one");
    EXPECT_TRUE(Write(writer_, "four"));
    for (const char* text : {"two", "three", "four"}) EXPECT_EQ(Read(reader_), text);
    EXPECT_EQ(Read(reader_), "");
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_TIMEOUT));
}

TEST_F(MessageQueues, AlertsAreReadFirst) {
    Write(writer_, "one");
    Write(writer_, "fire", MSGQUEUE_MSGALERT);
    Write(writer_, "flood", MSGQUEUE_MSGALERT);
    for (const char* text : {"fire (alert)", "flood (alert)", "one"}) EXPECT_EQ(Read(reader_), text);
}

TEST_F(MessageQueues, ABufferThatIsTooSmallGetsWhatFitsAndTheMessageIsGone) {
    Write(writer_, "telephone");
    char buffer[4];
    DWORD size = 0;
    EXPECT_EQ(ErrorOf([&] { return ReadMsgQueue(reader_, buffer, 4, &size, 0, nullptr); }),
              static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(std::string(buffer, size), "tele");
    EXPECT_EQ(Read(reader_), "");
}

TEST_F(MessageQueues, AMessageMayBeAsLargeAsTheQueueSaysAndNoLarger) {
    EXPECT_TRUE(Write(writer_, std::string(16, 'x')));
    EXPECT_EQ(ErrorOf([&] { return Write(writer_, std::string(17, 'x')); }),
              static_cast<DWORD>(ERROR_INSUFFICIENT_BUFFER));
    EXPECT_EQ(Read(reader_), std::string(16, 'x'));
}

TEST_F(MessageQueues, AFullQueueTakesTheNextWhenOneHasBeenRead) {
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(Write(writer_, "x"));
    EXPECT_EQ(ErrorOf([&] { return Write(writer_, "y"); }), static_cast<DWORD>(ERROR_TIMEOUT));
    EXPECT_EQ(WaitForSingleObject(writer_, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    Worker later([this] {
        char text[] = "y";
        EXPECT_TRUE(WriteMsgQueue(writer_, text, 1, 10000, 0));
    });
    EXPECT_EQ(Read(reader_), "x");
    EXPECT_TRUE(later.Ended());
    for (const char* text : {"x", "x", "x", "y"}) EXPECT_EQ(Read(reader_), text);
}

TEST_F(MessageQueues, TheEndToReadIsSignalledWhileThereIsAMessage) {
    const HANDLE stop = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    const HANDLE objects[] = {stop, reader_};
    EXPECT_EQ(WaitForSingleObject(reader_, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    Write(writer_, "one");
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(WaitForMultipleObjects(2, objects, FALSE, 5000), static_cast<DWORD>(WAIT_OBJECT_0 + 1));
    }
    Read(reader_);
    EXPECT_EQ(WaitForMultipleObjects(2, objects, FALSE, 0), static_cast<DWORD>(WAIT_TIMEOUT));
    CloseHandle(stop);
}

TEST_F(MessageQueues, AReaderThatWaitsIsGivenAMessageThatComes) {
    std::string got;
    Worker waiting([&] { got = Read(reader_, INFINITE); });
    Write(writer_, "late");
    EXPECT_TRUE(waiting.Ended());
    EXPECT_EQ(got, "late");
}

TEST_F(MessageQueues, WithoutAWriterTheRestIsReadAndThenTheQueueIsBroken) {
    Write(writer_, "last words");
    writer_.Close();
    EXPECT_EQ(Read(reader_), "last words");
    EXPECT_EQ(Read(reader_, INFINITE), "");
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_PIPE_NOT_CONNECTED));
}

TEST_F(MessageQueues, WithoutAReaderNothingIsWritten) {
    reader_.Close();
    EXPECT_EQ(ErrorOf([&] { return Write(writer_, "x"); }), static_cast<DWORD>(ERROR_PIPE_NOT_CONNECTED));
}

TEST_F(MessageQueues, AQueueThatMayBeBrokenWorksWithOneEnd) {
    End reader(Make(true, MSGQUEUE_ALLOW_BROKEN, L"broken"));
    EXPECT_EQ(Read(reader), "");
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_TIMEOUT));
    End writer(Make(false, MSGQUEUE_ALLOW_BROKEN, L"broken"));
    reader.Close();
    EXPECT_TRUE(Write(writer, "kept"));
    End again(Make(true, MSGQUEUE_ALLOW_BROKEN, L"broken"));
    EXPECT_EQ(Read(again), "kept");
}

TEST_F(MessageQueues, ANameOpensTheQueueThatIsThereWithItsLimits) {
    SetLastError(ERROR_SUCCESS);
    End first(Make(true, MSGQUEUE_NOPRECOMMIT, L"calls"));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_SUCCESS));
    MSGQUEUEOPTIONS larger = {sizeof larger, 0, 99, 99, FALSE};
    End second(CreateMsgQueue(L"calls", &larger));
    EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
    EXPECT_TRUE(Write(second, "hello"));
    EXPECT_EQ(Read(first), "hello");
    MSGQUEUEINFO info{};
    info.dwSize = sizeof info;
    EXPECT_TRUE(GetMsgQueueInfo(second, &info));
    EXPECT_EQ(info.dwMaxMessages, 4u);
    EXPECT_EQ(info.cbMaxMessage, 16u);
}

TEST_F(MessageQueues, TheInformationCountsMessagesAndEnds) {
    End second(OtherEnd(reader_, false));
    Write(writer_, "one");
    Write(second, "two");
    Read(reader_);
    MSGQUEUEINFO info{};
    info.dwSize = sizeof info;
    ASSERT_TRUE(GetMsgQueueInfo(reader_, &info));
    EXPECT_EQ(info.dwFlags, static_cast<DWORD>(MSGQUEUE_NOPRECOMMIT));
    EXPECT_EQ(info.dwCurrentMessages, 1u);
    EXPECT_EQ(info.dwMaxQueueMessages, 2u);
    EXPECT_EQ(info.wNumReaders, 1);
    EXPECT_EQ(info.wNumWriters, 2);
    info.dwSize = 4;
    EXPECT_EQ(ErrorOf([&] { return GetMsgQueueInfo(reader_, &info); }),
              static_cast<DWORD>(ERROR_INVALID_PARAMETER));
}

TEST_F(MessageQueues, AQueueWithoutALimitHoldsThousands) {
    MSGQUEUEOPTIONS options = {sizeof options, MSGQUEUE_NOPRECOMMIT, 0, 16, TRUE};
    End reader(CreateMsgQueue(nullptr, &options));
    End writer(OtherEnd(reader, false));
    DWORD error = ERROR_SUCCESS;
    int written = 0;
    while ((error = ErrorOf([&] { return Write(writer, std::to_string(written)); })) == ERROR_SUCCESS)
        ++written;
    EXPECT_EQ(error, static_cast<DWORD>(ERROR_OUTOFMEMORY));
    EXPECT_EQ(written, 4096);
    EXPECT_EQ(Read(reader), "0");
}

TEST_F(MessageQueues, WhatIsNoEndOfThatKindIsAnInvalidHandle) {
    const DWORD wanted = ERROR_INVALID_HANDLE;
    const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, nullptr);
    EXPECT_EQ(ErrorOf([&] { return Write(reader_, "x"); }), wanted);
    for (const HANDLE queue : {static_cast<HANDLE>(writer_), event, static_cast<HANDLE>(nullptr)}) {
        SetLastError(ERROR_SUCCESS);
        EXPECT_EQ(Read(queue), "");
        EXPECT_EQ(GetLastError(), wanted);
    }
    EXPECT_EQ(ErrorOf([&] { return CloseMsgQueue(event); }), wanted);
    EXPECT_EQ(ErrorOf([&] { return OtherEnd(event, true); }), wanted);
    CloseHandle(event);
}

TEST_F(MessageQueues, ArgumentsAreChecked) {
    const DWORD wanted = ERROR_INVALID_PARAMETER;
    MSGQUEUEOPTIONS wrongSize = Options(true);
    wrongSize.dwSize = 16;
    MSGQUEUEOPTIONS noBytes = Options(true);
    noBytes.cbMaxMessage = 0;
    MSGQUEUEOPTIONS unknownFlags = Options(true, 0x80);
    for (MSGQUEUEOPTIONS* options :
         {static_cast<MSGQUEUEOPTIONS*>(nullptr), &wrongSize, &noBytes, &unknownFlags}) {
        EXPECT_EQ(ErrorOf([&] { return CreateMsgQueue(nullptr, options); }), wanted);
    }
    char buffer[16];
    DWORD size = 0;
    EXPECT_EQ(ErrorOf([&] { return ReadMsgQueue(reader_, nullptr, 16, &size, 0, nullptr); }), wanted);
    EXPECT_EQ(ErrorOf([&] { return ReadMsgQueue(reader_, buffer, 0, &size, 0, nullptr); }), wanted);
    EXPECT_EQ(ErrorOf([&] { return ReadMsgQueue(reader_, buffer, 16, nullptr, 0, nullptr); }), wanted);
    EXPECT_EQ(ErrorOf([&] { return WriteMsgQueue(writer_, nullptr, 1, 0, 0); }), wanted);
    EXPECT_EQ(ErrorOf([&] { return WriteMsgQueue(writer_, buffer, 0, 0, 0); }), wanted);
}

TEST_F(MessageQueues, CloseHandleClosesAnEndAsWell) {
    const HANDLE second = OtherEnd(reader_, false);
    EXPECT_TRUE(CloseHandle(second));
    EXPECT_EQ(ErrorOf([&] { return CloseMsgQueue(second); }), static_cast<DWORD>(ERROR_INVALID_HANDLE));
    MSGQUEUEINFO info{};
    info.dwSize = sizeof info;
    GetMsgQueueInfo(reader_, &info);
    EXPECT_EQ(info.wNumWriters, 1);
}

TEST_F(MessageQueues, TheFaultLetsNoneBeMade) {
    SetState(L"KORA_FAULT", L"seek msgqueue");
    EXPECT_EQ(ErrorOf([&] { return Make(true); }), static_cast<DWORD>(ERROR_OUTOFMEMORY));
    SetState(L"KORA_FAULT", L"");
    End made(Make(true));
    EXPECT_NE(static_cast<HANDLE>(made), nullptr);
}
