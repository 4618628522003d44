"""A client of `orvex lsp` that measures how long an editor waits for it. Times are in seconds, from
before a message is written until its answer has been read."""

import io
import json
import os
import pathlib
import re
import statistics
import subprocess
import time

import generate

pause = 0.3  # from the last edit to the translator's run
uri = "file:///m.zlm"


def framed(message):
    text = json.dumps({"jsonrpc": "2.0", **message}).encode()
    return b"Content-Length: %d\r\n\r\n%s" % (len(text), text)


def with_blocks_apart(rows):
    """The lines of a model in which further blocks of a name have a condition: without one, each would be a
    finding, and so many findings are not in a model that somebody writes."""
    seen = set()
    for row in rows:
        block = re.match(r"\$(PROD|DEMAND):\w+(\([^)]*\))?", row)
        if block and block[0] in seen:
            row = f"{block[0]}$LATER{block[2] or ''}{row[block.end():]}"
        elif block:
            seen.add(block[0])
        yield row


class Session:
    """A server with one generated model open, of the names of 2,000 lines, and the edit that is made and
    taken back in turn: a digit after an amount in the middle of the model."""

    def __init__(self, program, lines):
        self.process = subprocess.Popen([program, "lsp"], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        self.last_id = self.version = 0
        text = io.StringIO()
        generate.mix(text, 1, lines, 2000)
        self.rows = [*with_blocks_apart(text.getvalue().split("\n"))]
        self.line = next(number for number, row in enumerate(self.rows)
                         if number > lines // 2 and re.match(r"    [DI]:\w.* Q:\d+\.\d$", row))
        self.end = len(self.rows[self.line])
        self.is_edited = False
        self.ask("initialize", {"capabilities": {}})
        self.tell("initialized", {})
        self.tell("textDocument/didOpen", {"textDocument": {
            "uri": uri, "languageId": "orvex", "version": 0, "text": "\n".join(self.rows)}})
        self.read_findings()

    def __enter__(self):
        return self

    def __exit__(self, *error):
        self.process.kill()
        self.process.communicate()

    def send(self, message):
        self.process.stdin.write(framed(message))
        self.process.stdin.flush()

    def read(self):
        """The bytes of the next message."""
        length = 0
        while (line := self.process.stdout.readline()) != b"\r\n":
            if not line:
                raise ValueError("the server has ended")
            name, value = line.split(b":")
            if name == b"Content-Length":
                length = int(value)
        return self.process.stdout.read(length)

    def read_findings(self):
        """Reads up to findings of the last version."""
        version = re.compile(rb'"version":%d\b' % self.version)
        while not version.search(self.read()):
            pass

    def tell(self, method, params):
        self.send({"method": method, "params": params})

    def ask(self, method, params):
        self.last_id += 1
        self.send({"id": self.last_id, "method": method, "params": params})
        while b'"id":%d,' % self.last_id not in (answer := self.read())[:40]:
            pass
        return answer

    def edit(self):
        self.version += 1
        place = {"line": self.line, "character": self.end}
        end = {"line": self.line, "character": self.end + self.is_edited}
        self.tell("textDocument/didChange", {
            "textDocument": {"uri": uri, "version": self.version},
            "contentChanges": [{"range": {"start": place, "end": end},
                                "text": "" if self.is_edited else "1"}]})
        self.is_edited = not self.is_edited

    def finding_time(self):
        start = time.perf_counter()
        self.edit()
        self.read_findings()
        return time.perf_counter() - start

    def verdict_time(self):
        """From the end of the pause on."""
        start = time.perf_counter()
        self.edit()
        self.read_findings()
        self.read_findings()
        return time.perf_counter() - start - pause

    def answer_time(self, method):
        """Of a question about the name that is first in the row of the edit."""
        place = {"line": self.line, "character": self.rows[self.line].index(":") + 2}
        start = time.perf_counter()
        answer = self.ask(method, {"textDocument": {"uri": uri}, "position": place})
        spent = time.perf_counter() - start
        if not json.loads(answer).get("result"):
            raise ValueError(f"{method} has no answer: {answer}")
        return spent

    def resident(self):
        """In KiB."""
        status = pathlib.Path(f"/proc/{self.process.pid}/status").read_text()
        return int(re.search(r"VmRSS:\s+(\d+)", status)[1])

    def edit_often(self, count):
        """In bursts, as the server answers for the last version alone."""
        burst = 100
        for _ in range(count // burst):
            for _ in range(burst):
                self.edit()
            self.read_findings()


def median_time(measure, runs):
    measure()
    return statistics.median(measure() for _ in range(runs))


def first_output_time(program, words, standard_input):
    """From the start of the program to the first bytes of its output."""
    output, its_output = os.pipe()
    actions = [(os.POSIX_SPAWN_OPEN, 0, standard_input, os.O_RDONLY, 0),
               (os.POSIX_SPAWN_DUP2, its_output, 1), (os.POSIX_SPAWN_CLOSE, output)]
    start = time.perf_counter()
    process = os.posix_spawn(program, [program, *words], os.environ, file_actions=actions)
    os.close(its_output)
    os.read(output, 1)
    spent = time.perf_counter() - start
    while os.read(output, 65536):
        pass
    os.close(output)
    os.waitpid(process, 0)
    return spent


def start_times(program, folder, runs):
    """Pairs of the time to the server's first answer and to that of `--version`."""
    requests = folder / "requests"
    requests.write_bytes(
        framed({"id": 1, "method": "initialize", "params": {"capabilities": {}}})
        + framed({"method": "exit"}))
    return [(first_output_time(program, ["lsp"], requests),
             first_output_time(program, ["--version"], os.devnull)) for _ in range(runs)]
