#include "stage/binary/elf_file.h"

#include <gtest/gtest.h>

#include "package/binary_fixtures.h"
#include "stage/binary/byte_view.h"

namespace {

using stage::BinaryError;
using stage::ElfFile;

TEST(ElfFile, lists_defined_visible_symbols_only) {
    const ElfFile file = stage::read_elf(ks::test::sample_elf());
    EXPECT_EQ(file.exports, (std::vector<std::string>{"shown"}));
}

TEST(ElfFile, lists_needed_libraries) {
    const ElfFile file = stage::read_elf(ks::test::sample_elf());
    EXPECT_EQ(file.needed, (std::vector<std::string>{"libc.so.6"}));
}

TEST(ElfFile, reads_machine_and_type) {
    const ElfFile file = stage::read_elf(ks::test::sample_elf());
    EXPECT_EQ(file.machine, ElfFile::kMachineX8664);
    EXPECT_EQ(file.type, ElfFile::kTypeShared);
}

TEST(ElfFile, refuses_other_classes_and_byte_orders) {
    for (const std::size_t offset : {4u, 5u}) {
        ks::test::Bytes bytes = ks::test::sample_elf();
        bytes[offset] ^= 3;
        EXPECT_THROW(stage::read_elf(bytes), BinaryError) << offset;
    }
}

TEST(ElfFile, refuses_other_files) {
    EXPECT_THROW(stage::read_elf(ks::test::Bytes{}), BinaryError);
    EXPECT_THROW(stage::read_elf(ks::test::sample_pipl(2)), BinaryError);
}

TEST(ElfFile, survives_every_truncation_and_every_flipped_bit) {
    ks::test::expect_robust(ks::test::sample_elf(), [](auto bytes) { stage::read_elf(bytes); });
}

TEST(ElfFile, every_truncation_is_an_error) {
    const ks::test::Bytes whole = ks::test::sample_elf();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        EXPECT_THROW(stage::read_elf(std::span(whole).first(length)), BinaryError) << length;
    }
}

}  // namespace
