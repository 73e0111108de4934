#!/usr/bin/env python3
"""Fails when clang-tidy finds something, or when a source is in no target and would escape both it and the compiler.

    scripts/check-tidy.py [FILE or FOLDER...]      checks these sources only (Source Tests Benchmarks)

Takes the compile commands from the build folder of the release preset, or from GAUGELINE_BUILD_DIR. Sources of a folder
are looked at several at a time, as one source that includes them: most of the time goes into the headers that they
share. Sources that use a name for different things come into different batches; those that do not compile together for
all that are looked at in halves.
"""

import json
import os
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parents[1]
BUILD = (ROOT / os.environ.get("GAUGELINE_BUILD_DIR", "build/release")).resolve()
BATCHES = BUILD / "tidy"
FOLDERS = ("Source", "Tests", "Benchmarks")
MOST = 12  # sources of a batch

OWN_NAME = re.compile(r"^(?:inline )?constexpr .*?\b(k[A-Z]\w*)|\b(k[A-Z]\w*) = |^\w[\w:<>*&, ]*[ *&](\w+)\(.*\{$"
                      r"|^(?:struct|class|enum class) (\w+)", re.MULTILINE)

# The note about suppressed warnings of system headers would hide the real ones.
NOISE = re.compile(r"\d+ warnings?( and \d+ errors?)? (generated|treated as errors?)\.?")


def sources_below(names):
    found = set()
    for name in names:
        path = Path(name).resolve()
        found.update([path] if path.is_file() else path.rglob("*.cpp"))
    return sorted(found)


def compile_flags():
    """Of each source that the build compiles: the folder to compile it in, and the command without the source's name. A
    source may be compiled in several targets; one of them will do."""
    flags = {}
    for entry in json.loads((BUILD / "compile_commands.json").read_text(encoding="utf-8")):
        words = shlex.split(entry["command"])
        output = words.index("-o")
        dropped = {output, output + 1}
        if "-include" in words:  # headers that another compiler has precompiled
            dropped |= {words.index("-include"), words.index("-include") + 1}
        kept = [word for index, word in enumerate(words)
                if index not in dropped and word not in ("-c", "-Winvalid-pch", entry["file"])]
        flags.setdefault(Path(entry["file"]), (entry["directory"], tuple(kept)))
    return flags


def unlisted(sources, flags):
    """What the build leaves out (windows without Qt) is not looked at, but every source has to be named to CMake."""
    texts = [file.read_text(encoding="utf-8") for folder in FOLDERS for file in (ROOT / folder).rglob("CMakeLists.txt")]
    listed = set(re.findall(r"[\w-]+\.cpp", "\n".join(texts)))
    generated = {f"{name}Fuzz.cpp" for text in texts for name in re.findall(r"gaugeline_add_fuzzer\((\w+)", text)}
    return [file for file in sources if file not in flags and file.name not in listed | generated]


def own_names(file):
    """Of the constants, functions and types that a source may keep to itself."""
    return {name for found in OWN_NAME.findall(file.read_text(encoding="utf-8")) for name in found if name}


def batches_of(sources, flags):
    """Lists of sources of one folder that are compiled alike; a folder that has settings of its own has single ones,
    because the settings are found only for a source that lies there."""
    batches = []
    for file in sources:
        names, kind = own_names(file), (file.parent, *flags[file])
        most = 1 if (file.parent / ".clang-tidy").exists() else MOST
        for batch in batches:
            if batch[0] == kind and len(batch[2]) < most and not names & batch[1]:
                batch[1].update(names)
                batch[2].append(file)
                break
        else:
            batches.append((kind, names, [file]))
    return [files for _, _, files in batches]


def tidy(files, command, name):
    """What is found in the sources; empty when they are clean."""
    file = files[0]
    if len(files) > 1:
        file = BATCHES / f"{name}.cpp"
        file.write_text("".join(f'#include "{each}" // NOLINT: looked at together\n' for each in files))
    directory, words = command
    run = subprocess.run(["clang-tidy", "--quiet", file, "--", *words[1:]], cwd=directory, capture_output=True,
                         text=True)
    if run.returncode == 0:
        return ""
    if len(files) > 1 and "[clang-diagnostic-error]" in run.stdout:
        middle = len(files) // 2
        print(f"check-tidy: in halves: {' '.join(file.name for file in files)}", file=sys.stderr)
        return tidy(files[:middle], command, f"{name}-1") + tidy(files[middle:], command, f"{name}-2")
    complaints = [line for line in run.stderr.splitlines() if not NOISE.fullmatch(line)]
    return run.stdout + "\n".join(complaints) or f"clang-tidy ended with {run.returncode}\n"


def main():
    sources = sources_below(sys.argv[1:] or [ROOT / folder for folder in FOLDERS])
    if not (BUILD / "compile_commands.json").is_file():
        sys.exit(f"check-tidy: {BUILD} has no compile commands; run ./test.sh first")
    flags = compile_flags()
    if escaped := unlisted(sources, flags):
        sys.exit("\n".join(f"check-tidy: {file.relative_to(ROOT)} is in no CMakeLists.txt" for file in escaped))
    checked = [file for file in sources if file in flags]
    if not checked:
        sys.exit(f"check-tidy: none of the sources is built in {BUILD}")
    BATCHES.mkdir(exist_ok=True)
    # The largest first, so that no processor is left alone at the end.
    batches = sorted(batches_of(checked, flags), key=lambda files: -sum(file.stat().st_size for file in files))

    def check(numbered):
        number, files = numbered
        found = tidy(files, flags[files[0]], f"batch-{number}")
        sys.stdout.write(found)
        sys.stdout.flush()
        return not found

    with ThreadPoolExecutor(os.cpu_count()) as workers:
        are_clean = list(workers.map(check, enumerate(batches)))
    print(f"check-tidy: {len(checked)} of {len(sources)} files, {are_clean.count(False)} batches with findings")
    sys.exit(0 if all(are_clean) else 1)


if __name__ == "__main__":
    main()
