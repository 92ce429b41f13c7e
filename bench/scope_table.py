"""The benchmarks of scopes and viewers as tables: scope_table.py RESULTS.json [FFMPEG.txt]

RESULTS.json is Google Benchmark's output of ks_bench, FFMPEG.txt that of bench/peer-ffmpeg. Times are
medians of the repetitions where a case has several, in milliseconds. Prints Markdown; sections without results are left out.
"""

import json
import sys

DEPTHS = {"8bit": "8", "16bit": "16", "32bit": "float"}


class Results:
    """Medians by case name; the memory counters come with the pass."""

    def __init__(self, results):
        self.context = results.get("context", {})
        self.cases = {}
        for case in results.get("benchmarks", []):
            single = case.get("repetitions", 1) == 1
            if case.get("error_occurred") or not (single or case.get("aggregate_name") == "median"):
                continue
            name = "/".join(part for part in case["run_name"].split("/")
                            if part.split(":")[0] not in ("iterations", "repeats", "manual_time",
                                                              "real_time"))
            self.cases[name] = case

    def ms(self, kind, frame, threads=None):
        case = self.cases.get(f"scopes/{kind}/{frame}" + (f"/threads:{threads}" if threads else ""))
        return case and case["real_time"]

    def counter(self, frame, name, threads=1):
        case = self.cases.get(f"scopes/pass/{frame}/threads:{threads}")
        return case and case[name]

    def frames(self):
        """Frames that the pass or the render was timed on, in the order of the run."""
        found = {}
        for name in self.cases:
            parts = name.split("/")
            if parts[0] == "scopes" and parts[1] in ("pass", "render"):
                found["/".join(parts[2:6])] = None
        return list(found)


def read_ffmpeg(lines):
    """({(size, depth): milliseconds}, version)"""
    version, times = "", {}
    for line in lines:
        words = line.split()
        if words and words[0] == "ffmpeg":
            version = words[1]
        elif len(words) == 3:
            times[words[0], words[1] + "bit"] = float(words[2])
    return times, version


def ratio(a, b):
    return a / b if a and b else None


def cell(value, digits=1):
    return "" if value is None else f"{value:.{digits}f}"


LEFT = ("Frame", "Depth", "Settings", "Picture", "Layout", "Checks", "Goal")  # columns of text; the others are numbers


def table(head, rows):
    cells = [head] + rows
    widths = [max(len(row[i]) for row in cells) for i in range(len(head))]
    lines = ["| " + " | ".join(text.ljust(w) if name in LEFT else text.rjust(w)
                               for name, text, w in zip(head, row, widths)) + " |"
             for row in cells]
    rule = "|" + "|".join("-" * (w + 2) if name in LEFT else "-" * (w + 1) + ":"
                          for name, w in zip(head, widths)) + "|"
    return "\n".join([lines[0], rule] + lines[1:])


def pass_rows(results, ffmpeg):
    rows = []
    for frame in results.frames():
        size, depth, settings, picture = frame.split("/")
        one, two = results.ms("pass", frame, 1), results.ms("pass", frame, 2)
        peer = ffmpeg.get((size, depth)) if picture == "natural" else None
        rows.append([size, DEPTHS[depth], settings, picture, cell(one), cell(ratio(two, one), 2),
                     cell(ratio(results.ms("literal", frame), one)), cell(ratio(one, peer), 2),
                     cell(results.ms("render", frame, 1)), cell(results.ms("render", frame, 2)),
                     cell(results.ms("render_without", frame, 1))])
    return rows


def small_rows(results):
    """(depth, set-up, merge, graticules, their sum) of five panels at the first sizes."""
    for depth in DEPTHS:
        frame = f"1920x1080/{depth}/five"
        graticules = results.ms("graticules", frame)
        set_up = results.counter(frame + "/natural", "set_up_ms")
        merge = results.counter(frame + "/natural", "merge_ms")
        if None not in (graticules, set_up, merge):
            yield depth, set_up, merge, graticules, set_up + merge + graticules


def memory_rows(results):
    rows = []
    for frame in results.frames():
        size, depth, settings, picture = frame.split("/")
        one = results.counter(frame, "MiB")
        if picture == "natural" and one is not None:
            rows.append([size, DEPTHS[depth], settings, cell(one),
                         cell(results.counter(frame, "MiB", 2)),
                         cell(results.counter(frame, "MiB_64_parts"))])
    return rows


LAYOUTS = {"single": "Single", "four_way_classic": "Four-Way Classic"}


