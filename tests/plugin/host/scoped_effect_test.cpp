// References to the running effect and its streams: obtained, given back once, in order.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/scoped.h"

namespace {

using Log = std::vector<std::string>;

/// The three suites, recording calls; `next_error` is what the next one answers.
struct Suites {
    Suites() {
        current() = this;
        own.AEGP_GetNewEffectForEffect = [](AEGP_PluginID id, PF_ProgPtr effect,
                                            AEGP_EffectRefH *ref) {
            *ref = handle<AEGP_EffectRefH>(current()->gives_effect ? 7 : 0);
            return current()->note("new effect " + std::to_string(id) + " of " + number(effect));
        };
        effects.AEGP_DisposeEffect = [](AEGP_EffectRefH ref) {
            return current()->note("dispose effect " + number(ref));
        };
        streams.AEGP_GetNewEffectStreamByIndex = [](AEGP_PluginID, AEGP_EffectRefH ref,
                                                    PF_ParamIndex index, AEGP_StreamRefH *stream) {
            *stream = handle<AEGP_StreamRefH>(static_cast<std::uintptr_t>(100 + index));
            return current()->note("new stream " + std::to_string(index) + " of " + number(ref));
        };
        streams.AEGP_DisposeStream = [](AEGP_StreamRefH stream) {
            return current()->note("dispose stream " + number(stream));
        };
    }
    ~Suites() { current() = nullptr; }
    Suites(const Suites &) = delete;
    Suites &operator=(const Suites &) = delete;

    static Suites *&current() {
        static Suites *suites = nullptr;
        return suites;
    }
    template <class Handle>
    static Handle handle(std::uintptr_t value) {
        return reinterpret_cast<Handle>(value);
    }
    static std::string number(const void *pointer) {
        return std::to_string(reinterpret_cast<std::uintptr_t>(pointer));
    }
    A_Err note(std::string call) {
        log.push_back(std::move(call));
        const A_Err error = next_error;
        next_error = 0;
        return error;
    }

    AEGP_PFInterfaceSuite1 own{};
    AEGP_EffectSuite3 effects{};
    AEGP_StreamSuite4 streams{};
    bool gives_effect = true;
    A_Err next_error = 0;
    Log log;
};

const PF_ProgPtr kEffect = Suites::handle<PF_ProgPtr>(5);

TEST(OwnedEffectRef, is_asked_for_without_a_plug_in_id_and_disposed_of_once) {
    Suites suites;
    {
        ks::OwnedEffectRef ref(suites.own, suites.effects, kEffect);
        EXPECT_EQ(ref.error(), 0);
        EXPECT_EQ(ref.close(), 0);
        EXPECT_EQ(ref.close(), 0);
    }
    EXPECT_EQ(suites.log, (Log{"new effect 0 of 5", "dispose effect 7"}));
}

TEST(OwnedEffectRef, destructor_disposes_of_what_is_still_held) {
    Suites suites;
    { const ks::OwnedEffectRef ref(suites.own, suites.effects, kEffect); }
    EXPECT_EQ(suites.log.back(), "dispose effect 7");
}

TEST(OwnedEffectRef, nothing_is_disposed_of_after_a_refusal_or_without_a_reference) {
    Suites suites;
    suites.next_error = 9;
    {
        const ks::OwnedEffectRef ref(suites.own, suites.effects, kEffect);
        EXPECT_EQ(ref.error(), 9);
        EXPECT_EQ(ref.get(), nullptr);
    }
    suites.gives_effect = false;
    { const ks::OwnedEffectRef ref(suites.own, suites.effects, kEffect); }
    EXPECT_EQ(suites.log.size(), 2u);
}

TEST(OwnedEffectRef, close_returns_the_error_of_the_disposal) {
    Suites suites;
    ks::OwnedEffectRef ref(suites.own, suites.effects, kEffect);
    suites.next_error = 9;
    EXPECT_EQ(ref.close(), 9);
    EXPECT_EQ(ref.close(), 0);
}

TEST(OwnedEffectStreams, are_disposed_of_in_the_order_they_were_obtained) {
    Suites suites;
    AEGP_StreamRefH stream = nullptr;
    {
        ks::OwnedEffectStreams streams(suites.streams, Suites::handle<AEGP_EffectRefH>(7));
        EXPECT_EQ(streams.open(4, stream), 0);
        EXPECT_EQ(stream, Suites::handle<AEGP_StreamRefH>(104));
        EXPECT_EQ(streams.open(2, stream), 0);
    }
    EXPECT_EQ(suites.log, (Log{"new stream 4 of 7", "new stream 2 of 7", "dispose stream 104",
                               "dispose stream 102"}));
}

TEST(OwnedEffectStreams, a_refused_stream_is_null_and_not_disposed_of) {
    Suites suites;
    AEGP_StreamRefH stream = Suites::handle<AEGP_StreamRefH>(1);
    ks::OwnedEffectStreams streams(suites.streams, Suites::handle<AEGP_EffectRefH>(7));
    suites.next_error = 9;
    EXPECT_EQ(streams.open(4, stream), 9);
    EXPECT_EQ(stream, nullptr);
    EXPECT_EQ(streams.close(), 0);
    EXPECT_EQ(suites.log.size(), 1u);
}

TEST(OwnedEffectStreams, close_goes_on_after_an_error_and_returns_the_first) {
    Suites suites;
    AEGP_StreamRefH stream = nullptr;
    ks::OwnedEffectStreams streams(suites.streams, Suites::handle<AEGP_EffectRefH>(7));
    streams.open(1, stream);
    streams.open(2, stream);
    suites.next_error = 9;
    EXPECT_EQ(streams.close(), 9);
    EXPECT_EQ(suites.log.back(), "dispose stream 102");
    EXPECT_EQ(streams.close(), 0);
}

}  // namespace
