"""The checkers that are measured. Each gives, for a package: reports, places told as undecidable, seconds, memory."""

import dataclasses
import json
import os
import re
import shutil
import subprocess
import tempfile
import threading
import time

from applications import CLASS_ID, ROOT, documented

# Name, options. "engine" is what the television says. A configuration with an option that the program does not have is
# left out, and so is one that runs the same as one before: without --device the engine is all there is.
CONFIGURATIONS = [
    ("engine", ["--device"]),
    ("engine --all", ["--device", "--all"]),
    ("flow", []),
    ("flow --possible", ["--possible"]),
    ("engine, trial", ["--device", "--trial"]),
    ("engine, trial, uncalled", ["--device", "--trial", "--trial-uncalled"]),
    ("flow, trial", ["--trial"]),
]


@dataclasses.dataclass
class Report:
    path: str
    line: int
    method: str
    plugin: str = ""      # without the part that all have; empty if it is not said


@dataclasses.dataclass
class Outcome:
    reports: list
    undetermined: list    # of (path, line)
    seconds: float
    megabytes: float


class Failed(Exception):
    """A checker did not do its work."""


def _memory_below(top):
    """MB of all processes that descend from `top`, shared pages counted once."""
    parents = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat") as stat:
                    parents[int(entry)] = int(stat.read().rsplit(")", 1)[1].split()[1])
            except OSError:
                pass
    family = {top}
    while True:
        more = {pid for pid, parent in parents.items() if parent in family} - family
        if not more:
            break
        family |= more
    total = 0
    for pid in family:
        try:
            with open(f"/proc/{pid}/smaps_rollup") as rollup:
                total += next(int(line.split()[1]) for line in rollup if line.startswith("Pss:"))
        except (OSError, StopIteration):
            pass
    return total * 1024 / 1e6


def timed(command, good=(0,), watch=False, **options):
    """Standard output, seconds and megabytes. `watch` sums the memory of all processes of it, which costs some time."""
    with tempfile.TemporaryFile() as out, tempfile.TemporaryFile() as err:
        began = time.monotonic()
        process = subprocess.Popen(command, stdout=out, stderr=err, **options)
        most, done = [0.0], threading.Event()

        def sample():
            while not done.wait(0.05):
                most[0] = max(most[0], _memory_below(process.pid))

        watcher = threading.Thread(target=sample) if watch else None
        if watcher:
            watcher.start()
        _, status, usage = os.wait4(process.pid, 0)
        seconds = time.monotonic() - began
        done.set()
        if watcher:
            watcher.join()
        process.returncode = os.waitstatus_to_exitcode(status)
        out.seek(0)
        err.seek(0)
        if process.returncode not in good:
            said = (err.read() or out.read()).decode(errors="replace").strip().splitlines()
            raise Failed(f"{command[0]}: exit status {process.returncode}: {said[-1] if said else ''}")
        return out.read().decode(errors="replace"), seconds, max(most[0], usage.ru_maxrss * 1024 / 1e6)


class TarvoCheck:
    def __init__(self, name, program, options):
        self.name, self.program, self.options = name, program, options

    def check(self, app):
        command = [self.program, "--no-config", "--database", ROOT / "data" / "APIAnalEngineDB.xml", "--format", "json",
                   *self.options, app.package]
        text, seconds, megabytes = timed(command, (0, 1, 3), "--trial" in self.options)
        result = json.loads(text)["applications"][0]
        reports = [Report(self._path(call), call.get("line", 0), call["method"], call["plugin"].replace(CLASS_ID, ""))
                   for call in result["findings"] if self._counts(call)]
        places = [(self._path(call), call.get("line", 0)) for call in result.get("undetermined", [])]
        return Outcome(reports, places, seconds, megabytes)

    def _counts(self, call):
        """What is told without an accusation is none: what another plug-in documents, and calls of a name that the
        program makes."""
        if call.get("kind") in ("otherPlugin", "computed"):
            return False
        return "--possible" in self.options or call.get("confidence") != "possible"

    @staticmethod
    def _path(call):
        return call["path"].split("!/", 1)[-1]


