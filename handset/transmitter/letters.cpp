#include "handset/transmitter/letters.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <string_view>

#include "handset/base/utf8.h"

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

}  // namespace

std::string ToLetters(const std::string& utf8) {
    std::string codes;
    for (std::string_view rest = utf8; !rest.empty();) {
        const std::optional<char32_t> letter = handset::TakeCharacter(&rest);
        if (!letter) rest.remove_prefix(1);
        codes += letter ? CodeOf(*letter) : ' ';
    }
    return codes;
}

}  // namespace transmitter
