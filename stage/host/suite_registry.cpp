#include "stage/host/suite_registry.h"

#include "hostapi/constants.h"
#include "stage/host/host.h"
#include "stage/host/host_call.h"

namespace stage {
namespace {

// Code a real host gives for a suite or version it does not know.
constexpr SPErr kSuiteNotFound = 0x53212121;  // "S!!!"

std::string suite_text(const char *name, std::int32_t number) {
    return "\"" + std::string(name) + "\", " + std::to_string(number);
}

SPErr acquire_suite(const char *name, std::int32_t number, const void **suite) {
    HostCall call("SPBasicSuite.AcquireSuite", Fallible::kSuite);
    if (call.traced()) call.arguments(suite_text(name, number));
    if (suite != nullptr) *suite = nullptr;
    if (call.must_fail()) {
        call.host().suites.note_refusal();
        return call.result(kSuiteNotFound);
    }
    if (name == nullptr || suite == nullptr) return call.result(A_Err_PARAMETER);
    bool refused_as_null = false;
    *suite = call.host().suites.acquire(name, number, &refused_as_null);
    if (*suite == nullptr) {
        call.host().suites.note_refusal();
        return call.result(refused_as_null ? 0 : kSuiteNotFound);
    }
    return call.result(PF_Err_NONE);
}

SPErr release_suite(const char *name, std::int32_t number) {
    HostCall call("SPBasicSuite.ReleaseSuite", Fallible::kNo);
    if (call.traced()) call.arguments(suite_text(name, number));
    if (!call.host().suites.release(name, number)) {
        call.host().strict.report("suite.release", call.command(),
                                  suite_text(name, number) + " released but not acquired");
        return call.result(kSuiteNotFound);
    }
    return call.result(PF_Err_NONE);
}

}  // namespace

SuiteRegistry::SuiteRegistry() {
    basic_.AcquireSuite = acquire_suite;
    basic_.ReleaseSuite = release_suite;
}

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
