// The pictures' resources.
#include "handset/phone/phone_art.h"

#include <windows.h>

#include <map>

#include "handset/base/rows.h"

namespace panel {
namespace {

// Resources of the program that this stands in. Empty when there is none of that name.
ArtPicture ReadResource(const wchar_t* name) {
    const HMODULE program = GetModuleHandleW(nullptr);
    const HRSRC place = FindResourceW(program, name, RT_RCDATA);
    const HGLOBAL block = place == nullptr ? nullptr : LoadResource(program, place);
    const void* bytes = block == nullptr ? nullptr : LockResource(block);
    if (bytes == nullptr) return {};
    return ReadBitmapFile(static_cast<const std::uint8_t*>(bytes), SizeofResource(program, place));
}

}  // namespace

const std::vector<ArtRow>& ArtRows() {
    static const std::vector<ArtRow> kRows = {
        {Art::kDesk, L"desk", 2, 0},
        {Art::kBody, L"body", 44, 20},
        {Art::kGlass, L"glass", 12, 0},
        {Art::kSpeaker, L"speaker", 0, 0},
        {Art::kSpeakerTurned, L"speaker_turned", 0, 0},
        {Art::kKeyUp, L"key_up", 12, 6},
        {Art::kKeyDown, L"key_down", 12, 6},
        {Art::kPad, L"pad", 0, 0},
        {Art::kArrowUp, L"arrow_up", 0, 0},
        {Art::kArrowUpLit, L"arrow_up_lit", 0, 0},
        {Art::kArrowDown, L"arrow_down", 0, 0},
        {Art::kArrowDownLit, L"arrow_down_lit", 0, 0},
        {Art::kArrowLeft, L"arrow_left", 0, 0},
        {Art::kArrowLeftLit, L"arrow_left_lit", 0, 0},
        {Art::kArrowRight, L"arrow_right", 0, 0},
        {Art::kArrowRightLit, L"arrow_right_lit", 0, 0},
        {Art::kReturnUp, L"return_up", 0, 0},
        {Art::kReturnDown, L"return_down", 0, 0},
        {Art::kSoftSign, L"soft_sign", 0, 0},
        {Art::kSoftSignTurned, L"soft_sign_turned", 0, 0},
        {Art::kCallSign, L"call_sign", 0, 0},
        {Art::kCallSignTurned, L"call_sign_turned", 0, 0},
        {Art::kEndSign, L"end_sign", 0, 0},
        {Art::kEndSignTurned, L"end_sign_turned", 0, 0},
        {Art::kToggleOff, L"toggle_off", 0, 0},
        {Art::kToggleOffDown, L"toggle_off_down", 0, 0},
        {Art::kToggleOn, L"toggle_on", 0, 0},
        {Art::kToggleOnDown, L"toggle_on_down", 0, 0},
        {Art::kButtonUp, L"button_up", 9, 4},
        {Art::kButtonDown, L"button_down", 9, 4},
        {Art::kButtonLit, L"button_lit", 9, 4},
        {Art::kTrack, L"track", 2, 1},
        {Art::kTrackLit, L"track_lit", 2, 1},
        {Art::kKnob, L"knob", 0, 0},
        {Art::kClose, L"close", 0, 0},
        {Art::kFocus, L"focus", 8, 4},
        {Art::kBand, L"band", 10, 0},
        {Art::kTuned, L"tuned", 0, 0},
    };
    return kRows;
}

const ArtPicture& PictureOf(Art art) {
    static const auto pictures = [] {
        std::map<Art, ArtPicture> read;
        for (const ArtRow& row : ArtRows()) read[row.art] = ReadResource(row.name);
        return read;
    }();
    return pictures.at(art);
}

void DrawArt(CCanvas& canvas, Art art, const Box& box) {
    const ArtPicture& picture = PictureOf(art);
    const ArtRow& row = *handset::RowWith(ArtRows(), &ArtRow::art, art);
    if (row.corner == 0) {
        canvas.Draw(picture, box.x + (box.w - picture.width) / 2, box.y + (box.h - picture.height) / 2);
        return;
    }
    canvas.DrawOut(picture, row.corner + row.margin,
                   {box.x - row.margin, box.y - row.margin, box.w + 2 * row.margin, box.h + 2 * row.margin});
}

}  // namespace panel
