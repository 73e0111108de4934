"""One run of gaugeline-cli: starting it, waiting for something, ending it, and reading what it left."""

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


class ProgramRun:
    """The program with both logs, JSON and its texts in a folder of their own. The working directory is that folder."""

    def __init__(self, program: Path, files: Path, arguments, wrapper=(), logs: Path | None = None):
        files.mkdir(exist_ok=True)
        self.folder = files
        logs = logs or files
        self._paths = {"output": logs / "output.log", "errors": logs / "errors.log", "json": files / "results.json"}
        self._stderr = files / "stderr.txt"
        self.status = None
        self.began = time.monotonic()
        with open(files / "stdout.txt", "wb") as out, open(self._stderr, "wb") as err:
            self._process = subprocess.Popen(
                [*wrapper, program, *arguments, "--quiet", "--output-log", self._paths["output"], "--error-log",
                 self._paths["errors"], "--json", self._paths["json"]],
                stdin=subprocess.DEVNULL, stdout=out, stderr=err, cwd=files)
        self._is_wrapped = bool(wrapper)

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
        pid = self._process.pid
        if self._is_wrapped:
            children = Path(f"/proc/{pid}/task/{pid}/children").read_text(encoding="ascii").split()
            pid = int(children[0]) if children else pid
        try:
            os.kill(pid, number)
        except ProcessLookupError:
            pass

    def end(self, seconds=30.0):
        """The exit status; negative for a process that a signal killed; None if it had to be killed here."""
        try:
            self.status = self._process.wait(seconds)
        except subprocess.TimeoutExpired:
            self.send(signal.SIGKILL)
            self._process.kill()
            self._process.wait()
        return self.status

    def interrupt(self, seconds=30.0):
        self.send(signal.SIGINT)
        return self.end(seconds)

    @property
    def output(self):
        return Log(self._paths["output"], "Output File:", "Closing Output File:")

    @property
    def errors(self):
        return Log(self._paths["errors"], "Error Log File:", "Closing Error Log File:")

    @property
    def document(self):
        """The JSON document; empty when it is missing or not valid, which fails every look into it."""
        try:
            return json.loads(self._paths["json"].read_text(encoding="utf-8"))
        except (OSError, ValueError):
            return {}

    @property
    def stderr(self):
        return self._stderr.read_text(encoding="utf-8", errors="replace")

    def results(self, direction):
        """Transfers, bytes and errors of "writes" or "reads"."""
        found = self.document.get(direction) or {}
        return tuple(found.get(key) for key in ("transfers", "bytes", "errors"))
