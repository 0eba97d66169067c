// A million pairs of texts as a booking's fields may hold them: the fields take what is typed, and the
// registry what anybody writes.
#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "schedule/booking_rule.h"
#include "schedule/command_options.h"
#include "tests/native/fuzz_inputs.h"

namespace {

constexpr std::uint64_t kBookings = 1'000'000;

// In memory of exactly its length: a look beyond its end is seen.
class Tight {
  public:
    explicit Tight(const std::wstring& text) : m_text(text.c_str(), text.c_str() + text.size() + 1) {}
    const wchar_t* get() const { return m_text.data(); }

  private:
    std::vector<wchar_t> m_text;
};

// --- A second reading of the rules ------------------------------------------------------------------------

std::int64_t NumberAt(const std::wstring& text, std::size_t at) {
    while (at < text.size() && text[at] == L' ') ++at;
    const bool negative = at < text.size() && text[at] == L'-';
    at += negative;
    std::int64_t number = 0;
    for (; at < text.size() && text[at] >= L'0' && text[at] <= L'9'; ++at) {
        number = number > INT32_MAX ? number : number * 10 + (text[at] - L'0');
    }
    number = std::min<std::int64_t>(number, INT32_MAX);
    return negative ? -number : number;
}
std::int64_t MinutesIn(const std::wstring& text) {
    return text.size() > 5 ? NumberAt(text, 5) : 0;
}
std::int64_t Total(const std::wstring& text) {
    return NumberAt(text, 0) * 60 + MinutesIn(text);
}
std::int32_t Fits(std::int64_t number) {
    return static_cast<std::int32_t>(std::max<std::int64_t>(std::numeric_limits<std::int32_t>::min(),
                                                            std::min<std::int64_t>(number, INT32_MAX)));
}
std::wstring ArgumentOf(const std::wstring& channel) {
    const std::size_t point = channel.find(L'.');
    std::wstring argument = channel.substr(0, point);
    if (point != channel.npos) {
        const std::wstring behind = channel.substr(point + 1);
        argument += behind.substr(0, behind.find(L'.'));
    }
    return (argument + L'0').substr(0, 9);
}

// --- The texts ------------------------------------------------------------------------------------------

class TextMaker {
  public:
    unsigned Below(std::size_t limit) { return static_cast<unsigned>(m_random() % limit); }
    // As a time field shows it.
    std::wstring Time() {
        const unsigned hours = Below(24), minutes = Below(60);
        return {wchar_t(L'0' + hours / 10),   wchar_t(L'0' + hours % 10),  L' ', L':', L' ',
                wchar_t(L'0' + minutes / 10), wchar_t(L'0' + minutes % 10)};
    }
    // As somebody may have written it: up to the room of a field.
    std::wstring Any() {
        std::wstring text;
        for (std::size_t left = Below(kBookingTextCapacity); left != 0; --left) {
            text += Below(4) == 0 ? static_cast<wchar_t>(1 + Below(0xD7FF)) : L"0123456789-: ."[Below(14)];
        }
        return text;
    }
    // As the channel's field lets it be typed.
    std::wstring Channel() {
        std::wstring text;
        for (std::size_t left = Below(kBookingTextCapacity); left != 0; --left)
            text += L"0123456789."[Below(11)];
        return text;
    }

  private:
    std::mt19937 m_random{20260106};
};

// --- The properties -------------------------------------------------------------------------------------

void TellNobody(const wchar_t*, ...) {}

void CheckTimes(const std::wstring& one, const std::wstring& other) {
    const Tight start(one), end(other);
    ASSERT_EQ(MinuteOfDay(start.get()), Fits(Total(one)));
    // Hours are compared first, and then the minutes that are borrowed from them.
    const std::int64_t borrowed = MinutesIn(other) < MinutesIn(one) ? 1 : 0;
    const std::int64_t hours = NumberAt(other, 0) - NumberAt(one, 0);
    std::int32_t duration = -1;
    ASSERT_EQ(BookingDuration(start.get(), end.get(), &duration), hours >= 0 && hours - borrowed >= 0);
    if (hours < 0 || hours - borrowed < 0) {
        ASSERT_EQ(duration, -1) << "a refused pair has a duration";
        return;
    }
    ASSERT_EQ(duration, Fits(Total(other) - Total(one)));
    const BookedSpan span = SpanOf(start.get(), duration);
    const std::int64_t last = std::int64_t{Fits(Total(one))} + duration;
    ASSERT_EQ(span.nStart_min, Fits(Total(one)));
    ASSERT_EQ(span.nEnd_min, Fits(last > 1440 ? last - 1440 : last));
    ASSERT_TRUE(IsConflict(span, span)) << "a booking is not in its own way";
}

void CheckCommandLine(const std::wstring& channel, std::int32_t duration_min) {
    const Tight text(channel);
    const std::wstring argument = ArgumentOf(channel);
    ASSERT_EQ(argument, ChannelArgumentOf(text.get()).sz);
    BookingCommandLine line = CommandLineOf(text.get(), duration_min);
    CommandLineRequest request = {};
    ReadCommandOptions(line.sz, request, TellNobody);
    ASSERT_EQ(request.uRecord, 1u);
    ASSERT_EQ(request.uChannel, static_cast<std::uint32_t>(std::stoul(argument)));
    ASSERT_EQ(request.uDuration_min, static_cast<std::uint32_t>(duration_min));
}

TEST(BookingFuzz, AMillionPairsOfTextsAreTimesSpansAndCommandLinesAsTheRulesSay) {
    const std::uint64_t bookings = test::FuzzInputs(kBookings);
    TextMaker make;
    for (std::uint64_t i = 0; i < bookings; ++i) {
        const bool plain = make.Below(3) == 0;
        CheckTimes(plain ? make.Time() : make.Any(), plain ? make.Time() : make.Any());
        CheckCommandLine(make.Channel(), static_cast<std::int32_t>(make.Below(std::size_t{INT32_MAX} + 1)));
        // Whatever stands there, the argument keeps within its room.
        const std::wstring any = make.Any();
        ASSERT_EQ(ArgumentOf(any), ChannelArgumentOf(Tight(any).get()).sz);
        if (testing::Test::HasFatalFailure()) FAIL() << "booking " << i;
    }
}

}  // namespace
