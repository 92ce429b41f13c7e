"""The command `dev`, run in a copy of the tree's skeleton. The programs that it calls (apt-get,
cmake, ctest, ...) are stand-ins that write down how they were called."""

import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2]
CALL = 'echo "$(basename "$0") $*" >> "$CALLS"\n'

LIST_OF_ONE = """[[ $* != *--show-only* ]] || { echo '{"tests": [{"name": "a"}]}'; exit; }
"""


class DevTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.base = pathlib.Path(folder.name)
        self.tree = self.base / "the tree"
        self.elsewhere = self.base / "elsewhere"
        self.programs = self.base / "programs"
        for made in (self.tree / "cmake", self.elsewhere, self.programs):
            made.mkdir(parents=True)
        shutil.copy2(SOURCE / "dev", self.tree / "dev")
        shutil.copytree(SOURCE / "cmake" / "packages", self.tree / "cmake" / "packages")
        for program in ("test_report.py", "job_times.py"):
            shutil.copy2(SOURCE / "cmake" / program, self.tree / "cmake" / program)
        self.calls = self.base / "calls.txt"
        self.calls.touch()
        # Everything is installed, everything succeeds; a test replaces what it is about.
        self.stand_in("dpkg-query", 'shift 3; for p; do echo "ii  $p"; done\n')
        self.stand_in("id", "echo 0\n")
        for name in ("apt-get", "cmake"):
            self.stand_in(name, CALL)
        self.ctest('<testsuite><testcase name="a" status="run" time="2"/></testsuite>')
        self.script(self.tree / "cmake" / "fetch-duktape", CALL)

    def script(self, path, body):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text("#!/bin/bash\n" + body)
        path.chmod(0o755)

    def stand_in(self, name, body):
        self.script(self.programs / name, body)

    def ctest(self, results, then=""):
        """A stand-in that lists one test, and leaves these results of a run."""
        self.stand_in("ctest", CALL + LIST_OF_ONE + 'while [[ $1 != --output-junit ]]; do shift; done\n'
                      + f"echo '{results}' > \"$2\"\n" + then)

    def dev(self, *arguments):
        environment = dict(os.environ, PATH=f"{self.programs}:{os.environ['PATH']}",
                           CALLS=str(self.calls))
        return subprocess.run([self.tree / "dev", *arguments], cwd=self.elsewhere, text=True,
                              env=environment, capture_output=True, timeout=60)

    def called(self):
        return self.calls.read_text()

    def assert_fails(self, result, status, message):
        self.assertEqual(result.returncode, status, result.stdout + result.stderr)
        self.assertIn(message, result.stderr)


class Arguments(DevTest):
    def test_help_lists_every_verb(self):
        result = self.dev("help")
        self.assertEqual(result.returncode, 0)
        for verb in "setup build test demo bench sanitize format clean".split():
            self.assertIn(f"\n  {verb} ", result.stdout)
        self.assertEqual(self.dev().stdout, result.stdout)

    def test_unknown_verb_shows_the_help_and_exits_with_2(self):
        result = self.dev("biuld")
        self.assert_fails(result, 2, "unknown verb 'biuld'")
        self.assertIn("usage: ./dev", result.stderr)

    def test_unknown_argument_exits_with_2_before_anything_is_done(self):
        for arguments in (("build", "mac"), ("test", "native", "windows"), ("setup", ""),
                          ("sanitize", "msan"), ("clean", "all"), ("bench", "fast"),
                          ("format", "now"), ("demo", "a.png", "b.png")):
            with self.subTest(arguments):
                self.assert_fails(self.dev(*arguments), 2, "dev: ")
        self.assertEqual(self.called(), "")


