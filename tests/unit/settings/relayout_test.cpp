// A dialog laid out anew from another template.
#include "shell/relayout.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/unit/settings/relayout_ids.h"
#include "tests/unit/settings/settings_test.h"

namespace {

INT_PTR CALLBACK IdleProc(HWND, UINT message, WPARAM, LPARAM) {
    return message == WM_INITDIALOG;
}

class Relayout : public testing::Test {
  protected:
    Relayout() { Open(TEST_DIALOG_UPRIGHT); }
    ~Relayout() override { DestroyWindow(dialog); }

    void Open(UINT templateId) {
        if (dialog != nullptr) DestroyWindow(dialog);
        const HRSRC resource = FindResourceW(module, MAKEINTRESOURCEW(templateId), RT_DIALOG);
        dialog = CreateDialogIndirectParamW(
            module, static_cast<LPCDLGTEMPLATEW>(LoadResource(module, resource)), nullptr, IdleProc, 0);
        EXPECT_NE(dialog, nullptr);
    }

    HWND Control(int id) const { return GetDlgItem(dialog, id); }
    std::wstring Text(int id) const {
        WCHAR text[64] = L"";
        GetDlgItemTextW(dialog, id, text, 64);
        return text;
    }
    // Left, top, width and height of a control as pixels in the dialog.
    std::string PlaceOf(int id) const {
        RECT place = {};
        GetWindowRect(Control(id), &place);
        MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&place), 2);
        return Text(place);
    }
    std::string Units(int x, int y, int cx, int cy) const {
        RECT place = {x, y, x + cx, y + cy};
        MapDialogRect(dialog, &place);
        return Text(place);
    }

    HMODULE module = GetModuleHandleW(nullptr);
    HWND dialog = nullptr;

  private:
    static std::string Text(const RECT& place) {
        return std::to_string(place.left) + "," + std::to_string(place.top) + " " +
               std::to_string(place.right - place.left) + "x" + std::to_string(place.bottom - place.top);
    }
};

TEST_F(Relayout, MovesEveryControlToItsPlaceInTheOtherTemplate) {
    EXPECT_EQ(RelayoutDialog(module, dialog, TEST_DIALOG_FLAT), 1);
    EXPECT_EQ(PlaceOf(TEST_CONTROL_BUTTON), Units(100, 4, 44, 16));
    EXPECT_EQ(PlaceOf(TEST_CONTROL_TEXT), Units(100, 24, 40, 9));
    EXPECT_EQ(PlaceOf(TEST_CONTROL_EDIT), Units(4, 60, 44, 12));
    EXPECT_EQ(PlaceOf(TEST_CONTROL_VIEW), Units(50, 4, 40, 90));
    EXPECT_EQ(RelayoutDialog(module, dialog, TEST_DIALOG_UPRIGHT), 1);
    EXPECT_EQ(PlaceOf(TEST_CONTROL_BUTTON), Units(4, 4, 40, 14));
}

TEST_F(Relayout, ButtonsAndStaticsTakeTheTemplatesTextAndAnEditFieldKeepsItsOwn) {
    SetDlgItemTextW(dialog, TEST_CONTROL_EDIT, L"typed");
    SetDlgItemTextW(dialog, TEST_CONTROL_TEXT, L"changed");
    RelayoutDialog(module, dialog, TEST_DIALOG_FLAT);
    EXPECT_EQ(Text(TEST_CONTROL_BUTTON), L"Flat");
    EXPECT_EQ(Text(TEST_CONTROL_TEXT), L"flat");
    EXPECT_EQ(Text(TEST_CONTROL_EDIT), L"typed");
}

TEST_F(Relayout, AnIconIsLoadedAnew) {
    SendMessageW(Control(TEST_CONTROL_ICON), STM_SETIMAGE, IMAGE_ICON, 0);
    RelayoutDialog(module, dialog, TEST_DIALOG_FLAT);
    EXPECT_NE(SendMessageW(Control(TEST_CONTROL_ICON), STM_GETIMAGE, IMAGE_ICON, 0), 0);
}

TEST_F(Relayout, ABitmapIsLoadedAnewAndTheOldOneDeleted) {
    const HGDIOBJ old =
        reinterpret_cast<HGDIOBJ>(SendMessageW(Control(TEST_CONTROL_BITMAP), STM_GETIMAGE, IMAGE_BITMAP, 0));
    ASSERT_EQ(GetObjectType(old), static_cast<DWORD>(OBJ_BITMAP));
    RelayoutDialog(module, dialog, TEST_DIALOG_FLAT);
    const HGDIOBJ now =
        reinterpret_cast<HGDIOBJ>(SendMessageW(Control(TEST_CONTROL_BITMAP), STM_GETIMAGE, IMAGE_BITMAP, 0));
    EXPECT_NE(now, old);
    EXPECT_EQ(GetObjectType(now), static_cast<DWORD>(OBJ_BITMAP));
    EXPECT_EQ(GetObjectType(old), 0u);
}

