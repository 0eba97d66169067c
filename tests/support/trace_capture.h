// What a piece of code writes to the debug output or to the console, as bytes.
#pragma once

#include <windows.h>

#include <string>

namespace test {

// Sends one of the process's standard streams to a temporary file for the length of a scope. Keep assertions
// out of the scope: the test framework writes to the console as well.
class StreamCapture {
  public:
    // `stream`: STD_ERROR_HANDLE is the debug output, STD_OUTPUT_HANDLE the console.
    explicit StreamCapture(DWORD stream) : m_stream(stream), m_previous(GetStdHandle(stream)) {
        char folder[MAX_PATH] = "";
        GetTempPathA(MAX_PATH, folder);
        GetTempFileNameA(folder, "trc", 0, m_path);
        m_file = CreateFileA(m_path, GENERIC_READ | GENERIC_WRITE, kShare, nullptr, CREATE_ALWAYS,
                             FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        SetStdHandle(stream, m_file);
    }
    ~StreamCapture() {
        SetStdHandle(m_stream, m_previous);
        CloseHandle(m_file);
    }
    StreamCapture(const StreamCapture&) = delete;
    StreamCapture& operator=(const StreamCapture&) = delete;

    // All that was written so far, whoever goes on writing: read past the handle of those who write, whose
    // place in the file they share.
    std::string Text() const {
        const HANDLE file = CreateFileA(m_path, GENERIC_READ, kShare, nullptr, OPEN_EXISTING, 0, nullptr);
        std::string text(GetFileSize(file, nullptr), '\0');
        DWORD read = 0;
        ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &read, nullptr);
        CloseHandle(file);
        text.resize(read);
        return text;
    }

  private:
    static constexpr DWORD kShare = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    char m_path[MAX_PATH] = "";
    DWORD m_stream;
    HANDLE m_previous;
    HANDLE m_file;
};

// Runs `action` and gives what it wrote to the debug output.
template <typename Action>
std::string TraceOf(Action action) {
    const StreamCapture capture(STD_ERROR_HANDLE);
    action();
    return capture.Text();
}

// The same for the console.
template <typename Action>
std::string ConsoleOf(Action action) {
    const StreamCapture capture(STD_OUTPUT_HANDLE);
    action();
    return capture.Text();
}

}  // namespace test
