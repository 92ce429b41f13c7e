#include "host/suite_cache.h"

namespace ks {

SuiteCache::SuiteCache(SPBasicSuite *basic) : basic_(basic) {
    if (basic_ == nullptr) throw PF_Err{PF_Err_BAD_CALLBACK_PARAM};
}

SuiteCache::~SuiteCache() {
    const auto release = [this](const auto &slot) {
        if (slot.table != nullptr) basic_->ReleaseSuite(slot.name, slot.number);
    };
    std::apply([&](const auto &...slots) { (release(slots), ...); }, slots_);
}

void *SuiteCache::acquire(const char *name, std::int32_t number) {
    const void *table = nullptr;
    const SPErr error = basic_->AcquireSuite(name, number, &table);
    if (error != 0 || table == nullptr) throw PF_Err{PF_Err_BAD_CALLBACK_PARAM};
    // Suite tables are the host's and read-only; the prototypes alone are not const-correct.
    return const_cast<void *>(table);
}

}  // namespace ks