def tarvo_checks(program):
    """The configurations that the program has."""
    usage = subprocess.run([program, "--help"], capture_output=True, text=True).stdout
    known = set(re.findall(r"--[a-z][a-z-]*", usage))
    checks, seen = [], set()
    for name, options in CONFIGURATIONS:
        if "--device" not in known:
            options = [option for option in options if option != "--device"]
        if set(options) <= known and tuple(options) not in seen:
            seen.add(tuple(options))
            checks.append(TarvoCheck(name, program, options))
    return checks


class Ripgrep:
    """What a reviewer does with an unpacked application and ripgrep: which ids do the plug-in elements have, which
    names are given to what is looked up by them, which methods that are not in the database are called on these? Names that
    every element has are passed over, and so are variables of one letter, of which minified code is full."""

    name = "ripgrep"
    _look_up = r"""(?:getElementById|\$|querySelector|byId|\$\$)\s*\(\s*["']#?(?:%s)["']\s*\)"""
    _of_elements = set("""addEventListener removeEventListener setAttribute getAttribute removeAttribute appendChild
        removeChild insertBefore getElementsByTagName querySelector querySelectorAll focus blur click contains cloneNode
        hasAttribute remove closest matches getBoundingClientRect dispatchEvent on off bind css attr html text show hide
        call apply push forEach map filter then join split replace indexOf slice toString""".split())

    def __init__(self):
        self.documented = documented()

    def _search(self, pattern, folder, *options):
        text, seconds, megabytes = timed(["rg", "--no-ignore", "--no-heading", "-n", *options, "-e", pattern, "."],
                                         (0, 1), cwd=folder)
        self.seconds += seconds
        self.megabytes = max(self.megabytes, megabytes)
        for line in text.splitlines():
            match = re.match(r"\./(.*?):(\d+):(.*)", line)
            if match:
                yield match[1], int(match[2]), match[3]

    def check(self, app):
        self.seconds = self.megabytes = 0.0
        ids, names, reports = set(), set(), []
        for _, _, tag in self._search(rf"(?i)<(?:object|embed)[^>]*{CLASS_ID}[^>]*>", app.built, "-o"):
            ids.update(re.findall(r"""\b(?:id|name)\s*=\s*["']?([\w$-]+)""", tag))
        if not ids:
            return Outcome([], [], self.seconds, self.megabytes)
        one_of = "|".join(sorted(map(re.escape, ids)))
        look_up = self._look_up % one_of
        for _, _, text in self._search(rf"[\w$]+\s*[=:]\s*(?:[\w$]+\.)*{look_up}", app.built, "-o"):
            names.add(re.match(r"[\w$]+", text)[0])
        words = "|".join(sorted(re.escape(name) for name in ids | names if len(name) > 1)) or "__none__"
        calls = rf"(?:\b(?:{words})|{look_up})\s*\.\s*[\w$]+\s*\("
        for path, line, text in self._search(calls, app.built, "-o"):
            method = re.search(r"([\w$]+)\s*\($", text)[1]
            if method not in self.documented and method not in self._of_elements:
                reports.append(Report(path, line, method))
        return Outcome(reports, [], self.seconds, self.megabytes)


class ESLint:
    """ESLint with a rule for plug-in objects (eslint-rule.js): what its scopes tell within one file."""

    name = "ESLint"
    packages = ["eslint@8.57.0"]

    def __init__(self, work):
        self.folder = work / "eslint"
        if not (self.folder / "node_modules" / "eslint").exists():
            install = ROOT / "tests" / "formats" / "install-npm"
            run = subprocess.run([install, self.folder, *self.packages], capture_output=True, text=True)
            if run.returncode:
                shutil.rmtree(self.folder, ignore_errors=True)
                raise Failed("its npm packages cannot be fetched")
        self.runner = ROOT / "bench" / "recall" / "eslint-rule.js"

    def check(self, app):
        text, seconds, megabytes = timed(["node", self.runner, app.built, ROOT / "data" / "APIAnalEngineDB.xml"],
                                         env={**os.environ, "NODE_PATH": str(self.folder / "node_modules")})
        reports = [Report(one["path"], one["line"], one["method"]) for one in json.loads(text)]
        return Outcome(reports, [], seconds, megabytes)
