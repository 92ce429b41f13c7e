// RAII over the host's call pairs: parameter check-outs, handle locks, handles, memory handles,
// references to effects and streams.
//
// Everything here belongs to the thread of one command, is neither copied nor moved, and must not
// outlive the suites it was given. Destructors never throw.
#pragma once

#include <vector>

#include "hostapi/aegp_layer_suites.h"
#include "hostapi/aegp_service_suites.h"
#include "hostapi/aegp_stream_suites.h"
#include "hostapi/constants.h"
#include "hostapi/in_out_data.h"
#include "hostapi/pf_suites.h"

namespace ks {

/// A parameter's value at the command's time, in a definition of its own: point values are pixels
/// of the input buffer in 16.16 (downsampled), popup values are 1-based. [host thread]
class ParamCheckout {
  public:
    /// Checks parameter `index` out at current_time, time_step and time_scale of `in_data`, which
    /// are passed on untouched (a step of 0 and negative times occur).
    ParamCheckout(PF_InData *in_data, PF_ParamIndex index) : in_data_(in_data) {
        error_ = in_data->inter.checkout_param(in_data->effect_ref, index, in_data->current_time,
                                               in_data->time_step, in_data->time_scale, &def_);
        open_ = error_ == PF_Err_NONE;
    }
    ~ParamCheckout() { close(); }
    ParamCheckout(const ParamCheckout &) = delete;
    ParamCheckout &operator=(const ParamCheckout &) = delete;

    /// The check-out's result, 0 if it succeeded.
    [[nodiscard]] PF_Err error() const { return error_; }

    /// The checked-out definition: all zero after a failed check-out, not to be read after close().
    [[nodiscard]] const PF_ParamDef &def() const { return def_; }

    /// Checks the parameter in and returns the host's result; 0 and no call when nothing is open.
    PF_Err close() {
        if (!open_) return PF_Err_NONE;
        open_ = false;
        return in_data_->inter.checkin_param(in_data_->effect_ref, &def_);
    }

  private:
    PF_InData *in_data_;
    PF_ParamDef def_{};
    PF_Err error_;
    bool open_;
};

/// The locked contents of a host handle that someone else owns. [host thread]
template <class T>
class LockedHandle {
  public:
    /// Locks `handle`; a null handle is not handed to the host and reads as null contents.
    LockedHandle(PF_HandleSuite1 &suite, PF_Handle handle)
        : suite_(suite),
          handle_(handle),
          data_(handle == nullptr ? nullptr : static_cast<T *>(suite.host_lock_handle(handle))) {}
    /// Unlocks what was locked; a lock that yielded null holds nothing.
    ~LockedHandle() {
        if (data_ != nullptr) suite_.host_unlock_handle(handle_);
    }
    LockedHandle(const LockedHandle &) = delete;
    LockedHandle &operator=(const LockedHandle &) = delete;

    /// The contents, null when the host could not lock. Their size is not checked here.
    [[nodiscard]] T *get() const { return data_; }

  private:
    PF_HandleSuite1 &suite_;
    PF_Handle handle_;
    T *data_;
};

/// A new host handle that is disposed of unless released. [host thread]
class OwnedHandle {
  public:
    /// Allocates `bytes` bytes with undefined contents; get() is null when the host refuses.
    OwnedHandle(PF_HandleSuite1 &suite, A_HandleSize bytes)
        : suite_(suite), handle_(suite.host_new_handle(bytes)) {}
    ~OwnedHandle() {
        if (handle_ != nullptr) suite_.host_dispose_handle(handle_);
    }
    OwnedHandle(const OwnedHandle &) = delete;
    OwnedHandle &operator=(const OwnedHandle &) = delete;

    [[nodiscard]] PF_Handle get() const { return handle_; }

    /// Gives the handle away, for fields of the host that take it over.
    [[nodiscard]] PF_Handle release() {
        PF_Handle handle = handle_;
        handle_ = nullptr;
        return handle;
    }

