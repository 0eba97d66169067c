#include "handset/base/module_edge.h"

#include <new>
#include <stdexcept>
#include <system_error>

namespace handset {
namespace {

bool NoMemory() noexcept {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return true;
    } catch (const std::length_error&) {
        return true;
    } catch (const std::system_error& error) {
        // Of a lock or a thread.
        return error.code() == std::errc::not_enough_memory ||
               error.code() == std::errc::resource_unavailable_try_again;
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
