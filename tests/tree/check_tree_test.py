"""The checks of the tree find what they are for, and nothing else."""

import pathlib
import tempfile
import unittest

import documented
import includes
import links
import reaches
import sizes
import words


class TreeTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.write("hostapi/host.h", "#pragma once\n")
        self.write("stage/host/host.h", '#include "hostapi/host.h"\n')

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def found(self, check):
        return check.violations(self.root)


ROOMS = """# a comment
hostapi : :
src/model : :
src/host : hostapi src/model :
src/entry : hostapi src/host :
stage/text : : ks_utf8
stage/host : hostapi stage/text : native:PkgConfig::LIBAV
apps/cli : stage/host : ks_foreign_headers
"""


class Includes(TreeTest):
    def setUp(self):
        super().setUp()
        self.write("hostapi/tables/values.inc", "")
        self.write("src/model/table.h", "")
        self.write("src/host/suites.h", "")
        self.write("src/entry/entry.h", "")
        self.write("stage/text/hex.h", "")
        self.write("apps/cli/verbs.h", "")
        self.rooms(ROOMS)

    def rooms(self, table):
        self.write("cmake/rooms.txt", table)

    def found_in(self, path, *lines):
        """What is found when a file of these lines stands at `path`."""
        self.write(path, "".join(f"#include {line}\n" for line in lines))
        return self.found(includes)

    def assert_found(self, found, *parts):
        """One finding, which names all of `parts`."""
        self.assertEqual(len(found), 1, found)
        for part in parts:
            self.assertIn(part, found[0])

    def test_accepts_the_own_room_those_listed_and_the_standard_library(self):
        self.assertEqual(self.found_in("src/host/more.cpp", "<vector>", '"host/suites.h"',
                                       '"model/table.h"', '"hostapi/host.h"'), [])

    def test_accepts_parts_of_a_room(self):
        self.assertEqual(self.found_in("hostapi/proof.cpp", '"hostapi/tables/values.inc"'), [])

    def test_accepts_the_headers_of_listed_libraries(self):
        self.assertEqual(self.found_in("stage/text/utf.cpp", "<utf8.h>"), [])
        self.assertEqual(self.found_in("stage/host/video.cpp", "<libavcodec/avcodec.h>"), [])

    def test_accepts_what_comes_with_a_platform(self):
        self.assertEqual(self.found_in("src/host/wide.cpp", "<windows.h>", "<emmintrin.h>"), [])

    def test_finds_the_way_up(self):
        self.assert_found(self.found_in("src/host/more.cpp", '"entry/entry.h"'),
                          "src/host/more.cpp", "entry/entry.h", "does not let src/host")

    def test_finds_what_a_listed_room_may_include_but_this_one_may_not(self):
        self.assert_found(self.found_in("src/entry/more.cpp", '"model/table.h"'), "src/model")

    def test_finds_the_binary_interface_in_a_room_without_it(self):
        self.assert_found(self.found_in("src/model/more.cpp", '"hostapi/host.h"'), "hostapi")

    def test_finds_a_room_reached_by_a_relative_path(self):
        self.assert_found(self.found_in("src/model/more.cpp", '"../host/suites.h"'), "src/host")

    def test_finds_a_folder_that_is_not_listed(self):
        self.assert_found(self.found_in("src/extra/more.cpp", "<vector>"),
                          "src/extra/more.cpp", "not listed")

    def test_finds_an_include_of_a_folder_that_is_no_room(self):
        self.write("tests/support/fake.h", "")
        self.assert_found(self.found_in("src/host/more.cpp", '"support/fake.h"'), "is no room")

    def test_finds_a_file_that_does_not_exist(self):
        self.assert_found(self.found_in("src/host/more.cpp", '"host/gone.h"'), "no such file")

    def test_finds_a_library_that_the_room_does_not_list(self):
        self.assert_found(self.found_in("src/host/log.cpp", "<fmt/format.h>"), "ks_fmt")
        self.write("src/host/log.cpp", "")
        self.assert_found(self.found_in("stage/host/utf.cpp", "<utf8.h>"), "ks_utf8")

    def test_finds_a_library_that_no_room_can_list(self):
        self.assert_found(self.found_in("src/host/log.cpp", "<boost/any.hpp>"), "no room lists")

    def test_finds_the_headers_of_another_platform(self):
        self.assert_found(self.found_in("src/host/log.cpp", "<unistd.h>"), "no room lists")

    def test_finds_an_oracle_that_shares_code(self):
        self.assert_found(self.found_in("tests/oracle/oracle.cpp", '"model/table.h"'), "the oracle")

    def test_accepts_an_oracle_on_the_binary_interface(self):
        self.write("tests/oracle/image.h", "")
        self.assertEqual(self.found_in("tests/oracle/oracle.cpp", '"hostapi/host.h"',
                                       '"oracle/image.h"', "<cmath>"), [])

    def test_leaves_out_what_is_built(self):
        self.assertEqual(self.found_in("build/src/host/log.cpp", '"stage/text/hex.h"'), [])

    def test_finds_a_line_that_is_no_room(self):
        self.rooms(ROOMS + "src/ui\n")
        self.assert_found(self.found(includes), "cmake/rooms.txt:9", "not a room")

    def test_finds_a_room_listed_twice(self):
        self.rooms(ROOMS + "src/model : :\n")
        self.assert_found(self.found(includes), "src/model", "listed twice")

    def test_finds_a_room_without_a_folder(self):
        self.rooms(ROOMS + "src/ui : :\n")
        self.assert_found(self.found(includes), "src/ui", "no such folder")

    def test_finds_a_circle_and_a_room_listed_too_late(self):
        self.rooms(ROOMS.replace("src/model : :", "src/model : src/host :"))
        self.assert_found(self.found(includes), "src/model", "src/host is not listed above it")

    def test_finds_trees_that_must_not_meet(self):
        self.write("src/ui/events.h", "")
        for lower in ("stage/text", "apps/cli"):
            self.rooms(ROOMS + f"src/ui : {lower} :\n")
            self.assert_found(self.found(includes), f"src/ does not include {lower.split('/')[0]}/")
        self.write("stage/late/late.h", "")
        for lower in ("src/model", "apps/cli"):
            self.rooms(ROOMS + f"src/ui : :\nstage/late : {lower} :\n")
            self.assert_found(self.found(includes), "stage/ does not include")