  private:
    PF_HandleSuite1 &suite_;
    PF_Handle handle_;
};

/// A memory handle that an AEGP call gave us to free: script results, layer names. [host thread]
class OwnedMemHandle {
  public:
    explicit OwnedMemHandle(AEGP_MemorySuite1 &suite) : suite_(suite) {}
    ~OwnedMemHandle() { close(); }
    OwnedMemHandle(const OwnedMemHandle &) = delete;
    OwnedMemHandle &operator=(const OwnedMemHandle &) = delete;

    /// Where the host puts the handle; it may leave it null.
    [[nodiscard]] AEGP_MemHandle *receive() { return &handle_; }
    [[nodiscard]] AEGP_MemHandle get() const { return handle_; }

    /// Frees the handle and returns the host's result; 0 and no call when there is none.
    A_Err close() {
        if (handle_ == nullptr) return A_Err_NONE;
        AEGP_MemHandle handle = handle_;
        handle_ = nullptr;
        return suite_.AEGP_FreeMemHandle(handle);
    }

  private:
    AEGP_MemorySuite1 &suite_;
    AEGP_MemHandle handle_ = nullptr;
};

/// Our own effect as the project side of the host knows it. [host thread]
class OwnedEffectRef {
  public:
    /// Asks for the reference to the running effect, without a plug-in id.
    OwnedEffectRef(AEGP_PFInterfaceSuite1 &own, AEGP_EffectSuite3 &effects, PF_ProgPtr effect)
        : effects_(effects), error_(own.AEGP_GetNewEffectForEffect(0, effect, &ref_)) {
        if (error_ != A_Err_NONE) ref_ = nullptr;
    }
    ~OwnedEffectRef() { close(); }
    OwnedEffectRef(const OwnedEffectRef &) = delete;
    OwnedEffectRef &operator=(const OwnedEffectRef &) = delete;

    /// The host's answer, 0 if it succeeded.
    [[nodiscard]] A_Err error() const { return error_; }
    /// Null after an error, and when the host has none to give.
    [[nodiscard]] AEGP_EffectRefH get() const { return ref_; }

    /// Disposes of the reference and returns the host's result; 0 and no call when there is none.
    /// Its streams go first.
    A_Err close() {
        if (ref_ == nullptr) return A_Err_NONE;
        AEGP_EffectRefH ref = ref_;
        ref_ = nullptr;
        return effects_.AEGP_DisposeEffect(ref);
    }

  private:
    AEGP_EffectSuite3 &effects_;
    AEGP_EffectRefH ref_ = nullptr;
    A_Err error_;
};

/// Streams of one effect's parameters, disposed of together and before the effect's reference.
/// [host thread]
class OwnedEffectStreams {
  public:
    OwnedEffectStreams(AEGP_StreamSuite4 &suite, AEGP_EffectRefH effect)
        : suite_(suite), effect_(effect) {}
    ~OwnedEffectStreams() { close(); }
    OwnedEffectStreams(const OwnedEffectStreams &) = delete;
    OwnedEffectStreams &operator=(const OwnedEffectStreams &) = delete;

    /// Obtains the stream of parameter `index`, without a plug-in id. Returns the host's result;
    /// `stream` is null after an error. Throws std::bad_alloc before the host is asked.
    A_Err open(PF_ParamIndex index, AEGP_StreamRefH &stream) {
        streams_.push_back(nullptr);
        const A_Err error =
            suite_.AEGP_GetNewEffectStreamByIndex(0, effect_, index, &streams_.back());
        if (error != A_Err_NONE) streams_.back() = nullptr;
        stream = streams_.back();
        return error;
    }

    /// Disposes of all streams in the order in which they were obtained; returns the first error.
    A_Err close() {
        A_Err first = A_Err_NONE;
        for (AEGP_StreamRefH stream : streams_) {
            if (stream == nullptr) continue;
            const A_Err error = suite_.AEGP_DisposeStream(stream);
            if (first == A_Err_NONE) first = error;
        }
        streams_.clear();
        return first;
    }

  private:
    AEGP_StreamSuite4 &suite_;
    AEGP_EffectRefH effect_;
    std::vector<AEGP_StreamRefH> streams_;
};

}  // namespace ks
