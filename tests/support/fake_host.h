// A small stand-in for the host: callbacks and suites that log every call, count what is handed out
// and fail on request. For tests of single functions; one FakeHost lives at a time.
#pragma once

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "hostapi/host.h"

namespace fake {

/// A block behind a PF_Handle or AEGP_MemHandle: its first member is the data pointer, as the host
/// has it.
struct Block {
    void *data = nullptr;
    std::vector<char> bytes;
    int locks = 0;
    bool live = true;
};

/// What the calls of one test share: the log, the faults, the ledger of handles.
class Calls {
  public:
    std::vector<std::string> log;         ///< every call, with its telling arguments
    std::vector<std::string> misuse;      ///< calls that no host would stand
    std::map<std::string, PF_Err> fails;  ///< by logged text: each such call fails
    int fail_at = 0;                      ///< the n-th fallible call (from 1) fails, 0 for none
    PF_Err fail_code = 77;
    int fallible = 0;           ///< fallible calls so far
    std::string failed;         ///< the call that fail_at hit
    std::size_t failed_at = 0;  ///< and its place in the log

    void note(const std::string &what) { log.push_back(what); }
    void blame(const std::string &what) { misuse.push_back(what); }

    /// Notes a fallible call and tells how it ends.
    PF_Err step(const std::string &what) {
        note(what);
        ++fallible;
        if (fallible == fail_at) {
            failed = what;
            failed_at = log.size() - 1;
            return fail_code;
        }
        const auto fault = fails.find(what);
        return fault == fails.end() ? 0 : fault->second;
    }

    /// The log without the taking, locking and giving back of suites and handles: they have to
    /// balance, in whatever order.
    [[nodiscard]] std::vector<std::string> telling() const {
        std::vector<std::string> rest;
        for (const std::string &call : log) {
            const bool paired = call.rfind("acquire ", 0) == 0 || call.rfind("release ", 0) == 0 ||
                                call.rfind("new_handle ", 0) == 0 || call == "lock" ||
                                call == "unlock" || call == "dispose";
            if (!paired) rest.push_back(call);
        }
        return rest;
    }
    /// Where in the log `what` stands first; the log's length when it does not.
    [[nodiscard]] std::size_t first(const std::string &what) const {
        return static_cast<std::size_t>(std::find(log.begin(), log.end(), what) - log.begin());
    }
    [[nodiscard]] std::ptrdiff_t count(const std::string &what) const {
        return std::count(log.begin(), log.end(), what);
    }

    Block *new_block(std::size_t size) {
        blocks_.push_back(std::make_unique<Block>());
        Block *block = blocks_.back().get();
        block->bytes.assign(size, static_cast<char>(0xCD));
        block->data = block->bytes.data();
        return block;
    }
    /// The block behind a handle; blames the use of a dead or foreign one.
    Block *block_of(const void *handle, const std::string &what) {
        for (const auto &block : blocks_) {
            if (block.get() != handle) continue;
            if (!block->live) blame(what + " of a dead handle");
            return block.get();
        }
        blame(what + " of no handle");
        return nullptr;
    }
    [[nodiscard]] int live_blocks() const {
        int live = 0;
        for (const auto &block : blocks_) live += block->live ? 1 : 0;
        return live;
    }
    [[nodiscard]] int open_locks() const {
        int locks = 0;
        for (const auto &block : blocks_) locks += block->locks;
        return locks;
    }

  private:
    std::vector<std::unique_ptr<Block>> blocks_;
};

inline std::string text(const char *name, long long a) {
    return std::string(name) + " " + std::to_string(a);
}

/// The host of one test. `in` and `out` go to the function under test.
class FakeHost {
  public:
    FakeHost() {
        current() = this;
        fill_callbacks();
        fill_suites();
        in.utils = &utils;
        in.pica_basicP = &basic;
        in.effect_ref = reinterpret_cast<PF_ProgPtr>(this);
        in.current_time = -7;
        in.time_step = 0;
        in.time_scale = 600;
        in.num_params = 1;
    }
    ~FakeHost() { current() = nullptr; }
    FakeHost(const FakeHost &) = delete;
    FakeHost &operator=(const FakeHost &) = delete;

    /// The host that the plain-function callbacks below belong to.
    static FakeHost *&current() {
        static FakeHost *host = nullptr;
        return host;
    }

    using SuiteKey = std::pair<std::string, int>;

    Calls calls;
    PF_InData in{};
    PF_OutData out{};
    PF_UtilCallbacks utils{};
    SPBasicSuite basic{};
    PF_HandleSuite1 handles{};
    std::map<SuiteKey, const void *> suites;  ///< what AcquireSuite serves
    std::set<std::string> refused;            ///< suites refused with an error
    std::set<std::string> null_suites;        ///< suites handed out as null with result 0
    std::map<SuiteKey, int> held;             ///< acquisitions minus releases
    std::vector<PF_ParamDef> added;
    std::vector<PF_CustomUIInfo> registered;
    bool refuse_memory = false;  ///< new handles come back null
    bool refuse_locks = false;   ///< locks come back null

