"""The checks of the tree find what they are for, and nothing else."""

import pathlib
import tempfile
import unittest

import documented
import includes
import sizes
import words


class TreeTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)
        self.write("hostapi/host.h", "#pragma once\n")
        self.write("stage/host.h", '#include "hostapi/host.h"\n')

    def write(self, path, text):
        file = self.root / path
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_text(text)

    def found(self, check):
        return check.violations(self.root)


class Includes(TreeTest):
    def test_accepts_the_way_down_and_the_standard_library(self):
        self.write("src/host/suites.h", '#include <vector>\n#include "hostapi/host.h"\n')
        self.write("src/entry/entry.cpp", '#include "host/suites.h"\n')
        self.assertEqual(self.found(includes), [])

    def test_finds_the_way_up(self):
        self.write("src/entry/entry.h", '#include "hostapi/host.h"\n')
        self.write("src/host/suites.cpp", '#include "entry/entry.h"\n')
        self.assertEqual(len(self.found(includes)), 1)

    def test_finds_a_neighbour_that_sees_the_host_through_another_file(self):
        self.write("src/ui/events.h", '#include "hostapi/host.h"\n')
        self.write("src/ui/handles.h", '#include "ui/events.h"\n')
        self.write("src/params/setup.cpp", '#include "ui/handles.h"\n')
        self.assertEqual(len(self.found(includes)), 1)

    def test_accepts_a_pure_file_from_anywhere(self):
        self.write("src/render/views.h", "#include <array>\n")
        self.write("src/scopes/sampling.cpp", '#include "render/views.h"\n')
        self.assertEqual(self.found(includes), [])

    def test_accepts_the_listed_exceptions(self):
        self.write("src/instance/sequence.h", '#include "hostapi/host.h"\n')
        self.write("src/params/panel.cpp", '#include "instance/sequence.h"\n')
        self.assertEqual(self.found(includes), [])

    def test_finds_src_and_stage_in_each_other(self):
        self.write("src/render/views.h", "")
        self.write("src/host/suites.cpp", '#include "stage/host.h"\n')
        self.write("stage/frame.cpp", '#include "render/views.h"\n#include "../src/render/views.h"\n')
        self.assertEqual(len(self.found(includes)), 3)

    def test_finds_an_oracle_that_shares_code(self):
        self.write("src/render/views.h", "")
        self.write("tests/oracle/oracle.cpp", '#include "render/views.h"\n')
        self.assertEqual(len(self.found(includes)), 1)

    def test_finds_a_library_in_the_plug_in_only(self):
        self.write("src/host/log.cpp", "#include <fmt/format.h>\n")
        self.write("stage/log.cpp", "#include <fmt/format.h>\n")
        self.assertEqual(len(self.found(includes)), 1)

    def test_finds_a_file_that_does_not_exist(self):
        self.write("src/host/log.cpp", '#include "host/gone.h"\n')
        self.assertEqual(len(self.found(includes)), 1)

    def test_leaves_out_what_is_built(self):
        self.write("build/src/host/log.cpp", '#include "stage/host.h"\n')
        self.assertEqual(self.found(includes), [])


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
