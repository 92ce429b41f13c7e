"""The checks of the tree find what they are for, and nothing else."""

import pathlib
import tempfile
import unittest

import includes
import links
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

    def test_tells_the_line(self):
        self.assertEqual(self.check("```\n[code](gone.md)\n```\n`[a](gone.md)`\n\n[a](gone.md)"),
                         ["docs/page.md:6"])

    def test_leaves_out_what_is_built(self):
        self.write("build/page.md", "[a](gone.md)\n")
        self.write("build/there.md", "")
        self.assertEqual(self.check("[a](../build/there.md)"), ["docs/page.md:1"])


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
        self.write("src/host/short.cpp", "\n" * sizes.LIMIT)
        self.write("src/host/long.cpp", "\n" * (sizes.LIMIT + 1))
        self.write("docs/long.md", "\n" * (sizes.LIMIT + 1))
        self.assertEqual([line.split(":")[0] for line in self.found(sizes)], ["src/host/long.cpp"])


if __name__ == "__main__":
    unittest.main()
