// The ids of the test program's resources. Included by the resource script too, hence nothing but #define.
#pragma once

#define BAR_TWO_MENUS 100
#define BAR_MENU_AND_COMMAND 101
#define BAR_CUT_SHORT 102
#define BAR_WITHOUT_ITS_MENU 103
#define BAR_WRONG_SUBMENU 104
#define BAR_DISABLED_KEY 105
#define NO_SUCH_RESOURCE 999
#define MENU_TWO_COMMANDS 200
#define MENU_POPUP_AND_COMMAND 201
#define MENU_LEFT 100  // bar and menu share a number, as in programs of the device
#define DIALOG_FRAMED 300
#define PICTURE 400
#define PICTURE_GIF 401
#define PICTURE_OF_ANOTHER_TYPE 402
#define PICTURE_BROKEN 403

#define STRING_LEFT 10
#define STRING_RIGHT 11
#define STRING_PLAIN 12

#define COMMAND_FIRST 0x8101
#define COMMAND_SECOND 0x8102
#define COMMAND_NESTED 0x8103
#define COMMAND_PLAIN 0x8110
#define COMMAND_LEFT_KEY 0x8120
#define COMMAND_RIGHT_KEY 0x8121
#define CONTROL_EDIT 1000
#define CONTROL_BUTTON 1001
