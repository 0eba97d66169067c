// The C runtime of the system: memory, texts, formatting.
#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "tests/device/phone.h"

namespace device {
namespace {

std::uint32_t Copy(Phone& phone) {
    const auto bytes = phone.Cpu().Read(phone.Argument(1), phone.Argument(2));
    phone.Cpu().Write(phone.Argument(0), bytes.data(), bytes.size());
    return phone.Argument(0);
}

std::uint32_t Fill(Phone& phone) {
    const std::vector<std::uint8_t> bytes(phone.Argument(2), static_cast<std::uint8_t>(phone.Argument(1)));
    phone.Cpu().Write(phone.Argument(0), bytes.data(), bytes.size());
    return phone.Argument(0);
}

std::uint32_t CompareMemory(Phone& phone) {
    const auto a = phone.Cpu().Read(phone.Argument(0), phone.Argument(2));
    const auto b = phone.Cpu().Read(phone.Argument(1), phone.Argument(2));
    return static_cast<std::uint32_t>(a.empty() ? 0 : std::memcmp(a.data(), b.data(), a.size()));
}

std::string Lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}

std::uint32_t Place(std::uint32_t text, std::size_t found) {
    return found == std::string::npos ? 0 : text + 2 * static_cast<std::uint32_t>(found);
}

// 1 less, 2 equal, 3 greater; here only with letters of one case taken for the other.
std::uint32_t Compare(Phone& phone) {
    const auto text = [&](int at, int length) {
        const std::string whole = phone.Wide(at);
        const auto count = static_cast<std::int32_t>(phone.Argument(length));
        return Lower(count < 0 ? whole : whole.substr(0, static_cast<std::size_t>(count)));
    };
    const int order = text(2, 3).compare(text(4, 5));
    return order < 0 ? 1 : order == 0 ? 2 : 3;
}

std::uint32_t FormatWide(Phone& phone) {
    constexpr std::uint32_t kTooLong = 0x8007007A;
    std::string text = Format(phone, phone.Wide(2), 3, true);
    const std::uint32_t room = phone.Argument(1);
    const bool fits = text.size() < room;
    if (!fits) text.resize(room - 1);
    phone.Cpu().WriteWide(phone.Argument(0), text);
    return fits ? 0 : kTooLong;
}

// The device's debug output takes fewer than 128 characters a call; its program never gives it more.
std::uint32_t Trace(Phone& phone) {
    constexpr std::size_t kMostCharacters = 127;
    const std::string text = Format(phone, phone.Wide(0), 1, true);
    if (text.size() > kMostCharacters) throw std::runtime_error("a trace line is too long: " + text);
    AddLines(phone.trace, phone.partialTrace, text);
    return 0;
}

std::uint32_t Print(Phone& phone) {
    const std::string text = Format(phone, phone.Cpu().NarrowText(phone.Argument(0)), 1, false);
    AddLines(phone.console, phone.partialConsole, text);
    return static_cast<std::uint32_t>(text.size());
}

}  // namespace

std::string Format(const Phone& phone, const std::string& format, int first, bool wide) {
    std::string text;
    for (std::size_t i = 0; i < format.size(); ++i) {
        if (format[i] != '%') {
            text.push_back(format[i]);
            continue;
        }
        std::string how = "%";
        for (++i; i < format.size() && std::strchr("-+ #0123456789.l", format[i]) != nullptr; ++i) {
            if (format[i] != 'l') how.push_back(format[i]);
        }
        const char kind = i < format.size() ? format[i] : '%';
        if (kind == '%') {
            text.push_back('%');
            continue;
        }
        const std::uint32_t value = phone.Argument(first++);
        char number[64] = "";
        if (std::strchr("diuxXc", kind) != nullptr) {
            std::snprintf(number, sizeof number, (how + kind).c_str(), value);
            text += number;
        } else if (kind == 's' || kind == 'S') {
            Machine& cpu = const_cast<Phone&>(phone).Cpu();
            const std::string whole = (kind == 's') == wide ? cpu.WideText(value) : cpu.NarrowText(value);
            const std::size_t bound = how.find('.');
            text += bound == std::string::npos ? whole : whole.substr(0, std::stoul(how.substr(bound + 1)));
        } else {
            throw std::runtime_error("a format is not known here: " + format);
        }
    }
    return text;
}

void AddRuntimeCalls(SystemCalls& calls) {
    const SystemCalls mine = {
        {"malloc", [](Phone& p) { return p.Cpu().Allocate(p.Argument(0)); }},
        {"calloc", [](Phone& p) { return p.Cpu().Allocate(p.Argument(0) * p.Argument(1)); }},
        {"free", [](Phone&) { return 0U; }},
        {"LocalFree", [](Phone&) { return 0U; }},
        {"memcpy", Copy},
        {"memmove", Copy},
        {"memset", Fill},
        {"memcmp", CompareMemory},
        {"strcmp",
         [](Phone& p) {
             return static_cast<std::uint32_t>(
                 p.Cpu().NarrowText(p.Argument(0)).compare(p.Cpu().NarrowText(p.Argument(1))));
         }},
        {"wcslen", [](Phone& p) { return static_cast<std::uint32_t>(p.Wide(0).size()); }},
        {"wcscmp", [](Phone& p) { return static_cast<std::uint32_t>(p.Wide(0).compare(p.Wide(1))); }},
        {"_wcsicmp",
         [](Phone& p) { return static_cast<std::uint32_t>(Lower(p.Wide(0)).compare(Lower(p.Wide(1)))); }},
        {"wcsncmp",
         [](Phone& p) {
             return static_cast<std::uint32_t>(
                 p.Wide(0).substr(0, p.Argument(2)).compare(p.Wide(1).substr(0, p.Argument(2))));
         }},
        {"wcschr",
         [](Phone& p) { return Place(p.Argument(0), p.Wide(0).find(static_cast<char>(p.Argument(1)))); }},
        {"wcsrchr",
         [](Phone& p) { return Place(p.Argument(0), p.Wide(0).rfind(static_cast<char>(p.Argument(1)))); }},
        {"wcsstr", [](Phone& p) { return Place(p.Argument(0), p.Wide(0).find(p.Wide(1))); }},
        {"_wtol", [](Phone& p) { return static_cast<std::uint32_t>(std::atol(p.Wide(0).c_str())); }},
        {"wcstol",
         [](Phone& p) {
             const std::string text = p.Wide(0);
             char* end = nullptr;
             const long value = std::strtol(text.c_str(), &end, static_cast<int>(p.Argument(2)));
             if (p.Argument(1) != 0)
                 p.Cpu().Write32(p.Argument(1),
                                 Place(p.Argument(0), static_cast<std::size_t>(end - text.c_str())));
             return static_cast<std::uint32_t>(value);
         }},
        {"CompareStringW", Compare},
        {"StringCchPrintfW", FormatWide},
        {"NKDbgPrintfW", Trace},
        {"printf", Print},
    };
    calls.insert(mine.begin(), mine.end());
}

}  // namespace device