def viewer_rows(results):
    rows = []
    for name, case in results.cases.items():
        kind, *parts = name.split("/")
        if kind == "viewer":
            _, size, depth, layout, *strict = parts
            rows.append([size, DEPTHS[depth], LAYOUTS[layout], "on" if strict else "off",
                         cell(case["real_time"]), cell(case["plug_in"]), cell(case["host"]),
                         cell(1000 / case["real_time"], 0)])
    return rows


def goals(results, ffmpeg):
    """(what, value, limit, unit, True when larger is better); without those that were not timed."""
    for size in ("1920x1080", "3840x2160"):
        for depth, least, share in (("8bit", 8, 1), ("16bit", 6, 0.25), ("32bit", 3.5, None)):
            frame = f"{size}/{depth}/max/natural"
            what = f"{size}, {DEPTHS[depth]}, max"
            one = results.ms("pass", frame, 1)
            yield f"{what}: literal / pass", ratio(results.ms("literal", frame), one), least, True
            yield f"{what}: 2 threads / 1", ratio(results.ms("pass", frame, 2), one), 0.6, False
            if share is not None:
                yield f"{what}: pass / ffmpeg", ratio(one, ffmpeg.get((size, depth))), share, False
            guide = {"8bit": 25, "16bit": 30, "32bit": 28}[depth] if size == "1920x1080" else 90
            yield f"{what}: pass, ms", one, guide, False
            if size == "1920x1080":
                one = results.ms("pass", f"{size}/{depth}/default/natural", 1)
                yield f"{size}, {DEPTHS[depth]}, default: pass, ms", one, 5, False
    for layout, name in LAYOUTS.items():
        for checks, suffix, limit in (("off", "", 35), ("on", "/strict", 50)):
            case = results.cases.get(f"viewer/drag/1920x1080/8bit/{layout}{suffix}")
            yield (f"viewer, 1920x1080, 8, {name}, checks {checks}: frame, ms",
                   case and case["real_time"], limit, False)
    for depth, *_, total in small_rows(results):
        yield f"{DEPTHS[depth]}: set-up + merge + graticules, ms", total, 4, False
    most = max((case["MiB_64_parts"] for name, case in results.cases.items()
                if name.startswith("scopes/pass/3840x2160/")), default=None)
    yield "3840x2160: accumulators of 64 parts, MiB", most, 64, False


def goal_rows(results, ffmpeg):
    rows = []
    for what, value, limit, at_least in goals(results, ffmpeg):
        if value is None:
            continue
        met = value >= limit if at_least else value <= limit
        rows.append([what, cell(value, 2), ("at least " if at_least else "at most ") + f"{limit:g}",
                     "met" if met else "missed"])
    return rows


def report(results, ffmpeg, version):
    sections = [
        ("Sampling pass and whole render, ms",
         ["Frame", "Depth", "Settings", "Picture", "Pass", "2 threads / 1", "Literal / pass",
          "Pass / ffmpeg", "Render", "2 threads", "Scopes off"], pass_rows(results, ffmpeg)),
        ("Five panels at their first sizes, ms, one thread",
         ["Depth", "Set-up", "Merge", "Graticules", "Together"],
         [[DEPTHS[depth]] + [cell(value, 2) for value in values]
          for depth, *values in small_rows(results)]),
        ("Accumulators, MiB", ["Frame", "Depth", "Settings", "1 thread", "2 threads", "64 parts"],
         memory_rows(results)),
        ("Frames of a viewer during a drag, ms",
         ["Frame", "Depth", "Layout", "Checks", "Frame time", "Plug-in", "Host", "Per second"],
         viewer_rows(results)),
        ("Goals", ["Goal", "Measured", "Limit", ""], goal_rows(results, ffmpeg)),
    ]
    text = [f"**{title}**\n\n{table(head, rows)}" for title, head, rows in sections if rows]
    if not text:
        return "no cases of the tables were run"
    notes = [f"natural picture: {results.context.get('natural_picture', 'unknown')}"]
    if ffmpeg:
        notes.append(f"ffmpeg {version}: " +
                     ", ".join(f"{size}, {DEPTHS[depth]} bit, {ms:.1f} ms"
                               for (size, depth), ms in ffmpeg.items()))
    load = results.context.get("load_avg")
    if load:
        notes.append(f"load average at the start: {load[0]:.1f}")
    return "\n\n".join(text + ["; ".join(notes)])


def main(arguments):
    with open(arguments[0], encoding="utf-8") as file:
        results = Results(json.load(file))
    lines = []
    if len(arguments) > 1:
        with open(arguments[1], encoding="utf-8") as file:
            lines = file.readlines()
    ffmpeg, version = read_ffmpeg(lines)
    print(report(results, ffmpeg, version))


if __name__ == "__main__":
    main(sys.argv[1:])
