#include "tuner/rds_display.h"

#include <cstdint>

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "skin/skin_paint.h"

namespace {

constexpr std::int32_t kNoKind = -1;
static_assert(kRdsTextCapacity <= kShownTextCapacity);

// In the order in which they are cleared.
constexpr int kRdsFields[] = {TEXT_RDS,        TEXT_PROGRAM_TYPE, TEXT_PROGRAM_TEXT,
                              TEXT_RADIO_TEXT, TEXT_SERVICE_NAME, TEXT_AF};

// Where the text of a kind is shown; other kinds show nothing.
struct KindRow {
    std::int32_t nKind;
    int nField;
};
constexpr KindRow kKinds[] = {
    {kRdsServiceNameWithAF, TEXT_SERVICE_NAME},
    {kRdsServiceName, TEXT_SERVICE_NAME},
    {kRdsRadioText, TEXT_RADIO_TEXT},
    {kRdsProgramText, TEXT_PROGRAM_TEXT},
};

void ShowText(CMainState& state, std::int32_t kind, const WCHAR* text) {
    for (const KindRow& row : kKinds) {
        if (row.nKind == kind) ShowSkinText(state.m_skin, row.nField, text);
    }
    if (kind == kRdsServiceNameWithAF) ShowSkinText(state.m_skin, TEXT_AF, L"AF");
}

}  // namespace

void ShowRDS(CMainState& state) {
    WCHAR text[kRdsTextCapacity] = {};
    std::int32_t kind = kNoKind;
    if (g_app.pFMDevice->GetRDSData(text, &kind) != 0) {
        for (const int field : kRdsFields) ShowSkinText(state.m_skin, field, L"");
        return;
    }
    ShowSkinText(state.m_skin, TEXT_RDS, L"R.D.S");
    ShowText(state, kind, text);

    WCHAR type[kRdsTextCapacity] = {};
    if (g_app.pFMDevice->GetPTYText(type) == 0) ShowSkinText(state.m_skin, TEXT_PROGRAM_TYPE, type);
}
