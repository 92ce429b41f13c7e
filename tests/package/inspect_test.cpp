#include "stage/binary/inspect.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "package/binary_fixtures.h"
#include "stage/binary/byte_view.h"

namespace {

using ks::test::Bytes;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// A file of the given bytes that is removed at the end of the test.
class SampleFile {
  public:
    explicit SampleFile(const Bytes &bytes)
        : path_(std::filesystem::temp_directory_path() /
                (std::string("kestrel-inspect-") +
                 testing::UnitTest::GetInstance()->current_test_info()->name())) {
        std::ofstream stream(path_, std::ios::binary);
        stream.write(reinterpret_cast<const char *>(bytes.data()),
                     static_cast<std::streamsize>(bytes.size()));
    }
    ~SampleFile() {
        std::error_code ignored;
        std::filesystem::remove(path_, ignored);
    }
    const std::filesystem::path &path() const { return path_; }

  private:
    std::filesystem::path path_;
};

Bytes sample_pe() {
    return ks::test::sample_pe(ks::test::sample_pipl(2), ks::test::sample_version());
}

TEST(Inspect, reports_a_windows_library) {
    const SampleFile file(sample_pe());
    const auto report = stage::inspect_plugin(file.path());
    EXPECT_EQ(report.kind, "Windows library (PE32+)");
    EXPECT_EQ(report.machine, "x86-64");
    EXPECT_THAT(report.exports, ElementsAre("Alpha", "Beta"));
    ASSERT_TRUE(report.pipl);
    EXPECT_EQ(report.pipl->name, "Sample");
    ASSERT_TRUE(report.version);
    EXPECT_EQ(report.version->text("Key"), "Value");
}

TEST(Inspect, finds_an_entry_point_that_is_not_exported) {
    const SampleFile file(sample_pe());
    EXPECT_THAT(stage::inspect_plugin(file.path()).pipl_findings,
                ElementsAre(HasSubstr("entry point Go is not exported")));
}

TEST(Inspect, reports_an_elf_library_without_property_list_and_version) {
    const SampleFile file(ks::test::sample_elf());
    const auto report = stage::inspect_plugin(file.path());
    EXPECT_EQ(report.kind, "ELF library");
    EXPECT_EQ(report.machine, "x86-64");
    EXPECT_THAT(report.exports, ElementsAre("shown"));
    ASSERT_EQ(report.imports.size(), 1u);
    EXPECT_EQ(report.imports[0].dll, "libc.so.6");
    EXPECT_FALSE(report.pipl);
    EXPECT_FALSE(report.version);
}

TEST(Inspect, names_a_machine_it_does_not_know) {
    Bytes bytes = sample_pe();
    bytes[ks::test::kPeMachineOffset] = 0x34;
    bytes[ks::test::kPeMachineOffset + 1] = 0x12;
    const SampleFile file(bytes);
    EXPECT_EQ(stage::inspect_plugin(file.path()).machine, "machine 0x1234");
}

TEST(Inspect, an_error_names_the_file) {
    const SampleFile file(Bytes{'h', 'e', 'l', 'l', 'o'});
    EXPECT_THAT([&] { stage::inspect_plugin(file.path()); },
                testing::ThrowsMessage<stage::BinaryError>(
                    testing::AllOf(HasSubstr(file.path().filename().string()),
                                   HasSubstr("neither a Windows nor an ELF file"))));
}

TEST(Inspect, a_damaged_property_list_is_an_error) {
    Bytes pipl = ks::test::sample_pipl(2);
    pipl[6] = 200;  // number of properties
    const SampleFile file(ks::test::sample_pe(pipl, ks::test::sample_version()));
    EXPECT_THROW(stage::inspect_plugin(file.path()), stage::BinaryError);
}

TEST(Inspect, text_shows_every_part) {
    const SampleFile file(sample_pe());
    const std::string text = stage::report_text(stage::inspect_plugin(file.path()));
    for (const char *line :
         {"Kind: Windows library (PE32+), x86-64\n", "Exports: 2\n  Alpha\n  Beta\n",
          "  K.dll (2 functions)\n", "  name: Sample\n", "  host interface version: 13.14\n",
          "  effect version: 0x00101E01 (2.0.3 release build 1)\n", "  out flags: 0x00000011\n",
          "  file version: 2.0.3.1\n", "  Key: Value\n", "  ! entry point Go is not exported\n"}) {
        EXPECT_THAT(text, HasSubstr(line));
    }
}

TEST(Inspect, json_holds_the_same_facts) {
    const SampleFile file(sample_pe());
    const std::string json = stage::report_json(stage::inspect_plugin(file.path()));
    for (const char *part :
         {"\"match name\": \"M\"", "\"library\": \"K.dll\"", "\"file version\": \"2.0.3.1\"",
          "\"Key\": \"Value\"", "\"findings\": [\n      \"entry point Go is not exported\""}) {
        EXPECT_THAT(json, HasSubstr(part));
    }
    EXPECT_THAT(json, Not(HasSubstr("null")));
}

TEST(Inspect, json_is_null_where_the_file_has_nothing) {
    const SampleFile file(ks::test::sample_elf());
    const std::string json = stage::report_json(stage::inspect_plugin(file.path()));
    EXPECT_THAT(json, HasSubstr("\"pipl\": null"));
    EXPECT_THAT(json, HasSubstr("\"version\": null"));
}

}  // namespace
