// What the tests share that treat a running radio as another program, a broken one, may.
#pragma once

#include <cstdlib>

#include "shell/messages.h"
#include "tests/system/channels_on_radio.h"

namespace test {

// How long such a test goes on: so many seconds with every run, KORA_FUZZ_SECONDS when it is set.
inline DWORD FuzzTime_ms(DWORD usual_s) {
    const char* text = std::getenv("KORA_FUZZ_SECONDS");
    return (text == nullptr ? usual_s : std::strtoul(text, nullptr, 0)) * 1000;
}

class OutsideTest : public ThreeChannelsOnRadio {
  protected:
    static constexpr DWORD kClockRate = 50;

    // Puts away every dialog and box that the radio shows, the uppermost first, and waits for an answer of
    // its window.
    static testing::AssertionResult Answers(const Radio& radio) {
        const bool away = WaitFor([&] {
            if (!radio.Runs()) return true;
            const HWND box = radio.Box(nullptr);
            if (box == nullptr) return true;
            if (IsWindowEnabled(box)) {
                for (const int id : {IDNO, IDOK}) PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(id), 0);
                PostMessageW(box, WM_CLOSE, 0, 0);
            }
            return false;
        });
        if (!radio.Runs()) return testing::AssertionFailure() << "it ended with " << Hex(radio.ExitCode());
        if (!away)
            return testing::AssertionFailure()
                   << "a box stays: " << Narrow(Radio::BoxText(radio.Box(nullptr)));
        DWORD_PTR result = 0;
        if (SendMessageTimeoutW(radio.Window(), WM_NULL, 0, 0, SMTO_NORMAL, kDeadline_ms, &result) == 0)
            return testing::AssertionFailure() << "its window does not answer";
        return testing::AssertionSuccess();
    }

    // What was posted before is done, or has opened its box: a position that was posted behind it is the
    // slider's. What is sent, as Answers does, overtakes it.
    static bool IsDone(const Radio& radio) {
        const LRESULT position = radio.Send(WM_SKIN_GETPOS, SKIN_VOLUME) == 1 ? 2 : 1;
        PostMessageW(radio.Window(), WM_SKIN_SETPOS, SKIN_VOLUME, position);
        return WaitFor([&] { return radio.Send(WM_SKIN_GETPOS, SKIN_VOLUME) == position; });
    }

    // Types 107.9. Digits are lost while a box is open or the radio records, and those that come later go on
    // where the entry stands: the first one is typed until it stands at the front.
    testing::AssertionResult Types1079(const Radio& radio) const {
        for (int digit = 0; digit < 4; ++digit) {
            const int taken = CountIn(handset.Trace(), ":1--"), first = CountIn(handset.Trace(), "FM: 0:1--");
            radio.Type("1");
            if (!WaitFor([&] { return CountIn(handset.Trace(), ":1--") > taken; }))
                return testing::AssertionFailure() << "a digit is not taken";
            if (CountIn(handset.Trace(), "FM: 0:1--") == first) continue;
            radio.Type("079");
            return testing::AssertionSuccess();
        }
        return testing::AssertionFailure() << "four digits are no entry";
    }

    // Closes it as its user does.
    testing::AssertionResult Closes(const Radio& radio) const {
        if (const auto answers = Answers(radio); !answers) return answers;
        PostMessageW(radio.Window(), WM_CLOSE, 0, 0);
        if (!radio.WaitUntilGone()) return testing::AssertionFailure() << "it does not close";
        if (radio.ExitCode() != 0)
            return testing::AssertionFailure() << "it ended with " << Hex(radio.ExitCode());
        return testing::AssertionSuccess();
    }

    // Whether the radio met a fault that it caught.
    bool CaughtAFault() const {
        const std::string trace = handset.Trace();
        return trace.find("Exception at Main_threadProc") != trace.npos ||
               trace.find("SleepTimerProc Crash") != trace.npos;
    }

    static bool Contains(const std::vector<std::string>& lines, const std::string& line) {
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    }
    static std::string Hex(DWORD number) {
        char text[16];
        std::snprintf(text, sizeof text, "0x%08lX", static_cast<unsigned long>(number));
        return text;
    }
    static std::string Narrow(const std::wstring& text) { return std::string(text.begin(), text.end()); }
};

}  // namespace test