class SetUp(DevTest):
    def test_installs_nothing_when_nothing_is_missing(self):
        self.assertEqual(self.dev("setup", "native").returncode, 0)
        self.assertEqual(self.called(), "")

    def test_names_what_it_installs_before_it_does(self):
        self.stand_in("dpkg-query", "exit 1\n")
        self.stand_in("apt-get", 'cat >> "$CALLS"; ' + CALL)
        result = self.dev("setup", "native")
        self.assertEqual(result.returncode, 0, result.stderr)
        announced = next(l for l in result.stdout.splitlines() if "about to install" in l)
        self.assertIn(" ninja-build", announced)
        self.assertIn(" clang-format", announced)
        self.assertNotIn("mingw", announced)
        self.assertIn("--no-install-recommends", self.called())

    def test_a_removed_package_with_configuration_left_is_missing(self):
        self.stand_in("dpkg-query", 'shift 3; for p; do echo "rc  $p"; done\n')
        self.assertIn("about to install", self.dev("setup", "native").stdout)

    def test_no_network_is_one_clear_line_and_a_failure(self):
        self.stand_in("dpkg-query", "exit 1\n")
        self.stand_in("apt-get", '[[ " $* " == *" install "* ]] && echo "E: Failed to fetch" && exit 100\n')
        result = self.dev("build", "native")
        self.assert_fails(result, 1, "dev: apt-get ")
        self.assertNotIn("cmake", self.called())

    def test_without_root_and_sudo_says_so(self):
        self.stand_in("dpkg-query", "exit 1\n")
        self.stand_in("id", "echo 1000\n")
        for name in ("bash", "env", "sed", "sort", "comm", "grep", "dirname", "readlink", "mkdir"):
            os.symlink(shutil.which(name), self.programs / name)
        result = subprocess.run([self.tree / "dev", "setup", "native"], text=True,
                                env={"PATH": str(self.programs), "CALLS": str(self.calls)},
                                capture_output=True, timeout=60)
        self.assert_fails(result, 1, "needs root")

    def test_sources_that_cannot_be_fetched_stop_the_windows_build(self):
        self.script(self.tree / "cmake" / "fetch-duktape", "exit 1\n")
        self.assert_fails(self.dev("build", "windows"), 1, "duktape")
        self.assertNotIn("cmake", self.called())


class Build(DevTest):
    def test_builds_both_by_default_in_the_fixed_places(self):
        self.assertEqual(self.dev("build").returncode, 0)
        for preset in ("linux-release", "win64-release"):
            self.assertIn(f"cmake --preset {preset}\n", self.called())
            self.assertIn(f"cmake --build {self.tree}/build/{preset} ", self.called())

    def test_a_failing_configuration_shows_its_log(self):
        self.stand_in("cmake", "echo 'no such compiler'; exit 1\n")
        result = self.dev("build", "native")
        self.assert_fails(result, 1, "dev: cmake could not configure linux-release")
        self.assertIn("no such compiler", result.stderr)


class Tests(DevTest):
    def test_one_run_over_both_builds(self):
        self.assertEqual(self.dev("test", "all", "--", "-R", "x y").returncode, 0)
        runs = [l for l in self.called().splitlines() if l.startswith("ctest") and "--show" not in l]
        self.assertEqual(len(runs), 1)
        self.assertTrue(runs[0].endswith(" -R x y"))
        listed = (self.tree / "build/ctest-all/CTestTestfile.cmake").read_text()
        self.assertEqual(listed, f'subdirs("{self.tree}/build/linux-release")\n'
                                 f'subdirs("{self.tree}/build/win64-release")\n')

    def test_the_last_line_counts_and_the_status_is_passed_on(self):
        self.ctest('<testsuite><testcase name="a" status="run"/><testcase name="b" status="fail"/>'
                   '<testcase name="c" status="disabled"/></testsuite>', "exit 8\n")
        result = self.dev("test", "native")
        self.assertEqual(result.returncode, 8)
        self.assertEqual(result.stdout.splitlines()[-1], "1 passed, 1 failed, 1 skipped")

    def test_what_only_the_report_finds_is_a_failure(self):
        self.ctest("no results")
        result = self.dev("test", "native")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stdout.splitlines()[-1], "0 passed, 1 failed, 0 skipped")

    def test_accounts_of_earlier_runs_are_gone(self):
        old = self.tree / "build/linux-release/test-reports/a.xml"
        old.parent.mkdir(parents=True)
        old.write_text("<testsuites/>")
        self.assertEqual(self.dev("test", "native").returncode, 0)
        self.assertFalse(old.exists())

    def test_shows_where_the_time_went_and_keeps_all_of_it(self):
        result = self.dev("test", "native")
        kept = (self.tree / "build/log/times-native.txt").read_text()
        self.assertIn("      2.0    a\n", kept)
        for part in ("building", "testing"):
            self.assertIn(f"seconds of processor time of {part} as a whole\n", kept)
        self.assertIn(kept, result.stdout)

    def test_two_sizes(self):
        for words, size in ((("test",), "usual"), (("test", "full"), "full"),
                            (("test", "native", "full"), "full")):
            self.ctest('<testsuite/>', 'echo "size=$KS_TEST_SIZE" >> "$CALLS"\n')
            self.calls.write_text("")
            self.assertEqual(self.dev(*words).returncode, 0)
            self.assertIn(f"size={size}\n", self.called())
        self.assert_fails(self.dev("test", "full", "native"), 2, "takes one argument")

    def test_a_failed_build_runs_no_tests(self):
        self.stand_in("cmake", '[[ $1 != --build ]]\n')
        self.assert_fails(self.dev("test", "native"), 1, "the build of linux-release failed")
        self.assertNotIn("ctest", self.called())


