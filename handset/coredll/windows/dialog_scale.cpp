#include "handset/coredll/windows/dialog_scale.h"

#include <cstdint>
#include <cstring>
#include <cwchar>

#include "handset/base/shell_look.h"
#include "handset/state/screen_size.h"

namespace coredll {
namespace {

constexpr WORD kNumberFollows = 0xFFFF, kExtendedMark = 0xFFFF;

// Walks over a template's packed parts.
class CTemplateWalker {
  public:
    explicit CTemplateWalker(const void* start) : start_(static_cast<const BYTE*>(start)), at_(start_) {}

    void Skip(std::size_t bytes) { at_ += bytes; }
    void SkipName() {
        if (Word() == kNumberFollows) return Skip(2 * sizeof(WORD));
        while (Word() != 0) Skip(sizeof(WORD));
        Skip(sizeof(WORD));
    }
    [[nodiscard]] WORD Word() const {
        WORD word = 0;
        std::memcpy(&word, at_, sizeof word);
        return word;
    }
    void Align() { at_ = start_ + (Offset() + 3) / 4 * 4; }
    [[nodiscard]] std::size_t Offset() const { return static_cast<std::size_t>(at_ - start_); }

  private:
    const BYTE* start_;
    const BYTE* at_;
};

}  // namespace

int DisplayScale() {
    return static_cast<int>(handset::ShellBarHeight() / handset::kUsualBarRows);
}

std::vector<BYTE> ScaledTemplate(const DLGTEMPLATE& layout, int scale) {
    if (scale == 1 || (layout.style & DS_SETFONT) == 0 || HIWORD(layout.style) == kExtendedMark) return {};
    CTemplateWalker walker(&layout);
    walker.Skip(sizeof layout);
    for (int name = 0; name < 3; ++name) walker.SkipName();  // menu, class, title
    const std::size_t points = walker.Offset();
    const auto scaled = static_cast<WORD>(walker.Word() * scale);
    walker.Skip(sizeof(WORD));
    walker.SkipName();  // of the font
    for (int item = 0; item < layout.cdit; ++item) {
        walker.Align();
        walker.Skip(sizeof(DLGITEMTEMPLATE));
        for (int name = 0; name < 2; ++name) walker.SkipName();  // class, title
        walker.Skip(sizeof(WORD) + walker.Word());               // creation data, counted by its first word
    }
    const auto* const bytes = reinterpret_cast<const BYTE*>(&layout);
    std::vector<BYTE> copy(bytes, bytes + walker.Offset());
    std::memcpy(copy.data() + points, &scaled, sizeof scaled);
    return copy;
}

}  // namespace coredll
