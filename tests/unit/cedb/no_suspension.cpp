// COREDLL parks suspended threads at its calls; these programs have no COREDLL around the database calls and
// suspend nobody.
#include "handset/coredll/kernel/thread_record.h"

namespace coredll {

CThreadRecord* CurrentThreadRecord() noexcept {
    return nullptr;
}
void CThreadRecord::Enter(CallKind, std::uintptr_t, std::uintptr_t) noexcept {}
void CThreadRecord::Leave() noexcept {}

}  // namespace coredll
