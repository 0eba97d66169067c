#include "handset/transmitter/letters.h"

#include <algorithm>
#include <iterator>

namespace transmitter {
namespace {

// Where the table is not ASCII below 0x80.
struct Moved {
    char32_t letter;
    unsigned char code;
};
constexpr Moved kMoved[] = {{U'¤', 0x24}, {U'―', 0x5E}, {U'‖', 0x60}, {U'¯', 0x7E}};

// Codes 0x80 to 0xFE, in rows of sixteen.
constexpr char32_t kUpperHalf[] =
    U"áàéèíìóòúùÑÇŞß¡Ĳ"
    U"âäêëîïôöûüñçşğıĳ"
    U"ªα©‰Ğěňőπ€£$←↑→↓"
    U"º¹²³±İńűµ¿÷°¼½¾§"
    U"ÁÀÉÈÍÌÓÒÚÙŘČŠŽÐĿ"
    U"ÂÄÊËÎÏÔÖÛÜřčšžđŀ"
    U"ÃÅÆŒŷÝÕØÞŊŔĆŚŹŦð"
    U"ãåæœŵýõøþŋŕćśźŧ";
static_assert(std::size(kUpperHalf) == 0x7F + 1, "all of 0x80 to 0xFE, and the end");

bool IsPlainAscii(char32_t letter) {
    return letter < 0x7F && letter != U'$' && letter != U'^' && letter != U'`' && letter != U'~';
}

char CodeOf(char32_t letter) {
    if (IsPlainAscii(letter)) return static_cast<char>(letter);
    for (const Moved& moved : kMoved) {
        if (moved.letter == letter) return static_cast<char>(moved.code);
    }
    const char32_t* end = std::end(kUpperHalf) - 1;
    const char32_t* found = std::find(std::begin(kUpperHalf), end, letter);
    return found == end ? ' ' : static_cast<char>(0x80 + (found - std::begin(kUpperHalf)));
}

// Takes one letter from the text at `at` and moves behind it.
char32_t NextLetter(const std::string& utf8, std::size_t& at) {
    const auto lead = static_cast<unsigned char>(utf8[at++]);
    const int more = lead < 0x80 ? 0 : lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC0 ? 1 : -1;
    if (more < 0) return U'\uFFFD';
    char32_t letter = more == 0 ? lead : lead & (0x3Fu >> more);
    for (int i = 0; i < more; ++i) {
        if (at == utf8.size() || (static_cast<unsigned char>(utf8[at]) & 0xC0) != 0x80) return U'\uFFFD';
        letter = letter << 6 | (static_cast<unsigned char>(utf8[at++]) & 0x3F);
    }
    return letter;
}

}  // namespace

std::string ToLetters(const std::string& utf8) {
    std::string codes;
    for (std::size_t at = 0; at < utf8.size();) codes += CodeOf(NextLetter(utf8, at));
    return codes;
}

}  // namespace transmitter
