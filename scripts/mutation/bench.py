"""A scratch copy of the project, its build, and the runs of its tests.

The build is unoptimised and has assertions, so that a mutant is built as fast as possible and an access
outside of an array ends a run. Objects come from a cache where that is installed.
"""
import fcntl
import json
import os
import re
import resource
import shutil
import signal
import subprocess
import tempfile
import time

FAILED = re.compile(r"^\[  FAILED  \] ([^\s,]+)", re.M)
SLOWEST_BUILD = 900             # seconds
LEAST_TIME, TIMES_BASE = 30, 8  # a test program hangs after so many seconds, or times those it takes
MEMORY, FILE_SIZE = 4 << 30, 256 << 20

# Test programs that are built and run first, for a folder of sources; the others follow, the fastest first.
# Those of the translator do without orvex, which takes long to build.
CORE = ["run_test", "text_test", "companion_test"]
FIRST = {
    "codegen": ["run_test"], "companion": ["companion_test"], "driver": ["run_test"], "input": ["run_test"],
    "symbols": ["run_test"], "text": ["run_test"], "notation": ["run_test"], "src": ["text_test"],
    "abilities": ["abilities_test", "rename_test", "navigation_test", "server_test"],
    "accounts": ["balance_test"],
    "base": ["commands_test", "findings_test", "check_test"],
    "cli": ["commands_test", "findings_test", "check_test"],
    "commands": ["commands_test", "fixes_test", "graph_test", "expand_test"],
    "expansion": ["expand_test"],
    "findings": ["findings_test", "check_test", "messages_test"],
    "fixes": ["fixes_test", "messages_test"],
    "frontend": ["commands_test"],
    "layout": ["layout_test"],
    "model": ["model_test", "messages_test", "check_test", "errors_test"],
    "rules": ["messages_test", "rules_test", "faults_test", "errors_test"],
    "server": ["server_test", "navigation_test", "abilities_test", "rename_test"],
    "session": ["commands_test", "balance_test", "many_test", "check_test"],
    "syntax": ["syntax_test", "model_test", "messages_test", "check_test"],
    "translator": ["translator_test", "commands_test"],
    "views": ["graph_test", "commands_test", "findings_test"],
}


class Failure(Exception):
    """What stops all mutants: no tool, no build, a test that fails without any mutant."""


def installed(*names):
    return next((name for name in names if shutil.which(name)), None)


def limit_resources():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))
    resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_SIZE, FILE_SIZE))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


