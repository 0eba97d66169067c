// Message queues between programs.
#include "handset/state/message_queue.h"
#include "tests/unit/power/phone_under_test.h"

namespace {

class QueueOfTwoPrograms : public test::PhoneTest {
  protected:
    QueueOfTwoPrograms() {
        const handset::QueueOptions options = {1, 4, 16};
        EXPECT_EQ(handset::CQueueEnd::Open(L"queue.named.calls", true, &options, &reader_),
                  static_cast<DWORD>(ERROR_SUCCESS));
    }
    DWORD Read(std::string* text, DWORD timeout_ms) {
        char buffer[16];
        DWORD size = 0;
        const DWORD error = reader_->Read(buffer, sizeof buffer, &size, timeout_ms, nullptr);
        text->assign(buffer, size);
        return error;
    }

    std::unique_ptr<handset::CQueueEnd> reader_;
};

TEST_F(QueueOfTwoPrograms, AMessageOfOneIsReadByTheOther) {
    StartProgram(L"write");
    std::string text;
    EXPECT_EQ(Read(&text, test::kDeadline_ms), static_cast<DWORD>(ERROR_SUCCESS));
    EXPECT_EQ(text, "hello");
    EXPECT_EQ(reader_->Counts().writers, 1);
}

TEST_F(QueueOfTwoPrograms, AReaderThatWaitsIsToldThatTheOnlyWriterWasKilled) {
    StartProgram(L"write");
    std::string text;
    ASSERT_EQ(Read(&text, test::kDeadline_ms), static_cast<DWORD>(ERROR_SUCCESS));
    struct Waiting {
        handset::CQueueEnd* reader;
        DWORD error;
    } waiting{reader_.get(), ERROR_SUCCESS};
    const handset::OwnedHandle thread(CreateThread(
        nullptr, 0,
        [](void* data) -> DWORD {
            auto* self = static_cast<Waiting*>(data);
            char buffer[16];
            DWORD size = 0;
            self->error = self->reader->Read(buffer, sizeof buffer, &size, INFINITE, nullptr);
            return 0;
        },
        &waiting, 0, nullptr));
    EXPECT_EQ(WaitForSingleObject(thread.get(), 200), static_cast<DWORD>(WAIT_TIMEOUT));
    KillPrograms();
    EXPECT_EQ(WaitForSingleObject(thread.get(), test::kDeadline_ms), WAIT_OBJECT_0);
    EXPECT_EQ(waiting.error, static_cast<DWORD>(ERROR_PIPE_NOT_CONNECTED));
}

TEST_F(QueueOfTwoPrograms, WhatAKilledWriterHasWrittenIsStillThere) {
    StartProgram(L"write");
    KillPrograms();
    std::string text;
    EXPECT_EQ(Read(&text, 0), static_cast<DWORD>(ERROR_SUCCESS));
    EXPECT_EQ(text, "hello");
    EXPECT_EQ(Read(&text, 0), static_cast<DWORD>(ERROR_PIPE_NOT_CONNECTED));
}

}  // namespace
