// A million command lines that another program may start the radio with, each against a second reading of the
// rule.
#include <gtest/gtest.h>

#include <cstdarg>
#include <limits>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "schedule/command_options.h"
#include "tests/native/fuzz_inputs.h"

namespace {

constexpr std::uint64_t kLines = 1'000'000;

std::wstring g_told;

void Tell(const wchar_t* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    g_told.append(format).append(va_arg(arguments, const wchar_t*)).append(L"|");
    va_end(arguments);
}

// Blanks of any kind, a sign, digits; what does not fit the platform's long is its nearest.
std::uint32_t NumberIn(std::wstring_view text) {
    std::size_t at = text.find_first_not_of(L"\t\n\v\f\r");
    if (at == text.npos) return 0;
    const bool negative = text[at] == L'-';
    if (negative || text[at] == L'+') ++at;
    __int128 number = 0;
    for (; at < text.size() && text[at] >= L'0' && text[at] <= L'9'; ++at) {
        number = std::min<__int128>(number * 10 + (text[at] - L'0'), __int128{1} << 100);
    }
    if (negative) number = -number;
    number = std::max<__int128>(number, std::numeric_limits<long>::min());
    return static_cast<std::uint32_t>(
        static_cast<long>(std::min<__int128>(number, std::numeric_limits<long>::max())));
}

struct Reading {
    CommandLineRequest request = {7, 8, 9};
    std::wstring told;
};

Reading ReadingOf(std::wstring_view line) {
    Reading reading;
    const wchar_t* format = nullptr;
    std::uint32_t* field = nullptr;
    while (true) {
        const std::size_t begin = line.find_first_not_of(L' ');
        if (begin == line.npos) return reading;
        const std::wstring_view token = line.substr(begin, line.find(L' ', begin) - begin);
        line.remove_prefix(begin + token.size());
        if (field != nullptr) {
            *field = NumberIn(token);
            reading.told.append(format).append(token).append(L"|");
            field = nullptr;
        } else if (token == L"-Rec") {
            reading.request.uRecord = 1;
        } else if (token == L"-Channel") {
            field = &reading.request.uChannel;
            format = L"Channel: %.100s\r\n";
        } else if (token == L"-Duration") {
            field = &reading.request.uDuration_min;
            format = L"Duration: %.100s\r\n";
        }
    }
}

// Words that mean something, words that nearly do, and any characters at all.
class LineMaker {
  public:
    const std::wstring& Next() {
        m_line.clear();
        for (unsigned left = Below(10); left != 0; --left) {
            Piece();
            m_line.append(Below(8) == 0 ? Below(3) : 1, L' ');
        }
        return m_line;
    }

  private:
    unsigned Below(std::size_t limit) { return static_cast<unsigned>(m_random() % limit); }

    void Piece() {
        static constexpr std::wstring_view kPieces[] = {
            L"-Rec",
            L"-Rec",
            L"-Channel",
            L"-Channel",
            L"-Duration",
            L"-Duration",
            L"-rec",
            L"-channel",
            L"-DURATION",
            L"-Record",
            L"-",
            L"--",
            L"8750",
            L"10800",
            L"60",
            L"0",
            L"-5",
            L"+7",
            L"12x",
            L"x12",
            L"\t42",
            L"\r\n-3",
            L"99999999999999999999",
            L"-99999999999999999999",
            L"\"-Rec\"",
            L"\x97f3",
            L"Kora.vol",
            L"\t",
            L"4294967296",
            L"\xd83d\xdcfb",
        };
        if (Below(6) != 0) {
            m_line.append(kPieces[Below(std::size(kPieces))]);
            return;
        }
        for (unsigned left = Below(12); left != 0; --left)
            m_line += static_cast<wchar_t>(Below(2) == 0 ? 1 + Below(0x7F) : 1 + Below(0xFFFF));
    }

    std::mt19937 m_random{20260105};
    std::wstring m_line;
};

TEST(CommandOptionsFuzz, AMillionLinesAreReadAsTheRuleSaysAndCutAtBlanksAlone) {
    const std::uint64_t lines = test::FuzzInputs(kLines);
    LineMaker maker;
    std::uint64_t withValues = 0;
    for (std::uint64_t i = 0; i < lines; ++i) {
        const std::wstring& line = maker.Next();
        // In memory of exactly its length: a look beyond its end is seen.
        std::vector<wchar_t> buffer(line.c_str(), line.c_str() + line.size() + 1);
        g_told.clear();
        CommandLineRequest request = {7, 8, 9};
        ReadCommandOptions(buffer.data(), request, Tell);

        const Reading expected = ReadingOf(line);
        ASSERT_EQ(request.uRecord, expected.request.uRecord) << "line " << i;
        ASSERT_EQ(request.uChannel, expected.request.uChannel) << "line " << i;
        ASSERT_EQ(request.uDuration_min, expected.request.uDuration_min) << "line " << i;
        ASSERT_EQ(g_told, expected.told) << "line " << i;
        for (std::size_t at = 0; at < line.size(); ++at) {
            if (buffer[at] != line[at]) ASSERT_TRUE(line[at] == L' ' && buffer[at] == L'\0') << "line " << i;
        }
        withValues += !expected.told.empty();
    }
    EXPECT_GT(withValues, lines / 4) << "hardly any line says something: the test has become an empty one";
}

}  // namespace
