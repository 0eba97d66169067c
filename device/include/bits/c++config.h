// The C++ library's configuration on the device: its headers are those of the desktop's compiler, which has
// threads, a C99 library and ready-made wide strings. The device has none of them, so what is used of a
// template is made here.
#pragma once

#include_next <bits/c++config.h>

#undef _GLIBCXX_EXTERN_TEMPLATE
#define _GLIBCXX_EXTERN_TEMPLATE 0
#undef _GLIBCXX_HAS_GTHREADS
#undef _GLIBCXX_USE_C99_STDIO
#undef _GLIBCXX_USE_C99_WCHAR
