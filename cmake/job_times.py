"""Where the time of a build and of its tests went, as lines of text.

A job is one compiler, archiver or linker. Its seconds are those that passed, as Ninja notes them, so
other work on the machine lengthens them; tests are given in processor time."""

import pathlib
import re

OBJECT = re.compile(r"(?:^|/)CMakeFiles/([^/]+)\.dir/")
LIBRARY = re.compile(r"^(?:lib)?(.*?)\.(?:a|so|exe|dll|aex)$")


def target_of(output):
    """The target that an output file of a build belongs to."""
    found = OBJECT.search(output)
    if found:
        return found.group(1)
    name = output.rsplit("/", 1)[-1]
    found = LIBRARY.match(name)
    return found.group(1) if found else name


def jobs(build, since):
    """(target, seconds) of each output that this build folder has made since that time."""
    log = pathlib.Path(build) / ".ninja_log"
    latest = {}
    for line in log.read_text(errors="replace").splitlines() if log.is_file() else ():
        fields = line.split("\t")
        if len(fields) == 5:
            latest[fields[3]] = (int(fields[1]) - int(fields[0])) / 1000
    for output, seconds in latest.items():
        file = pathlib.Path(build) / output
        if file.is_file() and file.stat().st_mtime >= since:
            yield target_of(output), seconds


def rows_of(pairs):
    """Sums by name, the largest first."""
    sums = {}
    for name, seconds in pairs:
        sums[name] = sums.get(name, 0) + seconds
    return sorted(sums.items(), key=lambda row: (-row[1], row[0]))


def compile_rows(builds, since):
    return rows_of((f"{pathlib.Path(build).name} {target}", seconds)
                   for build in builds for target, seconds in jobs(build, since))


def section(title, rows, most=None):
    yield f"{sum(seconds for _, seconds in rows):9.1f}  {title}"
    for name, seconds in rows[:most]:
        yield f"{seconds:9.1f}    {name}"
    if most and len(rows) > most:
        yield f"{sum(seconds for _, seconds in rows[most:]):9.1f}    {len(rows) - most} more"


def table(compiling, testing, totals, most=None):
    """Lines with the `most` largest rows of each section, or with all."""
    lines = [*section("job-seconds of compiling, by target", compiling, most),
             *section("seconds of processor time of testing, by program", testing, most)]
    return lines + [f"{seconds:9.1f}  seconds of processor time of {name} as a whole"
                    for name, seconds in totals]