class Demo(DevTest):
    def setUp(self):
        super().setUp()
        self.script(self.tree / "build/linux-release/kestrel-stage",
                    CALL + 'while [[ $1 != -o ]]; do shift; done; echo png > "$2"\n')

    def test_renders_the_test_card_in_five_layouts_and_prints_the_paths(self):
        result = self.dev("demo")
        self.assertEqual(result.returncode, 0, result.stderr)
        pictures = [pathlib.Path(l) for l in result.stdout.splitlines() if l.endswith(".png")]
        self.assertEqual(len(set(pictures)), 5)
        self.assertTrue(all(p.is_file() and self.tree / "out/demo" == p.parent for p in pictures))
        for layout in ("Single", "Four-Way Split", "Four-Way Classic", "Windowed",
                       "Off (Scopes Only)"):
            self.assertIn(f"--set Monitor Layout={layout}\n", self.called())
        self.assertEqual(self.called().count("render --chart test-card"), 5)

    def test_takes_a_picture_relative_to_where_it_is_called(self):
        (self.elsewhere / "my photo.v2.jpg").write_text("jpeg")
        result = self.dev("demo", "my photo.v2.jpg")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn(f"render {self.elsewhere}/my photo.v2.jpg -o", self.called())
        self.assertTrue((self.tree / "out/demo/my photo.v2-single.png").is_file())

    def test_builds_the_native_plug_in_and_stage_alone(self):
        self.dev("demo")
        self.assertIn("--target KestrelScopes kestrel-stage\n", self.called())
        self.assertNotIn("win64", self.called())

    def test_a_missing_picture_fails_before_anything_is_installed(self):
        self.stand_in("dpkg-query", "exit 1\n")
        for picture in ("nowhere.png", "", str(self.elsewhere)):
            self.assert_fails(self.dev("demo", picture), 1, "dev: demo: no such picture")
        self.assertEqual(self.called(), "")

    def test_a_render_that_fails_fails_the_demo(self):
        self.script(self.tree / "build/linux-release/kestrel-stage", "exit 3\n")
        self.assert_fails(self.dev("demo"), 1, "dev: the demo could not render 'Single'")


class Sanitize(DevTest):
    def test_runs_the_tests_of_each_sanitizer_and_keeps_a_failure(self):
        self.stand_in("setarch", 'shift; exec "$@"\n')
        self.ctest('<testsuite/>', '[[ "$2" != *ctest-ubsan* ]]\n')
        result = self.dev("sanitize", "--", "-R", "x")
        self.assertEqual(result.returncode, 1, result.stderr)
        for kind in ("asan", "ubsan", "tsan"):
            self.assertIn(f"cmake --preset linux-{kind}\n", self.called())
            self.assertIn(f"ctest --test-dir {self.tree}/build/ctest-{kind} ", self.called())

    def test_runs_where_randomisation_cannot_be_switched_off(self):
        self.stand_in("setarch", "exit 1\n")
        self.assertEqual(self.dev("sanitize", "tsan").returncode, 0)
        self.assertIn("ctest ", self.called())


def median(name, milliseconds, **counters):
    return {"run_name": name + "/iterations:3/repeats:5/manual_time", "aggregate_name": "median",
            "real_time": milliseconds, **counters}


FRAME = "1920x1080/8bit/max/natural"
FIGURES = {"context": {"natural_picture": "a.jpg"}, "benchmarks": [
    median(f"scopes/pass/{FRAME}/threads:1", 20.0, MiB=1.0, MiB_64_parts=65.5, set_up_ms=0.1,
           merge_ms=2.0),
    median(f"scopes/pass/{FRAME}/threads:2", 13.0, MiB=2.0, MiB_64_parts=65.5, set_up_ms=0.1,
           merge_ms=2.0),
    median(f"scopes/literal/{FRAME}", 300.0)]}


