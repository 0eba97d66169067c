// COREDLL parks suspended threads at its calls; these programs have no COREDLL around the database calls and
// suspend nobody.
#include "handset/coredll/kernel/thread_record.h"

namespace coredll {

ThreadRecord* CurrentThreadRecord() noexcept {
    return nullptr;
}
void ThreadRecord::Enter(CallKind, std::uintptr_t, std::uintptr_t) noexcept {}
void ThreadRecord::Leave() noexcept {}

}  // namespace coredll
