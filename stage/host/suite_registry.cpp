#include "stage/host/suite_registry.h"

#include "hostapi/constants.h"
#include "stage/host/complete_table.h"
#include "stage/host/host.h"

namespace stage {
namespace {

std::string suite_text(const char *name, std::int32_t number) {
    return "\"" + std::string(name != nullptr ? name : "") + "\", " + std::to_string(number);
}

/// Hands out null when it fails, whatever the reason.
SPErr acquire_suite(HostCall &call, const char *name, std::int32_t number, const void **suite) {
    if (suite != nullptr) *suite = nullptr;
    SuiteRegistry &suites = call.host().suites;
    if (call.must_fail()) {
        suites.note_refusal();
        return call.error();
    }
    if (name == nullptr || suite == nullptr) return A_Err_PARAMETER;
    bool refused_as_null = false;
    *suite = suites.acquire(name, number, &refused_as_null);
    if (*suite != nullptr) return PF_Err_NONE;
    suites.note_refusal();
    return refused_as_null ? PF_Err_NONE : kSuiteNotFound;
}
std::string describe_acquisition(const char *name, std::int32_t number, const void **) {
    return suite_text(name, number);
}

SPErr release_suite(HostCall &call, const char *name, std::int32_t number) {
    if (name != nullptr && call.host().suites.release(name, number)) return PF_Err_NONE;
    call.report("suite.release", suite_text(name, number) + " released but not acquired");
    return kSuiteNotFound;
}

constexpr auto basic_table() {
    constexpr CallRules kFindsSuites{.fails = Fails::kAfter, .finds_suites = true};
    CallTable<SPBasicSuite, "SPBasicSuite"> table;
    KS_SERVE_BY(kFindsSuites, AcquireSuite, acquire_suite, describe_acquisition);
    KS_SERVE_BY(table.kRules.that_never_fail(), ReleaseSuite, release_suite, suite_text);
    return with_all_slots(table);
}

}  // namespace

SuiteRegistry::SuiteRegistry() : basic_(basic_table().get()) {}

void SuiteRegistry::add(const char *name, std::int32_t number, const void *table) {
    tables_[{name, number}] = table;
}

void SuiteRegistry::refuse(const std::string &name, std::int32_t number, bool with_null_table) {
    refused_[{name, number}] = with_null_table;
}

void SuiteRegistry::accept_all() {
    refused_.clear();
}

const void *SuiteRegistry::acquire(const std::string &name, std::int32_t number,
                                   bool *refused_as_null) {
    const Key key{name, number};
    const auto refusal = refused_.find(key);
    if (refusal != refused_.end()) {
        *refused_as_null = refusal->second;
        return nullptr;
    }
    const auto found = tables_.find(key);
    if (found == tables_.end()) return nullptr;
    ++counts_[key];
    return found->second;
}

bool SuiteRegistry::release(const std::string &name, std::int32_t number) {
    const Key key{name, number};
    const auto found = counts_.find(key);
    const bool held = found != counts_.end() && found->second > 0;
    --counts_[key];
    return held;
}

std::map<SuiteRegistry::Key, int> SuiteRegistry::imbalance() const {
    std::map<Key, int> result;
    for (const auto &[key, count] : counts_) {
        if (count != 0) result[key] = count;
    }
    return result;
}

void SuiteRegistry::clear_counts() {
    counts_.clear();
    any_refused_ = false;
}

std::vector<SuiteRegistry::Key> SuiteRegistry::offered() const {
    std::vector<Key> result;
    for (const auto &entry : tables_) result.push_back(entry.first);
    return result;
}

}  // namespace stage
