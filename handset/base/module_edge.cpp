#include "handset/base/module_edge.h"

#include <new>
#include <stdexcept>

namespace handset {
namespace {

bool NoMemory() noexcept {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return true;
    } catch (const std::length_error&) {
        return true;
    } catch (...) {
        return false;
    }
}

}  // namespace

DWORD EdgeError() noexcept {
    return NoMemory() ? ERROR_NOT_ENOUGH_MEMORY : ERROR_GEN_FAILURE;
}

HRESULT EdgeResult() noexcept {
    return NoMemory() ? E_OUTOFMEMORY : E_UNEXPECTED;
}

}  // namespace handset