class Links(TreeTest):
    def check(self, text):
        self.write("docs/page.md", text + "\n")
        return [line.split(": ", 1)[0] for line in self.found(links)]

    def setUp(self):
        super().setUp()
        self.write("README.md", "# The tree\n\n## What's in it, and why?\n\n## Again\n\n## Again\n")
        self.write("docs/user/scopes.md", "# The `scopes`\n\n```\n# no heading\n```\n")
        self.write("docs/pictures/a.png", "")

    def test_accepts_files_folders_headings_and_other_places(self):
        self.assertEqual(self.check(
            "# Here\n[a](user/scopes.md), ![b](pictures/a.png 'title') [c](#here) [d](../README.md)\n"
            "[e](user/scopes.md#the-scopes) [f](../README.md#whats-in-it-and-why) [g](user)\n"
            "[over\ntwo lines](user/scopes.md) [h](https://example.com/gone.md) [i][1]\n"
            "[again](../README.md#again-1)\n\n[1]: pictures/a.png\n"), [])

    def test_finds_a_file_that_is_not_there(self):
        for link in ("[a](gone.md)", "![a](a.png)", "[a](../docs/gone/)", "[a](/README.md)", "[a]()",
                     "[a]\n\n[a]: gone.md", "[a](../../README.md)", "[![a](a.png)](user/scopes.md)"):
            with self.subTest(link):
                self.assertEqual(len(self.check(link)), 1)

    def test_finds_a_heading_that_is_not_there(self):
        for link in ("[a](#gone)", "[a](user/scopes.md#no-heading)", "[a](../README.md#The-Tree)",
                     "[a](../README.md#again-2)", "[a](user#scopes)"):
            with self.subTest(link):
                self.assertEqual(len(self.check(link)), 1)

    def test_finds_a_path_that_leads_nowhere(self):
        for path in ("`docs/gone`", "```\nrun docs/gone.json -o out\n```", "docs/user/gone/*.md",
                     "see docs/user/gone."):
            with self.subTest(path):
                self.assertEqual(len(self.check(path)), 1)
        self.assertEqual(self.check("[over\ntwo](user/scopes.md\n'title')\nin docs/gone"),
                         ["docs/page.md:4"])

    def test_accepts_paths_that_are_there_and_those_of_other_places(self):
        self.assertEqual(self.check("`docs/user/scopes.md`, docs/user/, docs/pictures/*.png, build/docs/x,"
                                    " ../docs/x, user/gone, and/or"), [])

    def test_tells_the_line(self):
        self.assertEqual(self.check("```\n[code](gone.md)\n```\n`[a](gone.md)`\n\n[a](gone.md)"),
                         ["docs/page.md:6"])

    def test_leaves_out_what_is_built(self):
        self.write("build/page.md", "[a](gone.md)\n")
        self.write("build/there.md", "")
        self.assertEqual(self.check("[a](../build/there.md)"), ["docs/page.md:1"])


