#include "schedule/command_line.h"

HRESULT ParseCommandLine(WCHAR* commandLine, CommandLineRequest* request) {
    if (commandLine == nullptr) return E_INVALIDARG;
    ReadCommandOptions(commandLine, *request, NKDbgPrintfW);
    return S_OK;
}
