// Tables of functions for plug-ins. Whatever is put into one runs in the frame of host_call.h.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <string>
#include <type_traits>

#include "stage/host/host_call.h"

namespace stage {

/// A text as a template argument. Two can be joined with +.
template <std::size_t kSize>
struct CallName {
    char text[kSize]{};
    constexpr CallName() = default;
    // NOLINTNEXTLINE: a literal is meant to convert
    constexpr CallName(const char (&literal)[kSize]) {
        for (std::size_t i = 0; i < kSize; ++i) text[i] = literal[i];
    }
};
template <std::size_t kA, std::size_t kB>
constexpr CallName<kA + kB - 1> operator+(const CallName<kA> &a, const CallName<kB> &b) {
    CallName<kA + kB - 1> joined;
    for (std::size_t i = 0; i + 1 < kA; ++i) joined.text[i] = a.text[i];
    for (std::size_t i = 0; i < kB; ++i) joined.text[kA - 1 + i] = b.text[i];
    return joined;
}

/// The function of one slot: R(A...) around a body Result(Context, P...). The context is the call
/// or what can be made of it. A P that is a reference takes a pointer that must not be null: null
/// is the error of the rules.
template <CallName kName, CallRules kRules, auto kBody, auto kDescribe, class Body, class Slot>
struct Framed;

template <CallName kName, CallRules kRules, auto kBody, auto kDescribe, class Context, class Result,
          class... P, class R, class... A>
struct Framed<kName, kRules, kBody, kDescribe, Result (*)(Context, P...), R (*)(A...)> {
    static_assert(sizeof...(P) == sizeof...(A), "the body takes what the slot does");

    static R call(A... arguments) noexcept {
        return in_frame<R>(
            kName.text, kRules,
            [&](HostCall &call) {
                if constexpr (kDescribes) call.arguments(kDescribe(arguments...));
            },
            [&](HostCall &call) -> R {
                if constexpr (std::is_same_v<R, PF_Err>) {
                    if ((is_missing<P>(arguments) || ...)) return kRules.null_error;
                }
                return kBody(call, pass<P>(arguments)...);
            });
    }

  private:
    static constexpr bool kDescribes = !std::is_same_v<decltype(kDescribe), std::nullptr_t>;

    template <class To, class From>
    static constexpr bool kMustBeThere = std::is_reference_v<To> &&std::is_pointer_v<From>;
    template <class To, class From>
    static bool is_missing([[maybe_unused]] const From &from) {
        if constexpr (kMustBeThere<To, From>) return from == nullptr;
        return false;
    }
    template <class To, class From>
    static decltype(auto) pass(From &from) {
        if constexpr (kMustBeThere<To, From>)
            return (*from);
        else
            return (from);
    }
};

/// What sprintf returns; a negative length says that it failed.
struct PrintedLength {
    int length = -1;
};

/// The arguments of a function that takes any number of them.
struct MoreArguments {
    std::va_list list;
};

/// The slot of sprintf: its body takes the list of arguments.
template <CallName kName, CallRules kRules, auto kBody, auto kDescribe>
struct Framed<kName, kRules, kBody, kDescribe,
              int (*)(HostCall &, A_char *, const A_char *, MoreArguments &),
              int (*)(A_char *, const A_char *, ...)> {
    static int call(A_char *target, const A_char *format, ...) noexcept {
        MoreArguments arguments;
        va_start(arguments.list, format);
        const auto printed = in_frame<PrintedLength>(
            kName.text, kRules, [](HostCall &) {},
            [&](HostCall &call) { return PrintedLength{kBody(call, target, format, arguments)}; });
        va_end(arguments.list);
        return printed.length;
    }
};

/// The function of a slot that this host does not carry out, whatever its arguments: a finding
/// "suite.unimplemented", and PF_Err_BAD_CALLBACK_PARAM (516) or a null value.
template <CallName kName, class Slot>
struct Unimplemented;

template <CallName kName, class R, class... A>
struct Unimplemented<kName, R (*)(A...)> {
    static R call(A...) noexcept {
        return in_frame<R>(
            kName.text, CallRules{.fails = Fails::kNever}, [](HostCall &) {},
            [](HostCall &call) -> R {
                call.report("suite.unimplemented", std::string(call.name()) + " is not offered");
                if constexpr (std::is_same_v<R, PF_Err>)
                    return PF_Err_BAD_CALLBACK_PARAM;
                else if constexpr (!std::is_void_v<R>)
                    return R{};
            });
    }
};

/// Function pointers with a fixed list of arguments.
template <class Member>
inline constexpr bool kIsSlot = false;
template <class R, class... A>
inline constexpr bool kIsSlot<R (*)(A...)> = true;

/// A Table whose functions are traced as "<kPrefix>.<slot>" and go by kRules unless one of them has
/// rules of its own. Slots are filled with the macros below and are null until then.
template <class Table, CallName kPrefix, CallRules kTableRules = CallRules{}>
class CallTable {
  public:
    using Slots = Table;
    static constexpr CallRules kRules = kTableRules;

    static constexpr const char *name() { return kPrefix.text; }
    constexpr const Table &get() const { return table_; }

    template <auto kSlot, CallName kFunction, CallRules kSlotRules, auto kBody,
              auto kDescribe = nullptr>
    constexpr void serve() {
        table_.*kSlot = Framed<kPrefix + CallName(".") + kFunction, kSlotRules, kBody, kDescribe,
                               decltype(kBody), SlotType<kSlot>>::call;
    }
    /// A slot that is null, and has a fixed list of arguments; any other member stays as it is.
    template <auto kSlot, CallName kName>
    constexpr void decline() {
        if constexpr (kIsSlot<SlotType<kSlot>>) {
            if (table_.*kSlot == nullptr) {
                table_.*kSlot = Unimplemented<kName, SlotType<kSlot>>::call;
            }
        }
    }
    /// A table inside this one.
    template <auto kMember, class Inner>
    constexpr void embed(const Inner &inner) {
        table_.*kMember = inner.get();
    }

  private:
    template <auto kSlot>
    using SlotType = std::remove_reference_t<decltype(std::declval<Table &>().*kSlot)>;

    Table table_{};
};

/// KS_SERVE(slot, body[, describe]) puts `body` into a slot of the CallTable `table`. `describe`
/// takes the slot's arguments and gives their text for the trace; a body that knows more than it
/// was passed calls arguments() itself. KS_SERVE_BY(rules, ...) has rules of its own.
#define KS_TABLE std::remove_reference_t<decltype(table)>
#define KS_SERVE(slot, ...) KS_SERVE_BY(KS_TABLE::kRules, slot, __VA_ARGS__)
#define KS_SERVE_BY(rules, slot, ...) \
    table.template serve<&KS_TABLE::Slots::slot, #slot, (rules), __VA_ARGS__>()

}  // namespace stage
