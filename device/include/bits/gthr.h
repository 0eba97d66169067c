// Threads of the C++ library: none. The program's own threads are the system's.
#pragma once

#include <bits/gthr-single.h>
