"""Measures the program against small C programs, against cat and against itself, and prints one
table of ratios. With --against it measures two builds of the program instead, and ends with
status 1 if it has become worse. Called by scripts/bench, which builds what is measured; see
docs/performance.md."""

import argparse
import collections
import contextlib
import datetime
import hashlib
import os
import pathlib
import re
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile

import generate
import server

here = pathlib.Path(__file__).resolve().parent
root = here.parent
page = root / "docs" / "performance.md"


def output_of(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout

# How many milliseconds an editor may wait for the server in a model of 2,000 lines; five times as
# many in one of 10,000.
server_limits = {
    "findings of the tree": 5,
    "findings of the translator": 50,
    "completion": 2,
    "hover": 2,
    "definition": 2,
}


class Wrong(Exception):
    """What the program produced is not right, so no time of it counts."""


class Case:
    """An input, its control file and the outputs, in a folder of their own."""

    def __init__(self, program, folder, kind, *sizes):
        self.program = program
        self.folder = folder
        self.folder.mkdir()
        self.input = self.folder / "m.zlm"
        with open(self.input, "w") as out:
            generate.KINDS[kind](out, *sizes)
        with open(self.input, "rb") as text:
            self.lines = sum(1 for _ in text)
        (self.folder / "run.ctl").write_text("INP m.zlm\nSCR m.scr\nERR m.err\n")
        self.digest, self.stamp = None, None
        self.run()
        self.check_outputs()
        self.recheck()

    def command(self):
        return [str(self.program), "run.ctl"]

    def side(self):
        return [str(self.folder), *self.command()]

    def run(self, *prefix):
        done = subprocess.run([*prefix, *self.command()], cwd=self.folder, capture_output=True)
        if done.returncode or done.stdout or done.stderr:
            said = done.stdout + done.stderr
            raise Wrong(f"{self.folder.name}: status {done.returncode}, {said}")

    def outputs(self):
        return sorted(p for p in self.folder.iterdir() if p.suffix in (".GEN", ".HDR"))

    def check_outputs(self):
        """Every model has its two files, whole to the last line, and every line was read."""
        expected = {"m.zlm", "run.ctl"}
        with open(self.input, "rb") as text:
            for line in text:
                if not line.startswith(b"$MODEL:"):
                    continue
                name = line[7:-1]
                echo = []
                while not line.startswith(b"$OFFTEXT"):
                    line = next(text)
                    echo.append(line)
                self.check_model(name, echo)
                expected |= {f"{name.decode()}.GEN", f"{name.decode()}.HDR"}
        found = set(os.listdir(self.folder))
        if found != expected:
            raise Wrong(f"{self.folder}: files {sorted(found ^ expected)[:5]}")

    def check_model(self, name, echo):
        generator = (self.folder / f"{name.decode()}.GEN").read_bytes()
        header = (self.folder / f"{name.decode()}.HDR").read_bytes()
        counter = re.escape(name) + rb"\.INTEGER1"
        solve = rb"\nPUT / '\$SOLVE'/;\nPUTCLOSE .{5};\n"
        if not re.search(solve + counter + rb" = " + counter + rb" \+ 1;\n\Z", generator):
            raise Wrong(f"{self.folder}: the generator file of {name} has no trailer")
        counts = rb"\n\$OFFTEXT\n\n\$setglobal  n_models.{4}\n\$setglobal  n_constr.{4}\n"
        if not re.search(counts + counter + rb"=1;\n\Z", header):
            raise Wrong(f"{self.folder}: the header file of {name} does not end as it must")
        listed = self.listing(header).split(b"\n")
        if [line[7:] for line in listed[1 : 1 + len(echo)]] != [line.rstrip() for line in echo]:
            raise Wrong(f"{self.folder}: the header file of {name} does not show its input")

    @staticmethod
    def listing(header):
        start = header.index(b"\n$ONLISTING\n$ONTEXT\n\n") + len("\n$ONLISTING\n$ONTEXT\n\n")
        return header[start : header.rindex(b"\n$OFFTEXT\n")]

    def recheck(self):
        """The outputs are newer than at the last check, and have the bytes of the first run."""
        digest = hashlib.blake2b()
        stamp = max(path.stat().st_mtime_ns for path in self.outputs())
        for path in self.outputs():
            digest.update(path.name.encode() + path.read_bytes())
        if digest.hexdigest() != (self.digest or digest.hexdigest()) or stamp == self.stamp:
            raise Wrong(f"{self.folder}: another run left other files")
        self.digest, self.stamp = digest.hexdigest(), stamp

    def remove(self):
        shutil.rmtree(self.folder)


Runs = collections.namedtuple("Runs", "nanoseconds faults kibibytes")  # a line from spawn


class Table:
    head = ["case", "against", "measured", "quartiles", "times", "reach", "better", "result"]

    def __init__(self):
        self.rows = []

    def add(self, case, against, value, reach, better="", spread="", times="", shown=None):
        """Holds `value` against `reach` and `better`, texts that begin with the largest number."""

        def within(bound):
            return value <= float(re.match(r"[\d.,]+", bound)[0].replace(",", ""))

        result = "better" if better and within(better) else "reached" if within(reach) else "missed"
        shown = shown or f"{value:.2f} x"
        self.rows.append([case, against, shown, spread, times, reach, better, result])
        print(f"    {case} / {against}: {shown} {result}", file=sys.stderr)

    def __str__(self):
        widths = [max(map(len, column)) for column in zip(self.head, *self.rows)]
        rule = ["-" * width for width in widths]
        lines = [self.head, rule, *self.rows]
        return "\n".join(
            "| " + " | ".join(cell.ljust(width) for cell, width in zip(line, widths)) + " |"
            for line in lines
        )


class BuildTable(Table):
    head = ["case", "A / B", "quartiles", "B / B", "quartiles", "times", "limit", "result"]

    def add(self, case, value, limit, shown, spread="", noise="", noise_spread="", times=""):
        result = "worse" if value > limit else "as good"
        bound = f"{limit:.3f} x" if times else f"{limit:.0f}"
        self.rows.append([case, shown, spread, noise, noise_spread, times, bound, result])
        print(f"    {case}: {shown} {result}", file=sys.stderr)

    def worse(self):
        return any(row[-1] == "worse" for row in self.rows)


def milliseconds(side):
    value = statistics.median(run.nanoseconds for run in side) / 1e6
    return f"{value:.3g}" if value < 1000 else f"{value:.0f}"


def both_times(sides):
    return " / ".join(map(milliseconds, sides)) + " ms"


class Bench:
    def __init__(self, options, folder):
        self.quick = options.quick
        self.program = options.program.resolve()
        self.folder = folder
        self.tools = self.folder / "tools"
        self.table = Table()
        self.short_pairs, self.runs, self.long_pairs = (5, 20, 5) if self.quick else (40, 50, 10)
        self.scale = 10 if self.quick else 1  # by which the long inputs are shorter
        self.tools.mkdir()
        for name in ("spawn", "empty"):
            self.compile(name)

    def case(self, name, kind, *sizes, program=None):
        print(f"{name}: {kind} {' '.join(map(str, sizes))}", file=sys.stderr)
        return Case(program or self.program, self.folder / name, kind, *sizes)

    def compile(self, name, *flags):
        compiler = os.environ.get("CC", "cc")
        output_of(compiler, "-O2", "-o", self.tools / name, here / f"{name}.c", *flags)

    def compile_minimal(self, case):
        """Makes the C program that leaves the files of the case, and lets it find the companion as
        the program does: along the program's run path or, if that has none, where it lies."""
        library = self.program.parent / "libkovadclib64.dylib"
        dynamic = output_of("readelf", "-d", self.program)
        flags = []
        if "RUNPATH" in dynamic:
            shutil.copy(library, self.tools)
            run_path = re.search(r"RUNPATH.*\[(.*)\]", dynamic)[1]
            flags = ["-Wl,--enable-new-dtags", f"-Wl,-rpath,{run_path}"]
            library = library.name
        generator, header = case.outputs()
        texts = {
            "COMPANION": library,
            "CONTROL": "run.ctl",
            "INPUT": case.input.name,
            "GENERATOR": generator.name,
            "HEADER": header.name,
            "GENERATOR_BYTES": generator,
            "HEADER_BYTES": header,
        }
        self.compile("minimal", *flags, *(f'-D{key}="{text}"' for key, text in texts.items()))

    def pair(self, a, b, runs=1):
        words = [str(self.tools / "spawn"), str(runs), *map(str, a), "--", *map(str, b)]
        lines = output_of(*words).splitlines()
        return [Runs(*map(int, line.split())) for line in lines]

    def compare(self, a, b, checked, pairs, runs=1):
        """Runs two sides pair by pair, and checks after each what the cases have left."""
        kept = []
        for _ in range(pairs):
            kept.append(self.pair(a, b, runs))
            for case in checked:
                case.recheck()
        return list(zip(*kept))

    def compare_short(self, a, b, checked):
        return self.compare(a, b, checked, self.short_pairs, self.runs)

    def compare_long(self, a, b, checked):
        return self.compare(a, b, checked, self.long_pairs)

    def add_ratio(self, name, against, sides, reach, better="", share=1.0):
        """`share` is by how much more work A does than B, where the time for each line counts."""
        low, middle, high = quartiles([ratio / share for ratio in ratios(*sides)])
        times = both_times(sides)
        self.table.add(name, against, middle, reach, better, f"{low:.2f} to {high:.2f}", times)

    def add_rows(self, options):
        with one_core():
            self.short_rows()
            self.front_end_row()
        self.expand_rows()
        self.server_rows()
        self.comment_row()
        self.mix_rows()

    def short_rows(self):
        small = self.case("m60", "mix", 1, 60)
        large = self.case("m2000", "mix", 1, 2000)
        self.compile_minimal(small)
        twin = self.case("minimal", "mix", 1, 60, program=self.tools / "minimal")

        sides = self.compare_short(small.side(), twin.side(), [small, twin])
        self.add_ratio("60-line model", "minimal C program", sides, "1.15 x", "1.08 x")
        faults = median_faults(sides[0])
        sides = self.compare_short(small.side(), [self.tools, "./empty"], [small])
        self.add_ratio("60-line model", "empty C program", sides, "1.6 x", "1.5 x")
        self.count_rows(small, faults)
        sides = self.compare_short(large.side(), small.side(), [large, small])
        self.add_ratio("2,000-line model", "60-line model", sides, "3.5 x", "2 x")
        for case in (small, large, twin):
            case.remove()

    def front_end_row(self):
        """What a person waits for, next to what a host waits for."""
        front_end = self.program.parent / "orvex"
        if not front_end.exists():
            return
        case = self.case("good", "good")
        os.environ["TMPDIR"] = str(self.tools)
        check = [self.folder / "good", front_end, "check", "--quiet", case.input.name]
        sides = self.compare_short(check, case.side(), [case])
        self.add_ratio("orvex check, 60-line model", "orvexpp on it", sides, "2.1 x")
        case.remove()
        self.misspelt_row(front_end)

    def misspelt_row(self, front_end):
        """A misspelt keyword before 300 records that need its names, next to the corrected file. A
        shell takes the status of both, which is 1 for the first."""
        case = self.case("reports", "reports", 300)
        text = case.input.read_text()
        (case.folder / "wrong.zlm").write_text(text.replace("$COMMODITIES", "$COMODITIES"))
        sides = self.compare_short(
            *(
                [case.folder, "sh", "-c", f"{front_end} check -q {name} >/dev/null; true"]
                for name in ("wrong.zlm", case.input.name)
            ),
            [],
        )
        self.add_ratio("orvex check, wrong keyword, 300 reports", "corrected", sides, "3 x")
        case.remove()

    def expand_rows(self):
        """A million lines for the solver, next to a hundred thousand: time and memory."""
        front_end = self.program.parent / "orvex"
        if not front_end.exists():
            return
        many, few = (self.expand_side(front_end, count) for count in (707, 224))
        sides = self.compare_long(many, few, [])
        name = "orvex expand, 1,006,075 printed lines"
        self.add_ratio(name, "102,382 lines", sides, "10.5 x")
        many_peak, few_peak = (statistics.median(run.kibibytes for run in side) for side in sides)
        growth = 100 * (many_peak / few_peak - 1)
        self.table.add(name, "peak memory at 102,382", growth, "10 %", shown=f"{growth:+.1f} %")

    def expand_side(self, front_end, count):
        """A model that prints an entry for each pair of so many elements."""
        folder = self.folder / f"expand{count}"
        folder.mkdir()
        with open(folder / "m.zlm", "w") as out:
            generate.pairs(out)
        with open(folder / "data.csv", "w") as out:
            generate.pairs_data(out, count)
        command = f"exec {front_end} expand m.zlm --data data.csv >/dev/null"
        return [folder, "sh", "-c", command]

    def server_rows(self):
        """What an editor waits for."""
        front_end = self.program.parent / "orvex"
        if not front_end.exists():
            return
        self.server_start_row(front_end)
        for lines, share in ((2000, 1), (10000, 5)):
            with server.Session(front_end, lines) as session:
                for what, spent in self.server_times(session):
                    limit = f"{share * server_limits[what]} ms"
                    self.table.add(f"orvex lsp, {lines:,} lines", what, 1000 * spent, limit,
                                   shown=f"{1000 * spent:.3g} ms")
                if share == 1:
                    self.server_memory_row(session)

    def server_times(self, session):
        """Pairs of what was waited for and the median time."""
        yield "findings of the tree", server.median_time(session.finding_time, self.runs)
        yield "findings of the translator", server.median_time(session.verdict_time, self.runs)
        for what in ("completion", "hover", "definition"):
            method = f"textDocument/{what}"
            yield what, server.median_time(lambda: session.answer_time(method), self.runs)

    def server_start_row(self, front_end):
        sides = zip(*server.start_times(front_end, self.folder, self.short_pairs * 5))
        low, middle, high = quartiles([a / b for a, b in zip(*sides)])
        self.table.add("orvex lsp, first answer", "orvex --version", middle, "1.5 x",
                       spread=f"{low:.2f} to {high:.2f}")

    def server_memory_row(self, session):
        edits = 100000 // self.scale
        session.edit_often(1000)
        before = session.resident()
        session.edit_often(edits)
        growth = 100 * (session.resident() / before - 1)
        self.table.add("orvex lsp, 2,000 lines", f"memory, {edits:,} edits", growth, "2 %",
                       times=f"{before / 1024:.1f} MiB before", shown=f"{growth:+.1f} %")

    def count_rows(self, case, faults):
        name, exact = "60-line model", "exact count"
        trace = self.folder / "trace"
        calls = self.system_calls(case)
        self.table.add(name, exact, calls, "65", "61", shown=f"{calls} system calls")
        self.table.add(name, exact, faults, "85", "75", shown=f"{faults:.0f} page faults")
        case.run("strace", "-f", "-e", "trace=openat", "-o", str(trace))
        opened = re.findall(r'"([^"]*\.(?:so|so\.\d+|dylib))", .* = \d+$', trace.read_text(), re.M)
        objects = ["loader", *map(os.path.basename, opened)]
        self.table.add(name, exact, len(objects), "3", shown=", ".join(objects))

    def system_calls(self, case):
        summary = self.folder / "summary"
        case.run("strace", "-f", "-c", "-o", str(summary))
        return int(re.search(r"^100\.00\s+\S+\s+\S+\s+(\d+).*total", summary.read_text(), re.M)[1])

    def comment_row(self):
        lines = 1000000 // self.scale
        case = self.case("comments", "comments", lines)
        cat = [self.folder, "cat", case.input, ">", "copy"]
        sides = self.compare_long(case.side(), cat, [case])
        self.add_ratio(f"{lines:,} comment lines", "cat FILE > FILE2", sides, "3.5 x", "2.6 x")
        case.remove()
        (self.folder / "copy").unlink()

    def mix_rows(self):
        models = 1000 // self.scale
        mix = self.case("mix", "mix", models, 1000)
        self.name = f"{mix.lines:,} lines, {models:,} models"
        self.copy_row(mix)
        self.check_row(mix)
        self.memory_rows(mix)
        self.call_rows(mix, models)
        self.full_row()
        self.one_model_row(mix)
        if not self.quick:
            self.growth_row(mix)
        mix.remove()

    def copy_row(self, mix):
        written = self.folder / "written"
        with open(written, "wb") as out:
            for path in mix.outputs():
                text = path.read_bytes()
                out.write(text)
                if path.suffix == ".HDR":
                    out.write(Case.listing(text))
        cat = [self.folder, "cat", mix.input, ">", "/dev/null", ";", "cat", written, ">", "copy"]
        sides = self.compare_long(mix.side(), cat, [mix])
        self.add_ratio(self.name, "cat of the same bytes", sides, "6 x", "4 x")
        written.unlink()
        (self.folder / "copy").unlink()

    def check_row(self, mix):
        front_end = self.program.parent / "orvex"
        if not front_end.exists():
            return
        folder, name = mix.input.parent, mix.input.name
        check = [folder, front_end, "check", "--quiet", "--warn", "off", name]
        sides = self.compare_long(check, mix.side(), [mix])
        self.add_ratio(f"orvex check, {mix.lines:,} lines", "orvexpp on them", sides, "3 x")

    def memory_rows(self, mix):
        small = self.case("mix10", "mix", 10, 1000)
        # Single values scatter by more than the row allows.
        sides = self.compare(mix.side(), small.side(), [mix, small], 4 * self.long_pairs)
        large_peak, small_peak = (
            statistics.median(run.kibibytes for run in side) for side in sides
        )
        peak = large_peak / 1024
        growth = 100 * (large_peak / small_peak - 1)
        self.table.add(self.name, "peak memory", peak, "8 MiB", shown=f"{peak:.2f} MiB")
        against = f"peak memory at {small.lines:,}"
        self.table.add(self.name, against, growth, "5 %", shown=f"{growth:+.1f} %")
        small.remove()

    def call_rows(self, mix, models):
        trace = self.folder / "trace"
        mix.run("strace", "-f", "-y", "-o", str(trace))
        short, transfers, calls = read_trace(trace, mix.input.name)
        trace.unlink()
        shown = f"{short} of {transfers:,} transfers"
        self.table.add(self.name, "under 64 KiB, not at the end", short, "0", shown=shown)
        low, high = min(calls), max(calls)
        against = f"system calls a model, {len(calls) + 1:,} models"
        self.table.add(self.name, against, high - low, "0 apart", shown=f"{low} to {high}")

    def full_row(self):
        full = self.case("full", "full", 18 // (2 if self.quick else 1))
        mix = self.case("mix100", "mix", 100, 1000)
        sides = self.compare_long(full.side(), mix.side(), [full, mix])
        share = full.lines / mix.lines
        self.add_ratio("full symbol tables", "the mix, per line", sides, "3 x", share=share)
        full.remove()
        mix.remove()

    def one_model_row(self, mix):
        one = self.case("one", "mix", 1, mix.lines, 1000)
        sides = self.compare_long(one.side(), mix.side(), [one, mix])
        self.add_ratio(f"one model of {one.lines:,} lines", "the mix, per line", sides, "1.2 x")
        one.remove()

    def growth_row(self, mix):
        large = self.case("mix10000", "mix", 10000, 1000)
        sides = self.compare_long(large.side(), mix.side(), [large, mix])
        self.add_ratio(f"{large.lines:,} lines", f"{mix.lines:,} lines", sides, "10.5 x")
        large.remove()

    def report(self):
        """The table below a line that says when, what and where."""
        now = datetime.datetime.now(datetime.timezone.utc)
        lines = [
            f"Made by `scripts/bench{' --quick' if self.quick else ''}` on {now:%Y-%m-%d}, "
            f"commit {commit()}, on {machine(self.program)}.",
            f"Short cases: {self.short_pairs} pairs of {self.runs} runs each; long ones: "
            f"{self.long_pairs} pairs of single runs; files on {file_system(self.folder)}.",
        ]
        return "\n".join([*lines, "", str(self.table)])


class AgainstBench(Bench):
    """Pairs the program (A) with another build (B), and a copy of B with B: what two equal builds
    differ by is noise."""

    def __init__(self, options, folder):
        super().__init__(options, folder)
        self.table = BuildTable()
        self.short_pairs = self.long_pairs = 40
        self.new, self.old, self.twin = (
            self.install(name, program.resolve())
            for name, program in zip("abc", (options.program, options.against, options.against))
        )

    def install(self, name, program):
        """Copies a program and its companion to a path as long as that of the others, in the same
        file system: the loader's work depends on both."""
        place = self.folder / name
        place.mkdir()
        shutil.copy(program.parent / "libkovadclib64.dylib", place)
        return shutil.copy(program, place / "orvexpp")

    def side_of(self, case, program):
        case.program = program
        return case.side()

    def measure(self, case, runs):
        """The runs of A and B, and those of B's copy and B. Which side is first changes from pair
        to pair: the check of the files leaves the memory caches to the first."""
        kept = {self.new: [], self.twin: []}
        for program in kept:
            case.program = program
            case.run()
            case.recheck()
        for number in range(self.short_pairs):
            order = -1 if number % 2 else 1
            for program, pairs in kept.items():
                sides = [self.side_of(case, program), self.side_of(case, self.old)]
                pairs.append(self.pair(*sides[::order], runs)[::order])
                case.recheck()
        return [list(zip(*pairs)) for pairs in kept.values()]

    def build_row(self, name, runs, kind, *sizes):
        """Adds the row of times; returns the case, and the runs of A and B for other rows."""
        case = self.case("case", kind, *sizes, program=self.old)
        sides, equal = self.measure(case, runs)
        low, middle, high = quartiles(ratios(*sides))
        noise_low, noise, noise_high = quartiles(ratios(*equal))
        self.table.add(
            name, middle, max(1.02, 1 + noise_high - noise_low), f"{middle:.3f} x",
            f"{low:.3f} to {high:.3f}", f"{noise:.3f} x", f"{noise_low:.3f} to {noise_high:.3f}",
            both_times(sides))
        return case, sides

    def add_count(self, name, what, counts, more=0):
        new, old = counts
        self.table.add(name, new, old + more, f"{new:.0f} / {old:.0f} {what}")

    def add_rows(self, options):
        with one_core():
            self.short_rows()
        self.long_rows(options.growth)

    def short_rows(self):
        name = "60-line model"
        case, sides = self.build_row(name, self.runs, "mix", 1, 60)
        calls = []
        for case.program in (self.new, self.old):
            calls.append(self.system_calls(case))
        self.add_count(name, "system calls", calls)
        self.add_count(name, "page faults", map(median_faults, sides), 1)
        case.remove()
        self.build_row("2,000-line model", self.runs, "mix", 1, 2000)[0].remove()

    def long_rows(self, growth):
        lines, models = 1000000 // self.scale, 1000 // self.scale
        rows = [
            (f"{lines:,} comment lines", "comments", lines),
            (f"{lines:,} lines, {models:,} models", "mix", models, 1000),
            ("full symbol tables", "full", 18 // (2 if self.quick else 1)),
            (f"one model of {lines:,} lines", "mix", 1, lines, 1000),
        ]
        if growth:
            rows.append(("10,000,000 lines", "mix", 10000, 1000))
        for name, *made in rows:
            self.build_row(name, 1, *made)[0].remove()


def ratios(a, b):
    return [x.nanoseconds / y.nanoseconds for x, y in zip(a, b)]


def quartiles(values):
    return statistics.quantiles(values, n=4, method="inclusive")


def median_faults(side):
    return statistics.median(run.faults for run in side)


def read_trace(trace, input_name):
    """From a trace with paths: how many of the transfers are shorter than 64 KiB although more of
    their file followed, how many there are, and the system calls from each header file's end to
    that of the next, reading the input left out."""
    open_files = collections.defaultdict(list)
    short = transfers = 0
    calls, since = [], None
    for line in trace.read_text(errors="replace").splitlines():
        call = re.match(r"\d+ +(\w+)\((?:(\d+)<([^>]*)>)?.*\) += (-?\d+)", line)
        if call is None:
            continue
        kind, descriptor, path, result = call[1], call[2], call[3], int(call[4])
        if kind in ("read", "write") and result > 0:
            open_files[descriptor, kind].append(result)
        elif kind == "close":
            for direction in ("read", "write"):
                sizes = open_files.pop((descriptor, direction), [])
                transfers += len(sizes)
                short += sum(size < 65536 for size in sizes[:-1])
        if since is not None and not (kind == "read" and path.endswith("/" + input_name)):
            since += 1
        if kind.startswith("rename") and '.HDR"' in line:
            if since is not None:
                calls.append(since)
            since = 0
    return short, transfers, calls


def commit():
    with contextlib.suppress(OSError, subprocess.CalledProcessError):
        number = output_of("git", "-C", root, "rev-parse", "--short", "HEAD").strip()
        built_from = ["src", "cmake", "CMakeLists.txt", "CMakePresets.json"]
        changed = output_of("git", "-C", root, "status", "--porcelain", "--", *built_from)
        return number + (" with changes" if changed else "")
    return "unknown"


def machine(program):
    system = os.uname()
    made = re.findall(r"\] +(.*)", output_of("readelf", "-p", ".comment", program))
    cores = len(os.sched_getaffinity(0))
    return f"{cores} cores, {system.sysname} {system.machine}, {' and '.join(made)}"


def file_system(folder):
    return output_of("df", "--output=fstype", folder).split()[-1]


def usual_folder():
    """Memory, where it has room: a disk writes back now what another run has left."""
    memory = pathlib.Path("/dev/shm")
    with contextlib.suppress(OSError):
        if os.access(memory, os.W_OK) and shutil.disk_usage(memory).free > 3 * 2**30:
            return memory
    return root / "build"


@contextlib.contextmanager
def one_core():
    """A short run is over before a move to another core has paid."""
    cores = os.sched_getaffinity(0)
    os.sched_setaffinity(0, {max(cores)})
    try:
        yield
    finally:
        os.sched_setaffinity(0, cores)


def keep(report):
    """Puts the report between the two marks of the page."""
    text = page.read_text()
    start, end = "<!-- scripts/bench -->\n", "<!-- end -->\n"
    before, after = text.index(start) + len(start), text.index(end)
    page.write_text(text[:before] + report + "\n" + text[after:])


def main():
    parser = argparse.ArgumentParser(prog="scripts/bench", description=__doc__)
    parser.add_argument("--quick", action="store_true", help="few pairs, shorter inputs")
    parser.add_argument("--keep", action="store_true", help=f"put the table into {page.name}")
    parser.add_argument("--program", type=pathlib.Path, default=root / "build/release/bin/orvexpp",
                        help="what is measured")
    parser.add_argument("--folder", type=pathlib.Path, default=usual_folder(),
                        help="where the files are; up to 3 GB, removed again")
    parser.add_argument("--against", type=pathlib.Path, metavar="FILE",
                        help="another build: pairs the program with it")
    parser.add_argument("--growth", action="store_true",
                        help="with --against: 10,000,000 lines as well")
    options = parser.parse_args()
    if options.against and options.keep:
        parser.error("--keep is for the table of one program")
    signal.signal(signal.SIGTERM, lambda number, frame: sys.exit(1))
    with tempfile.TemporaryDirectory(prefix="orvexpp-bench-", dir=options.folder) as folder:
        kind = AgainstBench if options.against else Bench
        bench = kind(options, pathlib.Path(folder).resolve())
        try:
            bench.add_rows(options)
        except Wrong as wrong:
            sys.exit(f"scripts/bench: {wrong}")
        report = bench.report()
    print(report)
    if options.keep:
        keep(report)
    if options.against and bench.table.worse():
        sys.exit(1)


if __name__ == "__main__":
    main()
