// Every id of the radio's resources, by kind, with its number beside it. Included by the resource script and
// by the code alike, hence nothing but #define.
#pragma once

// --- Strings ---------------------------------------------------------------------------------------------
#define IDS_APP_TITLE 1
#define IDS_MENU_ADD 4          // popup menu: add a channel
#define IDS_MENU_DELETE 5       // popup menu: delete
#define IDS_MENU_EDIT 6         // popup menu: edit
#define IDS_QUESTION_CAPTION 7  // caption of a question about stored channels
#define IDS_QUESTION_TEXT 8     // "stored channels of this group will be lost"
#define IDS_NAME_EMPTY 9
#define IDS_FREQUENCY_EMPTY 10
#define IDS_INPUT_CAPTION 11
#define IDS_CHANNEL_PREFIX 12  // first word of a scanned channel's name
#define IDS_SCHEDULE_DELETE_ALL 16
#define IDS_MENU_GUIDE 18  // popup menu: programme guide
#define IDS_NO_HEADSET 20
#define IDS_FILE_EXISTS 21   // %s = path
#define IDS_RECORD_SAVED 22  // %s = path
#define IDS_DATABASE_CREATED 23
#define IDS_INSERT_FAILED 24
#define IDS_SCAN_FINISHED 25
#define IDS_SCHEDULE_SAME_TIME 26
#define IDS_SCHEDULE_CONFLICT 27  // %s = day, start, end
#define IDS_SCHEDULE_NO_DAY 28
#define IDS_SCHEDULE_DELETE_ONE_ASK 29
#define IDS_SCHEDULE_DELETE_ALL_ASK 30
#define IDS_AF_SWITCHED 31
#define IDS_RENAME_FAILED 32
#define IDS_GROUP_ADD_FAILED 33
#define IDS_DELETE_CHANNEL_ASK 34
#define IDS_FREQUENCY_INVALID 35
#define IDS_UPDATE_FAILED 36
#define IDS_SCHEDULE_END_FIRST 37
#define IDS_LOW_SIGNAL 38
#define IDS_RDS_PRESENT 39
#define IDS_RDS_ABSENT 40
#define IDS_SUNDAY 42      // … IDS_SUNDAY + 6 = Saturday
#define IDS_PATH_ERROR 49  // %s = path
#define IDS_NO_SPACE 50
// Soft keys and buttons of the menu bars.
#define IDS_SOFTKEY_OK 60
#define IDS_SOFTKEY_CANCEL 61
#define IDS_SOFTKEY_DONE 62
#define IDS_SOFTKEY_MENU 63
#define IDS_SOFTKEY_CHANNELS 64
// Column heads of the schedule's list.
#define IDS_SCHEDULE_COLUMN 70  // … 73: channel, day, start, end

// --- Icons and bitmaps -----------------------------------------------------------------------------------
#define IDI_APP 101
#define IDB_BACKGROUND_PORTRAIT 186
#define IDB_BACKGROUND_LANDSCAPE 188
#define IDB_DISABLED_PORTRAIT 189
#define IDB_DISABLED_LANDSCAPE 190
#define IDB_BUTTONS_PORTRAIT 191
#define IDB_BUTTONS_LANDSCAPE 192
#define IDB_THUMB_PORTRAIT 193
#define IDB_THUMB_LANDSCAPE 194
#define IDB_SPEAKER_PORTRAIT 195
#define IDB_SPEAKER_LANDSCAPE 196
#define IDB_RECORD_PORTRAIT 197
#define IDB_RECORD_LANDSCAPE 198
#define IDB_MUTE_PORTRAIT 199
#define IDB_MUTE_LANDSCAPE 200
#define IDI_SIGNAL_BARS 204    // … 210: the seven grades of the alternative-frequency list
#define IDB_SIGNAL 211         // … 216: the six grades of the main screen
#define IDB_SCAN_PROGRESS 217  // … 227: 0 % to 100 %
#define IDB_LIST_BACKGROUND 229
// A bitmap drawn for wide screens (wider than 320 pixels) stands at its id plus this.
#define IDB_WIDE_OFFSET 1000

// --- Menus, menu bars, accelerators ----------------------------------------------------------------------
#define IDA_MAIN 2
#define IDM_MAIN 102
#define IDM_SETTINGS 133
#define IDM_CHANNEL_ADD 134
#define IDM_CHANNEL_EDIT 136
#define IDM_GROUPS 144
#define IDM_DONE 146  // one soft key: IDOK
#define IDM_SCHEDULE 147

// --- Menu commands ---------------------------------------------------------------------------------------
#define IDC_AUTOSCAN 0x8005
#define IDC_CHANNEL_LISTS 0x8006
#define IDC_SETTINGS 0x8007
#define IDC_INFORMATION 0x8008
#define IDC_SETTINGS_CANCEL 0x8009
#define IDC_SETTINGS_DONE 0x800A
#define IDC_CHANNEL_ADD_CANCEL 0x800C
#define IDC_CHANNEL_ADD_ACCEPT 0x800E
#define IDC_CHANNEL_EDIT_CANCEL 0x8010
#define IDC_CHANNEL_EDIT_ACCEPT 0x8011
#define IDC_SLEEP_OFF 0x8013
#define IDC_SLEEP_15 0x8014
#define IDC_SLEEP_30 0x8015
#define IDC_SLEEP_60 0x8016
#define IDC_SCHEDULE 0x8019
#define IDC_GROUP_CANCEL 0x801C
#define IDC_GROUP_ACCEPT 0x801D
#define IDC_ADD_CURRENT 0x801E
#define IDC_SOFTKEY_LEFT 0x8021  // the main window's soft keys themselves; they drop menus
#define IDC_SOFTKEY_RIGHT 0x8022
#define IDC_DIGIT_0 0x8030           // … IDC_DIGIT_0 + 9: a digit key, wherever the focus is
#define IDC_SELECTED_CHANNEL 0x8040  // the menu of the list's selected channel
#define IDC_SELECTED_BOOKING 0x8041  // likewise, of the schedule's list
#define IDC_CONTROL_0 0x8100         // + the id of a button of the main screen: a tap on it
#define IDC_EXIT 40000

