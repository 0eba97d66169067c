// Ids of the resources of the re-layout tests.
#pragma once

#define TEST_DIALOG_UPRIGHT 901
#define TEST_DIALOG_FLAT 902
#define TEST_CONTROL_BUTTON 1
#define TEST_CONTROL_TEXT 2
#define TEST_CONTROL_ICON 3
#define TEST_CONTROL_BITMAP 4
#define TEST_CONTROL_LIST 5
#define TEST_CONTROL_COMBO 6
#define TEST_CONTROL_EDIT 7
#define TEST_CONTROL_VIEW 8
#define TEST_CONTROL_MISSING 9
#define TEST_BITMAP 903