    /// A handle with the given contents, as if an earlier command had left it.
    PF_Handle make_handle(const void *contents, std::size_t size) {
        Block *block = calls.new_block(size);
        std::memcpy(block->data, contents, size);
        return reinterpret_cast<PF_Handle>(block);
    }
    std::vector<char> &bytes(PF_Handle handle) { return calls.block_of(handle, "look")->bytes; }
    /// What the host does between two commands: the data that came out goes in again.
    void next_command() {
        in.sequence_data = out.sequence_data;
        out.return_msg[0] = 0;
        out.out_flags = 0;
        calls.log.clear();
        calls.fallible = 0;
    }
    [[nodiscard]] int suites_held() const {
        int sum = 0;
        for (const auto &suite : held) sum += std::abs(suite.second);
        return sum;
    }

  private:
    static int format(A_char *to, const A_char *format_text, ...) {
        current()->calls.note(std::string("sprintf ") + format_text);
        std::va_list arguments;
        va_start(arguments, format_text);
        const int length = std::vsprintf(to, format_text, arguments);
        va_end(arguments);
        return length;
    }

    void fill_callbacks() {
        in.inter.checkout_param = [](PF_ProgPtr, PF_ParamIndex index, A_long time, A_long step,
                                     A_u_long scale, PF_ParamDef *def) {
            const PF_Err error = current()->calls.step(
                text("checkout_param", index) + " at " + std::to_string(time) + "/" +
                std::to_string(step) + "/" + std::to_string(scale));
            if (error == 0) def->u.sd.value = 1000 + index;
            return error;
        };
        in.inter.checkin_param = [](PF_ProgPtr, PF_ParamDef *) {
            return current()->calls.step("checkin_param");
        };
        in.inter.add_param = [](PF_ProgPtr, PF_ParamIndex index, PF_ParamDefPtr def) {
            const PF_Err error = current()->calls.step(text("add_param", index));
            if (error == 0) current()->added.push_back(*def);
            return error;
        };
        in.inter.register_ui = [](PF_ProgPtr, PF_CustomUIInfo *info) {
            current()->registered.push_back(*info);
            return current()->calls.step("register_ui");
        };
        in.inter.abort = [](PF_ProgPtr) { return current()->calls.step("abort"); };
        utils.ansi.sprintf = &FakeHost::format;
        utils.ansi.strcpy = [](A_char *to, const A_char *from) {
            current()->calls.note(std::string("strcpy ") + from);
            return std::strcpy(to, from);
        };
        utils.copy = [](PF_ProgPtr, PF_EffectWorld *, PF_EffectWorld *, PF_Rect *from,
                        PF_Rect *to) {
            return current()->calls.step(from == nullptr && to == nullptr ? "copy whole" : "copy");
        };
        utils.fill = [](PF_ProgPtr, const PF_Pixel *color, const PF_Rect *rect, PF_EffectWorld *) {
            return current()->calls.step(color == nullptr && rect == nullptr ? "clear" : "fill");
        };
    }

    void fill_suites() {
        basic.AcquireSuite = [](const char *name, std::int32_t version, const void **suite) {
            FakeHost &host = *current();
            const PF_Err error = host.calls.step(text(name, version).insert(0, "acquire "));
            const auto found = host.suites.find({name, version});
            if (error != 0 || host.refused.count(name) != 0 || found == host.suites.end()) {
                return SPErr{error != 0 ? error : A_Err_MISSING_SUITE};
            }
            *suite = host.null_suites.count(name) != 0 ? nullptr : found->second;
            if (*suite != nullptr) ++host.held[{name, version}];
            return SPErr{0};
        };
        basic.ReleaseSuite = [](const char *name, std::int32_t version) {
            current()->calls.note(text(name, version).insert(0, "release "));
            --current()->held[{name, version}];
            return SPErr{0};
        };
        handles.host_new_handle = [](A_HandleSize size) -> PF_Handle {
            FakeHost &host = *current();
            const PF_Err error = host.calls.step(text("new_handle", static_cast<long long>(size)));
            if (error != 0 || host.refuse_memory) return nullptr;
            return reinterpret_cast<PF_Handle>(host.calls.new_block(size));
        };
        handles.host_lock_handle = [](PF_Handle handle) -> void * {
            FakeHost &host = *current();
            Block *block = host.calls.block_of(handle, "lock");
            if (host.calls.step("lock") != 0 || host.refuse_locks || block == nullptr) {
                return nullptr;
            }
            ++block->locks;
            return block->data;
        };
        handles.host_unlock_handle = [](PF_Handle handle) {
            current()->calls.note("unlock");
            Block *block = current()->calls.block_of(handle, "unlock");
            if (block != nullptr && --block->locks < 0) current()->calls.blame("unlock too many");
        };
        handles.host_dispose_handle = [](PF_Handle handle) {
            current()->calls.note("dispose");
            Block *block = current()->calls.block_of(handle, "dispose");
            if (block == nullptr) return;
            if (block->locks != 0) current()->calls.blame("dispose of a locked handle");
            block->live = false;
        };
        handles.host_get_handle_size = [](PF_Handle handle) -> A_HandleSize {
            Block *block = current()->calls.block_of(handle, "size");
            return block == nullptr ? 0 : block->bytes.size();
        };
        suites[{kPFHandleSuite, kPFHandleSuiteVersion1}] = &handles;
    }
};

}  // namespace fake