class Bench:
    def __init__(self, root, folder, jobs):
        self.root, self.tree, self.make, self.jobs = root, folder / "tree", folder / "make", jobs
        self.seconds_file = folder / "seconds.json"
        for tool in ("cmake", "ninja"):
            if not installed(tool):
                raise Failure(f"missing here: {tool} (scripts/setup)")
        folder.mkdir(parents=True, exist_ok=True)
        self.lock = (folder / "lock").open("w")
        try:
            fcntl.flock(self.lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
        except BlockingIOError:
            raise Failure(f"another run uses {folder}") from None
        self.environment = {**os.environ, "CCACHE_DIR": str(folder / "cache"), "CCACHE_NOHASHDIR": "1"}
        self.seconds = {}

    def prepare(self):
        """The copy as the project is now, built; and how long each test program takes."""
        changed = self._copy()
        if not (self.make / "build.ninja").exists():
            self._configure()
        if not self.build():
            raise Failure("the project does not build")
        if changed or not self.seconds_file.exists():
            self._time_tests()
            self.seconds_file.write_text(json.dumps(self.seconds, indent=1) + "\n", encoding="utf-8")
        self.seconds = json.loads(self.seconds_file.read_text(encoding="utf-8"))

    def build(self, *targets):
        command = ["ninja", "-C", str(self.make), "-j", str(self.jobs + 1), *targets]
        with tempfile.TemporaryFile() as output:
            process = self.start(command, output, limited=False)
            try:
                return process.wait(SLOWEST_BUILD) == 0
            except subprocess.TimeoutExpired:
                return False
            finally:
                end(process)

    def try_mutant(self, path, text):
        """Builds and tests with a file changed: what kills the mutant, in words."""
        target = self.tree / path
        right = target.read_bytes()
        target.write_bytes(text.encode())
        try:
            for names in self._stages(target.parent.name):
                programs = ["orvexpp"] if set(names) <= set(CORE) else ["orvexpp", "orvex"]
                if not self.build(*programs, *names):
                    return "does not compile"
                killer = self._first_failure(names)
                if killer:
                    return "killed by " + killer
            return "survived"
        finally:
            target.write_bytes(right)

    def _stages(self, folder):
        """The test programs in groups, each of which is built and run before the next one."""
        stages, left = [], sorted(self.seconds, key=self.seconds.get)
        for names in (FIRST.get(folder, []), CORE if set(FIRST.get(folder, CORE)) <= set(CORE) else [], left):
            stages.append([name for name in names if name in left])
            left = [name for name in left if name not in stages[-1]]
        return [names for names in stages if names]

    def _copy(self):
        """Copies what git knows and has changed, so that no more is built than must be."""
        listed = subprocess.run(["git", "ls-files", "-z"], cwd=self.root, stdout=subprocess.PIPE, check=True)
        names = [name for name in listed.stdout.decode().split("\0") if name and (self.root / name).is_file()]
        changed = False
        for path in [path for path in self.tree.rglob("*") if path.is_file()]:
            if str(path.relative_to(self.tree)) not in names:
                path.unlink()
                changed = True
        for name in names:
            source, copy = self.root / name, self.tree / name
            if not copy.exists() or copy.read_bytes() != source.read_bytes():
                copy.parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(source, copy)
                changed |= not name.startswith("scripts/")  # nothing there is tested
        return changed

    def _configure(self):
        compiler, linker, cache = installed("clang++", "g++"), installed("ld.lld", "ld.gold"), installed("ccache")
        options = ["CMAKE_BUILD_TYPE=Debug", "CMAKE_CXX_FLAGS_DEBUG=-O0", "ORVEX_WERROR=OFF",
                   "CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST"]
        options += [f"CMAKE_CXX_COMPILER={compiler}"] if compiler else []
        options += [f"CMAKE_CXX_COMPILER_LAUNCHER={cache}"] if cache else []
        for kind in ("EXE", "SHARED") if linker else ():
            options.append(f"CMAKE_{kind}_LINKER_FLAGS=-fuse-ld={linker.removeprefix('ld.')}")
        command = ["cmake", "-S", str(self.tree), "-B", str(self.make), "-G", "Ninja"]
        if subprocess.run([*command, *(f"-D{option}" for option in options)], check=False).returncode:
            raise Failure("cmake has failed")

    def _time_tests(self):
        for program in sorted((self.make / "tests").glob("*_test")):
            start = time.monotonic()
            self.seconds = {**self.seconds, program.name: 60}
            killer = self._first_failure([program.name])
            if killer:
                raise Failure(f"fails without a mutant: {killer}")
            self.seconds[program.name] = round(time.monotonic() - start, 2)

    def start(self, command, output, limited=True):
        return subprocess.Popen(command, cwd=self.make, stdin=subprocess.DEVNULL, stdout=output,
                                stderr=subprocess.STDOUT, env=self.environment, start_new_session=True,
                                preexec_fn=limit_resources if limited else None)

    def _first_failure(self, names):
        """Runs test programs, several at once; what fails first, or nothing."""
        waiting, running = list(names), []
        with tempfile.TemporaryDirectory(prefix="mutants-") as scratch:
            self.environment["TMPDIR"] = scratch
            try:
                while waiting or running:
                    while waiting and len(running) < 2 * self.jobs:  # many of them wait
                        running.append(TestRun(self, waiting.pop(0)))
                    for run in running:
                        outcome = run.outcome()
                        if outcome:
                            return outcome
                    running = [run for run in running if run.process.returncode is None]
                    time.sleep(0.02)
                return None
            finally:
                for run in running:
                    run.finish()
                subprocess.run(["chmod", "-R", "u+rwx", scratch], stderr=subprocess.DEVNULL, check=False)


class TestRun:
    def __init__(self, bench, name):
        self.name, self.output = name, tempfile.TemporaryFile()
        command = [str(bench.make / "tests" / name), "--gtest_brief=1", "--gtest_fail_fast"]
        self.process = bench.start(command, self.output)
        self.deadline = time.monotonic() + max(LEAST_TIME, TIMES_BASE * bench.seconds[name])

    def outcome(self):
        """What has failed; nothing if all is right so far."""
        status = self.process.poll()
        if status is None:
            return f"{self.name}, which hangs" if time.monotonic() > self.deadline else None
        self.finish()
        if status == 0:
            return None
        self.output.seek(0)
        failed = FAILED.search(self.output.read().decode(errors="replace"))
        return f"{self.name} {failed[1] if failed else f'with status {status}'}"

    def finish(self):
        end(self.process)


def end(process):
    """Ends a process with all that it has started."""
    try:
        os.killpg(process.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass
    process.wait()
