#include "tests/bench/soak.h"

#include <cstdio>

#include "tests/bench/process_usage.h"
#include "tests/support/object_counts.h"
#include "tests/support/random_day.h"

namespace bench {
namespace {

constexpr std::uint32_t kClockRate = 600;
constexpr unsigned kSeed = 20240;
constexpr DWORD kBetweenEvents_ms = 50;
constexpr double kWarmUp_h = 2;
constexpr double kReports = 10;
// How long the monitor may stand still, in real time.
constexpr ULONGLONG kDeadlock_ms = 60000;
// What may be held more at the end: a box that is just open, a call in hand.
constexpr DWORD kMoreObjects = 8;
constexpr double kMoreMemory_MB = 2;

struct Figures {
    double hours;
    long rounds;
    double memory_MB;
    test::ObjectCounts counts;
};

class Life {
  public:
    explicit Life(test::HandsetUnderTest& handset)
        : m_radio(handset),
          m_day(handset, m_radio, kSeed),
          m_usage(m_radio.Process(), handset.DevicePath(L"\\Windows\\UI.exe")),
          m_start(GetTickCount64()) {
        m_radio.WaitUntilShown();
    }

    double Hours() const {
        return static_cast<double>(GetTickCount64() - m_start) * kClockRate / 1000 / 3600;
    }
    long Rounds() { return m_day.Rounds(); }
    // False when the radio is gone or its monitor stands still.
    bool LiveUntil(double hours, long rounds) {
        long last = Rounds();
        ULONGLONG moved = GetTickCount64();
        while (Hours() < hours || Rounds() < rounds) {
            m_day.Step();
            Sleep(kBetweenEvents_ms);
            const ULONGLONG now = GetTickCount64();
            if (Rounds() != last) moved = now;
            last = Rounds();
            if (!m_radio.Runs() || now - moved > kDeadlock_ms) return false;
        }
        return true;
    }
    Figures Report() {
        const test::ObjectCounts counts = test::CountObjects(m_radio);
        const Figures figures = {Hours(), Rounds(), m_usage.Private_MB(), counts};
        std::printf("%8.1f h %9ld rounds %8.2f MB %6lu handles %6lu GDI objects\n", figures.hours,
                    figures.rounds, figures.memory_MB, figures.counts.handles, figures.counts.gdiObjects);
        std::fflush(stdout);
        return figures;
    }
    // The window goes the usual way, and the radio with it.
    bool End() {
        m_day.Calm();
        while (const HWND box = m_radio.Box(L"FM")) {
            test::Radio::Answer(box, IDOK);
            Sleep(kBetweenEvents_ms);
        }
        PostMessageW(m_radio.Window(), WM_CLOSE, 0, 0);
        return m_radio.WaitUntilGone() && m_radio.ExitCode() == 0;
    }

  private:
    test::Radio m_radio;
    test::RandomDay m_day;
    ProcessUsage m_usage;
    ULONGLONG m_start;
};

bool HasGrown(const Figures& before, const Figures& after) {
    return after.counts.handles > before.counts.handles + kMoreObjects ||
           after.counts.gdiObjects > before.counts.gdiObjects + kMoreObjects ||
           after.memory_MB > before.memory_MB + kMoreMemory_MB;
}

}  // namespace

int RunSoak(double hours, long rounds) {
    test::HandsetUnderTest handset;
    test::StoreFavourites(handset);
    handset.SetState(L"ClockRate", kClockRate);
    Life life(handset);
    bool lives = life.LiveUntil(kWarmUp_h, 0);
    const Figures before = life.Report();
    for (int part = 1; lives && part <= kReports; ++part) {
        lives = life.LiveUntil(hours * part / kReports, part < kReports ? 0 : rounds);
        if (part < kReports) life.Report();
    }
    const Figures after = life.Report();
    const bool ended = life.End();
    const bool grown = HasGrown(before, after);
    std::printf("%s; %s; %s\n", lives ? "the monitor never stood still" : "THE MONITOR STOOD STILL",
                grown ? "THE RADIO GREW" : "the radio did not grow",
                ended ? "and it closed by itself" : "AND IT DID NOT CLOSE");
    return lives && ended && !grown ? 0 : 1;
}

}  // namespace bench
