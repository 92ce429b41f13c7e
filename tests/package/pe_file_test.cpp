#include "stage/binary/pe_file.h"

#include <gtest/gtest.h>

#include "package/binary_fixtures.h"
#include "stage/binary/byte_view.h"

namespace {

using ks::test::Bytes;
using stage::BinaryError;
using stage::PeFile;

Bytes whole_sample() {
    return ks::test::sample_pe(ks::test::sample_pipl(2), ks::test::sample_version());
}

TEST(PeFile, reads_machine_and_kind) {
    const PeFile file = stage::read_pe(whole_sample());
    EXPECT_EQ(file.machine, PeFile::kMachineAmd64);
    EXPECT_TRUE(file.is_dll);
}

TEST(PeFile, lists_exports_by_name) {
    EXPECT_EQ(stage::read_pe(whole_sample()).exports, (std::vector<std::string>{"Alpha", "Beta"}));
}

TEST(PeFile, lists_imports_by_name_and_by_number) {
    const PeFile file = stage::read_pe(whole_sample());
    ASSERT_EQ(file.imports.size(), 1u);
    EXPECT_EQ(file.imports[0].dll, "K.dll");
    EXPECT_EQ(file.imports[0].functions, (std::vector<std::string>{"Sleep", "#12"}));
}

TEST(PeFile, folds_resource_names_to_upper_case_and_keeps_the_stored_one) {
    const PeFile file = stage::read_pe(whole_sample());
    const auto *const resource = file.find_resource("PIPL", 16000, 1033);
    ASSERT_NE(resource, nullptr);
    EXPECT_EQ(resource->stored_type, "PiPL");
    EXPECT_EQ(resource->bytes, ks::test::sample_pipl(2));
}

TEST(PeFile, finds_no_resource_of_another_id_language_or_type) {
    const PeFile file = stage::read_pe(whole_sample());
    EXPECT_EQ(file.find_resource("PIPL", 16001, 1033), nullptr);
    EXPECT_EQ(file.find_resource("PIPL", 16000, 0), nullptr);
    EXPECT_EQ(file.find_resource("OTHER", 16000, 1033), nullptr);
    EXPECT_EQ(file.find_resource(10), nullptr);
    EXPECT_NE(file.find_resource(16), nullptr);
}

TEST(PeFile, refuses_other_files_in_one_line) {
    EXPECT_THROW(stage::read_pe(Bytes{}), BinaryError);
    EXPECT_THROW(stage::read_pe(Bytes{'M', 'Z'}), BinaryError);
    EXPECT_THROW(stage::read_pe(ks::test::sample_elf()), BinaryError);
}

TEST(PeFile, refuses_a_32_bit_file) {
    Bytes bytes = whole_sample();
    bytes[ks::test::kPeOptionalMagicOffset] = 0x0B;
    bytes[ks::test::kPeOptionalMagicOffset + 1] = 0x01;
    EXPECT_THROW(stage::read_pe(bytes), BinaryError);
}

TEST(PeFile, refuses_an_absurd_export_count) {
    Bytes bytes = whole_sample();
    bytes[ks::test::kPeExportCountOffset + 3] = 0x7F;
    EXPECT_THROW(stage::read_pe(bytes), BinaryError);
}

TEST(PeFile, survives_every_truncation_and_every_flipped_bit) {
    ks::test::expect_robust(whole_sample(), [](auto bytes) { stage::read_pe(bytes); });
}

TEST(PeFile, truncation_before_the_last_resource_is_an_error) {
    const Bytes whole = whole_sample();
    // The data of the sample's last resource ends well before the section's end.
    for (std::size_t length = 0; length < 0x200 + 0x340 + 310; ++length) {
        EXPECT_THROW(stage::read_pe(std::span(whole).first(length)), BinaryError) << length;
    }
}

TEST(ReadWholeFile, names_the_file_it_cannot_read) {
    try {
        stage::read_whole_file("no/such/file.aex");
        FAIL();
    } catch (const BinaryError &error) {
        EXPECT_NE(std::string(error.what()).find("file.aex"), std::string::npos) << error.what();
    }
}

TEST(ReadWholeFile, refuses_a_folder) {
    EXPECT_THROW(stage::read_whole_file("."), BinaryError);
}

}  // namespace