class Reaches(TreeTest):
    def check(self, path, text):
        self.write(path, "void act() {\n    " + text + "\n}\n")
        return [line.split(": ")[0] for line in self.found(reaches)]

    def test_finds_users_of_a_session_that_take_hold_of_its_host(self):
        for text in ("session_.host.undo.clear();", "use(desk.session().host);",
                     "session.host.strict.clear();", "session->host.messages.clear();"):
            with self.subTest(text):
                self.assertEqual(self.check("stage/desk/desk.cpp", text), ["stage/desk/desk.cpp:2"])

    def test_accepts_questions_and_those_who_may(self):
        self.assertEqual(self.check("apps/verbs/run.cpp", "session.host_options(); host.start();"), [])
        self.assertEqual(self.check("tests/stage/desk_test.cpp", "session.host.strict.clear();"), [])


class Words(TreeTest):
    def check(self, text):
        self.write("docs/page.md", text + "\n")
        return len(self.found(words))

    def test_finds_documents_and_tickets_outside_the_tree(self):
        for words_of_text in (("see sp", "ec.md"), ("as Pa", "rt 3.1 says"), ("the sp", "ec wants"),
                              ("the iss", "ue wants"), ("see iss", "ue #12"), ("host-be", "haviour")):
            with self.subTest(words_of_text):
                self.assertEqual(self.check("".join(words_of_text)), 1)

    def test_finds_paths_of_one_machine(self):
        for path in ("wo" + "rk/main", "tm" + "p/x", "hom" + "e/me"):
            self.assertEqual(self.check(f"in /{path} here"), 1)
            self.assertEqual(self.check(f"in build/{path} here"), 0)

    def test_finds_hosts_of_registries(self):
        self.assertEqual(self.check("http://deb.deb" + "ian.org/debian"), 1)

    def test_finds_a_file_name(self):
        self.write("docs/sp" + "ec.md", "")
        self.assertEqual(len(self.found(words)), 1)

    def test_accepts_ordinary_words_and_pictures(self):
        self.assertEqual(self.check("OIIO::ImageSpec spec; in part; an issue; part of it; 3.1"), 0)
        (self.root / "docs/picture.png").write_bytes(b"\x89PNG\0 /wo" + b"rk/")
        self.assertEqual(self.found(words), [])