class Bench(DevTest):
    def setUp(self):
        super().setUp()
        self.script(self.tree / "build/linux-release/ks_bench",
                    'for a; do [[ $a != --benchmark_out=* ]] || echo "$FIGURES" > "${a#*=}"; done\n'
                    + CALL)
        self.script(self.tree / "bench/peer-ffmpeg", CALL + 'printf "ffmpeg 9\\n$2 8 25.0\\n"\n')
        shutil.copy2(SOURCE / "bench/scope_table.py", self.tree / "bench")
        self.stand_in("ffmpeg", "")
        os.environ["FIGURES"] = json.dumps(FIGURES)
        self.addCleanup(os.environ.pop, "FIGURES")

    def row(self, output, *cells):
        """The cells behind `cells` of the table row that starts with them."""
        for line in output.splitlines():
            found = [cell.strip() for cell in line.split("|")[1:-1]]
            if found[:len(cells)] == list(cells):
                return found[len(cells):]
        self.fail(f"no row {cells} in\n{output}")

    def test_builds_the_benchmarks_and_no_tests(self):
        self.assertEqual(self.dev("bench").returncode, 0)
        self.assertIn("cmake --preset linux-release -DKS_BENCH=ON\n", self.called())
        self.assertIn("--target KestrelScopes ks_bench bench_picture\n", self.called())

    def test_keeps_its_figures_as_json(self):
        os.environ["FIGURES"] = "{}"
        result = self.dev("bench", "--", "--benchmark_filter=view")
        self.assertEqual(result.returncode, 0, result.stderr)
        kept = pathlib.Path(result.stdout.splitlines()[-1])
        self.assertEqual(kept.parent, self.tree / "out/bench")
        self.assertEqual(kept.read_text(), "{}\n")
        self.assertIn(" --benchmark_filter=view\n", self.called())
        self.assertNotIn("peer-ffmpeg", self.called())

    def test_prints_the_table_with_its_ratios(self):
        result = self.dev("bench")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("peer-ffmpeg ", self.called())
        self.assertEqual(self.row(result.stdout, "1920x1080", "8", "max", "natural")[:4],
                         ["20.0", "0.65", "15.0", "0.80"])
        self.assertEqual(self.row(result.stdout, "1920x1080, 8, max: 2 threads / 1"),
                         ["0.65", "at most 0.6", "missed"])
        self.assertEqual(self.row(result.stdout, "1920x1080, 8, max: literal / pass"),
                         ["15.00", "at least 8", "met"])
        kept = pathlib.Path(result.stdout.splitlines()[-1]).with_suffix(".md")
        self.assertIn(kept.read_text(), result.stdout)

    def test_quick_times_one_size(self):
        self.assertEqual(self.dev("bench", "quick", "--", "--x").returncode, 0)
        self.assertIn("natural|graticules) --x\n", self.called())
        self.assertIn("bench_picture 1920x1080\n", self.called())

    def test_does_without_ffmpeg(self):
        for name in ("bash", "env", "sed", "sort", "comm", "dirname", "readlink", "mkdir", "date",
                     "python3", "tee", "basename", "nproc", "cat"):
            os.symlink(shutil.which(name), self.programs / name)
        (self.programs / "ffmpeg").unlink()
        result = subprocess.run([self.tree / "dev", "bench"], text=True, capture_output=True,
                                env={"PATH": str(self.programs), "CALLS": str(self.calls),
                                     "FIGURES": os.environ["FIGURES"]}, timeout=60)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("ffmpeg is not installed", result.stdout)
        self.assertEqual(self.row(result.stdout, "1920x1080", "8", "max", "natural")[2:4],
                         ["15.0", ""])

    def test_ffmpeg_that_fails_fails_the_benchmarks(self):
        self.script(self.tree / "bench/peer-ffmpeg", "exit 3\n")
        self.assert_fails(self.dev("bench"), 1, "dev: ffmpeg could not be timed")

    def test_figures_that_cannot_be_read_fail(self):
        os.environ["FIGURES"] = "{"
        self.assert_fails(self.dev("bench"), 1, "dev: the figures could not be read")


class Clean(DevTest):
    def test_removes_what_was_built_and_nothing_else(self):
        for folder in ("build/linux-release", "out/demo"):
            (self.tree / folder).mkdir(parents=True)
        self.assertEqual(self.dev("clean").returncode, 0)
        self.assertEqual(sorted(p.name for p in self.tree.iterdir()), ["cmake", "dev"])


if __name__ == "__main__":
    unittest.main()
