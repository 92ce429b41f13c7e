#include "stage/host/suite_registry.h"

#include <set>

#include "hostapi/suite_names.h"
#include "support/stage/rogue_session.h"

namespace stage_test {
namespace {

using stage::SuiteRegistry;
using Key = SuiteRegistry::Key;
using testing::IsEmpty;

constexpr int kTable = 0;
constexpr int kOther = 0;

class SuiteRegistryTest : public testing::Test {
  protected:
    SuiteRegistryTest() {
        suites.add("Suite", 1, &kTable);
        suites.add("Suite", 2, &kOther);
    }
    const void *acquire(const char *name, std::int32_t number) {
        refused_as_null = false;
        return suites.acquire(name, number, &refused_as_null);
    }
    SuiteRegistry suites;
    bool refused_as_null = false;
};

TEST_F(SuiteRegistryTest, names_are_case_sensitive_and_numbers_exact) {
    EXPECT_EQ(acquire("Suite", 1), &kTable);
    EXPECT_EQ(acquire("Suite", 2), &kOther);
    EXPECT_EQ(acquire("suite", 1), nullptr);
    EXPECT_EQ(acquire("Suite", 3), nullptr);
    EXPECT_EQ(acquire("", 0), nullptr);
}

TEST_F(SuiteRegistryTest, counts_by_name_and_number) {
    acquire("Suite", 1);
    acquire("Suite", 1);
    acquire("Suite", 2);
    EXPECT_TRUE(suites.release("Suite", 1));
    EXPECT_TRUE(suites.release("Suite", 2));
    EXPECT_FALSE(suites.release("Suite", 2));
    const std::map<Key, int> expected{{{"Suite", 1}, 1}, {{"Suite", 2}, -1}};
    EXPECT_EQ(suites.imbalance(), expected);
    suites.clear_counts();
    EXPECT_THAT(suites.imbalance(), IsEmpty());
}

TEST_F(SuiteRegistryTest, failed_acquisitions_are_not_counted) {
    suites.refuse("Suite", 1);
    acquire("Suite", 1);
    acquire("Suite", 9);
    EXPECT_THAT(suites.imbalance(), IsEmpty());
}

TEST_F(SuiteRegistryTest, refuses_one_number_and_takes_it_back) {
    suites.refuse("Suite", 1);
    EXPECT_EQ(acquire("Suite", 1), nullptr);
    EXPECT_FALSE(refused_as_null);
    EXPECT_EQ(acquire("Suite", 2), &kOther);
    suites.refuse("Suite", 2, true);
    EXPECT_EQ(acquire("Suite", 2), nullptr);
    EXPECT_TRUE(refused_as_null);
    suites.accept_all();
    EXPECT_EQ(acquire("Suite", 1), &kTable);
}

TEST(BasicSuite, unknown_and_refused_suites_give_the_hosts_code_and_a_null_table) {
    RogueSession rogue;
    SPBasicSuite *basic = rogue.host().suites.basic();
    const void *table = &kTable;
    EXPECT_EQ(basic->AcquireSuite("No Such Suite", 1, &table), 0x53212121);
    EXPECT_EQ(table, nullptr);
    rogue.host().suites.refuse(kPFHandleSuite, kPFHandleSuiteVersion1);
    EXPECT_NE(basic->AcquireSuite(kPFHandleSuite, kPFHandleSuiteVersion1, &table), 0);
    rogue.host().suites.refuse(kPFHandleSuite, kPFHandleSuiteVersion1, true);
    table = &kTable;
    EXPECT_EQ(basic->AcquireSuite(kPFHandleSuite, kPFHandleSuiteVersion1, &table), 0);
    EXPECT_EQ(table, nullptr);
    EXPECT_THAT(rogue.host().suites.imbalance(), IsEmpty());
}

TEST(BasicSuite, offers_each_family_in_its_versions) {
    RogueSession rogue;
    const std::vector<Key> offered = rogue.host().suites.offered();
    const std::set<Key> have(offered.begin(), offered.end());
    const Key wanted[] = {
        {"PF Handle Suite", 2},
        {"PF ANSI Suite", 1},
        {"PF World Suite", 2},
        {"PF Iterate8 Suite", 1},
        {"PF Iterate8 Suite", 2},
        {"PF iterate16 Suite", 1},
        {"PF iterate16 Suite", 2},
        {"PF iterateFloat Suite", 1},
        {"PF iterateFloat Suite", 2},
        {"PF Param Utils Suite", 2},
        {"PF Param Utils Suite", 3},
        {"PF World Transform Suite", 1},
        {"AEGP PF Interface Suite", 1},
        {"AEGP Layer Suite", 13},
        {"AEGP Layer Suite", 14},
        {"AEGP Layer Suite", 15},
        {"AEGP Comp Suite", 21},
        {"AEGP Comp Suite", 25},
        {"AEGP Comp Suite", 26},
        {"AEGP Item Suite", 13},
        {"AEGP Item Suite", 14},
        {"AEGP Stream Suite", 9},
        {"AEGP Stream Suite", 10},
        {"AEGP Stream Suite", 11},
        {"AEGP Dynamic Stream Suite", 5},
        {"AEGP Effect Suite", 4},
        {"AEGP Effect Suite", 5},
        {"AEGP Utility Suite", 11},
        {"AEGP Utility Suite", 13},
        {"AEGP Memory Suite", 1},
        {"AEGP Iterate Suite", 1},
        {"AEGP Iterate Suite", 2},
    };
    for (const Key &key : wanted) {
        EXPECT_EQ(have.count(key), 1u) << key.first << " " << key.second;
    }
}

}  // namespace
}  // namespace stage_test
