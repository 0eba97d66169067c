// The identifiers of the interfaces that the application asks for, laid down once.
#include <windows.h>

#include <initguid.h>

#include <dshow.h>

extern "C" const GUID GUID_NULL = {};