// --- Dialogs ---------------------------------------------------------------------------------------------
#define IDD_GROUPS 102
#define IDD_INFORMATION 105
#define IDD_CHANNEL 131
#define IDD_SETTINGS_PORTRAIT 132
#define IDD_SCHEDULE_PORTRAIT 137
#define IDD_GROUP_NAME 138
#define IDD_AF_LIST 145
#define IDD_RDS_INFORMATION 230
#define IDD_SCHEDULE_LANDSCAPE 231
#define IDD_SETTINGS_LANDSCAPE 232

// --- Controls of the dialogs -----------------------------------------------------------------------------
// A label has an id of its own too (from 1100): a dialog that is laid out again finds its controls by id.

// Channel lists (IDD_GROUPS)
#define IDC_GROUP_LIST 1061
#define IDC_GROUP_NEW 1052
#define IDC_GROUP_RENAME 1058
#define IDC_GROUP_DELETE 1054
// Name of a list (IDD_GROUP_NAME)
#define IDC_GROUP_NAME 1055
// Channel (IDD_CHANNEL)
#define IDC_CHANNEL_NAME 1005
#define IDC_CHANNEL_FREQUENCY 1006
#define IDC_CHANNEL_GUIDE 1062
// Settings (IDD_SETTINGS_…)
#define IDC_RECORD_WAV_STEREO 1013  // "RecordAudioType" 2
#define IDC_RECORD_WAV 1014         // 1
#define IDC_RECORD_AMR 1015         // 0
#define IDC_SAVE_DEFAULT 1016       // "SaveFileType" 0
#define IDC_SAVE_DEFINED 1022       // 1
#define IDC_SAVE_BROWSE 1023
#define IDC_SAVE_FILE_NAME 1029
#define IDC_MUTE_WEAK 1025
#define IDC_SHOW_RDS 1028
#define IDC_AF_SWITCH 1070
// Scheduled recording (IDD_SCHEDULE_…)
#define IDC_SCHEDULE_START 1027
#define IDC_SCHEDULE_END 1053
#define IDC_SCHEDULE_CHANNEL 1055
#define IDC_SCHEDULE_CHANNEL_SPIN 1039
#define IDC_SCHEDULE_LIST 1059
#define IDC_SCHEDULE_SUNDAY 1084  // … IDC_SCHEDULE_SUNDAY + 6 = Saturday
#define IDC_SCHEDULE_ADD 1052
#define IDC_SCHEDULE_CLOSE 1054
// Alternative frequencies (IDD_AF_LIST)
#define IDC_AF_FREQUENCIES 1067
#define IDC_AF_MEASURE 1064
#define IDC_AF_CLOSE 1065
// RDS information (IDD_RDS_INFORMATION)
#define IDC_RDS_FREQUENCY 1071
#define IDC_RDS_PS 1072
#define IDC_RDS_PTY 1073
#define IDC_RDS_RT 1074
#define IDC_RDS_AF 1075
#define IDC_RDS_CT 1076
#define IDC_RDS_CHANNEL_NAME 1077
#define IDC_LABEL 1100  // … IDC_LABEL + 9: labels and frames

// --- Elements of the main screen -------------------------------------------------------------------------
#define SKIN_RECORD 200
#define SKIN_SEEK_DOWN 201
#define SKIN_SEEK_UP 202
#define SKIN_OUTPUT 207  // headset or loudspeaker
#define SKIN_MUTE 208
#define SKIN_STOP_RECORD 209  // no element: the command that stops a recording
#define SKIN_VOLUME 210
#define SKIN_STEP_DOWN 215  // as a button
#define SKIN_STEP_UP 216    // as a button
#define SKIN_AF_LIST 224
#define SKIN_RDS_INFORMATION 225
#define TEXT_FREQUENCY 211
#define TEXT_SERVICE_NAME 212
#define TEXT_RADIO_TEXT 215
#define TEXT_PROGRAM_TEXT 216
#define TEXT_PROGRAM_TYPE 217
#define TEXT_SCAN_PERCENT 218
#define TEXT_RDS 219
#define TEXT_RECORD_TIME 220
#define TEXT_STEREO 221
#define TEXT_CHANNEL_NAME 222
#define TEXT_AF 223
#define TEXT_LOW_SIGNAL 226

// --- Timers of the main window ---------------------------------------------------------------------------
#define TIMER_DIGIT_ENTRY 50010
#define TIMER_LIST_SELECTION 600011
#define TIMER_HEADSET_OFF 8888
#define TIMER_SLEEP 666666
