"""The report at the end of a test run: cases counted, failures named, times added up."""

import contextlib
import io
import json
import os
import pathlib
import sys
import tempfile
import time
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(SOURCE / "cmake"))
import job_times  # noqa: E402
import test_report  # noqa: E402

ACCOUNT = """<testsuites tests="5" count_acts="7"><testsuite name="S">
<testcase name="good" status="run" result="completed" classname="S"/>
<testcase name="also_good/0" status="run" result="completed" classname="P/S"/>
<testcase name="bad" status="run" result="completed" classname="S"><failure message="x"/></testcase>
<testcase name="away" status="run" result="skipped" classname="S">
<skipped message="s_test.cpp:7&#x0A;no picture"/></testcase>
<testcase name="DISABLED_off" status="notrun" result="suppressed" classname="S"/>
</testsuite></testsuites>"""
GOOD = """<testsuites count_acts="5"><testsuite name="S">
<testcase name="good" status="run" result="completed" classname="S"/></testsuite></testsuites>"""


class Report(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.run_folder = pathlib.Path(folder.name)
        self.build = self.run_folder / "linux-release"
        self.build.mkdir()
        self.tests = []
        self.results = ""

    def add(self, name, status="run", account=None, note="", google=True, seconds="1.5", drive=""):
        """A test of CTest as it was run, and the account that it wrote."""
        command = ["timed", name]
        if google:
            file = self.run_folder / f"{name}.xml"
            command.append(f"--gtest_output=xml:{drive}{file}")
            if account is not None:
                file.write_text(account)
        self.tests.append({"name": name, "command": command})
        self.results += f'<testcase name="{name}" time="{seconds}" status="{status}">{note}</testcase>'

    def report(self):
        """(status, lines) of the report."""
        (self.run_folder / "tests.json").write_text(json.dumps({"tests": self.tests}))
        (self.run_folder / "results.xml").write_text(f"<testsuite>{self.results}</testsuite>")
        return self.main()

    def main(self):
        self.table = self.run_folder / "times.txt"
        with contextlib.redirect_stdout(io.StringIO()) as printed:
            status = test_report.main([str(self.run_folder), str(self.table), str(self.build)])
        return status, printed.getvalue().splitlines()

    def test_counts_cases_and_names_those_that_failed(self):
        self.add("s_test", "fail", ACCOUNT)
        self.add("tree.words", google=False)
        status, lines = self.report()
        self.assertEqual(status, 1)
        self.assertEqual(lines[-1], "3 passed, 1 failed, 2 skipped")
        self.assertIn("failed: s_test: S.bad", lines)
        self.assertIn("skipped: s_test: S.away: no picture", lines)
        self.assertIn("skipped: s_test: S.DISABLED_off: disabled", lines)

    def test_finds_the_account_of_a_windows_program(self):
        self.add("win64.s_test", account=GOOD, drive="Z:")
        self.assertEqual(self.report()[0], 0)

    def test_passes_when_everything_did(self):
        self.add("s_test", account=GOOD)
        self.assertEqual(self.report()[0], 0)

    def test_a_program_without_an_account_failed_whatever_its_status(self):
        for status in ("run", "fail"):
            with self.subTest(status):
                self.setUp()
                self.add("gone_test", status)
                status, lines = self.report()
                self.assertEqual(status, 1)
                self.assertEqual(lines[-1], "0 passed, 1 failed, 0 skipped")
                self.assertIn("failed: gone_test: ended without an account of its cases", lines)

    def test_a_program_that_fails_behind_its_cases_failed(self):
        self.add("leaky_test", "fail", GOOD)
        status, lines = self.report()
        self.assertEqual((status, lines[-1]), (1, "1 passed, 1 failed, 0 skipped"))
        self.assertIn("failed: leaky_test: failed, though none of its cases did", lines)

    def test_a_test_that_could_not_start_failed_and_one_that_declined_is_skipped(self):
        self.add("a", "notrun", google=False, note='<skipped message="SKIP_RETURN_CODE=77"/>')
        self.add("b", "disabled", google=False, note='<skipped message="Disabled"/>')
        self.add("c", "notrun", google=False, note='<skipped message="Unable to find executable"/>')
        self.add("d", "notrun", note='<skipped message="Fixture dependency failed"/>')
        self.add("e", "fail", google=False)
        status, lines = self.report()
        self.assertEqual((status, lines[-1]), (1, "0 passed, 3 failed, 2 skipped"))
        self.assertIn("failed: c: Unable to find executable", lines)
        self.assertIn("failed: d: Fixture dependency failed", lines)

    def test_adds_up_what_programs_counted(self):
        self.add("a", account=GOOD)
        self.add("b", "fail", ACCOUNT)
        self.assertIn("acts: 12", self.report()[1])

    def test_results_that_cannot_be_read_are_a_failure(self):
        status, lines = self.main()
        self.assertEqual((status, lines[-1]), (1, "0 passed, 1 failed, 0 skipped"))

    def test_bytes_that_are_no_text_are_read(self):
        self.add("a")
        (self.run_folder / "a.xml").write_bytes(GOOD.replace("good", "go\u00e9d").encode("latin-1"))
        self.assertEqual(self.report()[1][-1], "1 passed, 0 failed, 0 skipped")

    def test_shards_are_one_program_in_processor_time_where_it_was_kept(self):
        for shard, kept in ((1, "9.000 1.250 0.250"), (2, "killed\n9.000 1.000 0.500")):
            self.add(f"flow_test-{shard}", account=GOOD)
            (self.run_folder / f"flow_test-{shard}.time").write_text(kept + "\n")
        self.add("tree.words", google=False, seconds="4")
        lines = self.report()[1]
        self.assertIn("      3.0    flow_test", lines)
        self.assertIn("      4.0    tree.words", lines)

    def test_parts_of_the_run_are_what_the_shell_says(self):
        self.add("a", account=GOOD)
        for name, users in (("processor-1-before", "0m1.000s 0m0.500s\n0m2.000s 0m0.500s"),
                            ("processor-2-building", "0m1.000s 0m0.500s\n2m2.000s 0m1.500s")):
            (self.run_folder / name).write_text(users + "\n")
        self.assertIn("    121.0  seconds of processor time of building as a whole", self.report()[1])

    def test_compiling_is_what_was_made_since_the_beginning(self):
        now = time.time()
        log = "# ninja log v5\n"
        for output, milliseconds, age in (("tests/ui/CMakeFiles/ui_test.dir/a.cpp.o", 2000, 0),
                                          ("tests/ui/CMakeFiles/ui_test.dir/b.cpp.o", 4000, 600),
                                          ("ui_test", 500, 0), ("src/libks_core.a", 250, 0),
                                          ("KestrelScopes.so", 100, 0), ("never_made", 9000, None)):
            log += f"10\t{10 + milliseconds}\t1\t{output}\tabc\n"
            if age is not None:
                file = self.build / output
                file.parent.mkdir(parents=True, exist_ok=True)
                file.touch()
                os.utime(file, (now - age, now - age))
        (self.build / ".ninja_log").write_text(log)
        self.assertEqual(job_times.compile_rows([self.build], now - 60),
                         [("linux-release ui_test", 2.5), ("linux-release ks_core", 0.25),
                          ("linux-release KestrelScopes", 0.1)])

    def test_prints_the_largest_rows_and_keeps_all(self):
        for i in range(test_report.ROWS + 3):
            self.add(f"t{i}", account=GOOD, seconds=str(i))
        lines = self.report()[1]
        self.assertTrue(any(line.endswith(" 3 more") for line in lines))
        self.assertNotIn("      0.0    t0", lines)
        self.assertIn("      0.0    t0", self.table.read_text().splitlines())


if __name__ == "__main__":
    unittest.main()
