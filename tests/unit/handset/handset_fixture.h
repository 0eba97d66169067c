// A handset of a test's own: a state key and a device root that nobody else uses, gone afterwards.
#pragma once

#include <windows.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "handset/command/command.h"

namespace panel {

// Keeps what a verb says.
class RecordingConsole : public CConsole {
  public:
    void Line(const std::wstring& text) override { lines.push_back(text); }
    void Error(const std::wstring& text) override { errors.push_back(text); }
    // Every line, each with a line end.
    [[nodiscard]] std::wstring Said() const { return Joined(lines); }
    [[nodiscard]] std::wstring Complained() const { return Joined(errors); }

    std::vector<std::wstring> lines, errors;

  private:
    static std::wstring Joined(const std::vector<std::wstring>& parts);
};

class HandsetTest : public testing::Test {
  protected:
    HandsetTest();
    ~HandsetTest() override;

    // Runs a verb with its arguments; the exit code.
    int Run(const Arguments& words);
    // A folder with files named as the handset's programs; the radio among them is the stand-in.
    std::wstring ProgramsToInstall();
    [[nodiscard]] std::wstring Device(const std::wstring& devicePath) const { return root_ + devicePath; }

    std::wstring home_, root_, stateKey_;
    RecordingConsole console_;
};

}  // namespace panel
