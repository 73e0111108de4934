"""One run of a program: starting it, waiting for something, ending it, and reading what it left."""

import json
import os
import re
import signal
import subprocess
import time
from pathlib import Path

DATE = r"[A-Z][a-z]+ [A-Z][a-z]+ \d{1,2}, \d{4} \d\d:\d\d:\d\d"
BANNER = "=" * 64


class Log:
    """A log file: its messages in order, without the dates at their ends, and whether its two banners are whole."""

    def __init__(self, path: Path, opening: str, closing: str):
        text = path.read_bytes().decode("utf-8") if path.exists() else ""
        lines = text.split("\r")
        self.text = text
        self.is_opened = (len(lines) > 6 and lines[0] == BANNER and lines[4:7] == [BANNER, "", ""]
                          and re.fullmatch(rf"{opening} \S+ Created at: {DATE}", lines[3]) is not None)
        self.is_closed = (len(lines) > 2 and lines[-3] == "-" * 32 and lines[-1] == ""
                          and re.fullmatch(rf"{closing} \S+ at: {DATE}", lines[-2]) is not None)
        messages = [line for line in lines[5:-3 if self.is_closed else None] if line]
        self.messages = [re.sub(rf" ?{DATE}$", "", message) for message in messages]

    def count(self, pattern):
        return sum(1 for message in self.messages if re.fullmatch(pattern, message))


class Run:
    """A process with both logs and its texts in a folder of their own, which is its working directory."""

    def __init__(self, files: Path, logs: Path | None = None):
        files.mkdir(exist_ok=True)
        self.folder = files
        logs = logs or files
        self._paths = {"output": logs / "output.log", "errors": logs / "errors.log", "json": files / "results.json"}
        self._stderr = files / "stderr.txt"
        self.status = None

    def launch(self, words, wrapper=(), environment=None):
        self._is_wrapped = bool(wrapper)
        with open(self.folder / "stdout.txt", "wb") as out, open(self._stderr, "wb") as err:
            self._process = subprocess.Popen([*wrapper, *words], stdin=subprocess.DEVNULL, stdout=out, stderr=err,
                                             cwd=self.folder, env=environment)

    def pid(self):
        """Of the program itself, also under a wrapper."""
        pid = self._process.pid
        if self._is_wrapped:
            children = Path(f"/proc/{pid}/task/{pid}/children").read_text(encoding="ascii").split()
            pid = int(children[0]) if children else pid
        return pid

    def is_running(self):
        return self._process.poll() is None

    def wait_until(self, condition, seconds=30.0):
        """Whether the condition came true while the program ran."""
        end = time.monotonic() + seconds
        while not condition():
            if not self.is_running() or time.monotonic() > end:
                return condition()
            time.sleep(0.02)
        return True

    def send(self, number):
        try:
            os.kill(self.pid(), number)
        except (ProcessLookupError, FileNotFoundError):
            pass

    def wait(self, seconds=30.0):
        """The exit status; negative for a process that a signal killed; None if it had to be killed here."""
        try:
            self.status = self._process.wait(seconds)
        except subprocess.TimeoutExpired:
            self.send(signal.SIGKILL)
            self._process.kill()
            self._process.wait()
        return self.status

    def close(self):
        """Nothing of the run is left behind but its files."""
        if self.is_running():
            self.send(signal.SIGKILL)
        self.wait(5)

    @property
    def output(self):
        return Log(self._paths["output"], "Output File:", "Closing Output File:")

    @property
    def errors(self):
        return Log(self._paths["errors"], "Error Log File:", "Closing Error Log File:")

    @property
    def stderr(self):
        return self._stderr.read_text(encoding="utf-8", errors="replace")


class ProgramRun(Run):
    """The headless program, with its JSON document. Runs from the start on."""

    def __init__(self, program: Path, files: Path, arguments, wrapper=(), logs: Path | None = None):
        super().__init__(files, logs)
        self.launch([program, *arguments, "--quiet", "--output-log", self._paths["output"], "--error-log",
                     self._paths["errors"], "--json", self._paths["json"]], wrapper)

    def end(self, seconds=30.0):
        """The test comes to its end by itself."""
        return self.wait(seconds)

    def interrupt(self, seconds=30.0):
        self.send(signal.SIGINT)
        return self.wait(seconds)

    @property
    def document(self):
        """The JSON document; empty when it is missing or not valid, which fails every look into it."""
        try:
            return json.loads(self._paths["json"].read_text(encoding="utf-8"))
        except (OSError, ValueError):
            return {}

    def untold(self, _direction):
        """Of transfers, bytes and errors, the numbers of those that `results` does not tell."""
        return ()

    def results(self, direction):
        """Transfers, bytes and errors of "writes" or "reads"."""
        found = self.document.get(direction) or {}
        return tuple(found.get(key) for key in ("transfers", "bytes", "errors"))
