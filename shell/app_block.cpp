#include "shell/app_block.h"

ApplicationBlock g_app = {};