class Sizes(TreeTest):
    def test_finds_a_long_file_only(self):
        self.write("src/host/short.cpp", "\n" * sizes.FILE_LIMIT)
        self.write("src/host/long.cpp", "\n" * (sizes.FILE_LIMIT + 1))
        self.write("docs/long.md", "\n" * (sizes.FILE_LIMIT + 1))
        self.assertEqual([line.split(":")[0] for line in self.found(sizes)], ["src/host/long.cpp"])

    def test_finds_a_full_folder_only(self):
        for number in range(sizes.FOLDER_LIMIT):
            self.write(f"src/host/file{number}.h", "")
            self.write(f"src/draw/file{number}.h", "")
        self.write("src/draw/CMakeLists.txt", "")
        self.assertEqual([line.split(":")[0] for line in self.found(sizes)], ["src/draw/"])

    def test_finds_a_long_function_only(self):
        def function(lines):
            return "int sum(int a,\n        int b) {\n" + "    ++a;\n" * (lines - 3) + "}\n"

        self.write("src/host/two.cpp", "namespace ks {\n" + function(sizes.FUNCTION_LIMIT)
                   + "struct Rows {\n" + "    int row;\n" * 70 + "};\n"
                   + "constexpr int kRows[] = {\n" + "    1,\n" * 70 + "};\n"
                   + "constexpr Table kTable{\n" + "    1,\n" * 70 + "};\n"
                   + function(sizes.FUNCTION_LIMIT + 1) + "}  // namespace ks\n")
        self.assertEqual(len(self.found(sizes)), 1)
        self.assertIn(f"a function of {sizes.FUNCTION_LIMIT + 1} lines", self.found(sizes)[0])

    def test_finds_a_long_member_function_and_its_lambda(self):
        self.write("src/host/inner.h", "struct Host {\n    void fill() {\n        act([] {\n"
                   + "            ++a;\n" * 70 + "        });\n    }\n};\n")
        self.assertEqual(len(self.found(sizes)), 2)


    def test_ends_a_lambda_in_its_own_column(self):
        self.write("src/host/many.cpp", "act(1,\n    [](int a) {\n        ++a;\n    });\n\n"
                   + "int one() {\n    return 1;\n}\n\n" * 30)
        self.assertEqual(self.found(sizes), [])


class Documented(TreeTest):
    ROOMS = "# comment\nhostapi : :\nstage/text : :\n"

    def check(self, architecture, readme):
        self.write("cmake/rooms.txt", self.ROOMS)
        self.write("stage/text/hex.h", "")
        self.write("stage/host.h", "")
        self.write("tests/stage/hex_test.cpp", "")
        self.write("docs/develop/architecture.md", architecture)
        self.write("README.md", readme)
        return self.found(documented)

    ARCHITECTURE = "| `hostapi/` | what |\n| `stage/text/` | it |\n"
    README = ("| `hostapi/` | a |\n| `stage/` | b |\n| `tests/stage/` | c |\n| `cmake/` | d |\n"
              "| `docs/develop/` | e |\n")

    def test_accepts_a_row_for_each(self):
        self.assertEqual(self.check(self.ARCHITECTURE, self.README), [])

    def test_finds_what_has_no_row_or_two(self):
        self.assertEqual(len(self.check("| `hostapi/` | what |\n", self.README)), 1)
        self.assertEqual(len(self.check(self.ARCHITECTURE * 2, self.README)), 2)
        self.assertEqual(len(self.check(self.ARCHITECTURE, "")), 5)

    def test_finds_rows_for_what_is_not_there_or_says_nothing(self):
        self.assertEqual(
            len(self.check(self.ARCHITECTURE + "| `stage/gone/` | x |\n", self.README)), 1)
        self.assertEqual(len(self.check(self.ARCHITECTURE.replace("it", ""), self.README)), 1)


if __name__ == "__main__":
    unittest.main()
