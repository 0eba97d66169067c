// A handset's life in which everything happens at random moments: what its user does, and what goes wrong.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "tests/support/handset_under_test.h"
#include "tests/support/radio.h"
#include "tests/support/service_process.h"

namespace test {

// How often what was done.
struct FaultFigures {
    int events = 0, faults = 0, calls = 0, sleeps = 0, bookings = 0, bookedStarts = 0, recordings = 0,
        scans = 0;
    int radios = 0, kills = 0, crashes = 0, leftBehind = 0, services = 0;
    int pairs = 0;           // of bookings that are due at the same minute
    int unseenBookings = 0;  // added in a dialog that showed no row for it: stored or not
    // The faults of the handset that have ended radios, by name, and how many each.
    std::map<std::string, int> causes;
};

class FaultDay {
  public:
    // The same seed makes the same choices. Radios run at the handset's clock rate.
    FaultDay(HandsetUnderTest& handset, unsigned seed);
    FaultDay(const FaultDay&) = delete;
    FaultDay& operator=(const FaultDay&) = delete;

    void LiveFor(double hours, std::uint32_t clockRate);
    // Faults are taken away, calls end, and the radio that runs is closed by its user.
    void End();
    const FaultFigures& Figures() const { return m_figures; }
    // What a radio did that neither its user nor a fault explains; empty when all is well.
    const std::vector<std::string>& Complaints() const { return m_complaints; }
    // Books two recordings of one minute, which is `minutes` of the handset's clock ahead.
    void BookPair(int minutes);
    // What an exit code has to be complained of: any but 0, and that of an access violation where `cause`
    // names a fault that raised one. Empty when all is well.
    static std::string ComplaintOfEnd(DWORD code, const std::string& cause);
    // The fault of the handset that has ended a radio by an access violation, by what the radio asked of the
    // tuner in its life and what it traced: the crash that was raised last, unless the radio's guards have
    // taken as many as were raised. Empty when no fault explains the end.
    static std::string CauseOfCrash(const std::vector<std::string>& calls, const std::string& trace);

  private:
    struct Event {
        unsigned weight;
        void (FaultDay::*happen)();
    };
    static const std::vector<Event>& Events();

    // The radio that runs, started or found; what became of the last one is noted.
    void Look();
    void NoteEnd();
    // How much was logged of the tuner's calls, and traced, in bytes.
    struct LogPlace {
        std::uint64_t calls = 0, trace = 0;
    };
    [[nodiscard]] LogPlace EndOfLogs() const;
    // From here on what is logged and traced belongs to the next radio.
    void BeginLife();
    void AnswerBoxes();
    void ExpectAnswer();
    // One takes another's place: never are two there at the same time.
    void ExpectOneRadio();
    bool WaitAwake(const std::function<bool()>& condition);
    void Complain(const std::string& what);
    void Step();

    void ChangeSignal();
    void ChangeCall();
    void Tune();
    void Seek();
    void ToggleDisplay();
    void ToggleActivation();
    void ToggleHeadset();
    void ToggleCard();
    void ToggleSpace();
    void ChangeFaults();
    void ClearFaults();
    // What keeps a radio from starting is taken away.
    void MendStart();
    // Radios without a window that do not end.
    void EndLeftBehind();
    void ChangeRecordSettings();
    void TapRecord();
    void Scan();
    void Book();
    void BookPairSoon();
    void SleepAndWake();
    void KillRadio();
    void KillService();
    void CloseRadio();

    unsigned Below(unsigned end) { return std::uniform_int_distribution<unsigned>(0, end - 1)(m_random); }
    bool Toss() { return Below(2) == 0; }

    HandsetUnderTest& m_handset;
    std::mt19937 m_random;
    std::unique_ptr<ServiceProcess> m_service;
    std::unique_ptr<Radio> m_radio;
    FaultFigures m_figures;
    std::vector<std::string> m_complaints;
    bool m_active = true, m_headset = true, m_card = true, m_space = true;
    LogPlace m_lifeBegan;  // what was logged and traced before this radio's life
    LogPlace m_lastSeen;   // and when a radio was last seen to run
    std::string m_fault;   // the one that is injected; empty for none
    int m_names = 0;
};

}  // namespace test