TEST_F(Relayout, TheSelectionOfAListBoxIsScrolledIntoViewAgain) {
    const HWND list = Control(TEST_CONTROL_LIST);
    for (int row = 0; row < 40; ++row) SendMessageW(list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"row"));
    SendMessageW(list, LB_SETCURSEL, 30, 0);
    SendMessageW(list, LB_SETTOPINDEX, 0, 0);
    RelayoutDialog(module, dialog, TEST_DIALOG_FLAT);
    EXPECT_EQ(SendMessageW(list, LB_GETCURSEL, 0, 0), 30);
    EXPECT_GT(SendMessageW(list, LB_GETTOPINDEX, 0, 0), 20);
}

WNDPROC g_comboProc = nullptr;
std::vector<WPARAM> g_selections;

LRESULT CALLBACK NoteSelection(HWND combo, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == CB_SETCURSEL) g_selections.push_back(wParam);
    return CallWindowProcW(g_comboProc, combo, message, wParam, lParam);
}

TEST_F(Relayout, TheSelectionOfAComboBoxIsMadeOnceMore) {
    const HWND combo = Control(TEST_CONTROL_COMBO);
    for (int row = 0; row < 9; ++row) SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(L"row"));
    SendMessageW(combo, CB_SETCURSEL, 7, 0);
    // It would stay by itself: what counts is that it is selected once more, which brings it into view.
    g_selections.clear();
    g_comboProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrW(combo, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&NoteSelection)));
    RelayoutDialog(module, dialog, TEST_DIALOG_FLAT);
    EXPECT_THAT(g_selections, testing::ElementsAre(7u));
    EXPECT_EQ(SendMessageW(combo, CB_GETCURSEL, 0, 0), 7);
}

TEST_F(Relayout, AControlBehindOneWithCreationDataIsReadAsTheSystemReadsIt) {
    Open(TEST_DIALOG_WITH_DATA);
    ASSERT_EQ(Text(TEST_CONTROL_TEXT), L"T") << "the system reads it in another way";
    for (const int control : {TEST_CONTROL_BUTTON, TEST_CONTROL_TEXT}) {
        MoveWindow(Control(control), 0, 0, 5, 5, FALSE);
        SetDlgItemTextW(dialog, control, L"changed");
    }
    EXPECT_EQ(RelayoutDialog(module, dialog, TEST_DIALOG_WITH_DATA), 1);
    EXPECT_EQ(PlaceOf(TEST_CONTROL_BUTTON), Units(90, 8, 30, 20));
    EXPECT_EQ(PlaceOf(TEST_CONTROL_TEXT), Units(90, 40, 50, 10));
    EXPECT_EQ(Text(TEST_CONTROL_BUTTON), L"D");
    EXPECT_EQ(Text(TEST_CONTROL_TEXT), L"T");
}

TEST_F(Relayout, ATemplateThatIsNotThereGivesZeroAndMovesNothing) {
    const std::string before = PlaceOf(TEST_CONTROL_BUTTON);
    EXPECT_EQ(RelayoutDialog(module, dialog, 999), 0);
    EXPECT_EQ(PlaceOf(TEST_CONTROL_BUTTON), before);
}

class TurnedSettings : public test::SettingsTest {
  protected:
    std::string PlaceOfControl(int id) const { return test::PlaceOf(GetDlgItem(dialog, id)); }
};

TEST_F(TurnedSettings, TurningTheDeviceMovesTheControlsToTheOtherTemplatesPlacesAndBack) {
    Open();
    const std::string upright = PlaceOfControl(IDC_SAVE_BROWSE);
    handset.SetScreen(320, 240);
    test::SendDisplayChange(dialog);
    EXPECT_EQ(test::PlaceOf(dialog), "0,26 320x214");
    RECT expected = {183, 79, 183 + 20, 79 + 13};
    MapDialogRect(dialog, &expected);
    MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&expected), 2);
    EXPECT_EQ(PlaceOfControl(IDC_SAVE_BROWSE), std::to_string(expected.left) + "," +
                                                   std::to_string(expected.top) + " " +
                                                   std::to_string(expected.right - expected.left) + "x" +
                                                   std::to_string(expected.bottom - expected.top));
    handset.SetScreen(240, 320);
    test::SendDisplayChange(dialog);
    EXPECT_EQ(PlaceOfControl(IDC_SAVE_BROWSE), upright);
}

TEST_F(TurnedSettings, WhatIsChosenStaysChosen) {
    Open();
    Click(1014);
    Click(1022);
    Click(1028);
    StoreText(kDefineFileName, L"\\Mine.");
    SetDlgItemTextW(dialog, 1029, L"\\Mine.");
    handset.SetScreen(320, 240);
    test::SendDisplayChange(dialog);
    EXPECT_EQ(CheckedOf({1013, 1014, 1015, 1016, 1022, 1025, 1028, 1070}), "1014 1022 1028");
    EXPECT_EQ(Text(1029), L"\\Mine.");
    EXPECT_TRUE(Enabled(1029));
}

}  // namespace
